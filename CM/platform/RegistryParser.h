// Reads the REGEDIT4 text form into a registry.
//
//   REGEDIT4                       or: Windows Registry Editor Version 5.00
//   ; comment
//   [KEY]                          [-KEY] removes the key and those below it
//   "name"="text"                  \\ and \" stand for a backslash and a quote
//   @=dword:0000002a               @ is the default value; up to eight hexadecimal digits
//   "name"=hex(7):61,00,\          bytes; a backslash at the end goes on with the next line
//     00,00
//   "name"=-                       removes the value
#pragma once

#include "CM/platform/Registry.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

class RegistryParser {
  public:
    RegistryParser(std::string_view text, const CString &name, const Registry::Report &report)
        : rest_(text), name_(name), report_(report) {}

    Registry parse();

  private:
    enum class Section { none, key, removedKey, brokenKey };

    bool nextLine();
    bool headerLine();
    void entryLine();
    void keyLine(std::size_t at);
    void valueLine(std::size_t at);
    void value(std::size_t at, const CString &name);
    bool textValue(std::size_t at, const CString &name);
    bool numberValue(std::size_t at, const CString &name);
    bool bytesValue(std::size_t at, const CString &name);
    /// The type's number in "hex(NUMBER):" and the position behind it.
    struct BytesKind {
        unsigned number = 0;
        std::size_t behind = 0;
    };
    std::optional<BytesKind> bytesKind(std::size_t at);
    std::optional<std::vector<unsigned char>> bytes(std::size_t at);
    void skipContinuation();
    std::optional<std::size_t> quoted(std::size_t at, std::string &text);
    bool nothingBehind(std::size_t at);
    [[nodiscard]] std::size_t skipBlanks(std::size_t at) const;
    [[nodiscard]] bool startsAt(std::size_t at, std::string_view what) const;
    [[nodiscard]] bool isEnd(std::size_t at) const;
    /// Reports the present line; `at` is counted from 0. Always false.
    bool fail(std::size_t at, std::string_view reason);

    std::string_view rest_;
    std::string_view line_;
    int lineNumber_ = 0;
    CString name_;
    const Registry::Report &report_;
    int failures_ = 0;
    bool wide_ = false; ///< texts given as bytes are UTF-16
    Section section_ = Section::none;
    Registry registry_;
    Registry::Key *key_ = nullptr; ///< the key of the section, while it is Section::key
};

} // namespace platform
