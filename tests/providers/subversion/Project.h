// The fixture for commands on files: a project with two units in the repository, and a second user.
#pragma once

#include "tests/providers/subversion/Host.h"
#include "tests/providers/subversion/Repository.h"

namespace provider_test {

class ProjectTest : public RepositoryTest {
  protected:
    ProjectTest() : alice("alice"), bob("bob") {
        alice.connect("station", at("alice"));
        pump = write("alice/Pump.oru", "pump 1\n");
        valve = write("alice/Valve.oru", "valve 1\n");
        EXPECT_EQ(SCC_OK, alice.add({pump, valve})) << Host::text();
        bob.connect("station", at("bob"));
        bobsPump = at("bob/Pump.oru");
        bobsValve = at("bob/Valve.oru");
        Host::forgetText();
    }

    /// Checks a new version in as the other user.
    void bobChanges(const std::string &name, const std::string &contents) {
        const std::string file = at("bob/" + name);
        EXPECT_EQ(SCC_OK, bob.checkOut({file})) << Host::text();
        write("bob/" + name, contents);
        EXPECT_EQ(SCC_OK, bob.checkIn({file})) << Host::text();
    }

    /// Whether the provider has written this text.
    static bool said(const std::string &text) { return Host::text().find(text) != std::string::npos; }

    Host alice;
    Host bob;
    std::string pump;
    std::string valve;
    std::string bobsPump;
    std::string bobsValve;
};

} // namespace provider_test
