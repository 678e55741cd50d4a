// Builds CMProperty's log lines around calls of a provider.
#include "CM/CMSupport/core/CMProperty.h"

void CMProperty::getPreSCCCallLogMsg(const CString &name, CString &out) {
    out = "Invoking " + name + " on Scc dll";
}

void CMProperty::getPreSCCCallLogMsg(const CString &name, const char *file, CString &out) {
    if (file != nullptr) {
        out = "Invoking " + name + " on Scc dll for the following file:\n\t" + file + "\n";
    }
}

void CMProperty::getPreSCCCallLogMsg(const CString &name, long count, const char *const *files, CString &out) {
    if (files == nullptr) {
        return;
    }
    out = "Invoking " + name + " on Scc dll for the following files:\n";
    for (long index = 0; index < count; ++index) {
        out += '\t';
        out += files[index];
        out += '\n';
    }
}

void CMProperty::getPostSCCCallLogMsg(const CString &name, CString &out) {
    out = "Returned from " + name + " on Scc dll";
}

void CMProperty::getSCCReturnLogMsg(const CString &name, long code, CString &out) {
    out.Format("Scc dll returned %ld from %s", code, name.c_str());
}
