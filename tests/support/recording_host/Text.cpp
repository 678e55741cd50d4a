// Text with patterns, for as long as no other library of the tree offers it.
#include "CM/host/SPString.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <memory>
#include <optional>
#include <string_view>

namespace {

struct CodeFree {
    void operator()(pcre2_code *code) const { pcre2_code_free(code); }
};
using Code = std::unique_ptr<pcre2_code, CodeFree>;

using Groups = std::vector<std::pair<std::size_t, std::size_t>>;

/// Doubles the backslashes that stand in bracket expressions.
std::string withPlainBrackets(std::string_view pattern) {
    std::string result;
    bool inside = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '\\' && !inside && i + 1 < pattern.size()) {
            result += pattern[i++];
        } else if (pattern[i] == '\\') {
            result += '\\';
        } else if (pattern[i] == '[') {
            inside = true;
        } else if (pattern[i] == ']') {
            inside = false;
        }
        result += pattern[i];
    }
    return result;
}

Code compileOnce(std::string_view pattern, std::string_view flags) {
    int error = 0;
    std::size_t where = 0;
    const std::uint32_t options = flags.find('i') == std::string_view::npos ? 0U : PCRE2_CASELESS;
    return Code(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(), options, &error,
                              &where, nullptr));
}

Code compile(std::string_view pattern, std::string_view flags) {
    Code code = compileOnce(pattern, flags);
    return code != nullptr ? std::move(code) : compileOnce(withPlainBrackets(pattern), flags);
}

std::optional<Groups> match(const pcre2_code *code, std::string_view text, std::size_t start) {
    if (code == nullptr) {
        return std::nullopt;
    }
    const std::unique_ptr<pcre2_match_data, void (*)(pcre2_match_data *)> data(
        pcre2_match_data_create_from_pattern(code, nullptr), pcre2_match_data_free);
    if (pcre2_match(code, reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), start, 0, data.get(), nullptr) <
        0) {
        return std::nullopt;
    }
    const std::size_t *const places = pcre2_get_ovector_pointer(data.get());
    Groups groups;
    for (std::uint32_t i = 0; i < pcre2_get_ovector_count(data.get()); ++i) {
        groups.emplace_back(places[2 * i], places[2 * i + 1]);
    }
    return groups;
}

std::string part(std::string_view text, const Groups &groups, std::size_t group) {
    const bool tookPart = group < groups.size() && groups[group].first != PCRE2_UNSET;
    return tookPart ? std::string(text.substr(groups[group].first, groups[group].second - groups[group].first))
                    : std::string();
}

std::string filledIn(std::string_view replacement, std::string_view text, const Groups &groups) {
    std::string result;
    for (std::size_t i = 0; i < replacement.size(); ++i) {
        const bool hasNext = i + 1 < replacement.size();
        const char next = hasNext ? replacement[i + 1] : '\0';
        if (replacement[i] == '\\' && (next == '$' || next == '\\')) {
            result += next;
            ++i;
        } else if (replacement[i] == '$' && next >= '0' && next <= '9') {
            result += part(text, groups, static_cast<std::size_t>(next - '0'));
            ++i;
        } else {
            result += replacement[i];
        }
    }
    return result;
}

} // namespace

int SPString::m(const SPString &pattern, const char *flags) const {
    return match(compile(pattern.str(), flags).get(), text_, 0) ? 1 : 0;
}

int SPString::m(const SPString &pattern, SPStringList &matches, const char *flags) const {
    const std::string text = text_;
    matches.reset();
    const auto groups = match(compile(pattern.str(), flags).get(), text, 0);
    for (std::size_t i = 0; groups && i < groups->size(); ++i) {
        matches.push(part(text, *groups, i));
    }
    return groups ? 1 : 0;
}

int SPString::s(const SPString &pattern, const SPString &replacement, const char *flags) {
    const Code code = compile(pattern.str(), flags);
    const bool all = std::string_view(flags).find('g') != std::string_view::npos;
    std::string result;
    std::size_t copied = 0;
    std::size_t start = 0;
    int count = 0;
    while (const auto groups = start <= text_.size() ? match(code.get(), text_, start) : std::nullopt) {
        const auto [from, to] = groups->front();
        result.append(text_, copied, from - copied).append(filledIn(replacement.str(), text_, *groups));
        copied = to;
        start = to > from ? to : to + 1;
        ++count;
        if (!all) {
            break;
        }
    }
    text_ = result.append(text_, copied);
    return count;
}

int SPStringList::split(const SPString &text, const SPString &pattern, int limit) {
    reset();
    const Code code = compile(pattern.str(), "");
    const std::string &whole = text.str();
    std::size_t from = 0;
    std::size_t start = 0;
    while (limit <= 0 || count() + 1 < limit) {
        const auto groups = start <= whole.size() ? match(code.get(), whole, start) : std::nullopt;
        if (!groups) {
            break;
        }
        const auto [begin, end] = groups->front();
        if (end == begin) {
            if (end >= whole.size()) {
                break;
            }
            start = end + 1;
            continue;
        }
        push(whole.substr(from, begin - from));
        from = start = end;
    }
    push(whole.substr(from));
    return count();
}
