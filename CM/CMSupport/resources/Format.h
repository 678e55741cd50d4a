// Filling the arguments into a text: only the texts of this folder are ever a format, what comes from a model, a
// tool or a file is always an argument.
#pragma once

#include "CM/CMSupport/resources/Texts.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace resources {

/// The text with this number, each "%s" replaced by the next argument. An argument is taken as it is, "%s" in it
/// included. A "%s" without an argument becomes empty; an argument without a "%s" is left out.
std::string format(Text number, std::initializer_list<std::string_view> arguments);

} // namespace resources
