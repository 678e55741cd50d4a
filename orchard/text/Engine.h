// Wraps the regular expression engine, with the limits for patterns from property sets.
#pragma once

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <bitset>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orchard::engine {

template <auto FREE> struct Freed {
    template <class T> void operator()(T *pointer) const { FREE(pointer); }
};
using Code = std::unique_ptr<pcre2_code, Freed<pcre2_code_free>>;

/// A result of match() that the engine doesn't have.
constexpr int timeIsUsedUp = -1000;

struct CompileError {
    std::size_t position = 0;
    std::string reason;
};

std::uint32_t optionsOf(std::string_view flags);
std::string textOfError(int code);
/// Returns null and sets `error` for an invalid pattern.
Code compile(std::string_view text, std::uint32_t options, CompileError &error);

struct Request {
    std::string_view subject;
    std::size_t start = 0;
    std::size_t lastStart = PCRE2_UNSET; ///< the last position where the match may begin
    std::uint32_t options = 0;
    std::uint32_t steps = 0; ///< limit of steps from one starting position
    /// Checked only by code that was compiled with PCRE2_AUTO_CALLOUT.
    std::optional<std::chrono::steady_clock::time_point> end;
};

/// The data that a match needs besides the pattern; each thread has one. The functions that every match uses are
/// defined here, so that they are inlined.
class Workspace {
  public:
    Workspace();
    /// Returns this thread's workspace, with room for `pairs` pairs of positions.
    static Workspace &ofThisThread(std::uint32_t pairs) {
        Workspace &work = known_ != nullptr ? *known_ : makeForThisThread();
        if (pairs > work.pairs_) {
            work.makeRoom(pairs);
        }
        return work;
    }

    /// Works like pcre2_match. Uses JIT code if available and its stack is large enough.
    int match(const pcre2_code *code, bool hasMachineCode, const Request &request) {
        if (steps_ != request.steps || lastStart_ != request.lastStart) {
            setLimits(request);
        }
        Watch watch{request.end.value_or(Clock::time_point())};
        if (isWatched_ || request.end) {
            setWatch(request.end ? &watch : nullptr);
        }
        int result = PCRE2_ERROR_JIT_STACKLIMIT;
        if (hasMachineCode) {
            result = pcre2_jit_match(code, bytesOf(request.subject), request.subject.size(), request.start,
                                     request.options, data_.get(), context_.get());
        }
        return result == PCRE2_ERROR_JIT_STACKLIMIT ? interpret(code, request) : result;
    }

    /// The pairs of positions of the last match.
    [[nodiscard]] const PCRE2_SIZE *offsets() const { return offsets_; }

  private:
    using Clock = std::chrono::steady_clock;
    struct Watch {
        Clock::time_point end;
        unsigned calls = 0;
    };

    static Workspace &makeForThisThread();
    static int lookAtClock(pcre2_callout_block *block, void *watch);
    static PCRE2_SPTR bytesOf(std::string_view text) { return reinterpret_cast<PCRE2_SPTR>(text.data()); }
    void makeRoom(std::uint32_t pairs);
    void setLimits(const Request &request);
    void setWatch(Watch *watch);
    int interpret(const pcre2_code *code, const Request &request);

    // A plain thread-local pointer: accessing a thread-local object costs a call and a check each time.
#if defined(__GNUC__)
    [[gnu::tls_model("initial-exec")]]
#endif
    static constinit thread_local Workspace *known_;

    std::unique_ptr<pcre2_match_context, Freed<pcre2_match_context_free>> context_;
    std::unique_ptr<pcre2_jit_stack, Freed<pcre2_jit_stack_free>> stack_;
    std::unique_ptr<pcre2_match_data, Freed<pcre2_match_data_free>> data_;
    const PCRE2_SIZE *offsets_ = nullptr;
    std::uint32_t pairs_ = 0;
    // The settings of the context.
    std::uint32_t steps_ = 0;
    std::size_t lastStart_ = 0;
    bool isWatched_ = true;
};

/// Stores the bytes, or positions, at which matches of a pattern can begin.
class Starts {
  public:
    Starts() { bytes_.set(); }
    Starts(const pcre2_code *code, bool mayIgnoreCase);
    /// Returns the first position at or after `from`, where the search begins, at which a match can begin; past
    /// the end if there is none. ".*" can match at `from` within a line, and elsewhere only at the start of a
    /// line.
    [[nodiscard]] std::size_t first(std::string_view subject, std::size_t from) const {
        return atLines_ ? from : next(subject, from);
    }
    /// The same for a search that continues at `from`.
    [[nodiscard]] std::size_t next(std::string_view subject, std::size_t from) const;

  private:
    std::bitset<256> bytes_;
    bool atLines_ = false;
    bool isOne_ = false; ///< exactly one byte can begin a match
    char only_ = '\0';
};

} // namespace orchard::engine
