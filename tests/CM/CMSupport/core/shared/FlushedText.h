// Replaces the buffer of a stream and keeps what was written up to the last flush.
#pragma once

#include <ios>
#include <sstream>
#include <string>

class FlushedText : public std::stringbuf {
  public:
    explicit FlushedText(std::ios &stream) : stream_(stream), before_(stream.rdbuf(this)) {}
    ~FlushedText() override { stream_.rdbuf(before_); }
    FlushedText(const FlushedText &) = delete;
    FlushedText &operator=(const FlushedText &) = delete;

    [[nodiscard]] const std::string &flushed() const { return flushed_; }

  protected:
    int sync() override {
        flushed_ = str();
        return 0;
    }

  private:
    std::ios &stream_;
    std::streambuf *before_;
    std::string flushed_;
};
