#include "orchard/remembered/RecordText.h"

#include <gtest/gtest.h>

namespace {

TEST(RecordText, GivesBackWhatWasWritten) {
    orchard::RecordWriter writer;
    writer.plain(std::uint64_t{42});
    writer.text("Pump");
    writer.text("");
    writer.plain('x');
    orchard::RecordReader reader(writer.written());
    EXPECT_EQ(reader.plain<std::uint64_t>(), 42U);
    EXPECT_EQ(reader.text(), "Pump");
    EXPECT_EQ(reader.text(), "");
    EXPECT_EQ(reader.plain<char>(), 'x');
    EXPECT_TRUE(reader.isComplete());
    EXPECT_EQ(reader.rest(), "");
}

TEST(RecordText, ATextThatEndsTooEarlyIsNotReadBeyond) {
    orchard::RecordWriter writer;
    writer.plain(std::uint64_t{42});
    writer.text("Pump");
    for (std::size_t length = 0; length < writer.written().size(); ++length) {
        orchard::RecordReader reader(std::string_view(writer.written()).substr(0, length));
        const auto number = reader.plain<std::uint64_t>();
        EXPECT_EQ(number, length < 8 ? 0U : 42U);
        EXPECT_EQ(reader.text(), "");
        EXPECT_FALSE(reader.isComplete());
        EXPECT_EQ(reader.plain<char>(), '\0');
    }
}

} // namespace
