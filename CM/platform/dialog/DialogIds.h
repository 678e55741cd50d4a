// The ids with which boxes and dialogs end, with the numbers of the windows API.
#pragma once

constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;
/// What a dialog gives that nobody could answer: without a driver, or at the end of the driver's input.
constexpr int dialogNotAnswered = -1;
