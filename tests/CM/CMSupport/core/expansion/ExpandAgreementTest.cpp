#include "tests/CM/CMSupport/core/expansion/ExpansionFixture.h"
#include "tests/CM/CMSupport/core/expansion/PlainExpansion.h"

#include <optional>
#include <random>

namespace {

class ExpandAgreement : public ExpansionFixture {
  protected:
    /// Returns the result of the step-by-step expansion after its status; nothing if the text grows without end.
    std::optional<std::string> plain(const CString &source) {
        CString text = "untouched";
        try {
            const int ok = PlainExpansion(args).expand(source, text, false);
            return std::to_string(ok) + " " + text.str();
        } catch (const PlainExpansion::TooMuch &) {
            return {};
        }
    }
    std::string expanded(const CString &source) {
        result = "untouched";
        expand(source);
        return std::to_string(status) + " " + result.str();
    }
    std::string any(std::string_view alphabet, unsigned longest) {
        std::string text;
        for (auto length = random() % longest; length > 0; --length) {
            text += alphabet[random() % alphabet.size()];
        }
        return text;
    }
    /// Compares templates of the alphabet; returns how many came to an end step by step.
    int compare(std::string_view alphabet, int rounds) {
        int compared = 0;
        for (int round = 0; round < rounds && !HasFailure(); ++round) {
            const std::string source = any(alphabet, 16);
            host.clearRecords();
            if (const auto wanted = plain(source)) {
                ++compared;
                EXPECT_EQ(expanded(source), *wanted) << "of the template " << source;
            }
        }
        return compared;
    }

    std::mt19937 random{7};
};

TEST_F(ExpandAgreement, GivesWhatEachStepOnTheWholeTextGives) {
    give("a", R"(x\\y)"); // two backslashes
    give("b", R"(5\$)");
    give("ab", "$");
    give("ba", "${");
    give("bb", "");
    setToolProperty("aa", R"(\$a and \\$b)");
    setToolProperty("aaa", R"(\)");
    setToolProperty("aab", "}$nobody");
    setToolProperty("aba", R"(C:\\\$temp\new)");
    host.places.tempDir = R"(\\server\$a)";
    EXPECT_GT(compare(R"($$$$aabb{}\ )", 6000), 5000);
    EXPECT_GT(compare("$$$$ab(?:) ", 3000), 2500);
}

TEST_F(ExpandAgreement, HoldsForAnyValues) {
    AnyArgument *const given[] = {&give("a", ""), &give("b", ""), &give("ab", "")};
    int compared = 0;
    for (int round = 0; round < 300 && !HasFailure(); ++round) {
        for (AnyArgument *argument : given) {
            argument->setValue(any(R"($$\\ab{} )", 5));
        }
        setToolProperty("aa", any(R"($$\\ab{} )", 7));
        setToolProperty("bb", any("$ab(?:) ", 9));
        compared += compare(R"($$$$aabb{}\ )", 10);
    }
    EXPECT_GT(compared, 1000);
}

} // namespace
