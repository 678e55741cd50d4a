// The kinds of model elements, with their names in unit files, in messages and in file names.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace orchard {

enum class Kind : std::uint8_t {
    project,
    subsystem,
    classKind,
    component,
    file,
    embedded,
    workspace, // the last of those that are units
    configuration,
    fragment,
    attribute,
    operation,
};

struct KindTraits {
    std::string_view tag;     ///< name in unit files
    const char *displayName;  ///< name in messages
    const char *extension;    ///< of its files, dot included; empty for what has no extension of its own
    const char *oldExtension; ///< in the old format
};

[[nodiscard]] const KindTraits &traitsOf(Kind kind);
[[nodiscard]] constexpr bool isUnitKind(Kind kind) { return kind <= Kind::workspace; }
/// The kinds that can stand in a file of their own which is read into the model.
[[nodiscard]] constexpr bool isFileKind(Kind kind) { return kind <= Kind::file; }
[[nodiscard]] std::optional<Kind> kindWithTag(std::string_view tag);
/// By the extension of a file, new or old, without regard to case; nothing for one that no unit has.
[[nodiscard]] std::optional<Kind> kindWithExtension(std::string_view extension);
/// Whether an element of the kind `inner` may stand directly in one of the kind `outer`.
[[nodiscard]] bool mayHold(Kind outer, Kind inner);

} // namespace orchard
