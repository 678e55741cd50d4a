#include "tests/orchard/storage/Workbench.h"

#include "orchard/storage/UnitSearch.h"

using testing::HasSubstr;

namespace {

class FindUnit : public Workbench {
  protected:
    void SetUp() override { openSample(); }
    [[nodiscard]] std::string found(std::string_view words) const {
        const orchard::UnitSearch search = orchard::findUnit(*project, words);
        return search ? orchard::pathInModel(*search.unit) : "? " + search.error;
    }
};

TEST_F(FindUnit, ByNamePathOrFile) {
    EXPECT_EQ(found("Valve"), "Drives/Valve");
    EXPECT_EQ(found("Drives/Sensors/FlowSensor"), "Drives/Sensors/FlowSensor");
    EXPECT_EQ(found("Sensors/FlowSensor"), "Drives/Sensors/FlowSensor");
    EXPECT_EQ(found("Valve.ocl"), "Drives/Valve");
    EXPECT_EQ(found("Control/AlarmList.ocl"), "Control/AlarmList");
    EXPECT_EQ(found("Control\\AlarmList.ocl"), "Control/AlarmList");
    EXPECT_EQ(found(unitFile("Valve.ocl")), "Drives/Valve");
    EXPECT_EQ(found("wiring.txt"), "wiring.txt");
    EXPECT_EQ(found("Control/AlarmList/AlarmEntry"), "Control/AlarmList/AlarmEntry");
}

TEST_F(FindUnit, SaysWhenThereIsNone) {
    EXPECT_THAT(found("valve"), HasSubstr("? no unit is named 'valve'"));
    EXPECT_THAT(found("/Valve"), HasSubstr("? no unit is named"));
    EXPECT_THAT(found(""), HasSubstr("? no unit is named"));
}

TEST_F(FindUnit, ListsTheCandidatesOfAnAmbiguousName) {
    // The class in Drives has the name of the project.
    const orchard::UnitSearch search = orchard::findUnit(*project, "Pump");
    EXPECT_EQ(search.unit, nullptr);
    EXPECT_EQ(search.candidates.size(), 2U);
    EXPECT_THAT(search.error, HasSubstr("'Pump' fits 2 units: Pump, Drives/Pump"));
}

} // namespace
