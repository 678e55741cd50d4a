#include "orchard/storage/DefaultHeader.h"

#include "CM/host/IPN.h"
#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"
#include "CM/host/Utilities.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/TextCheck.h"

#include <set>
#include <string>

namespace orchard {

namespace {

/// Every new file asks for its header, so the same trouble is told once.
void tellOnce(const std::string &path, const std::string &why) {
    static std::set<std::string> told;
    if (!told.insert(path).second) {
        return;
    }
    const std::string text = "New files get no header from " + path + " (property HeaderFile): " + why + ".";
    LogTrace::Log(LogTrace::Log::cm).Min("orchard/storage", 0, text);
    static_cast<void>(notifyUserAndAsk(text, MB_ICONEXCLAMATION, 0, messageLevelDefault));
}

} // namespace

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
    if (text.read(path.str(), largest) != FileRead::done) {
        tellOnce(path.str(), "it can't be read");
        return {};
    }
    if (text.text.find("-->") != std::string::npos || faultOfValue(text.text)) {
        tellOnce(path.str(), "it holds \"-->\", a control character or text that is no UTF-8");
        return {};
    }
    while (text.text.ends_with('\n') || text.text.ends_with('\r')) {
        text.text.pop_back();
    }
    return text.text;
}

} // namespace orchard
