#include "apps/orchard-cm/model/HostSetup.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMTraitFacade.h"
#include "CM/host/Messages.h"
#include "apps/orchard-cm/base/Interrupt.h"
#include "orchard/messages/CMWindow.h"
#include "orchard/messages/DialogSetup.h"
#include "orchard/messages/TerminalDialogDriver.h"
#include "orchard/messages/TerminalUser.h"
#include "orchard/settings/LogFile.h"
#include "orchard/settings/Settings.h"
#include "orchard/storage/LibraryFacade.h"

#include <iostream>
#include <unistd.h>
#include <utility>

/// What the library hands to the callbacks of the host's main window. This program has none, and needs nothing
/// there.
class CMainFrame {};

namespace orchard_cm {

namespace {

bool somebodyIsThere() { return isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0; }

Output::Kind kindOf(orchard::MessageKind kind) {
    switch (kind) {
    case orchard::MessageKind::error:
        return Output::Kind::error;
    case orchard::MessageKind::warning:
        return Output::Kind::warning;
    case orchard::MessageKind::question:
        return Output::Kind::question;
    case orchard::MessageKind::information:
        break;
    }
    return Output::Kind::information;
}

/// The user as the host knows it: messages go to the output and the journal, questions to the terminal.
class ProgramUser : public orchard::UserInterface {
  public:
    ProgramUser(orchard::UserInterface *terminal, Output &output, Journal &journal)
        : terminal_(terminal), output_(output), journal_(journal) {}

    void show(const orchard::Message &message) override {
        using enum orchard::MessageKind;
        if (!isInterrupted()) { // what fails then, fails because of that, which is said once at the end
            output_.message(kindOf(message.kind), message.text.str());
        }
        // What is said behind a run without a box of its own is that the unit was not read, or that time ran out.
        if (message.kind == error || message.kind == information) {
            journal_.error(message.text.str());
        }
    }
    std::optional<orchard::Reply> ask(const orchard::Question &question) override {
        if (isInterrupted()) {
            return std::nullopt;
        }
        if (question.buttons.size() == 1) {
            output_.message(kindOf(question.message.kind), question.message.text.str());
            return orchard::Reply{question.buttons.front().id, false};
        }
        output_.status().clear();
        return terminal_ == nullptr ? std::nullopt : terminal_->ask(question);
    }

  private:
    orchard::UserInterface *terminal_;
    Output &output_;
    Journal &journal_;
};

orchard::AnswerPolicy policyOf(Answer answer) {
    switch (answer) {
    case Answer::yes:
    case Answer::yesToAll:
        return orchard::AnswerPolicy::yes;
    case Answer::no:
        return orchard::AnswerPolicy::no;
    case Answer::ask:
        break;
    }
    return orchard::AnswerPolicy::ask;
}

/// The library takes a plain function for saving, so what it calls has to stand somewhere.
std::function<void()> &saveInForce() {
    static std::function<void()> save;
    return save;
}

void save() {
    if (saveInForce()) {
        saveInForce()();
    }
}

void aroundReload(CMainFrame * /*frame*/) {}

} // namespace

class HostSetup::Impl {
  public:
    Impl(const GlobalOptions &options, Output &output, Journal &journal)
        : output_(output), journal_(journal), terminalUser_(std::cin, output.status().stream()),
          terminalDialogs_(std::cin, output.status().stream()),
          user_(somebodyIsThere() ? &terminalUser_ : nullptr, output, journal),
          dialogs_(options.answer, somebodyIsThere() ? &terminalDialogs_ : nullptr, output, journal) {
        if (!options.logFile.empty() && !orchard::setLogFile(options.logFile)) {
            throw Failure(ExitCode::usage, "the log file '" + options.logFile + "' can't be opened for writing");
        }
        if (options.trace) {
            orchard::overrideSetting("General", "DEBUG_CM", "TRUE");
        }
        orchard::setUserInterface(&user_);
        orchard::setAnswerPolicy(policyOf(options.answer));
        orchard::setDialogDriver(&dialogs_);
        orchard::setCMOutputStream(&output.window());
        orchard::setRunWatch({[this](const std::string &command) { started(command); },
                              [this](const orchard::ToolRun &run) { ended(run); },
                              [] { return isInterrupted(); }});
        orchard::setCMFacade(&theCMFacade);
        CMFacade::outStream() = &output.window();
        CMFacade::saveCallbackFunc() = save;
        CMFacade::ATMCallbackFunc() = aroundReload;
        CMFacade::ATMCallbackFuncParameter() = &frame_;
        CMFacade::afterATMCallbackFunc() = aroundReload;
        CMFacade::afterATMCallbackFuncParameter() = &frame_;
    }
    ~Impl() {
        CMFacade::outStream() = nullptr;
        CMFacade::saveCallbackFunc() = nullptr;
        CMFacade::ATMCallbackFunc() = nullptr;
        CMFacade::ATMCallbackFuncParameter() = nullptr;
        CMFacade::afterATMCallbackFunc() = nullptr;
        CMFacade::afterATMCallbackFuncParameter() = nullptr;
        saveInForce() = nullptr;
        orchard::setCMFacade(nullptr);
        orchard::setRunWatch({});
        orchard::setCMOutputStream(nullptr);
        orchard::setDialogDriver(nullptr);
        orchard::setUserInterface(nullptr);
        orchard::setLogFile({});
    }
    Impl(const Impl &) = delete;
    Impl &operator=(const Impl &) = delete;

    std::ostream &window() { return output_.window(); }
    void setWindow(std::ostream *stream) {
        orchard::setCMOutputStream(stream);
        CMFacade::outStream() = stream;
    }
    void expectRuns(std::size_t count) {
        expected_ = count;
        done_ = 0;
    }

  private:
    void started(const std::string &command) {
        journal_.runStarted(command);
        ++done_;
        output_.status().show("[" + std::to_string(done_) + "/" + std::to_string(expected_) + "] " + command);
    }

    void ended(const orchard::ToolRun &run) {
        journal_.runEnded(run);
        if (run.end == platform::ChildResult::End::interrupted) {
            setWindow(&silence_); // nothing that is announced from here on is run
        }
    }

    Output &output_;
    Journal &journal_;
    std::ostream silence_{nullptr};
    orchard::TerminalUser terminalUser_;
    orchard::TerminalDialogDriver terminalDialogs_;
    ProgramUser user_;
    AnsweringDriver dialogs_;
    CMainFrame frame_;
    std::size_t expected_ = 0;
    std::size_t done_ = 0;
};

HostSetup::HostSetup(const GlobalOptions &options, Output &output, Journal &journal)
    : impl_(std::make_unique<Impl>(options, output, journal)) {}

HostSetup::~HostSetup() = default;

void HostSetup::onSave(std::function<void()> save) { saveInForce() = std::move(save); }

std::ostream &HostSetup::window() { return impl_->window(); }

void HostSetup::setWindow(std::ostream *stream) {
    impl_->setWindow(stream != nullptr ? stream : &impl_->window());
}

void HostSetup::expectRuns(std::size_t count) { impl_->expectRuns(count); }

} // namespace orchard_cm
