// Reads the code blocks of a Markdown document, in order.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace docs {

struct Block {
    std::string language; ///< the first word after the fence
    std::string file;     ///< the second: the file that the block belongs to; empty if it belongs to none
    std::string text;
    std::size_t line = 0; ///< of its first line, counted from 1
};

/// Throws if the document can't be read, or ends within a block.
std::vector<Block> blocksOf(const std::filesystem::path &document);

/// A command of a block of language "console", and its expected output.
struct Command {
    std::string text;
    std::string output;
    std::size_t line = 0;
};

/// Returns the commands of a block: the text after "$ ", without a trailing comment.
std::vector<Command> commandsOf(const Block &block);

/// Returns whether a text is as documented. "..." within a line matches any characters; alone on a line, any
/// number of lines.
bool isAsDocumented(std::string_view text, std::string_view documented);

} // namespace docs
