#include "apps/orchard-cm/commands/Run.h"

#include "apps/orchard-cm/base/Interrupt.h"

#include <exception>

namespace orchard_cm {

ExitCode runRecorded(Output &output, std::string_view name, const std::optional<Place> &place,
                     const std::function<ExitCode()> &work) {
    output.begin(name, place);
    ExitCode code = ExitCode::failed;
    try {
        code = work();
        if (isInterrupted() && code != ExitCode::interrupted) {
            throw Failure(ExitCode::interrupted, "interrupted");
        }
    } catch (const Failure &failure) {
        code = isInterrupted() ? ExitCode::interrupted : failure.code();
        output.failure(failure);
    } catch (const std::exception &error) {
        output.failure(Failure(code, std::string("unexpected: ") + error.what(),
                               "This is a fault of the program; nothing that was saved is lost."));
    }
    output.end(code);
    return code;
}

} // namespace orchard_cm
