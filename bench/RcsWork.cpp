#include "bench/RcsWork.h"

#include "bench/Project.h"
#include "bench/Works.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMOutputer.h"

#include <sstream>
#include <stdexcept>

namespace bench {

bool measure(const Setting &setting, const RcsCopy &rcs, const RcsWork &work) {
    CMFacade::ATMCallbackFunc() = [](CMainFrame *) {};
    CMFacade::afterATMCallbackFunc() = [](CMainFrame *) {};
    const auto ours = [&] {
        const std::filesystem::path projectFile = rcs.freshCopy();
        std::ostringstream window;
        CMFacade::outStream() = &window;
        double took = 0;
        {
            const OpenProject open(projectFile);
            CMUnitList units = listOf(open.units());
            CMDiagnosticList diagnostics;
            took = secondsOf([&] {
                if (work.operation(units, diagnostics) != 1) {
                    throw std::runtime_error("the " + work.verb + " failed: " + window.str());
                }
            });
        }
        CMFacade::outStream() = nullptr;
        rcs.expectAll(work.after);
        return took;
    };
    const auto peer = [&] {
        static_cast<void>(rcs.freshCopy());
        const double took = secondsOf([&] { rcs.runLoop(work.peerCommand); });
        rcs.expectAll(work.after);
        return took;
    };
    const Row row = timedRow(work.verb + " " + std::to_string(rcs.count()) + " " + work.what,
                             measurePaired(setting.runs, ours, peer), 1.15);
    print(row);
    return row.ok();
}

} // namespace bench
