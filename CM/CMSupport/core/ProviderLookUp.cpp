#include "CM/CMSupport/core/ProviderLookUp.h"

#include "CM/host/LogTrace.h"
#include "CM/platform/Files.h"
#include "CM/platform/PathText.h"
#include "CM/platform/Registry.h"

namespace provider {

namespace {

constexpr const char *machine = "HKEY_LOCAL_MACHINE\\";

void report(const CString &reason) {
    LogTrace::Log log(LogTrace::Log::cm);
    log.Min("../CM/CMSupport/Property", __LINE__, reason);
}

/// Returns a text of the type REG_SZ; an expandable text does not count.
std::optional<CString> textValue(const platform::Registry &registry, const CString &key, const CString &name) {
    const auto value = registry.text(key, name);
    return value && !value->isExpandable ? std::optional(value->text) : std::nullopt;
}

} // namespace

CString formatOneArgument(std::string_view format, std::string_view argument) {
    CString formatted;
    bool given = false;
    while (!format.empty()) {
        if (format.starts_with("%%")) {
            formatted += '%';
            format.remove_prefix(2);
        } else if (format.starts_with("%s") && !given) {
            formatted += argument;
            given = true;
            format.remove_prefix(2);
        } else {
            formatted += format.front();
            format.remove_prefix(1);
        }
    }
    return formatted;
}

std::optional<RegisteredLibrary> findLibrary() {
    const auto registry = platform::Registry::open(report);
    const auto providerKey =
        textValue(registry, CString(machine) + "Software\\SourceCodeControlProvider", "ProviderRegKey");
    if (!providerKey) {
        return std::nullopt;
    }
    const CString key = CString(machine) + formatOneArgument(*providerKey, "SCCServerName");
    const auto path = textValue(registry, key, "SccServerPath");
    // A relative path would depend on the current directory, which changes with the project.
    if (!path || !platform::isAbsolutePath(*path) || !platform::fileExists(*path)) {
        return std::nullopt;
    }
    return RegisteredLibrary{*path, key};
}

} // namespace provider
