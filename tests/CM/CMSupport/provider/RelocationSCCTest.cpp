// Tests moving, renaming and deleting through the provider.
#include "CM/CMSupport/provider/DeleteMemberSCC.h"
#include "CM/CMSupport/provider/MoveMemberSCC.h"
#include "CM/CMSupport/provider/RenameMemberSCC.h"
#include "CM/CMSupport/provider/SCCFacade.h"
#include "tests/CM/CMSupport/provider/OperationFixture.h"

using resources::Text;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

Effects renamed(const std::string &firstLine, const std::string &from, const std::string &to) {
    return {"log: " + firstLine, "provider SccRename context=1 window=null from=" + from + " to=" + to,
            "log: Returned from SccRename on Scc dll", "log: Scc dll returned 0 from SccRename"};
}

class RelocationFixture : public OperationFixture {
  protected:
    RelocationFixture() {
        tanks.partsDirectory = "/m/Tanks";
        pipes.partsDirectory = "/m/Pipes";
    }
    recording::Subsystem &tanks = host.addSubsystem("Tanks");
    recording::Subsystem &pipes = host.addSubsystem("Pipes");
    recording::Class &pump = host.addUnit("Pump");
    recording::Class &valve = host.addUnit("Valve");
    CMUnitList units;
};

// --- Moving.

class MoveByProvider : public RelocationFixture {
  protected:
    int move(CMUnitList given) {
        units = std::move(given);
        return SCCFacade::SCCMoveMember(units, args, diags);
    }
    static Effects moved(const std::string &from, const std::string &to) {
        return renamed("Invoking SccRename on Scc dll for the following file:\n\t" + from + "\n", from, to);
    }
};

TEST_F(MoveByProvider, RenamesTheFileFromOneOwnersDirectoryToTheOthers) {
    EXPECT_EQ(move(list(&pump, &tanks, &pipes)), 1);
    EXPECT_THAT(effects(), ElementsAreArray(joined({logged("Getting SCC Context to perform move"),
                                                    moved("/m/Tanks/Pump.ocl", "/m/Pipes/Pump.ocl")})));
}

TEST_F(MoveByProvider, OfNothingGivesZero) { EXPECT_EQ(move(CMUnitList()), 0); }

TEST_F(MoveByProvider, MovesTheDirectoryOfASubsystem) {
    auto &inner = host.addSubsystem("Inner");
    move(list(&inner, &tanks, &pipes));
    inner.persistAs = "InnerDir";
    move(list(&inner, &tanks, &pipes));
    EXPECT_THAT(callsOn("SccRename"),
                ElementsAre("context=1 window=null from=/m/Tanks/Inner.osb to=/m/Pipes/Inner.osb",
                            "context=1 window=null from=/m/Tanks/InnerDir to=/m/Pipes/InnerDir"));
}

TEST_F(MoveByProvider, WithinOneDirectoryOpensNoContextAndCallsNothing) {
    pipes.partsDirectory = "/m/Tanks";
    disconnect();
    const support::OutcomeRecorder seen;
    EXPECT_EQ(move(list(&pump, &tanks, &pipes)), 1);
    EXPECT_THAT(effects(), IsEmpty());
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl nothingToDo"));
}

TEST_F(MoveByProvider, PassesOverIncompleteTriplesAndElementsWithoutAFile) {
    pump.saveUnit = false;
    auto &notes = host.addEmbeddedFile("Notes.doc");
    notes.saveUnit = false;
    EXPECT_EQ(move(list(static_cast<IUnit *>(nullptr), &tanks, &pipes, &valve, static_cast<IUnit *>(nullptr),
                        &pipes, &pump, &tanks, &pipes, &notes, &tanks, &pipes, &valve, &tanks)),
              1);
    EXPECT_THAT(callsOn("SccRename"), ElementsAre(HasSubstr("/m/Tanks/Notes.doc")));
}

TEST_F(MoveByProvider, AFailureGoesToTheOutputWindowAndEndsTheOperation) {
    provider->answer("SccRename", SCC_E_OPNOTPERFORMED);
    const support::OutcomeRecorder seen;
    EXPECT_EQ(move(list(&pump, &tanks, &pipes, &valve, &tanks, &pipes)), 0);
    EXPECT_THAT(callsOn("SccRename"), SizeIs(1));
    EXPECT_EQ(host.window.text(), "\n" + errorText(Text::resultNotPerformed) + "\n");
    EXPECT_THAT(shownTexts(), IsEmpty());
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl failed"));
}

TEST_F(MoveByProvider, WithoutAContextGivesZero) {
    disconnect();
    EXPECT_EQ(move(list(&pump, &tanks, &pipes, &valve, &tanks, &pipes)), 0);
    EXPECT_THAT(provider->calls, IsEmpty());
    EXPECT_THAT(shownTexts(), SizeIs(1));
}

class MovePackageByProvider : public MoveByProvider {
  protected:
    int movePackage(IUnit *package, CMUnitList given, const CString &to = "/new", bool hybrid = true) {
        units = std::move(given);
        return MoveMemberSCC().movePackageContent(package, units, "/old", to, args, diags, hybrid);
    }
};

TEST_F(MovePackageByProvider, MovesTheUnitsWithoutALogLineAboutTheContext) {
    tanks.persistAs = "T";
    pipes.persistAs = "P";
    EXPECT_EQ(movePackage(&tanks, list(&tanks, static_cast<IUnit *>(nullptr), &pipes, &pump)), 1);
    EXPECT_THAT(effects(),
                ElementsAreArray(joined({moved("/old/Tanks.osb", "/new/Tanks.osb"), moved("/old/P", "/new/P"),
                                         moved("/old/Pump.ocl", "/new/Pump.ocl")})));
    EXPECT_TRUE(diags.IsEmpty());
}

TEST_F(MovePackageByProvider, WithEqualDirectoriesCallsNothing) {
    EXPECT_EQ(movePackage(&tanks, list(&pump), "/old"), 1);
    EXPECT_THAT(provider->calls, IsEmpty());
}

TEST_F(MovePackageByProvider, WithoutAToolGivesZeroAndADiagnostic) {
    host.setTool("None");
    const support::OutcomeRecorder seen;
    EXPECT_EQ(movePackage(&tanks, list(&pump), "/new", false), 0);
    ASSERT_EQ(diags.GetCount(), 1);
    EXPECT_EQ(diags.GetHead().getResult(), 0);
    EXPECT_THAT(provider->calls, IsEmpty());
    EXPECT_THAT(seen.lines(), ElementsAre("noTool"));
}

TEST_F(MovePackageByProvider, AFailureEndsTheOperation) {
    provider->answer("SccRename", SCC_E_OPNOTPERFORMED);
    EXPECT_EQ(movePackage(&tanks, list(&pump, &valve)), 0);
    EXPECT_THAT(callsOn("SccRename"), SizeIs(1));
    EXPECT_EQ(host.window.text(), "\n" + errorText(Text::resultNotPerformed) + "\n");
}

// --- Renaming.

class RenameByProvider : public RelocationFixture {
  protected:
    int rename(IUnit *unit, const CString &from, const CString &to) {
        return SCCFacade::SCCRenameMember(unit, from, to, diags);
    }
};

TEST_F(RenameByProvider, OfAPlainUnitIsOneCallAlsoAcrossDirectories) {
    EXPECT_EQ(rename(&pump, "/m/Old.ocl", "/n/New.ocl"), 1);
    EXPECT_THAT(effects(),
                ElementsAreArray(joined({logged("Getting SCC Context to perform undo check out"),
                                         renamed("Invoking SccRename for /m/Old.ocl", "/m/Old.ocl", "/n/New.ocl"),
                                         {"ask 64: " + success(Text::providerHasRenamed)}})));
}

TEST_F(RenameByProvider, LogsItsContextAsThatOfAnUndo) {
    rename(&pump, "/m/Old.ocl", "/m/New.ocl");
    EXPECT_EQ(effects().front(), "log: Getting SCC Context to perform undo check out");
}

TEST_F(RenameByProvider, OfNothingOrFromOrToNothingGivesZeroAndOfEqualPathsOne) {
    EXPECT_EQ(rename(nullptr, "/m/Old.ocl", "/m/New.ocl"), 0);
    EXPECT_EQ(rename(&pump, "", "/m/New.ocl"), 0);
    EXPECT_EQ(rename(&pump, "/m/Old.ocl", ""), 0);
    EXPECT_EQ(rename(&pump, "/m/Old.ocl", "/m/Old.ocl"), 1);
    EXPECT_EQ(RenameMemberSCC()(units, args, diags, false), 0);
    EXPECT_THAT(effects(), IsEmpty());
}

TEST_F(RenameByProvider, OfADirectoryRenamesTheDirectoryThenTheFileInIt) {
    tanks.persistAs = "Old";
    EXPECT_EQ(rename(&tanks, "/m/Old/Old.osb", "/m/New/New.osb"), 1);
    EXPECT_THAT(effects(), ElementsAreArray(joined({logged("Getting SCC Context to perform undo check out"),
                                                    renamed("Invoking SccRename for /m/Old", "/m/Old", "/m/New"),
                                                    renamed("Invoking SccRename for /m/New/Old.osb",
                                                            "/m/New/Old.osb", "/m/New/New.osb"),
                                                    {"ask 64: " + success(Text::providerHasRenamed)}})));
}

TEST_F(RenameByProvider, OfADirectoryMakesTheSecondCallAlsoForAnEqualName) {
    tanks.persistAs = "Old";
    rename(&tanks, "/m/Old/T.osb", "/m/New/T.osb");
    EXPECT_THAT(callsOn("SccRename"), ElementsAre("context=1 window=null from=/m/Old to=/m/New",
                                                  "context=1 window=null from=/m/New/T.osb to=/m/New/T.osb"));
}

TEST_F(RenameByProvider, OfADirectoryTriesNoSecondStepAfterAFailure) {
    tanks.persistAs = "Old";
    provider->answer("SccRename", SCC_E_OPNOTPERFORMED);
    const support::OutcomeRecorder seen;
    EXPECT_EQ(rename(&tanks, "/m/Old/Old.osb", "/m/New/New.osb"), 0);
    EXPECT_THAT(callsOn("SccRename"), SizeIs(1));
    EXPECT_EQ(host.window.text(), "\n" + errorText(Text::resultNotPerformed) + "\n");
    EXPECT_THAT(shownTexts(), IsEmpty());
    EXPECT_THAT(seen.lines(), ElementsAre("Tanks.osb failed"));
}

TEST_F(RenameByProvider, WithoutAContextGivesZero) {
    disconnect();
    EXPECT_EQ(rename(&pump, "/m/Old.ocl", "/m/New.ocl"), 0);
    EXPECT_THAT(provider->calls, IsEmpty());
}

// --- Deleting.

class DeleteByProvider : public RelocationFixture {
  protected:
    int remove(CMUnitList given) {
        units = std::move(given);
        return SCCFacade::SCCDeleteMember(units, args, diags);
    }
};

TEST_F(DeleteByProvider, AsksForOptionsAndCallsForEachUnit) {
    EXPECT_EQ(remove(list(&pump, static_cast<IUnit *>(nullptr))), 1);
    EXPECT_THAT(effects(), ElementsAreArray(joined(
                               {logged("Getting SCC Context to perform delete"),
                                {"provider SccGetCommandOptions context=1 window=null command=5 options=null"},
                                called("SccRemove", {path(pump)}, " comment= flags=0 options=null")})));
}

TEST_F(DeleteByProvider, AsksForOptionsForEveryUnitAndIgnoresCancelling) {
    traceOn();
    provider->options = this;
    provider->answer("SccGetCommandOptions", SCC_I_ADV_SUPPORT);
    remove(list(&pump, &valve));
    EXPECT_THAT(callsOn("SccGetCommandOptions"), SizeIs(4));
    EXPECT_THAT(callsOn("SccRemove"), ElementsAre(HasSubstr("options=given"), HasSubstr("options=given")));
    EXPECT_EQ(shown.str(), "+++ Before query for GET advanced options+++ Before query for GET advanced options");
}

TEST_F(DeleteByProvider, GivesTheDirectoryOfASubsystemToTesseraOnly) {
    tanks.persistAs = "T";
    tanks.directory = "/m/T";
    CMProperty::setSCCToolName("tESSERA");
    remove(list(&tanks, &pump));
    CMProperty::setSCCToolName("Basalt");
    remove(list(&tanks));
    EXPECT_THAT(callsOn("SccRemove"), ElementsAre(HasSubstr(" files=/m/T "), HasSubstr(" files=" + path(pump)),
                                                  HasSubstr(" files=" + path(tanks))));
}

TEST_F(DeleteByProvider, TakesAnEmbeddedFileToo) {
    auto &notes = host.addEmbeddedFile("Notes.doc");
    remove(list(&notes));
    EXPECT_THAT(callsOn("SccRemove"), ElementsAre(HasSubstr(" files=" + path(notes))));
}

TEST_F(DeleteByProvider, AFailureIsShownAndTheNextUnitsFollow) {
    provider->answer("SccRemove", SCC_E_FILEISCHECKEDOUT);
    const support::OutcomeRecorder seen;
    EXPECT_EQ(remove(list(&pump, &valve)), 1);
    EXPECT_THAT(shownTexts(),
                ElementsAre(errorText(Text::resultFileCheckedOut), errorText(Text::resultFileCheckedOut)));
    EXPECT_THAT(seen.lines(), ElementsAre("Pump.ocl failed", "Valve.ocl failed"));
}

TEST_F(DeleteByProvider, WithoutAContextGivesZeroAtOnce) {
    disconnect();
    EXPECT_EQ(remove(list(&pump, &valve)), 0);
    EXPECT_THAT(shownTexts(), SizeIs(1));
    EXPECT_EQ(DeleteMemberSCC().DeleteDirectory("/m/T", args, diags), 0);
    EXPECT_THAT(provider->calls, IsEmpty());
}

TEST_F(DeleteByProvider, RemovesADirectoryWithoutAskingForOptions) {
    provider->answer("SccRemove", SCC_E_FILEISCHECKEDOUT);
    const support::OutcomeRecorder seen;
    EXPECT_EQ(DeleteMemberSCC().DeleteDirectory("", args, diags), 1);
    EXPECT_THAT(effects(), IsEmpty());
    EXPECT_EQ(DeleteMemberSCC().DeleteDirectory("/m/T", args, diags), 1) << "also after a failure";
    EXPECT_THAT(provider->calls,
                ElementsAre("SccRemove context=1 window=null files=/m/T comment= flags=0 options=null"));
    EXPECT_THAT(shownTexts(), ElementsAre(errorText(Text::resultFileCheckedOut)));
    EXPECT_EQ(seen.last().kind, CMOutcome::Kind::failed);
    EXPECT_EQ(seen.last().file, "/m/T");
}

} // namespace
