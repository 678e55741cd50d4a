// Times small pieces of the library, to find where a slow benchmark spends its time. They have no limits.
#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMProperty.h"
#include "CM/CMSupport/core/CMUnit.h"
#include "CM/host/IPN.h"
#include "CM/host/SPString.h"
#include "CM/platform/PlainWords.h"
#include "tests/support/recording_host/RecordingHost.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

void matchVariable(benchmark::State &state) {
    const SPString text("co -q -l \"$UnitPath\"");
    const SPString pattern(R"(\${?([a-zA-Z_][a-zA-Z0-9_]*)}?)");
    SPStringList groups;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(text.m(pattern, groups, "i"));
    }
}
BENCHMARK(matchVariable);

void matchAtTheEndOfALongOutput(benchmark::State &state) {
    const SPString text(std::string(static_cast<std::size_t>(state.range(0)), 'x') + "\nerror: locked\n");
    const SPString pattern("(error|fatal):");
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(text.m(pattern, "i"));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(matchAtTheEndOfALongOutput)->Arg(1 << 10)->Arg(1 << 20);

void expandTemplate(benchmark::State &state, const char *text) {
    RecordingHost host;
    host.addProject();
    host.addConfiguration("release", host.addComponent("plc"));
    host.setTool("Bench");
    host.setToolDefault("Bench", "LabelPart", "-r$label");
    CMLabel label("release 1");
    CMArchive archive("/archive");
    CMUnit unit(&host.addUnit("Pump"));
    CMArgumentList arguments{&label, &archive, &unit};
    while (state.KeepRunning()) {
        CString line;
        CString error;
        benchmark::DoNotOptimize(CMProperty::Expand(text, arguments, line, error, false));
        host.clearRecords();
    }
}
BENCHMARK_CAPTURE(expandTemplate, plainText, "co -q -l Pump.ocl");
BENCHMARK_CAPTURE(expandTemplate, argument, "co -q -l $UnitPath");
BENCHMARK_CAPTURE(expandTemplate, nestedProperty, "co -q $LabelPart");
BENCHMARK_CAPTURE(expandTemplate, predefined, "co -q $temp");
BENCHMARK_CAPTURE(expandTemplate, conditional, "co -q ($label ? -r$label : -f)");

void expandAmongBraces(benchmark::State &state) {
    // Each value completes the next variable, so that twice the braces should take twice the time.
    RecordingHost host;
    host.addProject();
    host.addConfiguration("release", host.addComponent("plc"));
    host.setTool("Bench");
    host.setToolDefault("Bench", "a", "$");
    std::string source = "$";
    for (auto count = state.range(0); count > 0; --count) {
        source += "{a}";
    }
    CMArgumentList arguments;
    while (state.KeepRunning()) {
        CString line;
        CString error;
        benchmark::DoNotOptimize(CMProperty::Expand(source, arguments, line, error, false));
        host.clearRecords();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(expandAmongBraces)->Arg(1 << 10)->Arg(1 << 14);

void splitCommandIntoWords(benchmark::State &state) {
    const std::string command = R"(co -q -l -r"release 1" '/models/_Plant/Pump.ocl' /archive/Pump.ocl,v)";
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(platform::plainWords(command));
    }
}
BENCHMARK(splitCommandIntoWords);

} // namespace

BENCHMARK_MAIN();
