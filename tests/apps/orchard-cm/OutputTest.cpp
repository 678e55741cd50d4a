#include "apps/orchard-cm/base/Output.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace orchard_cm;

namespace {
struct Written : testing::Test {
    std::ostringstream out;
    std::ostringstream err;
    [[nodiscard]] Json json() const { return Json::parse(out.str()); }
};
} // namespace

using OutputAsText = Written;
using OutputAsJson = Written;

TEST_F(OutputAsText, GoesToResultsAndReports) {
    Output output(Output::Form::text, out, err, false);
    output.begin("list");
    output.result({{"count", 1}}, [](std::ostream &text) { text << "one unit\n"; });
    output.message(Output::Kind::warning, "a stub was left out");
    output.message(Output::Kind::information, "by the way");
    output.window() << "co -l pump.ocl\n";
    output.end(ExitCode::done);
    EXPECT_EQ(out.str(), "one unit\n");
    EXPECT_EQ(err.str(), "orchard-cm: warning: a stub was left out\norchard-cm: by the way\nco -l pump.ocl\n");
}
TEST_F(OutputAsText, TellsAFailureWithWhatWasMeantAndWhatToDo) {
    Output output(Output::Form::text, out, err, false);
    output.begin("show", Place{"night.txt", 3});
    output.failure(
        Failure(ExitCode::failed, "there is no unit 'Pumb'", "Run 'list'.").meaning({"Pump", "Plumb", "Pumps"}));
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "orchard-cm: night.txt:3: there is no unit 'Pumb'\n"
                         "Did you mean 'Pump', 'Plumb' or 'Pumps'?\nRun 'list'.\n");
}
TEST_F(OutputAsText, CountsErrorsOverAllCommands) {
    Output output(Output::Form::text, out, err, false);
    output.begin("checkout");
    output.message(Output::Kind::error, "x");
    output.end(ExitCode::failed);
    output.message(Output::Kind::warning, "y");
    output.message(Output::Kind::error, "z");
    EXPECT_EQ(output.errorCount(), 2U);
}
TEST_F(OutputAsJson, IsOneObjectALine) {
    Output output(Output::Form::json, out, err, false);
    output.begin("checkout", Place{"night.txt", 3});
    output.result({{"units", Json::array({"Pump"})}}, [](std::ostream &text) { text << "not this"; });
    output.message(Output::Kind::error, "locked");
    output.window() << "co -l pump.ocl\n";
    output.failure(Failure(ExitCode::failed, "no", "do").meaning({"Pump"}));
    output.end(ExitCode::failed);
    EXPECT_EQ(out.str(), "{\"command\":\"checkout\",\"ok\":false,\"exit\":1,\"file\":\"night.txt\",\"line\":3,"
                         "\"units\":[\"Pump\"],\"messages\":[{\"kind\":\"error\",\"text\":\"locked\"}],"
                         "\"window\":\"co -l pump.ocl\\n\","
                         "\"error\":{\"message\":\"no\",\"hint\":\"do\",\"suggestions\":[\"Pump\"]}}\n");
    EXPECT_EQ(err.str(), "");
}
TEST_F(OutputAsJson, LeavesOutWhatIsEmpty) {
    Output output(Output::Form::json, out, err, false);
    output.begin("tools");
    output.end(ExitCode::done);
    EXPECT_EQ(out.str(), "{\"command\":\"tools\",\"ok\":true,\"exit\":0}\n");
}
TEST_F(OutputAsJson, ReplacesBytesThatAreNoUtf8) {
    Output output(Output::Form::json, out, err, false);
    output.begin("checkout");
    output.window() << "a\xff"
                       "b";
    output.end(ExitCode::done);
    EXPECT_EQ(json()["window"], "a\xEF\xBF\xBD"
                                "b");
}
TEST_F(OutputAsJson, WritesTheWindowOfEachCommandOnce) {
    Output output(Output::Form::json, out, err, false);
    output.begin("batch");
    output.begin("checkout", Place{"-", 1});
    output.window() << "first";
    output.end(ExitCode::done);
    output.end(ExitCode::done);
    std::istringstream lines(out.str());
    std::string first;
    std::string second;
    std::getline(lines, first);
    std::getline(lines, second);
    EXPECT_EQ(Json::parse(first)["window"], "first");
    EXPECT_EQ(second, "{\"command\":\"batch\",\"ok\":true,\"exit\":0}");
}
