#include "CM/CMSupport/core/CMORYHandler.h"

#include "tests/CM/CMSupport/core/shared/CoreFixture.h"

#include <stdexcept>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A project in the old layout: the host reads the project file in the units directory, the tool works on the one
/// beside it.
class Handler : public CoreFixture {
  protected:
    Handler() {
        setOldLayout();
        write(unitFile(), "of the model");
    }
    [[nodiscard]] fs::path unitFile() const { return unitsDirectory() / "Plant.ory"; }
    [[nodiscard]] fs::path toolFile() const { return scratch / "Plant.ory"; }

    /// Expects all calls of a handler to do nothing and to return that.
    void expectNothing(CMORYHandler &handler) {
        for (const auto operation : {CMORYHandler::ORYAdd, CMORYHandler::ORYCheckOut, CMORYHandler::ORYCheckIn,
                                     CMORYHandler::ORYFetch, CMORYHandler::ORYInspect, CMORYHandler::ORYNone}) {
            write(scratch / "Pump.ocl", "bystander");
            EXPECT_EQ(handler.startTranscation(operation), 0);
            EXPECT_EQ(handler.commit(), 0);
            EXPECT_EQ(handler.rollBack(), 0);
        }
        EXPECT_FALSE(fs::exists(toolFile()));
        EXPECT_EQ(read(unitFile()), "of the model");
        EXPECT_EQ(read(scratch / "Pump.ocl"), "bystander");
    }
};

TEST_F(Handler, DoesNothingForAnOrdinaryUnit) {
    CMORYHandler handler(&host.addUnit("Pump"));
    expectNothing(handler);
}

TEST_F(Handler, DoesNothingWithoutAUnit) {
    CMORYHandler handler;
    expectNothing(handler);
    EXPECT_FALSE(handler.checkPermissions());
}

TEST_F(Handler, DoesNothingOnTheProviderRoute) {
    setGeneral("UseSCCtool", "yes");
    host.setToolDefault("SCC", "SupportTreeRepository", "Yes"); // so that the layout is the old one there too
    ASSERT_TRUE(CMProperty::isPre40Compatible());
    CMORYHandler handler(&project());
    expectNothing(handler);
}

TEST_F(Handler, DoesNothingInThePresentLayout) {
    setToolProperty("SupportTreeRepository", "");
    CMORYHandler handler(&project());
    expectNothing(handler);
}

TEST_F(Handler, DoesNothingWithoutAProject) {
    CMORYHandler handler(&project());
    host.model.projectIsOpen = false;
    expectNothing(handler);
    host.model.projectIsOpen = true;
    host.model.activeProject = nullptr;
    expectNothing(handler);
}

TEST_F(Handler, TellsBothPlacesOfTheProjectFile) {
    CString unitPath = "x";
    CString toolPath = "x";
    CMORYHandler handler(&project());
    handler.getUnitPath(unitPath, toolPath);
    EXPECT_EQ(unitPath, unitFile().string());
    EXPECT_EQ(toolPath, toolFile().string());
    EXPECT_TRUE(handler.doPreTransValidation(unitPath, toolPath));
}

TEST_F(Handler, TellsOnePlaceOfAnotherFile) {
    CString unitPath;
    CString toolPath;
    CMORYHandler handler(&host.addUnit("Pump"));
    EXPECT_FALSE(handler.doPreTransValidation(unitPath, toolPath));
    EXPECT_EQ(unitPath, (unitsDirectory() / "Pump.ocl").string());
    EXPECT_EQ(toolPath, unitPath);
}

TEST_F(Handler, EmptiesThePlacesWithoutAUnitOrAProject) {
    CString unitPath = "x";
    CString toolPath = "x";
    CMORYHandler().getUnitPath(unitPath, toolPath);
    EXPECT_TRUE(unitPath.IsEmpty() && toolPath.IsEmpty());
    unitPath = toolPath = "x";
    host.model.projectIsOpen = false;
    CMORYHandler(&project()).getUnitPath(unitPath, toolPath);
    EXPECT_TRUE(unitPath.IsEmpty() && toolPath.IsEmpty());
}

TEST_F(Handler, KnowsTheOldExtensionInAnyCase) {
    project().extension = ".ORP1";
    CString unitPath;
    CString toolPath;
    EXPECT_TRUE(CMORYHandler(&project()).doPreTransValidation(unitPath, toolPath));
}

TEST_F(Handler, KnowsTheNewExtensionInAnyCase) {
    project().extension = ".ORY";
    CString unitPath;
    CString toolPath;
    EXPECT_TRUE(CMORYHandler(&project()).doPreTransValidation(unitPath, toolPath));
}

TEST_F(Handler, StartsNothingForTheStateAtRest) {
    CMORYHandler handler(&project());
    EXPECT_EQ(handler.startTranscation(CMORYHandler::ORYNone), 0);
    EXPECT_EQ(handler.commit(), 0);
}

TEST(HandlerWithoutARoute, WorksAsOnTheCommandRoute) {
    RecordingHost host;
    CMProperty::ResetIfActiveProjectChanged(); // forgets the project of the last test
    auto &project = host.addProject("Plant", "/models");
    host.addConfiguration("Release", host.addComponent("Main"));
    host.setTool("RCS");
    host.setToolDefault("RCS", "SupportTreeRepository", "Yes");
    host.setProperty(project, IPN::CM, IPN::General, "UseSCCtool", "No");
    ASSERT_EQ(CMProperty::getUseSCCtool(), 0); // which stays once the property is gone
    project.properties.clear();
    CString unitPath;
    CString toolPath;
    EXPECT_TRUE(CMORYHandler(&project).doPreTransValidation(unitPath, toolPath));
    EXPECT_EQ(toolPath, "/models/Plant.ory");
}

TEST_F(Handler, WorksOnAnArchiveItem) {
    CMArchiveItem item("Plant.ory", "1.1", CMArchiveItem::readOnly, "", "");
    CMORYHandler handler(&item);
    write(toolFile(), "of the tool");
    EXPECT_EQ(handler.startTranscation(CMORYHandler::ORYCheckOut), 1);
    EXPECT_EQ(handler.commit(), 1);
    EXPECT_EQ(read(unitFile()), "of the tool");
}

TEST_F(Handler, CopiesTheProjectFileForACheckInAndMovesItBack) {
    CMORYHandler handler(&project());
    EXPECT_EQ(handler.startTranscation(CMORYHandler::ORYCheckIn), 1);
    EXPECT_EQ(read(toolFile()), "of the model");
    write(toolFile(), "with a new header");
    EXPECT_EQ(handler.commit(), 1);
    EXPECT_FALSE(fs::exists(toolFile()));
    EXPECT_EQ(read(unitFile()), "with a new header");
    EXPECT_EQ(handler.commit(), 0) << "it is at rest";
}

TEST_F(Handler, CopiesOverAFileThatTheToolHas) {
    write(toolFile(), "old");
    CMORYHandler handler(&project());
    EXPECT_EQ(handler.startTranscation(CMORYHandler::ORYAdd), 1);
    EXPECT_EQ(read(toolFile()), "of the model");
}

TEST_F(Handler, StaysOpenIfTheCopyFails) {
    fs::remove(unitFile());
    CMORYHandler handler(&project());
    EXPECT_EQ(handler.startTranscation(CMORYHandler::ORYAdd), 0);
    EXPECT_EQ(handler.setUnit(nullptr), &project());
    EXPECT_EQ(handler.setUnit(nullptr), &project()) << "an operation is under way";
}

TEST_F(Handler, MakesNoCopyForACheckOutAndMovesTheToolsFileOverAReadOnlyOne) {
    fs::permissions(unitFile(), fs::perms::owner_read);
    CMORYHandler handler(&project());
    EXPECT_EQ(handler.startTranscation(CMORYHandler::ORYCheckOut), 1);
    EXPECT_FALSE(fs::exists(toolFile()));
    write(toolFile(), "checked out");
    EXPECT_EQ(handler.commit(), 1);
    EXPECT_FALSE(fs::exists(toolFile()));
    EXPECT_EQ(read(unitFile()), "checked out");
}

TEST_F(Handler, FailsToCommitIfTheToolLeftNoFileAndIsAtRestAllTheSame) {
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYFetch);
    EXPECT_EQ(handler.commit(), 0);
    EXPECT_THAT(host.callsOf("move file"), IsEmpty());
    EXPECT_EQ(handler.rollBack(), 0);
    EXPECT_EQ(read(unitFile()), "of the model");
}

TEST_F(Handler, GivesTheResultOfTheMoveAndIsAtRestAllTheSame) {
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYFetch);
    write(toolFile(), "of the tool");
    host.places.moveResult[toolFile().string()] = 0;
    EXPECT_EQ(handler.commit(), 0);
    EXPECT_EQ(handler.rollBack(), 0);
}

TEST_F(Handler, TakesTheReadOnlyStateOfTheUnitsFileAwayBeforeTheMoveThatReplacesIt) {
    fs::permissions(unitFile(), fs::perms::owner_read);
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYCheckOut);
    write(toolFile(), "checked out");
    host.places.moveResult[toolFile().string()] = 0;
    handler.commit();
    EXPECT_NE(fs::status(unitFile()).permissions() & fs::perms::owner_write, fs::perms::none);
    EXPECT_THAT(host.callsOf("move file"),
                ElementsAre("move file " + toolFile().string() + " to " + unitFile().string() + " flags=3"));
}

TEST_F(Handler, LeavesTheFileThatItMovesReadOnlyIfTheToolMadeItSo) {
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYCheckOut);
    write(toolFile(), "of the tool");
    fs::permissions(toolFile(), fs::perms::owner_read);
    EXPECT_EQ(handler.commit(), 1);
    EXPECT_EQ(fs::status(unitFile()).permissions(), fs::perms::owner_read);
}

TEST_F(Handler, TakesOnePlaceUnderTwoSpellingsForOne) {
    fs::rename(unitFile(), toolFile());
    fs::remove_all(unitsDirectory());
    fs::create_directory_symlink(scratch, unitsDirectory());
    CMORYHandler handler(&project());
    CString unitPath;
    CString toolPath;
    EXPECT_FALSE(handler.doPreTransValidation(unitPath, toolPath));
    EXPECT_NE(unitPath, toolPath);
    for (const auto operation : {CMORYHandler::ORYCheckIn, CMORYHandler::ORYCheckOut, CMORYHandler::ORYInspect}) {
        EXPECT_EQ(handler.startTranscation(operation), 0);
        EXPECT_EQ(handler.commit(), 0);
        EXPECT_EQ(handler.rollBack(), 0);
    }
    EXPECT_EQ(read(toolFile()), "of the model");
}

TEST_F(Handler, TouchesNothingIfThePlacesHaveBecomeOneByALink) {
    for (const bool commits : {true, false}) {
        CMORYHandler handler(&project());
        EXPECT_EQ(handler.startTranscation(CMORYHandler::ORYInspect), 1);
        write(toolFile(), "the only copy");
        fs::remove_all(unitsDirectory());
        fs::create_directory_symlink(scratch, unitsDirectory());
        EXPECT_EQ(commits ? handler.commit() : handler.rollBack(), 1);
        EXPECT_EQ(read(toolFile()), "the only copy");
        fs::remove(unitsDirectory());
        fs::create_directory(unitsDirectory());
    }
}

TEST_F(Handler, MovesNoLinkOverTheFileThatItLeadsTo) {
    fs::create_symlink(unitFile(), toolFile());
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYCheckOut);
    write(toolFile(), "written through the link");
    EXPECT_EQ(handler.commit(), 1);
    EXPECT_EQ(read(unitFile()), "written through the link");
    EXPECT_THAT(host.callsOf("move file"), IsEmpty());
}

TEST_F(Handler, KeepsTheOnlyCopyWhereTheUnitsFileIsALinkToTheToolsFile) {
    fs::remove(unitFile());
    fs::create_symlink(toolFile(), unitFile());
    for (const auto operation : {CMORYHandler::ORYAdd, CMORYHandler::ORYCheckOut, CMORYHandler::ORYCheckIn,
                                 CMORYHandler::ORYFetch, CMORYHandler::ORYInspect}) {
        for (const bool commits : {true, false}) {
            write(toolFile(), "the only copy");
            fs::permissions(toolFile(), fs::perms::owner_read);
            CMORYHandler handler(&project());
            EXPECT_EQ(handler.startTranscation(operation), 1) << operation;
            EXPECT_EQ(commits ? handler.commit() : handler.rollBack(), 1) << operation;
            ASSERT_EQ(read(unitFile()), "the only copy") << operation;
            EXPECT_TRUE(fs::is_symlink(unitFile()));
            EXPECT_EQ(fs::status(unitFile()).permissions(), fs::perms::owner_read);
            fs::permissions(toolFile(), fs::perms::owner_all);
        }
    }
}

TEST_F(Handler, KeepsTheLinkAndTheModeWhereTheToolsFileIsALinkToTheUnitsFile) {
    fs::create_symlink(unitFile(), toolFile());
    fs::permissions(unitFile(), fs::perms::owner_read);
    for (const auto operation : {CMORYHandler::ORYAdd, CMORYHandler::ORYCheckOut, CMORYHandler::ORYCheckIn,
                                 CMORYHandler::ORYFetch, CMORYHandler::ORYInspect}) {
        for (const bool commits : {true, false}) {
            CMORYHandler handler(&project());
            EXPECT_EQ(handler.startTranscation(operation), 1) << operation;
            EXPECT_EQ(commits ? handler.commit() : handler.rollBack(), 1) << operation;
            EXPECT_TRUE(fs::is_symlink(toolFile())) << operation;
            EXPECT_EQ(fs::status(unitFile()).permissions(), fs::perms::owner_read) << operation;
            ASSERT_EQ(read(unitFile()), "of the model");
        }
    }
}

TEST_F(Handler, TakesTheToolsNewFileWhereTheToolHasReplacedItsLink) {
    fs::create_symlink(unitFile(), toolFile());
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYCheckOut);
    fs::remove(toolFile());
    write(toolFile(), "checked out");
    EXPECT_EQ(handler.commit(), 1);
    EXPECT_EQ(read(unitFile()), "checked out");
    EXPECT_FALSE(fs::exists(toolFile()));
}

TEST_F(Handler, LetsNothingThatTheHostThrowsOutOfItsEnd) {
    {
        CMORYHandler handler(&project());
        handler.startTranscation(CMORYHandler::ORYCheckIn);
        host.places.onDelete = [] { throw std::runtime_error("no more memory"); };
    }
    EXPECT_THAT(host.callsOf("delete file"), testing::SizeIs(1));
    EXPECT_TRUE(fs::exists(toolFile()));
}

TEST(HandlerNumbers, OfOperationsAreFixed) {
    EXPECT_EQ(CMORYHandler::ORYAdd, 0);
    EXPECT_EQ(CMORYHandler::ORYCheckOut, 1);
    EXPECT_EQ(CMORYHandler::ORYCheckIn, 2);
    EXPECT_EQ(CMORYHandler::ORYFetch, 4);
    EXPECT_EQ(CMORYHandler::ORYInspect, 5);
    EXPECT_EQ(CMORYHandler::ORYNone, 6);
}

TEST_F(Handler, RemovesTheToolsCopyAfterAnInspection) {
    CMORYHandler handler(&project());
    EXPECT_EQ(handler.startTranscation(CMORYHandler::ORYInspect), 1);
    write(toolFile(), "of the tool");
    fs::permissions(toolFile(), fs::perms::owner_read);
    EXPECT_EQ(handler.commit(), 1);
    EXPECT_FALSE(fs::exists(toolFile()));
    EXPECT_EQ(read(unitFile()), "of the model");
}

TEST_F(Handler, TakesTheReadOnlyStateOfTheToolsCopyAwayBeforeItIsDeleted) {
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYInspect);
    write(toolFile(), "of the tool");
    fs::permissions(toolFile(), fs::perms::owner_read);
    host.places.deleteResult[toolFile().string()] = 0;
    bool isWritable = false;
    host.places.onDelete = [&] {
        isWritable = (fs::status(toolFile()).permissions() & fs::perms::owner_write) != fs::perms::none;
    };
    EXPECT_EQ(handler.commit(), 0) << "what the deletion answers";
    EXPECT_TRUE(isWritable);
    EXPECT_THAT(host.callsOf("delete file"), ElementsAre("delete file " + toolFile().string() + " flag=1"));
}

TEST_F(Handler, CommitsAnInspectionThatLeftNoFile) {
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYInspect);
    EXPECT_EQ(handler.commit(), 1);
}

TEST_F(Handler, CommitsWithoutTouchingAFileIfThePlacesHaveBecomeOne) {
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYFetch);
    setToolProperty("SupportTreeRepository", "");
    EXPECT_EQ(handler.commit(), 1);
    EXPECT_EQ(read(unitFile()), "of the model");
}

TEST_F(Handler, NeedsAWritableProjectDirectoryToCheckIn) {
    host.places.writable[scratch.string()] = false;
    CMORYHandler handler(&project());
    EXPECT_EQ(handler.startTranscation(CMORYHandler::ORYCheckIn), 0);
    EXPECT_FALSE(fs::exists(toolFile()));
    EXPECT_EQ(handler.setUnit(nullptr), &project());
    EXPECT_EQ(handler.setUnit(nullptr), nullptr) << "it is at rest";
    EXPECT_EQ(handler.commit(), 0);
}

TEST_F(Handler, NeedsAWritableParentOfTheProjectDirectoryForTheProjectFileOnly) {
    host.places.writable[(scratch / "..").string()] = false;
    EXPECT_FALSE(CMORYHandler(&project()).checkPermissions());
    EXPECT_TRUE(CMORYHandler(&host.addUnit("Pump")).checkPermissions());
}

TEST_F(Handler, HasNoPermissionsWithoutAnOpenProject) {
    const CMORYHandler handler(&project());
    EXPECT_TRUE(handler.checkPermissions());
    host.model.projectIsOpen = false;
    EXPECT_FALSE(handler.checkPermissions());
    host.model.projectIsOpen = true;
    host.model.activeProject = nullptr;
    EXPECT_FALSE(handler.checkPermissions());
}

TEST_F(Handler, AsksForNoPermissionToCheckOut) {
    host.places.writable[scratch.string()] = false;
    CMORYHandler handler(&project());
    EXPECT_EQ(handler.startTranscation(CMORYHandler::ORYCheckOut), 1);
}

TEST_F(Handler, RollsBackByRemovingTheCopy) {
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYCheckIn);
    EXPECT_EQ(handler.rollBack(), 1);
    EXPECT_THAT(host.callsOf("delete file"), ElementsAre("delete file " + toolFile().string() + " flag=1"));
    EXPECT_FALSE(fs::exists(toolFile()));
    EXPECT_EQ(read(unitFile()), "of the model");
    EXPECT_EQ(handler.rollBack(), 0);
}

TEST_F(Handler, RollsBackWithoutACopy) {
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYCheckOut);
    EXPECT_EQ(handler.rollBack(), 1);
    EXPECT_EQ(handler.rollBack(), 0);
}

TEST_F(Handler, StaysOpenIfTheCopyCannotBeRemoved) {
    CMORYHandler handler(&project());
    handler.startTranscation(CMORYHandler::ORYCheckIn);
    host.places.deleteResult[toolFile().string()] = 0;
    EXPECT_EQ(handler.rollBack(), 0);
    host.places.deleteResult.clear();
    EXPECT_EQ(handler.rollBack(), 1) << "the operation was still under way";
}

TEST_F(Handler, RollsBackAtItsEnd) {
    {
        CMORYHandler handler(&project());
        handler.startTranscation(CMORYHandler::ORYCheckIn);
        EXPECT_TRUE(fs::exists(toolFile()));
    }
    EXPECT_FALSE(fs::exists(toolFile()));
    EXPECT_EQ(read(unitFile()), "of the model");
}

TEST_F(Handler, LeavesACommittedFileAloneAtItsEnd) {
    {
        CMORYHandler handler(&project());
        handler.startTranscation(CMORYHandler::ORYCheckIn);
        handler.commit();
        write(toolFile(), "somebody else's");
    }
    EXPECT_EQ(read(toolFile()), "somebody else's");
}

TEST_F(Handler, ChangesWhatItIsAboutOnlyAtRest) {
    auto &pump = host.addUnit("Pump");
    CMArchiveItem item("Pump.ocl", "1.1", CMArchiveItem::readOnly, "", "");
    CMORYHandler handler;
    EXPECT_EQ(handler.setUnit(&project()), nullptr);
    EXPECT_EQ(handler.setUnit(&project()), &project());
    handler.startTranscation(CMORYHandler::ORYCheckOut);
    EXPECT_EQ(handler.setUnit(&pump), &project());
    EXPECT_EQ(handler.setUnit(&pump), &project());
    EXPECT_EQ(handler.setArchiveItem(&item), nullptr);
    handler.rollBack();
    EXPECT_EQ(handler.setArchiveItem(&item), nullptr);
    EXPECT_EQ(handler.setArchiveItem(nullptr), &item);
}

} // namespace
