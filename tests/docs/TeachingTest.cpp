// Tests the page that teaches an administrator to write a property set: creates its files and runs its commands.
#include "tests/docs/Document.h"
#include "tests/tools/Workplace.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

namespace fs = std::filesystem;

TEST(Document, TellsBlocksFilesAndCommandsApart) {
    tools::Workplace place;
    const fs::path file = place.directory() / "page.md";
    tools::Workplace::write(
        file, "Text\n```toml a.toml\nx = 1\n```\n```console\n$ one two   # why\nout\n$ three\n```\n");
    const auto blocks = docs::blocksOf(file);
    ASSERT_EQ(blocks.size(), 2U);
    EXPECT_EQ(blocks[0].file, "a.toml");
    EXPECT_EQ(blocks[0].text, "x = 1\n");
    EXPECT_EQ(blocks[1].language, "console");
    const auto commands = docs::commandsOf(blocks[1]);
    ASSERT_EQ(commands.size(), 2U);
    EXPECT_EQ(commands[0].text, "one two");
    EXPECT_EQ(commands[0].output, "out\n");
    EXPECT_EQ(commands[1].line, 8U);
}

TEST(Document, ComparesWithWhatIsTold) {
    EXPECT_TRUE(docs::isAsDocumented("a\nb\n", "a\nb\n"));
    EXPECT_FALSE(docs::isAsDocumented("a\nb\n", "a\n"));
    EXPECT_TRUE(docs::isAsDocumented("a\nb\nc\n", "...\nc\n"));
    EXPECT_FALSE(docs::isAsDocumented("a\nb\nc\n", "...\nb\n"));
    EXPECT_TRUE(docs::isAsDocumented("/tmp/x/y.ocl: 1.2 done\n", ".../y.ocl: ... done\n"));
    EXPECT_FALSE(docs::isAsDocumented("/tmp/x/y.ocl: 1.2 gone\n", ".../y.ocl: ... done\n"));
}

class TeachingATool : public testing::Test {
  protected:
    TeachingATool() {
        place_.setEnvironment("XDG_CONFIG_HOME", (place_.directory() / "config").string());
        place_.setEnvironment("PATH", (place_.directory() / "bin").string() + ":" +
                                          fs::path(ORCHARD_CM_PROGRAM).parent_path().string() + ":" +
                                          std::getenv("PATH"));
        fs::create_directories(place_.directory() / "bin");
        fs::create_directories(place_.directory() / "config" / "orchard" / "toolsets");
    }

    /// A script goes where programs are, a part of a set to the end of the user's set.
    void keep(const docs::Block &block) {
        if (block.language == "toml") {
            const fs::path file = place_.directory() / "config" / "orchard" / "toolsets" / block.file;
            tools::Workplace::write(file, tools::Workplace::read(file) + block.text);
        } else {
            const fs::path file = place_.directory() / "bin" / block.file;
            tools::Workplace::write(file, block.text);
            tools::Workplace::makeExecutable(file);
        }
    }

    void type(const docs::Command &command) {
        const tools::Ran ran = place_.shell(command.text);
        EXPECT_EQ(ran.exit, 0) << page.string() << ":" << command.line << ": " << command.text << "\n"
                               << ran.out << ran.err;
        EXPECT_TRUE(docs::isAsDocumented(ran.out, command.output))
            << page.string() << ":" << command.line << ": " << command.text << "\nwrote:\n"
            << ran.out << ran.err << "but the page says:\n"
            << command.output;
        ++typed_;
    }

    const fs::path page = fs::path(DOCS_DIRECTORY) / "teaching-a-tool.md";
    tools::Workplace place_;
    int typed_ = 0;
};

TEST_F(TeachingATool, WorksAsThePageSays) {
    for (const docs::Block &block : docs::blocksOf(page)) {
        if (!block.file.empty()) {
            keep(block);
        } else if (block.language == "console") {
            for (const docs::Command &command : docs::commandsOf(block)) {
                type(command);
            }
        }
    }
    EXPECT_GE(typed_, 10);

    // What the user of the page has at the end, as the tool itself reports it.
    place_.setEnvironment("SHELF", (place_.directory() / "shelf-of-station").string());
    const tools::Ran log = place_.shell("shelf log Pump.ocl");
    EXPECT_EQ(log.exit, 0) << log.err;
    EXPECT_EQ(log.out, "1 by anna: First version\n2 by anna: It's a larger impeller; (see the drawing)\n");
}

} // namespace
