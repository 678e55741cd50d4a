// Sets up the tests of the facade's entries other than check out: the command that ran, or the message in place of
// the provider's route, shows which route was used.
#pragma once

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMTranscation.h"
#include "CM/CMSupport/resources/Texts.h"
#include "CM/host/Messages.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"
#include "tests/CM/CMSupport/dispatch/FakeProvider.h"

#include <functional>
#include <stdexcept>
#include <vector>

class EntriesFixture : public CheckOutFixture {
  protected:
    /// One entry of the facade, with what it is called on.
    struct Entry {
        const char *name;
        std::function<int()> call;
    };

    /// The provider route with a provider of this name, with hybrid mode or without.
    void useProviderNamed(const CString &name, bool hybrid) {
        setProviderRoute();
        setGeneral("UseHybridModeWhenPossible", hybrid ? "True" : "False");
        CMProperty::setSCCToolName(name);
    }
    /// Templates whose text contains the name under which they were found.
    void tellTools(const CString &key, const CString &text) {
        for (const char *tool : {"RCS", "SCC", "Basalt", "Tessera"}) {
            host.setToolDefault(tool, key, CString(tool) + " " + text);
        }
    }
    /// Returns how often the provider's route would have been used.
    [[nodiscard]] std::ptrdiff_t providerCalls() const {
        return std::ranges::count(host.messages.shown, CString(FakeProvider::notice),
                                  &recording::MessageState::Shown::text);
    }
    [[nodiscard]] bool wentToProvider() const { return providerCalls() == 1 && host.worker.commands.empty(); }

    /// Expects an entry to run in a transaction of this type.
    void expectTransaction(const Entry &entry, CMTranscationType type) {
        setGeneral("CMOperationStartSeparator", "<$Operation>");
        setGeneral("CMOperationEndSeparator", "</$Operation>");
        host.clearRecords();
        host.window.stream.str({});
        entry.call();
        const std::string name = CMTranscation::getOperationNameFromType(type).str();
        EXPECT_EQ(host.window.text(), "<" + name + "></" + name + ">") << entry.name;
        EXPECT_EQ(host.callsOf("undo"), (std::vector<std::string>{"undo start flag=1", "undo end"})) << entry.name;
        EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr) << entry.name;
    }
    /// Expects that without a project, and with the tool "None", nothing is done and no list changes.
    void expectNothingInAnInvalidTransaction(const std::vector<Entry> &entries) {
        for (const Entry &entry : entries) {
            host.clearRecords();
            host.setTool("None");
            EXPECT_EQ(entry.call(), 0) << entry.name;
            EXPECT_EQ(host.messages.shown.size(), 1U) << entry.name << ": the user is told that there is no tool";
            host.setTool("RCS");
            auto *const project = std::exchange(host.model.activeProject, nullptr);
            EXPECT_EQ(entry.call(), 0) << entry.name;
            EXPECT_EQ(host.messages.shown.size(), 1U) << entry.name << ": nothing is shown";
            host.model.activeProject = project;
            EXPECT_TRUE(host.worker.commands.empty()) << entry.name;
            EXPECT_TRUE(diags.IsEmpty()) << entry.name;
        }
    }
    void expectSoundAfterAnException(const std::vector<Entry> &entries) {
        host.worker.run = [](const CString &) -> recording::ToolRun { throw std::runtime_error("host"); };
        for (const Entry &entry : entries) {
            EXPECT_THROW(entry.call(), std::runtime_error) << entry.name;
            EXPECT_EQ(host.undo.depth, 0) << entry.name;
            EXPECT_EQ(CMTranscation::getCurTranscation(), nullptr) << entry.name;
            EXPECT_TRUE(args.IsEmpty()) << entry.name;
        }
    }
};
