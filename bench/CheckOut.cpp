// Measures checking out units under RCS with a lock, including reloads, against a shell loop of co over the same
// files. Every run uses a new copy.
#include "bench/RcsWork.h"
#include "bench/Works.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMMode.h"

namespace bench {

bool checkOutUnits(const Setting &setting) {
    const RcsCopy rcs(setting, "rcs");
    return measure(setting, rcs,
                   {.what = "units, RCS, with reloads / loop of co",
                    .verb = "check out",
                    .operation =
                        [](CMUnitList &units, CMDiagnosticList &diagnostics) {
                            CMMode mode(CMMode::readWrite);
                            CMLabel label("");
                            CMArgumentList arguments{&mode, &label};
                            return CMFacade::CheckOut(units, arguments, diagnostics);
                        },
                    .peerCommand = "co -q -l \"$file\"",
                    .after = RcsCopy::Mode::readWrite});
}

} // namespace bench
