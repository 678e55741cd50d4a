// Checking in units under RCS, header and mode updates included, against a shell loop of ci over the same files.
// Every run works on a fresh copy in which each file is locked and changed.
#include "bench/Peer.h"
#include "bench/Project.h"
#include "bench/RcsCopy.h"
#include "bench/Works.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMLog.h"
#include "CM/CMSupport/core/CMMode.h"
#include "CM/CMSupport/core/CMOutputer.h"

#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace bench {

namespace {

/// Locks every file and changes its description, as a user would.
void lockAndChange(const fs::path &directory, const fs::path &list) {
    const std::string there = "cd '" + directory.string() + "' && xargs -d '\\n' ";
    const std::string from = " <'" + list.string() + "'";
    runPeer(
        {"/bin/sh", "-c",
         there + "co -q -l" + from + " && " + there + "sed -i 's|<description>|<description>changed |'" + from});
}

} // namespace

bool checkInUnits(const Setting &setting) {
    const RcsCopy rcs(setting, "rcs-in");
    lockAndChange(rcs.original().parent_path(), rcs.list());
    CMFacade::ATMCallbackFunc() = [](CMainFrame *) {};
    CMFacade::afterATMCallbackFunc() = [](CMainFrame *) {};
    const auto ours = [&] {
        const fs::path projectFile = rcs.freshCopy();
        std::ostringstream window;
        CMFacade::outStream() = &window;
        double took = 0;
        {
            const OpenProject open(projectFile);
            CMUnitList units = listOf(open.units());
            CMMode mode(CMMode::readOnly);
            CMLabel label("");
            CMLog log("bench");
            CMArgumentList arguments{&mode, &label, &log};
            CMDiagnosticList diagnostics;
            took = secondsOf([&] {
                if (CMFacade::CheckIn(units, arguments, diagnostics) != 1) {
                    throw std::runtime_error("the check in failed: " + window.str());
                }
            });
        }
        CMFacade::outStream() = nullptr;
        rcs.expectAll(RcsCopy::Mode::readOnly);
        return took;
    };
    const auto peer = [&] {
        static_cast<void>(rcs.freshCopy());
        const double took = secondsOf([&] { rcs.runLoop("ci -q -u -mbench \"$file\""); });
        rcs.expectAll(RcsCopy::Mode::readOnly);
        return took;
    };
    const Row row = timedRow("check in " + std::to_string(rcs.count()) + " units, RCS / loop of ci",
                             measurePaired(setting.runs, ours, peer), 1.15);
    print(row);
    return row.ok();
}

} // namespace bench
