// Splits and joins paths as the host does, and determines the directory in which tools work.
#pragma once

#include "CM/platform/CString.h"

namespace paths {

/// Returns the directory of a path as the host splits it.
[[nodiscard]] CString hostDirectoryOf(const CString &path);
/// Joins directory and file with a separator, even if one of them is empty.
[[nodiscard]] CString join(const CString &directory, const CString &file);
/// Returns whether `text` begins with `start`, ignoring case. Every text begins with an empty `start`.
[[nodiscard]] bool beginsNoCase(const CString &text, const CString &start);
/// Returns whether `text` ends with `end`, ignoring case.
[[nodiscard]] bool endsNoCase(const CString &text, const CString &end);

/// Returns CMProperty::getWorkingDir(), or the active project's own directory for units if that is empty.
[[nodiscard]] CString workingDirectory();

} // namespace paths
