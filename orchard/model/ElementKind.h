// Lists the kinds of model elements, with their names in unit files, in messages and in file names.
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
    workspace, // the last unit kind
    configuration,
    fragment,
    attribute,
    operation,
};

struct KindTraits {
    std::string_view tag;     ///< name in unit files
    const char *displayName;  ///< name in messages
    const char *extension;    ///< of its files, with the dot; empty for kinds without an extension of their own
    const char *oldExtension; ///< in the old format
};

[[nodiscard]] const KindTraits &traitsOf(Kind kind);
[[nodiscard]] constexpr bool isUnitKind(Kind kind) { return kind <= Kind::workspace; }
/// The kinds that can have a file of their own that is read into the model.
[[nodiscard]] constexpr bool isFileKind(Kind kind) { return kind <= Kind::file; }
[[nodiscard]] std::optional<Kind> kindWithTag(std::string_view tag);
/// Finds a kind by the extension of a file, new or old, ignoring case; returns nothing for an extension that no
/// unit has.
[[nodiscard]] std::optional<Kind> kindWithExtension(std::string_view extension);
/// Whether an element of the kind `outer` may directly contain one of the kind `inner`.
[[nodiscard]] bool mayHold(Kind outer, Kind inner);

} // namespace orchard
