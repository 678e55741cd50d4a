// Composition root of orchard-cm. Links the library with the reference host, parses a command line, and runs one
// command on one project.
#include "apps/orchard-cm/base/Interrupt.h"
#include "apps/orchard-cm/commands/AllCommands.h"
#include "apps/orchard-cm/commands/Run.h"
#include "apps/orchard-cm/model/Session.h"
#include "apps/orchard-cm/options/Parser.h"

#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace orchard_cm;

/// Returns the code, or a failure if the results did not reach the standard output.
ExitCode writtenOr(ExitCode code) {
    if (std::cout || code != ExitCode::done) {
        return code;
    }
    std::cerr << "orchard-cm: standard output could not be written\n";
    return ExitCode::failed;
}

ExitCode run(const std::vector<std::string> &words) {
    const auto form = wantsJson(words) ? Output::Form::json : Output::Form::text;
    Output output(form, std::cout, std::cerr, isatty(STDERR_FILENO) != 0);
    Invocation invocation;
    try {
        invocation = parseCommandLine(words, allCommands());
    } catch (const Failure &failure) {
        return runRecorded(output, commandIn(words, allCommands()), {}, [&]() -> ExitCode { throw failure; });
    }
    if (invocation.command == nullptr) {
        runRecorded(output, commandIn(words, allCommands()), {}, [&] {
            output.result({{"text", invocation.text}}, [&](std::ostream &out) { out << invocation.text; });
            return ExitCode::done;
        });
        return writtenOr(ExitCode::done);
    }
    const ExitCode code = runRecorded(output, invocation.name, {}, [&] {
        Session session(invocation.options, output);
        Context context{invocation.options, output, session};
        return invocation.command->run(context);
    });
    return writtenOr(code);
}

} // namespace

int main(int count, char **words) {
    watchForInterrupt();
    return static_cast<int>(run(std::vector<std::string>(words + 1, words + count)));
}
