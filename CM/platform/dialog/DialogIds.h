// Defines the result ids of message boxes and dialogs, with the numbers of the Windows API.
#pragma once

constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;
/// The result of a dialog that nobody answers: it has no driver, or the driver's input has ended.
constexpr int dialogNotAnswered = -1;
