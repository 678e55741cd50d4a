// Attaches a program's streams, dialogs and library to the reference host until the object is destroyed.
#pragma once

#include "CM/host/IBaseCMFacade.h"
#include "CM/platform/dialog/DialogDriver.h"
#include "orchard/OrchardApi.h"
#include "orchard/worker/RunWatch.h"

#include <filesystem>
#include <functional>
#include <ostream>
#include <type_traits>
#include <utility>
#include <vector>

namespace orchard {

/// All members may be left empty. The objects pointed to must outlive the attachment.
struct Hooks {
    platform::DialogDriver *dialogs = nullptr; ///< runs the dialogs and message boxes
    std::ostream *cmOutput = nullptr;          ///< the CM output window
    RunWatch runs{};                           ///< observes the runs of tools
    IBaseCMFacade *library = nullptr;          ///< provides the default header of new files
    std::filesystem::path logFile{};           ///< receives the log
};

class ORCHARD_API Attachment {
  public:
    /// Attaches the hooks. Throws std::runtime_error, with nothing attached, if the log file can't be opened.
    explicit Attachment(Hooks hooks);
    /// Detaches all hooks and restores the variables of set(), in reverse order.
    ~Attachment();
    Attachment(const Attachment &) = delete;
    Attachment &operator=(const Attachment &) = delete;

    /// Sets a variable that the library offers to its host, such as its output stream, until this object is
    /// destroyed.
    template <class VALUE> void set(VALUE &variable, std::type_identity_t<VALUE> value) {
        restore_.push_back([&variable, old = std::exchange(variable, std::move(value))] { variable = old; });
    }

  private:
    std::vector<std::function<void()>> restore_;
};

} // namespace orchard
