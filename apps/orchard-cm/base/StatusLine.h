// Shows the progress of a long run in one line at the bottom of a terminal, below the text.
#pragma once

#include <chrono>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace orchard_cm {

/// Provides a stream whose text goes to a terminal or file, with a status line that is erased before any text is
/// written. Without a terminal the status line is never shown.
class StatusLine : private std::streambuf {
  public:
    StatusLine(std::ostream &target, bool onTerminal);
    ~StatusLine() override;
    StatusLine(const StatusLine &) = delete;
    StatusLine &operator=(const StatusLine &) = delete;

    /// Returns the stream for text.
    [[nodiscard]] std::ostream &stream() { return stream_; }
    /// Replaces the text of the status line, at most about ten times a second.
    void show(std::string_view text);
    /// Erases the status line.
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
