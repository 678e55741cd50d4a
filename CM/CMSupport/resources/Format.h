// Inserts arguments into a text. Only the texts of this folder are formats; text from a model, a tool or a file is
// always an argument.
#pragma once

#include "CM/CMSupport/resources/Texts.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace resources {

/// Returns the text with this number, with each "%s" replaced with the next argument. Arguments are literal, even
/// "%s" in them. A "%s" without an argument becomes empty; an argument without a "%s" is ignored.
std::string format(Text number, std::initializer_list<std::string_view> arguments);

} // namespace resources
