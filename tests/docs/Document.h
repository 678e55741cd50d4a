// Document: the blocks of code of a document in Markdown, in their order.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace docs {

struct Block {
    std::string language; ///< the first word behind the fence
    std::string file;     ///< the second: the file that the block belongs to; empty if it belongs to none
    std::string text;
    std::size_t line = 0; ///< of its first line, counted from 1
};

/// Throws if the document can't be read, or ends within a block.
std::vector<Block> blocksOf(const std::filesystem::path &document);

/// A command of a block of language "console", and what it is to write.
struct Command {
    std::string text;
    std::string output;
    std::size_t line = 0;
};

/// The commands of a block: what stands behind "$ ", without a comment at its end.
std::vector<Command> commandsOf(const Block &block);

/// Whether a text is as told. "..." in a line stands for any characters in it; as a line, for any lines, or none.
bool isAsTold(std::string_view text, std::string_view told);

} // namespace docs
