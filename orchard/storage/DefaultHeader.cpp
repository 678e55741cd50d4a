#include "orchard/storage/DefaultHeader.h"

#include "CM/host/IPN.h"
#include "CM/host/LogTrace.h"
#include "CM/host/Messages.h"
#include "CM/host/Utilities.h"
#include "orchard/model/Model.h"
#include "orchard/model/Workspace.h"
#include "orchard/storage/FileText.h"
#include "orchard/storage/LibraryFacade.h"
#include "orchard/storage/TextCheck.h"

#include <set>
#include <string>
#include <utility>

namespace orchard {

namespace {

constexpr std::size_t largestHeader = std::size_t{1} << 20U;

/// Reports a problem with a file once, because every new file needs its header.
void reportOnce(const std::string &path, const std::string &why) {
    static std::set<std::string> reported;
    if (!reported.insert(path).second) {
        return;
    }
    const std::string text = "New files get no header from " + path + " (property HeaderFile): " + why + ".";
    LogTrace::Log(LogTrace::Log::cm).Min("orchard/storage", 0, text);
    static_cast<void>(notifyUserAndAsk(text, MB_ICONEXCLAMATION, 0, messageLevelDefault));
}

/// Returns the property that names the file, or null: that of the tool, or for a project that works through a
/// provider that of all providers; otherwise that of all tools.
const IProperty *headerFileOf(const Element &element) {
    const auto find = [&](const CString &metaclass, const CString &key) {
        return element.findProperty(IPN::CM, metaclass, key, IProperty::inherited);
    };
    const IProperty *const useProvider = find(IPN::General, "UseSCCtool");
    const IProperty *const tool = find(IPN::CMGeneral, IPN::CMTool);
    const IProperty *file = nullptr;
    if (useProvider != nullptr && useProvider->getValue().CompareNoCase("YES") == 0) {
        file = find("SCC", IPN::CMHeaderFile);
    } else if (tool != nullptr) {
        file = find(tool->getValue(), IPN::CMHeaderFile);
    }
    return file == nullptr ? find(IPN::CMGeneral, IPN::CMHeaderFile) : file;
}

struct Found {
    std::string path; ///< for messages
    std::string text;
    const char *fault = nullptr; ///< why there is no text, if the user should know
};

Found foundByHost(const Element &element) {
    const IProperty *const file = headerFileOf(element);
    if (file == nullptr || file->getValue().IsEmpty()) {
        return {};
    }
    CString path = file->getValue();
    CString root;
    CString error;
    if (path.Find("$OQROOT") >= 0 && oqGetRoot(root, error) == 1) {
        path.Replace("$OQROOT", root);
    }
    FileText text;
    const bool isRead = text.read(path.str(), largestHeader) == FileRead::done;
    return {path.str(), std::move(text.text), isRead ? nullptr : "it can't be read"};
}

/// The header that the library finds for the active project, so that everything that asks the library sees what
/// new files get. The library reports no reason for an empty text; if the host can read the file, the empty text
/// is intended.
Found foundByLibrary(IBaseCMFacade &facade, const Element &element) {
    std::string text = facade.getTheDefaultHeader().str();
    if (!text.empty()) {
        const IProperty *const file = headerFileOf(element);
        return {file == nullptr ? std::string() : file->getValue().str(), std::move(text)};
    }
    Found found = foundByHost(element);
    if (found.fault != nullptr || !found.text.empty()) {
        found.fault = "it is empty or can't be read";
    }
    return found;
}

} // namespace

std::string defaultHeaderOf(const Element &element) {
    const bool isActive = element.model() != nullptr && element.model() == Workspace::instance().active();
    IBaseCMFacade *const facade = isActive ? cmFacade() : nullptr;
    Found found = facade == nullptr ? foundByHost(element) : foundByLibrary(*facade, element);
    if (found.fault != nullptr) {
        reportOnce(found.path, found.fault);
        return {};
    }
    if (found.text.size() > largestHeader) {
        reportOnce(found.path, "it is longer than a megabyte");
        return {};
    }
    if (found.text.find("-->") != std::string::npos || faultOfValue(found.text)) {
        reportOnce(found.path, "it holds \"-->\", a control character or text that is not UTF-8");
        return {};
    }
    while (found.text.ends_with('\n') || found.text.ends_with('\r')) {
        found.text.pop_back();
    }
    return found.text;
}

} // namespace orchard
