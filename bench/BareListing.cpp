#include "bench/BareListing.h"

#include "bench/Measure.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace bench {

namespace {

using Code = std::unique_ptr<pcre2_code, decltype(&pcre2_code_free)>;

Code compile(const std::string &pattern, std::uint32_t options) {
    int error = 0;
    PCRE2_SIZE position = 0;
    Code code(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(), options, &error,
                            &position, nullptr),
              pcre2_code_free);
    if (!code || pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE) != 0) {
        throw std::runtime_error("can't compile " + pattern);
    }
    return code;
}

} // namespace

struct BareListing::Codes {
    Code delimiter{nullptr, pcre2_code_free};
    std::vector<Code> fields;
    std::unique_ptr<pcre2_match_data, decltype(&pcre2_match_data_free)> data{pcre2_match_data_create(16, nullptr),
                                                                             pcre2_match_data_free};

    [[nodiscard]] bool match(const Code &code, std::string_view subject, std::size_t start) const {
        return pcre2_match(code.get(), reinterpret_cast<PCRE2_SPTR>(subject.data()), subject.size(), start, 0,
                           data.get(), nullptr) > 0;
    }
};

void writePatterns(const ListingPatterns &patterns, const std::filesystem::path &file) {
    std::ofstream out(file, std::ios::binary);
    out << patterns.delimiter << '\0';
    for (const std::string &field : patterns.fields) {
        out << field << '\0';
    }
    out << patterns.suffix << '\0' << patterns.projectFile << '\0';
}

BareListing::BareListing(const ListingPatterns &patterns, const std::filesystem::path &listing)
    : codes_(std::make_unique<Codes>()) {
    codes_->delimiter = compile(patterns.delimiter, 0);
    for (const std::string &field : patterns.fields) {
        if (!field.empty()) {
            codes_->fields.push_back(compile(field, PCRE2_CASELESS));
        }
    }
    std::ifstream in(listing, std::ios::binary);
    text_.assign(std::istreambuf_iterator<char>(in), {});
}

BareListing::~BareListing() = default;

double BareListing::match() const {
    std::size_t found = 0;
    const double took = secondsOf([&] {
        const std::string_view text = text_;
        const PCRE2_SIZE *const offsets = pcre2_get_ovector_pointer(codes_->data.get());
        for (std::size_t from = 0; from <= text.size();) {
            const bool isCut = codes_->match(codes_->delimiter, text, from);
            const std::size_t end = isCut ? offsets[0] : text.size();
            const std::size_t next = isCut ? offsets[1] : text.size() + 1;
            const std::string_view record = text.substr(from, end - from);
            for (const Code &field : codes_->fields) {
                const bool matches = codes_->match(field, record, 0);
                found += matches ? 1 : 0;
                if (!matches && &field == &codes_->fields.front()) {
                    break; // no file: the other fields are not searched for
                }
            }
            from = next;
        }
    });
    if (found == 0) {
        throw std::runtime_error("no record of the listing matches");
    }
    return took;
}

} // namespace bench
