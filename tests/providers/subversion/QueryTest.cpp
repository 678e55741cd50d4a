// Status, lists, history, properties and comparison.
#include "tests/providers/subversion/Project.h"

#include <filesystem>

using namespace provider_test;

namespace {

class Status : public ProjectTest {};
class List : public ProjectTest {};
class Inspection : public ProjectTest {};

constexpr long out = SCC_STATUS_OUTEXCLUSIVE;

TEST_F(Status, OfManyFilesIsInTheirOrder) {
    EXPECT_EQ(SCC_OK, bob.checkOut({bobsValve}));
    const std::string stray = write("alice/stray.txt", "x");
    std::vector<long> status;
    EXPECT_EQ(SCC_OK,
              alice.query({valve, stray, pump, at("alice"), valve, at("elsewhere/x"), at("alice/none")}, status));
    const long locked = SCC_STATUS_CONTROLLED | SCC_STATUS_OUTOTHER | out;
    EXPECT_EQ((std::vector<long>{locked, 0, SCC_STATUS_CONTROLLED, SCC_STATUS_CONTROLLED, locked, 0, 0}), status);
}

TEST_F(Status, OfANameThatCantBeIsInvalidAndLeavesTheOthers) {
    std::vector<long> status;
    EXPECT_EQ(SCC_OK, alice.query({at("alice/b\xFCgel.oru"), pump, "relative"}, status));
    EXPECT_EQ((std::vector<long>{SCC_STATUS_INVALID, SCC_STATUS_CONTROLLED, SCC_STATUS_INVALID}), status);
    EXPECT_TRUE(said("b\\xfcgel.oru")) << Host::text();
}

TEST_F(Status, OfManyFilesHasTheTraitsThatOneFileHas) {
    Names files;
    for (int i = 0; i < 20; ++i) {
        files.push_back(write("alice/F" + std::to_string(i) + ".dat", "x"));
    }
    EXPECT_EQ(SCC_OK, alice.add(files, "x", std::vector<long>(files.size(), SCC_FILETYPE_BINARY)));
    std::vector<long> status;
    EXPECT_EQ(SCC_OK, alice.query(files, status));
    EXPECT_EQ(std::vector<long>(files.size(), SCC_STATUS_CONTROLLED | SCC_STATUS_NOMERGE), status);
    EXPECT_EQ(status.front(), alice.status(files.front()));
    Host::Listing listing;
    EXPECT_EQ(SCC_OK, alice.list(SCC_COMMAND_GET, {}, listing));
    EXPECT_EQ(status.front(), listing.added[files.front()]);
}

TEST_F(Status, ShowsAChangeAndANewerVersion) {
    bobChanges("Pump.oru", "pump 2\n");
    EXPECT_EQ(SCC_STATUS_CONTROLLED | SCC_STATUS_OUTOFDATE, alice.status(pump));
    write("alice/Pump.oru", "my pump\n");
    EXPECT_EQ(SCC_STATUS_CONTROLLED | SCC_STATUS_OUTOFDATE | SCC_STATUS_MODIFIED, alice.status(pump));
}

TEST_F(Status, ShowsAConflictAsMerged) {
    write("alice/Pump.oru", "my pump\n");
    bobChanges("Pump.oru", "pump 2\n");
    static_cast<void>(svn("update -q --accept postpone " + inQuotes(at("alice"))));
    EXPECT_EQ(SCC_STATUS_MERGED, alice.status(pump) & SCC_STATUS_MERGED);
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    EXPECT_EQ(SCC_STATUS_CONTROLLED | SCC_STATUS_CHECKEDOUT | SCC_STATUS_OUTBYUSER | out, alice.status(pump));
}

TEST_F(Status, OfAFileThatIsOnlyScheduledIsNotControlled) {
    const std::string tank = write("alice/Tank.oru", "x");
    EXPECT_EQ("", svn("add -q " + inQuotes(tank)));
    EXPECT_EQ(SCC_STATUS_NOTCONTROLLED, alice.status(tank));
    EXPECT_EQ(SCC_OK, alice.add({tank})) << Host::text();
    EXPECT_EQ("*", svn("propget svn:needs-lock " + inQuotes(tank)));
    EXPECT_EQ(SCC_STATUS_CONTROLLED, alice.status(tank));
}

TEST_F(Status, OfAMissingFileIsThatOfTheRepository) {
    std::filesystem::remove(pump);
    EXPECT_EQ(SCC_STATUS_CONTROLLED, alice.status(pump));
}

TEST_F(Status, ShowsFilesOfOtherDirectoriesAsSharedAndPinned) {
    EXPECT_EQ("", svn("mkdir -q -m x " + url("other")));
    EXPECT_EQ("",
              svn("propset -q svn:externals '^/station/Pump.oru Loose.oru\n-r2 ^/station/Valve.oru Fixed.oru' " +
                  inQuotes(at("alice"))));
    EXPECT_EQ("", svn("update -q " + inQuotes(at("alice"))));
    std::vector<long> status;
    EXPECT_EQ(SCC_OK, alice.query({at("alice/Loose.oru"), at("alice/Fixed.oru"), pump}, status));
    EXPECT_EQ(
        (std::vector<long>{SCC_STATUS_CONTROLLED | SCC_STATUS_SHARED,
                           SCC_STATUS_CONTROLLED | SCC_STATUS_SHARED | SCC_STATUS_PINNED, SCC_STATUS_CONTROLLED}),
        status);
}

TEST_F(Status, InTheDirectoryOfALinkIsThatOfItsFiles) {
    std::filesystem::create_directory_symlink(at("alice"), at("link"));
    Host other("alice");
    EXPECT_EQ(SCC_OK, other.open(url("station"), at("link"))) << Host::text();
    EXPECT_EQ(SCC_STATUS_CONTROLLED, other.status(at("link/Pump.oru")));
    EXPECT_EQ(SCC_OK, other.checkOut({at("link/Pump.oru")})) << Host::text();
    EXPECT_EQ("alice", lockOwner("station/Pump.oru"));
}

TEST_F(List, OfTheProjectHasEveryControlledFile) {
    EXPECT_EQ(SCC_OK, bob.add({write("bob/parts/Seal.oru", "seal\n")}));
    EXPECT_EQ(SCC_OK, bob.remove({bobsValve}));
    write("alice/stray.txt", "x");
    Host::Listing listing;
    EXPECT_EQ(SCC_OK, alice.list(SCC_COMMAND_GET, {}, listing));
    EXPECT_EQ(
        (std::map<std::string, long>{{pump, SCC_STATUS_CONTROLLED},
                                     {at("alice/parts/Seal.oru"), SCC_STATUS_CONTROLLED | SCC_STATUS_OUTOFDATE}}),
        listing.added);
    EXPECT_EQ(2, listing.calls);
}

TEST_F(List, OfDirectoriesNamesEachFileOnce) {
    EXPECT_EQ(SCC_OK,
              alice.add({write("alice/parts/Seal.oru", "seal\n"), write("alice/parts.x/Ring.oru", "r\n")}));
    Host::Listing listing;
    std::vector<long> status;
    EXPECT_EQ(SCC_OK,
              alice.list(SCC_COMMAND_GET, {at("alice/parts"), at("alice"), at("alice/parts.x"), at("elsewhere")},
                         listing, SCC_PL_DIR, &status));
    EXPECT_EQ(4U, listing.added.size());
    EXPECT_EQ(4, listing.calls);
    EXPECT_EQ((std::vector<long>{1, 1, 1, 0}), status);
}

TEST_F(List, ForACommandHasTheFilesThatItAppliesTo) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    const std::string stray = write("alice/stray.txt", "x");
    const auto names = [&](SCCCOMMAND command) {
        Host::Listing listing;
        EXPECT_EQ(SCC_OK, alice.list(command, {}, listing));
        Names result;
        for (const auto &[name, status] : listing.added) {
            result.push_back(name);
        }
        return result;
    };
    EXPECT_EQ(Names{pump}, names(SCC_COMMAND_CHECKIN));
    EXPECT_EQ(Names{pump}, names(SCC_COMMAND_UNCHECKOUT));
    EXPECT_EQ(Names{valve}, names(SCC_COMMAND_CHECKOUT));
    EXPECT_EQ(Names{stray}, names(SCC_COMMAND_ADD));
    EXPECT_EQ((Names{pump, valve}), names(SCC_COMMAND_HISTORY));
}

TEST_F(List, DropsGivenFilesThatTheCommandDoesNotApplyTo) {
    EXPECT_EQ(SCC_OK, alice.checkOut({pump}));
    Host::Listing listing;
    std::vector<long> status;
    EXPECT_EQ(SCC_OK, alice.list(SCC_COMMAND_CHECKIN, {pump, valve}, listing, 0, &status));
    EXPECT_EQ((std::map<std::string, long>{{valve, SCC_STATUS_CONTROLLED}}), listing.dropped);
    EXPECT_EQ(SCC_STATUS_CHECKEDOUT, status[0] & SCC_STATUS_CHECKEDOUT);
    EXPECT_EQ(SCC_STATUS_CONTROLLED, status[1]);
}

TEST_F(List, StopsWhenTheCallbackSaysSo) {
    Host::Listing listing;
    listing.stopAfter = 1;
    EXPECT_EQ(SCC_OK, alice.list(SCC_COMMAND_GET, {}, listing));
    EXPECT_EQ(1, listing.calls);
}

TEST_F(List, WithoutACallbackFails) {
    EXPECT_EQ(SCC_E_NONSPECIFICERROR, SCC_ENTRY(SccPopulateList)(alice.context(), SCC_COMMAND_GET, 0, nullptr,
                                                                 nullptr, nullptr, nullptr, 0));
}

TEST_F(Inspection, HistoryShowsTheRevisionsNewestFirst) {
    EXPECT_EQ(SCC_OK, bob.checkOut({bobsPump}));
    write("bob/Pump.oru", "pump 2\n");
    EXPECT_EQ(SCC_OK, bob.checkIn({bobsPump}, "Larger impeller\nand a second line"));
    Host::forgetText();
    EXPECT_EQ(SCC_OK, alice.history({pump}));
    const std::string day = shell("date +%Y-%m-%d");
    const std::string text = Host::text();
    EXPECT_EQ(0U, text.find(pump + "\nr3  " + day)) << text;
    EXPECT_NE(std::string::npos, text.find("  bob\n    Larger impeller\n    and a second line\nr2  " + day))
        << text;
    EXPECT_NE(std::string::npos, text.find("  alice\n    new\n")) << text;
    EXPECT_EQ(SCC_E_FILENOTCONTROLLED, alice.history({write("alice/stray.txt", "x")}));
}

TEST_F(Inspection, HistoryOfAFileThatIsNotHereYetComesFromTheRepository) {
    EXPECT_EQ(SCC_OK, bob.add({write("bob/Pumpe Ü@1.oru", "tank\n")}, "A tank"));
    Host::forgetText();
    EXPECT_EQ(SCC_OK, alice.history({at("alice/Pumpe Ü@1.oru")})) << Host::text();
    EXPECT_TRUE(said("  bob\n    A tank")) << Host::text();
}

TEST_F(Inspection, PropertiesShowAddressChangeLockAndProperties) {
    EXPECT_EQ(SCC_OK, bob.checkOut({bobsPump}, "mine"));
    EXPECT_EQ(SCC_OK, alice.properties(pump)) << Host::text();
    for (const std::string &part :
         {"Address: " + url("station/Pump.oru"), std::string("Revision: 2"), std::string("Last change: r2, "),
          std::string("State: checked out by bob since "), std::string("svn:needs-lock: *"),
          std::string("svn:keywords: Author Date Id Revision")}) {
        EXPECT_TRUE(said(part)) << part << "\n" << Host::text();
    }
    EXPECT_EQ(SCC_E_FILENOTCONTROLLED, alice.properties(write("alice/stray.txt", "x")));
}

TEST_F(Inspection, ComparingAnswersWhetherTheFileDiffersFromTheNewestVersion) {
    EXPECT_EQ(SCC_OK, alice.diff(pump));
    bobChanges("Pump.oru", "pump 2\n");
    EXPECT_EQ(SCC_I_FILEDIFFERS, alice.diff(pump));
    write("alice/Pump.oru", "pump 2\n");
    EXPECT_EQ(SCC_OK, alice.diff(pump)) << "the same change";
    write("alice/Valve.oru", "my valve\n");
    EXPECT_EQ(SCC_I_FILEDIFFERS, alice.diff(valve));
    std::filesystem::remove(valve);
    EXPECT_EQ(SCC_E_FILENOTEXIST, alice.diff(valve));
    EXPECT_EQ(SCC_E_FILENOTCONTROLLED, alice.diff(write("alice/stray.txt", "x")));
}

} // namespace
