// Small questions about paths that several classes of this folder ask. A separator is either of '/' and '\'.
#pragma once

#include "CM/platform/CString.h"

#include <string_view>

namespace paths {

/// Both kinds of separator, as a set for CString's searches.
inline constexpr std::string_view separators = "\\/";

/// What stands before the last separator; empty without one.
[[nodiscard]] CString directoryOf(const CString &path);
/// The directory as the host splits a path.
[[nodiscard]] CString hostDirectoryOf(const CString &path);
/// What stands behind the last separator; the whole without one.
[[nodiscard]] CString fileOf(const CString &path);
/// Directory, separator and file, whatever they are.
[[nodiscard]] CString join(const CString &directory, const CString &file);
/// Whether `text` begins with `start`, without regard to case. The empty text begins every text.
[[nodiscard]] bool beginsNoCase(const CString &text, const CString &start);
/// Whether `text` ends in `end`, without regard to case.
[[nodiscard]] bool endsNoCase(const CString &text, const CString &end);

/// CMProperty::getWorkingDir(), or the active project's own directory for units if that is empty.
[[nodiscard]] CString workingDirectory();

} // namespace paths
