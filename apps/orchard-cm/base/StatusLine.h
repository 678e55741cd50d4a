// StatusLine: one line at the bottom of a terminal that tells how far a long run has come, and the text above it.
#pragma once

#include <chrono>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace orchard_cm {

/// A stream whose text goes to a terminal or file, with a status line that is taken away before any text is
/// written. Without a terminal the status line is never shown.
class StatusLine : private std::streambuf {
  public:
    StatusLine(std::ostream &target, bool onTerminal);
    ~StatusLine() override;
    StatusLine(const StatusLine &) = delete;
    StatusLine &operator=(const StatusLine &) = delete;

    /// The stream for text.
    [[nodiscard]] std::ostream &stream() { return stream_; }
    /// Shows `text` in place of what the line showed; at most some ten times a second.
    void show(std::string_view text);
    /// Takes the line away.
    void clear();

  private:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char *text, std::streamsize count) override;
    int sync() override;

    std::ostream &target_;
    bool onTerminal_;
    bool shown_ = false;
    std::chrono::steady_clock::time_point lastShown_;
    std::ostream stream_;
};

} // namespace orchard_cm
