#include "CM/CMSupport/core/RunFault.h"

#include "CM/CMSupport/resources/Format.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>

using resources::Text;

namespace {

/// Returns the first line that is not empty, cut to the length of a message.
std::string firstLine(std::string_view text) {
    constexpr std::size_t longest = 300; // bytes
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto line = text.substr(0, text.substr(0, end).find_last_not_of(" \t\r") + 1);
        if (!line.empty()) {
            return line.size() > longest ? std::string(line.substr(0, longest)) + "..." : std::string(line);
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return {};
}

CString withError(std::string reason, std::string_view errors) {
    const std::string error = firstLine(errors);
    return error.empty() ? std::move(reason) : std::move(reason) + ": " + error;
}

CString faultOfExit(int status, std::string_view errors) {
    constexpr int commandNotFound = 127; // exit status of a shell
    if (status == 0) {
        return {};
    }
    return withError(status == commandNotFound ? resources::text(Text::runCommandNotFound)
                                               : resources::format(Text::runFailed, {std::to_string(status)}),
                     errors);
}

CString faultOfEnd(const CMToolRun &run) {
    switch (run.end.kind) {
    case RunEnd::Kind::unknown:
        return {};
    case RunEnd::Kind::exited:
        return faultOfExit(run.end.code, run.errors);
    case RunEnd::Kind::killedBySignal:
        return resources::format(Text::runKilled, {std::to_string(run.end.code), run.end.text});
    case RunEnd::Kind::timedOut:
        return resources::text(Text::runTimedOut);
    case RunEnd::Kind::interrupted:
        return resources::text(Text::runInterrupted);
    case RunEnd::Kind::withheld:
        return resources::text(Text::runWithheld);
    case RunEnd::Kind::notStarted:
        return run.end.code == ENOENT ? CString(resources::text(Text::runNotInstalled))
                                      : CString(resources::format(Text::runNotStarted, {run.end.text}));
    }
    return {};
}

} // namespace

CString faultOf(const CMToolRun &run) {
    if (run.result < 0) {
        return resources::format(Text::callFailed, {run.command, std::to_string(run.result)});
    }
    if (CString fault = faultOfEnd(run); !fault.IsEmpty()) {
        return fault;
    }
    return run.match == CMToolRun::Match::error ? resources::text(Text::commandReportedError) : "";
}
