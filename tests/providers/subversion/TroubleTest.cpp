// What goes wrong: no repository, a dead server, passwords, a working copy that needs a clean-up, a user who
// cancels.
#include "tests/providers/subversion/Project.h"

#include <algorithm>
#include <filesystem>

using namespace provider_test;

namespace {

class Trouble : public ProjectTest {};

/// A server with two users, each of whom has stored a password.
class Served : public RepositoryTest {
  protected:
    Served() {
        directory_.write("repository/conf/svnserve.conf",
                         "[general]\nanon-access = none\nauth-access = write\n"
                         "password-db = passwd\nauthz-db = authz\nrealm = Models\n");
        directory_.write("repository/conf/passwd",
                         "[users]\nalice = secret a\nbob = secret b\nguest = secret c\n");
        directory_.write("repository/conf/authz", "[/]\nalice = rw\nbob = rw\nguest = r\n");
        server = std::make_unique<Server>(at(""));
        address = "svn://127.0.0.1:" + std::to_string(server->port()) + "/repository";
    }

    /// A user as the provider finds one: the settings name a configuration with the password.
    std::unique_ptr<Host> userWith(const std::string &name, const std::string &password) {
        const std::string realm = "<svn://127.0.0.1:" + std::to_string(server->port()) + "> Models";
        const std::string file = shell("printf %s " + inQuotes(realm) + " | md5sum | cut -d' ' -f1");
        const auto entry = [](const std::string &key, const std::string &value) {
            return "K " + std::to_string(key.size()) + "\n" + key + "\nV " + std::to_string(value.size()) + "\n" +
                   value + "\n";
        };
        directory_.write(name + "-config/auth/svn.simple/" + file,
                         entry("passtype", "simple") + entry("password", password) +
                             entry("svn:realmstring", realm) + entry("username", name) + "END\n");
        writeRegistry(address, at(name + "-config"));
        return std::make_unique<Host>();
    }

    std::unique_ptr<Server> server;
    std::string address;
};

TEST_F(Served, TwoUsersWorkOnOneRepository) {
    const auto alice = userWith("alice", "secret a");
    alice->connect("station", at("alice"));
    const auto bob = userWith("bob", "secret b");
    const std::string pump = write("alice/Pump Ü@1.oru", "pump 1\n");
    ASSERT_EQ(SCC_OK, alice->add({pump})) << Host::text();
    bob->connect("station", at("bob"));
    const std::string bobsPump = at("bob/Pump Ü@1.oru");
    EXPECT_EQ(SCC_OK, bob->checkOut({bobsPump}, "mine"));
    EXPECT_EQ("bob", lockOwner("station/Pump Ü@1.oru"));
    EXPECT_EQ(SCC_E_FILEISLOCKED, alice->checkOut({pump}));
    EXPECT_NE(std::string::npos, Host::text().find("checked out by bob since")) << Host::text();
    EXPECT_EQ(SCC_STATUS_CONTROLLED | SCC_STATUS_OUTOTHER | SCC_STATUS_OUTEXCLUSIVE, alice->status(pump));
    write("bob/Pump Ü@1.oru", "pump 2\n");
    EXPECT_EQ(SCC_OK, bob->checkIn({bobsPump}));
    EXPECT_EQ("bob", shell("svnlook author " + inQuotes(at("repository"))));
    EXPECT_EQ(SCC_OK, alice->checkOut({pump}));
    EXPECT_EQ("pump 2\n", support::contentsOf(pump));
}

TEST_F(Served, TheUserIsKnownByTheStoredName) {
    const auto alice = userWith("alice", "secret a");
    alice->connect("station", at("one"));
    const std::string pump = write("one/Pump.oru", "pump 1\n");
    ASSERT_EQ(SCC_OK, alice->add({pump}));
    Host again;
    again.connect("station", at("two"));
    EXPECT_EQ(SCC_OK, alice->checkOut({pump}));
    EXPECT_EQ(SCC_STATUS_CONTROLLED | SCC_STATUS_OUTBYUSER | SCC_STATUS_OUTEXCLUSIVE,
              again.status(at("two/Pump.oru")));
}

TEST_F(Served, AWrongPasswordIsAnInvalidUserWithAHint) {
    const auto alice = userWith("alice", "secret a");
    alice->connect("station", at("alice"));
    EXPECT_EQ(SCC_OK, alice->close());
    const auto wrong = userWith("alice", "wrong");
    EXPECT_EQ(SCC_E_INVALIDUSER, wrong->open(address + "/station", at("alice")));
    EXPECT_NE(std::string::npos, Host::text().find("log in once with \"svn info URL\"")) << Host::text();
}

TEST_F(Served, AUserWithoutTheRightChangesNothing) {
    const auto alice = userWith("alice", "secret a");
    alice->connect("station", at("alice"));
    const std::string pump = write("alice/Pump.oru", "pump 1\n");
    ASSERT_EQ(SCC_OK, alice->add({pump}));
    const auto guest = userWith("guest", "secret c");
    guest->connect("station", at("guest"));
    const std::string guestsPump = at("guest/Pump.oru");
    EXPECT_EQ(SCC_OK, guest->get({guestsPump}));
    EXPECT_EQ(SCC_E_NOTAUTHORIZED, guest->checkOut({guestsPump})) << Host::text();
    EXPECT_EQ("", lockOwner("station/Pump.oru"));
    const std::string tank = write("guest/Tank.oru", "tank\n");
    EXPECT_EQ(SCC_E_NOTAUTHORIZED, guest->add({tank})) << Host::text();
    EXPECT_EQ("?       " + tank, svnStatus(at("guest")));
}

TEST_F(Served, AServerThatIsGoneLeavesEverythingAsItWas) {
    const auto alice = userWith("alice", "secret a");
    alice->connect("station", at("alice"));
    const std::string pump = write("alice/Pump.oru", "pump 1\n");
    ASSERT_EQ(SCC_OK, alice->add({pump}));
    ASSERT_EQ(SCC_OK, alice->checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    server->stop();
    std::vector<long> status;
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice->query({pump}, status));
    EXPECT_EQ(std::vector<long>{SCC_STATUS_INVALID}, status);
    EXPECT_NE(std::string::npos, Host::text().find("its server can be reached")) << Host::text();
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice->checkIn({pump}));
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice->undo({pump}));
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice->get({pump}));
    EXPECT_EQ("my pump\n", support::contentsOf(pump));
    EXPECT_EQ("M    K  " + pump, svnStatus(at("alice")));
}

TEST_F(Trouble, ARepositoryThatIsGoneLeavesEverythingAsItWas) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    std::filesystem::rename(at("repository"), at("elsewhere"));
    std::vector<long> status;
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice.query({pump, valve}, status));
    EXPECT_EQ((std::vector<long>{SCC_STATUS_INVALID, SCC_STATUS_INVALID}), status);
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice.checkIn({pump}));
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice.checkOut({valve}));
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice.undo({pump}));
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice.remove({valve}));
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice.rename(valve, at("alice/V.oru")));
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice.add({write("alice/Tank.oru", "x")}));
    EXPECT_EQ("my pump\n", support::contentsOf(pump));
    EXPECT_EQ(SCC_OK, alice.close());
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice.open(url("station"), at("alice")));
    std::filesystem::rename(at("elsewhere"), at("repository"));
    EXPECT_EQ(SCC_OK, alice.open(url("station"), at("alice")));
    EXPECT_EQ(SCC_OK, alice.checkIn({pump})) << Host::text();
}

TEST_F(Trouble, AWorkingCopyThatNeedsACleanUpIsReportedWithTheRemedy) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ("",
              shell("sqlite3 " + inQuotes(at("alice/.svn/wc.db")) + " \"insert into wc_lock values (1, '', 0)\""));
    EXPECT_EQ(SCC_E_ACCESSFAILURE, alice.checkIn({pump}));
    EXPECT_TRUE(said("run \"svn cleanup\"")) << Host::text();
    EXPECT_EQ("my pump\n", support::contentsOf(pump));
    EXPECT_EQ("", svn("cleanup " + inQuotes(at("alice"))));
    EXPECT_EQ(SCC_OK, alice.checkIn({pump})) << Host::text();
}

TEST_F(Trouble, AWorkingCopyThatIsGoneIsReported) {
    std::filesystem::remove_all(at("alice/.svn"));
    std::vector<long> status;
    EXPECT_NE(SCC_OK, alice.query({pump}, status));
    EXPECT_EQ(SCC_STATUS_INVALID, status.front());
    EXPECT_NE(SCC_OK, alice.checkOut({pump}));
    EXPECT_EQ("pump 1\n", support::contentsOf(pump));
}

TEST_F(Trouble, CancellingEndsACallBetweenTwoFiles) {
    Names files;
    for (int i = 0; i < 20; ++i) {
        files.push_back(write("alice/F" + std::to_string(i) + ".oru", "x\n"));
    }
    EXPECT_EQ(SCC_OK, alice.setOption(SCC_OPT_HASCANCELMODE, SCC_OPT_HCM_YES));
    Host::forgetText();
    Host::cancelAfter(5);
    EXPECT_EQ(SCC_I_OPERATIONCANCELED, alice.add(files));
    Host::cancelAfter(0);
    EXPECT_EQ("2", newestRevision());
    EXPECT_EQ(SCC_MSG_STARTCANCEL, Host::kinds().front());
    EXPECT_EQ(SCC_MSG_STOPCANCEL, Host::kinds().back());
    EXPECT_NE(0, std::count(Host::kinds().begin(), Host::kinds().end(), SCC_MSG_DOCANCEL));
    EXPECT_EQ("", svn("status -q " + inQuotes(at("alice"))));
    EXPECT_EQ(SCC_OK, alice.add(files)) << Host::text();
}

TEST_F(Trouble, WithoutTheCancelModeTheHostIsNotAsked) {
    Host::cancelAfter(1);
    EXPECT_EQ(SCC_OK, alice.checkOut({pump, valve}));
    EXPECT_EQ(0, std::count(Host::kinds().begin(), Host::kinds().end(), SCC_MSG_DOCANCEL));
    EXPECT_EQ(SCC_E_ALREADYCHECKEDOUT, alice.checkOut({pump})) << "what a text is answered doesn't count either";
}

TEST_F(Trouble, TheOptionsOutliveTheProject) {
    EXPECT_EQ(SCC_OK, alice.setOption(SCC_OPT_HASCANCELMODE, SCC_OPT_HCM_YES));
    EXPECT_EQ(SCC_OK, alice.close());
    EXPECT_EQ(SCC_OK, alice.open(url("station"), at("alice")));
    Host::cancelAfter(1);
    EXPECT_EQ(SCC_I_OPERATIONCANCELED, alice.checkOut({pump}));
    EXPECT_EQ("", lockOwner("station/Pump.oru"));
}

TEST_F(Trouble, ListsThatCantBeAreRefused) {
    char *nothing[] = {nullptr};
    EXPECT_EQ(SCC_E_FILESYNTAXERR, SCC_ENTRY(SccGet)(alice.context(), nullptr, 1, nothing, 0, nullptr));
    EXPECT_EQ(SCC_E_NONSPECIFICERROR, SCC_ENTRY(SccGet)(alice.context(), nullptr, 1, nullptr, 0, nullptr));
    EXPECT_EQ(SCC_E_NONSPECIFICERROR, SCC_ENTRY(SccGet)(alice.context(), nullptr, -1, nothing, 0, nullptr));
    EXPECT_EQ(SCC_E_FILESYNTAXERR, alice.get({"relative/Pump.oru"}));
    EXPECT_EQ(SCC_E_FILESYNTAXERR, alice.get({""}));
    EXPECT_EQ(SCC_E_FILESYNTAXERR, SCC_ENTRY(SccRename)(alice.context(), nullptr, nullptr, nullptr));
}

} // namespace
