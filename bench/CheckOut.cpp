// Measures checking out units under RCS with a lock, including reloads, against a shell loop of the same command
// over the same files: the script of the property set, which also protects changes of read-only files. Every run
// uses a new copy.
#include "bench/RcsWork.h"
#include "bench/Works.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMMode.h"

#include <string>

namespace bench {

bool checkOutUnits(const Setting &setting) {
    const RcsCopy rcs(setting, "rcs");
    const std::string script = (setting.sources.parent_path() / "share/scripts/rcs.sh").string();
    return measure(setting, rcs,
                   {.what = "units, RCS, with reloads / loop of the script",
                    .verb = "check out",
                    .operation =
                        [](CMUnitList &units, CMDiagnosticList &diagnostics) {
                            CMMode mode(CMMode::readWrite);
                            CMLabel label("");
                            CMArgumentList arguments{&mode, &label};
                            return CMFacade::CheckOut(units, arguments, diagnostics);
                        },
                    .peerCommand = "sh \"" + script + "\" get -f -l \"$file\"",
                    .after = RcsCopy::Mode::readWrite});
}

} // namespace bench
