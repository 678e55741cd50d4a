#include "CM/CMSupport/core/CMLabel.h"

int CMLabel::isNamed(const CString &name) const { return name.CompareNoCase("label") == 0 ? 1 : 0; }

CString CMLabel::substitute(const CString &name) {
    if (isNamed(name) == 0) {
        return name;
    }
    return label_.Find(' ') >= 0 ? '"' + label_ + '"' : label_;
}
