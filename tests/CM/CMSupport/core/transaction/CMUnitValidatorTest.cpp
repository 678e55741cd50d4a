#include "CM/CMSupport/core/CMUnitValidator.h"

#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

#include <csignal>
#include <stdexcept>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Validator : public CoreFixture {
  protected:
    std::vector<IUnit *> valid() const {
        CMUnitList units{nullptr}; // what was in it goes
        validator.getValidUnitList(units);
        return {units.begin(), units.end()};
    }
    CMUnitValidator validator;
};

TEST_F(Validator, MarksTheUnitsOfAList) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    EXPECT_EQ(validator.init(CMUnitList{&pump, nullptr, &valve}), 1);
    EXPECT_TRUE(validator.isUnitMarkedForValidation(&pump));
    EXPECT_TRUE(validator.isValidUnit(&valve));
    EXPECT_FALSE(validator.isUnitMarkedForValidation(nullptr));
    EXPECT_FALSE(validator.isValidUnit(nullptr));
    EXPECT_THAT(valid(), testing::UnorderedElementsAre(&pump, &valve));
}

TEST_F(Validator, TakesAnEmptyList) {
    EXPECT_EQ(validator.init(CMUnitList()), 1);
    EXPECT_THAT(valid(), IsEmpty());
}

TEST_F(Validator, TakesOneUnitButNotNull) {
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(validator.init(static_cast<IUnit *>(nullptr)), 0);
    EXPECT_EQ(validator.init(&pump), 1);
    EXPECT_THAT(valid(), ElementsAre(&pump));
}

TEST_F(Validator, ForgetsTheFormerUnitsAtInit) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    validator.init(&pump);
    validator.init(&valve);
    EXPECT_THAT(valid(), ElementsAre(&valve));
    EXPECT_EQ(host.handlesAlive, 1);
    validator.init(static_cast<IUnit *>(nullptr));
    EXPECT_EQ(host.handlesAlive, 0);
}

TEST_F(Validator, ForgetsTheFormerUnitsAtInitWithAList) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    validator.init(CMUnitList{&pump});
    validator.init(CMUnitList{&valve});
    EXPECT_THAT(valid(), ElementsAre(&valve));
    EXPECT_EQ(host.handlesAlive, 1);
    validator.init(CMUnitList());
    EXPECT_THAT(valid(), IsEmpty());
    EXPECT_EQ(host.handlesAlive, 0);
}

TEST_F(Validator, AddsAUnitOnce) {
    auto &pump = host.addUnit("Pump");
    EXPECT_EQ(validator.addUnit(nullptr), 0);
    EXPECT_EQ(validator.addUnit(&pump), 1);
    EXPECT_EQ(validator.addUnit(&pump), 1);
    EXPECT_EQ(host.handlesAlive, 1);
}

TEST_F(Validator, SurvivesAUnitWhoseHandleThrows) {
    auto &pump = host.addUnit("Pump");
    pump.onGetHandle = [] { throw std::runtime_error("dead"); };
    EXPECT_EQ(validator.addUnit(&pump), 0);
    EXPECT_FALSE(validator.isUnitMarkedForValidation(&pump));
}

TEST_F(Validator, SurvivesAUnitWhoseHandleFaults) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    pump.onGetHandle = [] { std::raise(SIGSEGV); };
    EXPECT_EQ(validator.init(CMUnitList{&pump, &valve}), 1);
    EXPECT_THAT(valid(), ElementsAre(&valve));
}

TEST_F(Validator, LeavesTheFaultHandlersAsTheyWereBehindAListWithADeadUnit) {
    auto &pump = host.addUnit("Pump");
    pump.onGetHandle = [] { std::raise(SIGSEGV); };
    struct sigaction before {};
    struct sigaction after {};
    sigaction(SIGSEGV, nullptr, &before);
    validator.init(CMUnitList{&pump, &host.addUnit("Valve"), &pump});
    sigaction(SIGSEGV, nullptr, &after);
    EXPECT_EQ(before.sa_sigaction, after.sa_sigaction);
    EXPECT_EQ(host.handlesAlive, 1);
}

TEST_F(Validator, RemovesAUnitAndGivesItsHandleBack) {
    auto &pump = host.addUnit("Pump");
    validator.init(&pump);
    EXPECT_EQ(validator.removeUnit(nullptr), 0);
    EXPECT_EQ(validator.removeUnit(&pump), 1);
    EXPECT_EQ(validator.removeUnit(&pump), 0);
    EXPECT_EQ(host.handlesAlive, 0);
    EXPECT_FALSE(validator.isUnitMarkedForValidation(&pump));
}

TEST_F(Validator, GivesAHandleBackOnceEvenIfItsReleaseThrows) {
    struct ThrowingHandle : IHandle {
        int releases = 0;
        [[nodiscard]] IDObject *doGetObject() const override { return nullptr; }
        [[nodiscard]] IDObject *doGetSafeObject() const override { return nullptr; }
        void release() override {
            ++releases;
            throw std::runtime_error("host");
        }
    } handle;
    struct : recording::Class {
        IHandle *own = nullptr;
        [[nodiscard]] IHandle *getHandle() override { return own; }
    } pump;
    pump.own = &handle;
    validator.init(&pump);
    EXPECT_THROW(validator.removeUnit(&pump), std::runtime_error);
    EXPECT_FALSE(validator.isUnitMarkedForValidation(&pump));
    validator.reset();
    EXPECT_EQ(handle.releases, 1);
}

TEST_F(Validator, TellsAReloadedUnitFromTheOneBefore) {
    auto &pump = host.addUnit("Pump");
    validator.init(&pump);
    auto &reloaded = host.replaceClass(pump);
    EXPECT_TRUE(validator.isUnitMarkedForValidation(&pump));
    EXPECT_FALSE(validator.isValidUnit(&pump));
    EXPECT_FALSE(validator.isValidUnit(&reloaded)) << "it is not marked";
    EXPECT_THAT(valid(), ElementsAre(&reloaded));
}

TEST_F(Validator, TellsAUnitThatIsGone) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    validator.init(CMUnitList{&pump, &valve});
    host.removeObject(pump);
    EXPECT_TRUE(validator.isUnitMarkedForValidation(&pump));
    EXPECT_FALSE(validator.isValidUnit(&pump));
    EXPECT_THAT(valid(), ElementsAre(&valve));
}

TEST_F(Validator, PassesOverAnObjectThatIsNoUnit) {
    auto &pump = host.addUnit("Pump");
    validator.init(&pump);
    host.objectsById[pump.id] = &host.addElement("Inner");
    EXPECT_FALSE(validator.isValidUnit(&pump));
    EXPECT_THAT(valid(), IsEmpty());
}

TEST_F(Validator, ReplacesAUnit) {
    auto &pump = host.addUnit("Pump");
    validator.init(&pump);
    auto &reloaded = host.replaceClass(pump);
    EXPECT_EQ(validator.replaceUnit(&pump, &reloaded), 1);
    EXPECT_FALSE(validator.isUnitMarkedForValidation(&pump));
    EXPECT_TRUE(validator.isValidUnit(&reloaded));
    EXPECT_EQ(host.handlesAlive, 1);
}

TEST_F(Validator, ReplacesNothingThatItShouldNot) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    auto &stranger = host.addUnit("Stranger");
    auto &dead = host.addUnit("Dead");
    dead.onGetHandle = [] { throw std::runtime_error("dead"); };
    validator.init(CMUnitList{&pump, &valve});
    EXPECT_EQ(validator.replaceUnit(nullptr, &stranger), 0);
    EXPECT_EQ(validator.replaceUnit(&pump, nullptr), 0);
    EXPECT_EQ(validator.replaceUnit(&stranger, &dead), 0);
    EXPECT_EQ(validator.replaceUnit(&pump, &valve), 0);
    EXPECT_EQ(validator.replaceUnit(&pump, &pump), 0);
    EXPECT_EQ(validator.replaceUnit(&pump, &dead), 0);
    EXPECT_THAT(valid(), testing::UnorderedElementsAre(&pump, &valve));
}

TEST_F(Validator, ReplacesAUnitByOneAtTheSameAddress) {
    auto &pump = host.addUnit("Pump");
    validator.init(&pump);
    host.removeObject(pump);
    host.storage.nextAddress = &pump;
    auto &reloaded = host.addUnit("Pump"); // with another identifier
    ASSERT_EQ(&reloaded, &pump);
    EXPECT_EQ(validator.replaceUnit(&pump, &reloaded), 1);
    EXPECT_TRUE(validator.isValidUnit(&reloaded));
    EXPECT_THAT(valid(), ElementsAre(&reloaded));
    EXPECT_EQ(host.handlesAlive, 1);
}

TEST_F(Validator, KeepsTheMarkOfADeadUnitWhoseAddressAReloadedOneHasTaken) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    validator.init(CMUnitList{&pump, &valve});
    auto &newValve = host.replaceClass(valve);
    host.removeObject(pump);
    host.storage.nextAddress = &valve;
    auto &newPump = host.addUnit("Pump");
    EXPECT_EQ(validator.replaceUnit(&pump, &newPump), 1);
    EXPECT_FALSE(validator.isValidUnit(&valve)) << "the mark is still that of the unit before";
    EXPECT_THAT(valid(), testing::UnorderedElementsAre(&newPump, &newValve));
    EXPECT_EQ(host.handlesAlive, 2);
}

TEST_F(Validator, KeepsTheOldMarkIfAUnitAtTheSameAddressCannotBeMarked) {
    auto &pump = host.addUnit("Pump");
    validator.init(&pump);
    host.removeObject(pump);
    host.storage.nextAddress = &pump;
    auto &reloaded = host.addUnit("Pump");
    reloaded.onGetHandle = [] { throw std::runtime_error("dead"); };
    EXPECT_EQ(validator.replaceUnit(&pump, &reloaded), 0);
    EXPECT_TRUE(validator.isUnitMarkedForValidation(&pump));
    EXPECT_EQ(host.handlesAlive, 1);
}

TEST_F(Validator, NeverFollowsAPointerToADeadUnit) {
    auto &dead = host.addUnit("Tank");
    auto &stand = host.addUnit("Pump");
    validator.init(CMUnitList{&dead, &stand});
    host.removeObject(dead); // the address sanitizer reports each use from here on
    EXPECT_TRUE(validator.isUnitMarkedForValidation(&dead));
    EXPECT_FALSE(validator.isValidUnit(&dead));
    EXPECT_THAT(valid(), ElementsAre(&stand));
    EXPECT_EQ(validator.addUnit(&dead), 1) << "it is marked already";
    EXPECT_EQ(validator.replaceUnit(&dead, &host.addUnit("Valve")), 1);
    EXPECT_FALSE(validator.isUnitMarkedForValidation(&dead));
}

TEST_F(Validator, GivesAllHandlesBackAtItsEnd) {
    auto &pump = host.addUnit("Pump");
    auto &valve = host.addUnit("Valve");
    {
        CMUnitValidator other;
        other.init(CMUnitList{&pump, &valve});
        EXPECT_EQ(host.handlesAlive, 2);
    }
    EXPECT_EQ(host.handlesAlive, 0);
}

} // namespace
