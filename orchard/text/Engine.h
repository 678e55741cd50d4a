// The regular expression engine behind patterns, with the limits that a pattern from a property set is run under.
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

/// Results of match() that the engine doesn't have.
constexpr int timeIsUsedUp = -1000;

struct CompileError {
    std::size_t position = 0;
    std::string reason;
};

std::uint32_t optionsOf(std::string_view flags);
std::string textOfError(int code);
/// Null with `error` set for what is no valid pattern.
Code compile(std::string_view text, std::uint32_t options, CompileError &error);

struct Request {
    std::string_view subject;
    std::size_t start = 0;
    std::size_t lastStart = PCRE2_UNSET; ///< the last position at which the match may begin
    std::uint32_t options = 0;
    std::uint32_t steps = 0; ///< steps that may be taken from one starting position
    /// Looked at where the code was compiled with PCRE2_AUTO_CALLOUT.
    std::optional<std::chrono::steady_clock::time_point> end;
};

/// What a match needs besides the pattern; one set a thread, used again by every match. What each of many short
/// matches goes through stands here, where it costs no call.
class Workspace {
  public:
    Workspace();
    /// That of this thread, with room for the result of a match with so many pairs of positions.
    static Workspace &ofThisThread(std::uint32_t pairs) {
        Workspace &work = known_ != nullptr ? *known_ : makeForThisThread();
        if (pairs > work.pairs_) {
            work.makeRoom(pairs);
        }
        return work;
    }

    /// As pcre2_match. Machine code is used if there is some, and its stack suffices.
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

    // A plain pointer in the thread's own block: asking for the object itself costs a call and a check each time.
#if defined(__GNUC__)
    [[gnu::tls_model("initial-exec")]]
#endif
    static constinit thread_local Workspace *known_;

    std::unique_ptr<pcre2_match_context, Freed<pcre2_match_context_free>> context_;
    std::unique_ptr<pcre2_jit_stack, Freed<pcre2_jit_stack_free>> stack_;
    std::unique_ptr<pcre2_match_data, Freed<pcre2_match_data_free>> data_;
    const PCRE2_SIZE *offsets_ = nullptr;
    std::uint32_t pairs_ = 0;
    // What the context has.
    std::uint32_t steps_ = 0;
    std::size_t lastStart_ = 0;
    bool isWatched_ = true;
};

/// The bytes, or places, that the matches of a pattern can begin with.
class Starts {
  public:
    Starts() { bytes_.set(); }
    Starts(const pcre2_code *code, bool mayIgnoreCase);
    /// The first position at or behind `from` where a match can begin; behind the subject if there is none. `from`
    /// is where a search begins: ".*" can match there also in the middle of a line, though else at its start only.
    [[nodiscard]] std::size_t first(std::string_view subject, std::size_t from) const {
        return atLines_ ? from : next(subject, from);
    }
    /// The same for a search that goes on at `from`.
    [[nodiscard]] std::size_t next(std::string_view subject, std::size_t from) const;

  private:
    std::bitset<256> bytes_;
    bool atLines_ = false;
    bool isOne_ = false; ///< there is one such byte only
    char only_ = '\0';
};

} // namespace orchard::engine
