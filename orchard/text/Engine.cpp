#include "orchard/text/Engine.h"

#include "orchard/text/LiteralSearch.h"

#include <algorithm>
#include <array>

namespace orchard::engine {
namespace {

using CompileContext = std::unique_ptr<pcre2_compile_context, Freed<pcre2_compile_context_free>>;

constexpr std::uint32_t heapLimit = 256 * 1024; // KiB for the engine if JIT code has no stack left
constexpr std::size_t jitStackStart = 32 * 1024;
constexpr std::size_t jitStackLimit = 64 * 1024 * 1024;
constexpr unsigned calloutsPerLook = 32; // a callout may follow a walk through the complete subject

} // namespace

std::uint32_t optionsOf(std::string_view flags) {
    // Subjects are bytes without a known encoding, so the engine must never read them as Unicode.
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

constinit thread_local Workspace *Workspace::known_ = nullptr;

Workspace::Workspace()
    : context_(pcre2_match_context_create(nullptr)),
      stack_(pcre2_jit_stack_create(jitStackStart, jitStackLimit, nullptr)) {
    pcre2_set_heap_limit(context_.get(), heapLimit);
    pcre2_jit_stack_assign(context_.get(), nullptr, stack_.get());
}

Workspace &Workspace::makeForThisThread() {
    thread_local Workspace work;
    known_ = &work;
    return work;
}

void Workspace::makeRoom(std::uint32_t pairs) {
    pairs_ = std::max<std::uint32_t>(pairs, 32);
    data_.reset(pcre2_match_data_create(pairs_, nullptr));
    offsets_ = pcre2_get_ovector_pointer(data_.get());
}

void Workspace::setLimits(const Request &request) {
    steps_ = request.steps;
    lastStart_ = request.lastStart;
    pcre2_set_match_limit(context_.get(), steps_);
    pcre2_set_offset_limit(context_.get(), lastStart_);
}

int Workspace::lookAtClock(pcre2_callout_block * /*block*/, void *watch) {
    auto &[end, calls] = *static_cast<Watch *>(watch);
    return ++calls % calloutsPerLook == 0 && Clock::now() >= end ? timeIsUsedUp : 0;
}

void Workspace::setWatch(Watch *watch) {
    isWatched_ = watch != nullptr;
    pcre2_set_callout(context_.get(), isWatched_ ? lookAtClock : nullptr, watch);
}

int Workspace::interpret(const pcre2_code *code, const Request &request) {
    return pcre2_match(code, bytesOf(request.subject), request.subject.size(), request.start,
                       request.options | PCRE2_NO_JIT, data_.get(), context_.get());
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
