#include "apps/orchard-cm/model/Properties.h"

#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "apps/orchard-cm/base/Failure.h"
#include "apps/orchard-cm/model/Session.h"
#include "orchard/storage/NewProject.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace orchard_cm;

namespace {

class PropertyInForce : public testing::Test {
  protected:
    PropertyInForce() {
        options.project = orchard::createSampleProject(directory / "Plant", "None").projectFile;
        set("CMGeneral", "CMTool", "Vault");
    }

    void set(const char *metaclass, const char *key, const char *value) {
        IProperty property(static_cast<const IProperty *>(nullptr));
        property.setName(key);
        property.setValue(value);
        session.project().storeProperty(IPN::CM, metaclass, &property);
    }
    std::string metaclassOf(const char *key) {
        const auto found = findProperty(session.project(), key, {});
        return found ? found->metaclass : "(none)";
    }

    support::TemporaryDirectory directory;
    GlobalOptions options;
    std::ostringstream out;
    std::ostringstream err;
    Output output{Output::Form::text, out, err, false};
    Session session{options, output};
};

} // namespace

TEST_F(PropertyInForce, IsThatOfTheToolThenThatOfAllTools) {
    set("SCC", "Mine", "of all providers");
    EXPECT_EQ(metaclassOf("Mine"), "(none)");
    set("General", "Mine", "of the project");
    EXPECT_EQ(metaclassOf("Mine"), "General");
    set("CMGeneral", "Mine", "of all tools");
    EXPECT_EQ(metaclassOf("Mine"), "CMGeneral");
    set("Vault", "Mine", "of the tool");
    EXPECT_EQ(metaclassOf("Mine"), "Vault");
}

TEST_F(PropertyInForce, IsThatOfAllProvidersIfTheProjectWorksThroughAProvider) {
    set("General", "UseSCCtool", "YES");
    set("Vault", "Mine", "of the tool");
    EXPECT_EQ(metaclassOf("Mine"), "(none)");
    EXPECT_THROW(requireProperty(session.project(), "Mine", {}), Failure);
    set("CMGeneral", "Mine", "of all tools");
    EXPECT_EQ(metaclassOf("Mine"), "CMGeneral");
    set("SCC", "Mine", "of all providers");
    EXPECT_EQ(metaclassOf("Mine"), "SCC");
}
