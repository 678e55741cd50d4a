#include "orchard/text/Engine.h"

#include "orchard/text/LiteralSearch.h"

#include <algorithm>
#include <array>

namespace orchard::engine {
namespace {

using Clock = std::chrono::steady_clock;
using MatchData = std::unique_ptr<pcre2_match_data, Freed<pcre2_match_data_free>>;
using MatchContext = std::unique_ptr<pcre2_match_context, Freed<pcre2_match_context_free>>;
using CompileContext = std::unique_ptr<pcre2_compile_context, Freed<pcre2_compile_context_free>>;
using JitStack = std::unique_ptr<pcre2_jit_stack, Freed<pcre2_jit_stack_free>>;

constexpr std::uint32_t heapLimit =
    256 * 1024; // KiB that the engine may take where machine code has no stack left
constexpr std::size_t jitStackStart = 32 * 1024;
constexpr std::size_t jitStackLimit = 64 * 1024 * 1024;
constexpr unsigned calloutsPerLook = 32; // a callout may stand for a walk through the whole subject

struct Watch {
    Clock::time_point end;
    unsigned calls = 0;
};

int lookAtClock(pcre2_callout_block * /*block*/, void *data) {
    auto &watch = *static_cast<Watch *>(data);
    return ++watch.calls % calloutsPerLook == 0 && Clock::now() >= watch.end ? timeIsUsedUp : 0;
}

} // namespace

struct Workspace {
    MatchContext context{pcre2_match_context_create(nullptr)};
    JitStack stack{pcre2_jit_stack_create(jitStackStart, jitStackLimit, nullptr)};
    MatchData data;
    std::uint32_t pairs = 0;
    // The limits that the context has.
    std::uint32_t steps = 0;
    std::size_t lastStart = 0;
    bool isWatched = true;

    Workspace() {
        pcre2_set_heap_limit(context.get(), heapLimit);
        pcre2_jit_stack_assign(context.get(), nullptr, stack.get());
    }
};

std::uint32_t optionsOf(std::string_view flags) {
    // Subjects are bytes in no certain encoding, so the engine must never take them for Unicode.
    std::uint32_t options = PCRE2_NEVER_UTF | PCRE2_NEVER_UCP | PCRE2_USE_OFFSET_LIMIT;
    for (const char flag : flags) {
        options |= flag == 'i'   ? PCRE2_CASELESS
                   : flag == 'm' ? PCRE2_MULTILINE
                   : flag == 's' ? PCRE2_DOTALL
                   : flag == 'x' ? PCRE2_EXTENDED
                                 : 0U;
    }
    return options;
}

std::string textOfError(int code) {
    std::array<unsigned char, 256> buffer{};
    pcre2_get_error_message(code, buffer.data(), buffer.size());
    return reinterpret_cast<const char *>(buffer.data());
}

Code compile(std::string_view text, std::uint32_t options, CompileError &error) {
    const CompileContext context(pcre2_compile_context_create(nullptr));
    pcre2_set_newline(context.get(), PCRE2_NEWLINE_LF);
    int number = 0;
    PCRE2_SIZE position = 0;
    Code code(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), options, &number, &position,
                            context.get()));
    if (!code) {
        error = {position, textOfError(number)};
    }
    return code;
}

namespace {
Workspace &workspaceOfThisThread() {
    thread_local Workspace work;
    return work;
}
// A plain pointer in the thread's own block: asking for the object itself costs a call and a check each time.
#if defined(__GNUC__)
[[gnu::tls_model("initial-exec")]]
#endif
constinit thread_local Workspace *known = nullptr;
} // namespace

Workspace &workspace(std::uint32_t pairs) {
    if (known == nullptr) {
        known = &workspaceOfThisThread();
    }
    Workspace &work = *known;
    if (pairs > work.pairs) {
        work.pairs = std::max<std::uint32_t>(pairs, 32);
        work.data.reset(pcre2_match_data_create(work.pairs, nullptr));
    }
    return work;
}

const PCRE2_SIZE *offsets(const Workspace &work) { return pcre2_get_ovector_pointer(work.data.get()); }

int match(Workspace &work, const pcre2_code *code, bool hasMachineCode, const Request &request) {
    pcre2_match_context *const context = work.context.get();
    pcre2_match_data *const data = work.data.get();
    if (work.steps != request.steps) {
        pcre2_set_match_limit(context, request.steps);
        work.steps = request.steps;
    }
    if (work.lastStart != request.lastStart) {
        pcre2_set_offset_limit(context, request.lastStart);
        work.lastStart = request.lastStart;
    }
    Watch watch{request.end.value_or(Clock::time_point()), 0};
    if (work.isWatched || request.end) {
        pcre2_set_callout(context, request.end ? lookAtClock : nullptr, &watch);
        work.isWatched = request.end.has_value();
    }
    const auto *bytes = reinterpret_cast<PCRE2_SPTR>(request.subject.data());
    int result = PCRE2_ERROR_JIT_STACKLIMIT;
    if (hasMachineCode) {
        result =
            pcre2_jit_match(code, bytes, request.subject.size(), request.start, request.options, data, context);
    }
    if (result == PCRE2_ERROR_JIT_STACKLIMIT) {
        result = pcre2_match(code, bytes, request.subject.size(), request.start, request.options | PCRE2_NO_JIT,
                             data, context);
    }
    return result;
}

Starts::Starts(const pcre2_code *code, bool mayIgnoreCase) {
    std::uint32_t kind = 0;
    pcre2_pattern_info(code, PCRE2_INFO_FIRSTCODETYPE, &kind);
    const std::uint8_t *bitmap = nullptr;
    pcre2_pattern_info(code, PCRE2_INFO_FIRSTBITMAP, &bitmap);
    atLines_ = kind == 2;
    if (kind == 1) {
        std::uint32_t first = 0;
        pcre2_pattern_info(code, PCRE2_INFO_FIRSTCODEUNIT, &first);
        const auto byte = static_cast<char>(first);
        for (const char c :
             {byte, mayIgnoreCase ? lowerCase(byte) : byte, mayIgnoreCase ? upperCase(byte) : byte}) {
            bytes_.set(static_cast<unsigned char>(c));
        }
    } else if (bitmap != nullptr) {
        for (std::size_t i = 0; i < 256; ++i) {
            bytes_.set(i, ((static_cast<unsigned>(bitmap[i / 8]) >> (i % 8)) & 1U) != 0);
        }
    } else {
        bytes_.set();
    }
    if (bytes_.count() == 1) {
        for (std::size_t i = 0; i < 256; ++i) {
            only_ = bytes_[i] ? static_cast<char>(i) : only_;
        }
        isOne_ = true;
    }
}

std::size_t Starts::next(std::string_view subject, std::size_t from) const {
    if (atLines_) {
        if (from == 0 || from > subject.size() || subject[from - 1] == '\n') {
            return from;
        }
        const std::size_t line = subject.find('\n', from);
        return line == std::string_view::npos ? subject.size() + 1 : line + 1;
    }
    if (bytes_.all()) {
        return from;
    }
    if (isOne_) {
        const std::size_t found = subject.find(only_, from);
        return found == std::string_view::npos ? subject.size() + 1 : found;
    }
    while (from < subject.size() && !bytes_[static_cast<unsigned char>(subject[from])]) {
        ++from;
    }
    return from < subject.size() ? from : subject.size() + 1;
}

} // namespace orchard::engine
