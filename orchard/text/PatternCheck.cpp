#include "orchard/text/PatternCheck.h"

#include "orchard/text/Engine.h"
#include "orchard/text/PatternDialect.h"

namespace orchard {

PatternFacts examinePattern(std::string_view pattern) {
    PatternFacts facts;
    const TranslatedPattern translated = translatePattern(pattern);
    engine::CompileError error;
    const engine::Code code = engine::compile(translated.text, engine::optionsOf("i"), error);
    if (!code) {
        facts.mistake = error.reason;
        facts.position = translated.originalPosition(error.position);
        return facts;
    }
    std::uint32_t groups = 0;
    pcre2_pattern_info(code.get(), PCRE2_INFO_CAPTURECOUNT, &groups);
    facts.groups = groups;
    const std::unique_ptr<pcre2_match_data, engine::Freed<pcre2_match_data_free>> data(
        pcre2_match_data_create_from_pattern(code.get(), nullptr));
    const auto *const nothing = reinterpret_cast<PCRE2_SPTR>("");
    facts.matchesEmptyText = pcre2_match(code.get(), nothing, 0, 0, 0, data.get(), nullptr) >= 0;
    return facts;
}

} // namespace orchard
