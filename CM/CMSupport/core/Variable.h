// Finds the variables of a command template: "$name" or "${name}". A name consists of letters, digits and "_" and
// doesn't begin with a digit; either brace may be missing.
#pragma once

#include "CM/CMSupport/core/CMApi.h"
#include "CM/platform/CString.h"

#include <cstddef>
#include <optional>
#include <string_view>

struct Variable {
    std::size_t at = 0; ///< position of the dollar
    CString text;       ///< with the dollar and the braces
    CString name;
};

/// Finds the first variable that begins at `from` or later. Takes time in proportion to the text up to its end.
[[nodiscard]] ORC_CM_API std::optional<Variable> findVariable(std::string_view text, std::size_t from = 0);
