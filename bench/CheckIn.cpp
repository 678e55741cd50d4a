// Measures checking in units under RCS, including header and mode updates, against a shell loop of ci over the
// same files. Every run uses a new copy in which each file is locked and changed.
#include "bench/Peer.h"
#include "bench/Project.h"
#include "bench/RcsWork.h"
#include "bench/Works.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMLog.h"
#include "CM/CMSupport/core/CMMode.h"

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
    return measure(setting, rcs,
                   {.what = "units, RCS / loop of ci",
                    .verb = "check in",
                    .operation =
                        [](CMUnitList &units, CMDiagnosticList &diagnostics) {
                            CMMode mode(CMMode::readOnly);
                            CMLabel label("");
                            CMLog log("bench");
                            CMArgumentList arguments{&mode, &label, &log};
                            return CMFacade::CheckIn(units, arguments, diagnostics);
                        },
                    .peerCommand = "ci -q -u -mbench \"$file\"",
                    .after = RcsCopy::Mode::readOnly});
}

} // namespace bench
