// Small texts: times, comments and what fits into a buffer of the host.
#pragma once

#include <apr_time.h>

#include <string>
#include <string_view>

namespace svnscc {

/// A time as the user's clock shows it: "2026-11-22 08:10".
std::string timeText(apr_time_t time);

/// A comment as a repository takes it: UTF-8 with newlines. Bytes that are not UTF-8, and control characters,
/// become question marks. A null pointer gives the empty text.
std::string commentText(const char *comment);

/// Copies a text with its NUL into a buffer of `size` characters. Returns false, with the buffer unchanged, if the
/// buffer is null or too small.
bool copyInto(char *buffer, std::size_t size, std::string_view text);

} // namespace svnscc
