#include "apps/orchard-cm/model/HostSetup.h"

#include "CM/CMSupport/core/CMFacade.h"
#include "CM/CMSupport/core/CMTraitFacade.h"
#include "apps/orchard-cm/base/Interrupt.h"
#include "orchard/attachment/Attachment.h"
#include "orchard/messages/CMWindow.h"
#include "orchard/messages/TerminalDialogDriver.h"
#include "orchard/settings/Settings.h"

#include <algorithm>
#include <iostream>
#include <unistd.h>
#include <utility>

/// The library passes this type to the callbacks of the host's main window. This program has no window and needs
/// nothing there.
class CMainFrame {};

namespace orchard_cm {

namespace {

bool isInteractive() { return isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0; }

/// The library takes a plain function for saving, so the function object that it calls is kept here.
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
    Impl(const GlobalOptions &options, Output &output)
        : output_(output), terminal_(std::cin, output.status().stream()),
          dialogs_(options.answer, isInteractive() ? &terminal_ : nullptr, output),
          attachment_({.dialogs = &dialogs_,
                       .cmOutput = &output.window(),
                       .runs = {[this](const std::string &command) { started(command); },
                                [this](const RunEnd &end) { ended(end); }, [this] { return !mayGoOn(); }},
                       .library = &theCMFacade,
                       .logFile = options.logFile}) {
        if (options.trace) {
            orchard::overrideSetting("General", "DEBUG_CM", "TRUE");
        }
        attachment_.set(saveInForce(), {});
        attachment_.set(CMFacade::outStream(), &output.window());
        attachment_.set(CMFacade::saveCallbackFunc(), save);
        attachment_.set(CMFacade::ATMCallbackFunc(), aroundReload);
        attachment_.set(CMFacade::ATMCallbackFuncParameter(), &frame_);
        attachment_.set(CMFacade::afterATMCallbackFunc(), aroundReload);
        attachment_.set(CMFacade::afterATMCallbackFuncParameter(), &frame_);
    }

    std::ostream &window() { return output_.window(); }
    void setWindow(std::ostream *stream) {
        orchard::setCMOutputStream(stream);
        CMFacade::outStream() = stream;
    }
    void expectRuns(std::size_t count) {
        expected_ = count;
        done_ = 0;
        timedOut_ = false;
    }
    [[nodiscard]] bool mayGoOn() const { return !timedOut_ && !isInterrupted(); }

  private:
    void started(const std::string &command) {
        expected_ = std::max(expected_, ++done_); // an undo may rename, too
        output_.status().show("[" + std::to_string(done_) + "/" + std::to_string(expected_) + "] " + command);
    }

    void ended(const RunEnd &end) {
        timedOut_ = end.kind == RunEnd::Kind::timedOut;
        if (end.kind == RunEnd::Kind::interrupted) {
            setWindow(&silence_); // no command that is announced from here on is run
        }
    }

    Output &output_;
    std::ostream silence_{nullptr};
    orchard::TerminalDialogDriver terminal_;
    AnsweringDriver dialogs_;
    CMainFrame frame_;
    orchard::Attachment attachment_;
    std::size_t expected_ = 0;
    std::size_t done_ = 0;
    bool timedOut_ = false;
};

HostSetup::HostSetup(const GlobalOptions &options, Output &output) try
    : impl_(std::make_unique<Impl>(options, output)) {
} catch (const std::runtime_error &error) {
    throw Failure(ExitCode::usage, error.what());
}

HostSetup::~HostSetup() = default;

void HostSetup::onSave(std::function<void()> save) { saveInForce() = std::move(save); }

std::ostream &HostSetup::window() { return impl_->window(); }

void HostSetup::setWindow(std::ostream *stream) {
    impl_->setWindow(stream != nullptr ? stream : &impl_->window());
}

void HostSetup::expectRuns(std::size_t count) { impl_->expectRuns(count); }

bool HostSetup::mayGoOn() const { return impl_->mayGoOn(); }

} // namespace orchard_cm
