// Checking out units under RCS with a lock, reloads included, against a shell loop of co over the same files.
// Every run works on a fresh copy.
#include "bench/Project.h"
#include "bench/RcsCopy.h"
#include "bench/Works.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMMode.h"
#include "CM/CMSupport/core/CMOutputer.h"

#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace bench {

bool checkOutUnits(const Setting &setting) {
    const RcsCopy rcs(setting, "rcs");
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
            CMMode mode(CMMode::readWrite);
            CMLabel label("");
            CMArgumentList arguments{&mode, &label};
            CMDiagnosticList diagnostics;
            took = secondsOf([&] {
                if (CMFacade::CheckOut(units, arguments, diagnostics) != 1) {
                    throw std::runtime_error("the check out failed: " + window.str());
                }
            });
        }
        CMFacade::outStream() = nullptr;
        rcs.expectAll(RcsCopy::Mode::readWrite);
        return took;
    };
    const auto peer = [&] {
        static_cast<void>(rcs.freshCopy());
        const double took = secondsOf([&] { rcs.runLoop("co -q -l \"$file\""); });
        rcs.expectAll(RcsCopy::Mode::readWrite);
        return took;
    };
    const Row row = timedRow("check out " + std::to_string(rcs.count()) + " units, RCS, with reloads / loop of co",
                             measurePaired(setting.runs, ours, peer), 1.15);
    print(row);
    return row.ok();
}

} // namespace bench
