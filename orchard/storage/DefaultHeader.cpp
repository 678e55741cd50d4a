#include "orchard/storage/DefaultHeader.h"

#include "CM/host/IPN.h"
#include "CM/host/Utilities.h"
#include "orchard/storage/FileText.h"

namespace orchard {

std::string defaultHeaderOf(const Element &element) {
    const auto find = [&](const CString &metaclass, const CString &key) {
        return element.findProperty(IPN::CM, metaclass, key, IProperty::inherited);
    };
    const IProperty *const tool = find(IPN::CMGeneral, IPN::CMTool);
    const IProperty *file = tool == nullptr ? nullptr : find(tool->getValue(), IPN::CMHeaderFile);
    file = file == nullptr ? find(IPN::CMGeneral, IPN::CMHeaderFile) : file;
    if (file == nullptr || file->getValue().IsEmpty()) {
        return {};
    }
    CString path = file->getValue();
    CString root;
    CString error;
    if (path.Find("$OQROOT") >= 0 && oqGetRoot(root, error) == 1) {
        path.Replace("$OQROOT", root);
    }
    constexpr std::size_t largest = std::size_t{1} << 20U;
    FileText text;
    if (text.read(path.str(), largest) != FileRead::done || text.text.find("-->") != std::string::npos) {
        return {};
    }
    while (text.text.ends_with('\n') || text.text.ends_with('\r')) {
        text.text.pop_back();
    }
    return text.text;
}

} // namespace orchard
