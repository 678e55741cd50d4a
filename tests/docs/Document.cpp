#include "tests/docs/Document.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace docs {

namespace {

constexpr std::string_view fence = "```";
constexpr std::string_view anything = "...";

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

bool lineIsAsDocumented(std::string_view line, std::string_view documented) {
    const std::size_t gap = documented.find(anything);
    if (gap == std::string_view::npos) {
        return line == documented;
    }
    if (!line.starts_with(documented.substr(0, gap))) {
        return false;
    }
    const std::string_view rest = documented.substr(gap + anything.size());
    for (std::size_t from = gap; from <= line.size(); ++from) {
        if (lineIsAsDocumented(line.substr(from), rest)) {
            return true;
        }
    }
    return false;
}

using Lines = std::vector<std::string_view>;

bool linesAreAsDocumented(const Lines &lines, std::size_t line, const Lines &documented, std::size_t at) {
    if (at == documented.size()) {
        return line == lines.size();
    }
    if (documented[at] == anything) {
        for (std::size_t next = line; next <= lines.size(); ++next) {
            if (linesAreAsDocumented(lines, next, documented, at + 1)) {
                return true;
            }
        }
        return false;
    }
    return line < lines.size() && lineIsAsDocumented(lines[line], documented[at]) &&
           linesAreAsDocumented(lines, line + 1, documented, at + 1);
}

} // namespace

std::vector<Block> blocksOf(const std::filesystem::path &document) {
    std::ifstream stream(document);
    if (!stream) {
        throw std::runtime_error("cannot read " + document.string());
    }
    std::vector<Block> blocks;
    bool isOpen = false;
    std::string line;
    for (std::size_t number = 1; std::getline(stream, line); ++number) {
        if (line.starts_with(fence)) {
            isOpen = !isOpen;
            if (isOpen) {
                Block block;
                std::istringstream words(line.substr(fence.size()));
                words >> block.language >> block.file;
                block.line = number + 1;
                blocks.push_back(std::move(block));
            }
        } else if (isOpen) {
            blocks.back().text += line + '\n';
        }
    }
    if (isOpen) {
        throw std::runtime_error(document.string() + " ends within a block of code");
    }
    return blocks;
}

std::vector<Command> commandsOf(const Block &block) {
    constexpr std::string_view prompt = "$ ";
    std::vector<Command> commands;
    std::size_t number = block.line;
    for (const std::string_view line : linesOf(block.text)) {
        if (line.starts_with(prompt)) {
            std::string_view command = line.substr(prompt.size());
            command = command.substr(0, command.find("  #"));
            command = command.substr(0, command.find_last_not_of(' ') + 1);
            commands.push_back({std::string(command), {}, number});
        } else if (!commands.empty()) {
            commands.back().output.append(line).append("\n");
        }
        ++number;
    }
    return commands;
}

bool isAsDocumented(std::string_view text, std::string_view documented) {
    return linesAreAsDocumented(linesOf(text), 0, linesOf(documented), 0);
}

} // namespace docs
