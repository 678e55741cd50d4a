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

/// What a match needs besides the pattern; one set a thread, used again by every match.
struct Workspace;
/// That of this thread, with room for the result of a match with so many pairs of positions.
Workspace &workspace(std::uint32_t pairs);
/// The pairs of positions of the last match.
const PCRE2_SIZE *offsets(const Workspace &work);

struct Request {
    std::string_view subject;
    std::size_t start = 0;
    std::size_t lastStart = PCRE2_UNSET; ///< the last position at which the match may begin
    std::uint32_t options = 0;
    std::uint32_t steps = 0; ///< steps that may be taken from one starting position
    /// Looked at where the code was compiled with PCRE2_AUTO_CALLOUT.
    std::optional<std::chrono::steady_clock::time_point> end;
};

/// As pcre2_match. Machine code is used if there is some, and its stack suffices.
int match(Workspace &work, const pcre2_code *code, bool hasMachineCode, const Request &request);

/// The bytes, or places, that the matches of a pattern can begin with.
class Starts {
  public:
    Starts() { bytes_.set(); }
    Starts(const pcre2_code *code, bool mayIgnoreCase);
    /// The first position at or behind `from` where a match can begin; behind the subject if there is none.
    [[nodiscard]] std::size_t next(std::string_view subject, std::size_t from) const;

  private:
    std::bitset<256> bytes_;
    bool atLines_ = false;
    bool isOne_ = false; ///< there is one such byte only
    char only_ = '\0';
};

} // namespace orchard::engine
