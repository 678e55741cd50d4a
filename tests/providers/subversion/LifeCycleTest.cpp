// Contexts, projects and options.
#include "tests/providers/subversion/Host.h"
#include "tests/providers/subversion/Repository.h"

#include <filesystem>

using namespace provider_test;

namespace {

class LifeCycle : public RepositoryTest {};

TEST_F(LifeCycle, AllEntriesAreExported) {
    for (const char *name : {"SccGetVersion",  "SccInitialize",   "SccUninitialize",   "SccGetProjPath",
                             "SccOpenProject", "SccCloseProject", "SccSetOption",      "SccGetCommandOptions",
                             "SccGet",         "SccCheckout",     "SccCheckin",        "SccUncheckout",
                             "SccAdd",         "SccRemove",       "SccRename",         "SccHistory",
                             "SccProperties",  "SccDiff",         "SccQueryInfo",      "SccPopulateList",
                             "SccCheckinTask", "SccSetTask",      "SccGetDefaultTask", "SccCreateTask",
                             "SccShowTask",    "SccListTasks"}) {
        EXPECT_NE(nullptr, Library::instance().find(name)) << name;
    }
    EXPECT_EQ(nullptr, Library::instance().find("svn_client_lock_internal"));
}

TEST_F(LifeCycle, InitialisingGivesNameAndCapabilities) {
    const Host host;
    EXPECT_EQ("Subversion", host.name());
    EXPECT_NE(0U, host.capabilities() & SCC_CAP_REENTRANT);
    EXPECT_NE(0U, host.capabilities() & SCC_CAP_COMMENTCHECKOUT);
    EXPECT_EQ(0U, host.capabilities() & SCC_CAP_MULTICHECKOUT);
    EXPECT_EQ(SCC_VERSION_1_1, SCC_ENTRY(SccGetVersion)());
}

TEST_F(LifeCycle, InitialisingWithoutAPlaceForTheContextFails) {
    EXPECT_EQ(SCC_E_INITIALIZEFAILED,
              SCC_ENTRY(SccInitialize)(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr));
}

TEST_F(LifeCycle, ANewProjectIsMadeAroundTheFilesInPlace) {
    const std::string file = write("model/Pump.oru", "pump");
    Host host;
    std::string project = "station";
    int isNew = 1;
    EXPECT_EQ(SCC_OK, host.getProjectPath(project, at("model"), isNew));
    EXPECT_EQ(url("station"), project);
    EXPECT_EQ(1, isNew);
    EXPECT_EQ("pump", support::contentsOf(file));
    EXPECT_EQ(url("station"), svn("info --show-item url " + inQuotes(at("model"))));
    EXPECT_EQ("?       " + file, svnStatus(at("model")));
}

TEST_F(LifeCycle, AProjectWithoutANameIsCalledAsItsDirectory) {
    Host host;
    std::string project;
    int isNew = 1;
    EXPECT_EQ(SCC_OK, host.getProjectPath(project, at("model"), isNew));
    EXPECT_EQ(url("model"), project);
}

TEST_F(LifeCycle, AnExistingProjectIsPickedAndNotNew) {
    EXPECT_EQ("", svn("mkdir -q -m x " + url("station")));
    Host host;
    std::string project = "station";
    int isNew = 1;
    EXPECT_EQ(SCC_OK, host.getProjectPath(project, at("model"), isNew));
    EXPECT_EQ(0, isNew);
    EXPECT_EQ("1", newestRevision());
}

TEST_F(LifeCycle, AProjectIsNotMadeIfTheHostForbidsIt) {
    Host host;
    std::string project = "station";
    int isNew = 0;
    EXPECT_EQ(SCC_E_NONSPECIFICERROR, host.getProjectPath(project, at("model"), isNew));
    EXPECT_EQ("0", newestRevision());
    EXPECT_FALSE(std::filesystem::exists(at("model")));
}

TEST_F(LifeCycle, AWorkingCopyIsTheProjectWhateverTheName) {
    EXPECT_EQ("", svn("mkdir -q --parents -m x " + url("trunk/station")));
    EXPECT_EQ("", svn("checkout -q " + url("trunk") + " " + inQuotes(at("work"))));
    Host host;
    std::string project = "something else";
    int isNew = 1;
    EXPECT_EQ(SCC_OK, host.getProjectPath(project, at("work/station"), isNew));
    EXPECT_EQ(url("trunk/station"), project);
    EXPECT_EQ(0, isNew);
}

TEST_F(LifeCycle, ANewDirectoryInAWorkingCopyIsAddedToIt) {
    EXPECT_EQ("", svn("checkout -q " + url() + " " + inQuotes(at("work"))));
    write("work/models/station/Pump.oru", "pump");
    Host host;
    std::string project;
    int isNew = 1;
    EXPECT_EQ(SCC_OK, host.getProjectPath(project, at("work/models/station"), isNew));
    EXPECT_EQ(url("models/station"), project);
    EXPECT_EQ(1, isNew);
    EXPECT_EQ("station/", svn("list " + url("models")));
}

TEST_F(LifeCycle, WithoutAWorkingCopyAndARepositoryRootThereIsNoProject) {
    writeRegistry("", at("config"));
    Host host;
    std::string project = "station";
    int isNew = 1;
    EXPECT_EQ(SCC_E_NONSPECIFICERROR, host.getProjectPath(project, at("model"), isNew));
    EXPECT_EQ("station", project);
}

TEST_F(LifeCycle, NamesWithBlanksUmlautsAndSignsAreProjects) {
    const std::string file = write("Ärger & Söhne @ 5%/Pumpe Ü@1.oru", "pump");
    Host host;
    host.connect("", at("Ärger & Söhne @ 5%"));
    EXPECT_EQ(SCC_OK, host.add({file})) << Host::text();
    EXPECT_EQ("Pumpe Ü@1.oru", svn("list " + inQuotes(url("Ärger & Söhne @ 5%25") + "@")));
    EXPECT_EQ(SCC_STATUS_CONTROLLED, host.status(file));
}

TEST_F(LifeCycle, OpeningADirectoryThatIsNoWorkingCopyFails) {
    EXPECT_EQ("", svn("mkdir -q -m x " + url("station")));
    write("model/Pump.oru", "pump");
    Host host;
    EXPECT_EQ(SCC_E_UNKNOWNPROJECT, host.open(url("station"), at("model")));
    EXPECT_NE(std::string::npos, Host::text().find("is not a working copy of " + url("station"))) << Host::text();
}

TEST_F(LifeCycle, OpeningAWorkingCopyOfAnotherAddressFails) {
    EXPECT_EQ("", svn("mkdir -q -m x " + url("one") + " " + url("two")));
    EXPECT_EQ("", svn("checkout -q " + url("one") + " " + inQuotes(at("work"))));
    Host host;
    EXPECT_EQ(SCC_E_UNKNOWNPROJECT, host.open(url("two"), at("work")));
    EXPECT_EQ(SCC_OK, host.open(url("one"), at("work")));
}

TEST_F(LifeCycle, OpeningWithTheFlagCreatesTheProject) {
    Host host;
    EXPECT_EQ(SCC_I_PROJECTCREATED, host.open(url("station"), at("model"), SCC_OP_CREATEIFNEW)) << Host::text();
    EXPECT_EQ("station/", svn("list " + url()));
    EXPECT_NE(std::string::npos, svn("log " + url()).find("a new project"));
}

TEST_F(LifeCycle, OpeningFailsWithTheCodeOfTheMistake) {
    Host host;
    EXPECT_EQ(SCC_E_PROJSYNTAXERR, host.open("station", at("model")));
    EXPECT_EQ(SCC_E_INVALIDFILEPATH, host.open(url(), "model"));
    EXPECT_EQ(SCC_E_UNKNOWNPROJECT, host.open(url("missing"), at("model"), 0));
}

TEST_F(LifeCycle, ASecondProjectInOneContextIsRefused) {
    Host host;
    host.connect("one", at("one"));
    EXPECT_EQ(SCC_E_PROJECTALREADYOPEN, host.open(url("one"), at("one")));
    EXPECT_EQ(SCC_OK, host.close());
    EXPECT_EQ(SCC_E_PROJNOTOPEN, host.close());
    EXPECT_EQ(SCC_OK, host.open(url("one"), at("one")));
}

TEST_F(LifeCycle, TwoContextsWorkAtOnce) {
    Host one;
    Host two;
    one.connect("one", at("one"));
    two.connect("two", at("two"));
    EXPECT_EQ(SCC_OK, one.add({write("one/A.oru", "a")}));
    EXPECT_EQ(SCC_OK, two.add({write("two/B.oru", "b")}));
    EXPECT_EQ("A.oru", svn("list " + url("one")));
    EXPECT_EQ("B.oru", svn("list " + url("two")));
}

TEST_F(LifeCycle, WithoutAProjectTheCommandsSaySo) {
    Host host;
    const std::string file = write("model/Pump.oru", "pump");
    std::vector<long> status;
    EXPECT_EQ(SCC_E_PROJNOTOPEN, host.query({file}, status));
    EXPECT_EQ(std::vector<long>{SCC_STATUS_INVALID}, status);
    EXPECT_EQ(SCC_E_PROJNOTOPEN, host.checkOut({file}));
    EXPECT_EQ(SCC_E_PROJNOTOPEN, host.rename(file, file + "2"));
}

TEST_F(LifeCycle, AStaleContextIsRecognised) {
    void *stale = nullptr;
    {
        const Host host;
        stale = host.context();
    }
    long status = 0;
    char name[] = "/x";
    char *names[] = {name};
    EXPECT_EQ(SCC_E_NONSPECIFICERROR, SCC_ENTRY(SccQueryInfo)(stale, 1, names, &status));
    EXPECT_EQ(SCC_E_NONSPECIFICERROR, SCC_ENTRY(SccCloseProject)(stale));
    EXPECT_EQ(SCC_OK, SCC_ENTRY(SccUninitialize)(stale));
}

TEST_F(LifeCycle, OptionsThatAreNotKnownAreRefused) {
    Host host;
    EXPECT_EQ(SCC_OK, host.setOption(SCC_OPT_HASCANCELMODE, SCC_OPT_HCM_YES));
    EXPECT_EQ(SCC_OK, host.setOption(SCC_OPT_EVENTQUEUE, SCC_OPT_EQ_DISABLE));
    EXPECT_EQ(SCC_E_OPNOTSUPPORTED, host.setOption(77, 1));
    EXPECT_EQ(SCC_E_OPNOTSUPPORTED,
              SCC_ENTRY(SccGetCommandOptions)(host.context(), nullptr, SCC_COMMAND_GET, nullptr));
}

TEST_F(LifeCycle, AProjectAddressLongerThanTheApiAllowsIsRefused) {
    Host host;
    std::string project(SCC_PRJPATH_LEN - 10, 'p');
    int isNew = 1;
    EXPECT_EQ(SCC_E_NONSPECIFICERROR, host.getProjectPath(project, at("model"), isNew));
}

} // namespace
