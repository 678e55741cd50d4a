// Expands command templates with hostile arguments and properties. The first line is the template; each further
// line is "name=value", an argument, or "name:value", a property of the tool. Every expansion ends, whether it
// succeeds or fails, leaves its arguments unchanged, and gives the same result when repeated and when done step by
// step.
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/host/IPN.h"
#include "tests/CM/CMSupport/core/expansion/PlainExpansion.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace {

class Argument final : public CMUserBasedArgument {
  public:
    Argument(CString name, CString value) : name_(std::move(name)), value_(std::move(value)) {}
    [[nodiscard]] int isNamed(const CString &name) const override {
        return name.CompareNoCase(name_) == 0 ? 1 : 0;
    }
    [[nodiscard]] CString substitute(const CString & /*name*/) override { return value_; }

  private:
    CString name_;
    CString value_;
};

bool differsStepByStep(const CString &source, CMArgumentList &args, int ok, const CString &result) {
    try {
        CString wanted;
        return PlainExpansion(args).expand(source, wanted, false) != ok || wanted != result;
    } catch (const PlainExpansion::TooMuch &) {
        return false; // the library refuses at its own limits
    }
}

std::string_view takeLine(std::string_view &text) {
    const auto end = text.find('\n');
    const auto line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char *>(data), size);
    RecordingHost host;
    CMProperty::ResetIfActiveProjectChanged();
    host.addProject();
    host.addConfiguration("Release", host.addComponent("Main"));
    host.setTool("Fuzz");
    host.setToolDefault("Fuzz", "Flags", "($mode ? -$mode : -q)");

    const CString source(takeLine(text));
    std::vector<std::unique_ptr<Argument>> owned;
    CMArgumentList args;
    while (!text.empty() && owned.size() < 8) {
        const auto line = takeLine(text);
        const auto separator = line.find_first_of("=:");
        if (separator == std::string_view::npos) {
            continue;
        }
        const CString name(line.substr(0, separator));
        const CString value(line.substr(separator + 1));
        if (line[separator] == ':') {
            host.setToolDefault("Fuzz", name, value);
        } else {
            owned.push_back(std::make_unique<Argument>(name, value));
            args.AddTail(owned.back().get());
        }
    }

    CString first;
    CString second;
    CString error;
    const int ok = CMProperty::Expand(source, args, first, error, false);
    host.clearRecords();
    const int again = CMProperty::Expand(source, args, second, error, false);
    if ((ok != 0 && ok != 1) || ok != again || first != second ||
        args.GetCount() != static_cast<int>(owned.size()) || differsStepByStep(source, args, ok, first)) {
        std::abort();
    }
    return 0;
}
