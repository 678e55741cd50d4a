// Shows messages and questions to the user.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"
#include "CM/platform/dialog/DialogIds.h"

/// The library always passes messageLevelDefault.
enum MessageLevel { messageLevelDefault = 2 };

// Flags of a box, with the numbers of the windows API; DialogIds.h has the ids of its buttons.
constexpr unsigned int MB_OK = 0x0;
constexpr unsigned int MB_YESNOCANCEL = 0x3;
constexpr unsigned int MB_YESNO = 0x4;
constexpr unsigned int MB_ICONHAND = 0x10;
constexpr unsigned int MB_ICONQUESTION = 0x20;
constexpr unsigned int MB_ICONEXCLAMATION = 0x30;
constexpr unsigned int MB_ICONINFORMATION = 0x40;
constexpr unsigned int MB_DEFBUTTON2 = 0x100;

/// Shows a text.
ORC_HOST_API void notifyUser(const CString &text, MessageLevel level);
/// Shows a box and returns the id of the button that ended it.
ORC_HOST_API int notifyUserAndAsk(const CString &text, unsigned int flags, int, MessageLevel level);
/// Shows a box that the user can turn off permanently under `key`; returns the id of the button.
ORC_HOST_API int OneTimeMessageBox(const CString &title, const CString &text, const CString &checkBoxText, int,
                                   const CString &key, unsigned int flags, int);

/// Silences the host's messages while it exists.
class ORC_HOST_API SilenceMessageObject {
  public:
    explicit SilenceMessageObject(int flag);
    ~SilenceMessageObject();
    SilenceMessageObject(const SilenceMessageObject &) = delete;
    SilenceMessageObject &operator=(const SilenceMessageObject &) = delete;
};
