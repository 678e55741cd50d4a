// Provides a byte string (UTF-8 by convention) with the search, trim, format and fixed-buffer operations that
// the library's code uses. A thin value class over std::string; positions and lengths are
// counted in bytes.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>

class CString {
  public:
    CString() = default;
    /// A null pointer gives an empty string.
    CString(const char *text) : text_(text == nullptr ? "" : text) {} // NOLINT(google-explicit-constructor)
    CString(std::string text) : text_(std::move(text)) {}             // NOLINT(google-explicit-constructor)
    CString(std::string_view text) : text_(text) {}                   // NOLINT(google-explicit-constructor)
    CString(char character, int repeat) : text_(repeat > 0 ? static_cast<std::size_t>(repeat) : 0U, character) {}

    operator std::string_view() const { return text_; } // NOLINT(google-explicit-constructor)
    [[nodiscard]] const std::string &str() const { return text_; }
    [[nodiscard]] std::string_view view() const { return text_; }
    [[nodiscard]] const char *c_str() const { return text_.c_str(); }
    [[nodiscard]] const char *GetString() const { return text_.c_str(); }

    [[nodiscard]] int GetLength() const { return static_cast<int>(text_.size()); }
    [[nodiscard]] bool IsEmpty() const { return text_.empty(); }
    void Empty() { text_.clear(); }
    /// The byte at `index`; 0 for an index outside the text.
    [[nodiscard]] char GetAt(int index) const;
    [[nodiscard]] char operator[](int index) const { return GetAt(index); }
    /// Overwrites one byte; an index outside the text is ignored.
    void SetAt(int index, char character);

    CString &operator+=(std::string_view tail);
    CString &operator+=(const CString &tail) { return *this += tail.view(); }
    CString &operator+=(const char *tail) { return *this += std::string_view(tail == nullptr ? "" : tail); }
    CString &operator+=(char tail);

    /// Byte-wise comparison: -1, 0 or 1.
    [[nodiscard]] int Compare(std::string_view other) const;
    /// Comparison that ignores the case of ASCII letters: -1, 0 or 1.
    [[nodiscard]] int CompareNoCase(std::string_view other) const;

    /// The first position of `what` at or after `start`, or -1.
    [[nodiscard]] int Find(std::string_view what, int start = 0) const;
    [[nodiscard]] int Find(char what, int start = 0) const;
    /// The last position of `what`, or -1.
    [[nodiscard]] int ReverseFind(char what) const;
    /// The first position that has any of `characters`, or -1.
    [[nodiscard]] int FindOneOf(std::string_view characters) const;
    /// The last position that has any of `characters`, or -1.
    [[nodiscard]] int ReverseFindOneOf(std::string_view characters) const;

    /// Replaces every occurrence, left to right, without scanning the replacements; returns their number.
    /// An empty `from` replaces nothing.
    int Replace(std::string_view from, std::string_view to);
    int Replace(char from, char to);
    /// Deletes every occurrence of `character`; returns their number.
    int Remove(char character);
    /// Inserts at `index` (clamped to the text); returns the new length.
    int Insert(int index, std::string_view what);
    /// Deletes up to `count` bytes from `index`; returns the new length.
    int Delete(int index, int count = 1);

    /// Trims white space by default (blank, tab, newline, carriage return, vertical tab, form feed).
    CString &Trim();
    CString &Trim(std::string_view characters);
    CString &TrimLeft();
    CString &TrimLeft(std::string_view characters);
    CString &TrimRight();
    CString &TrimRight(std::string_view characters);

    /// Parts of the text; counts and positions outside it are clamped.
    [[nodiscard]] CString Left(int count) const;
    [[nodiscard]] CString Right(int count) const;
    [[nodiscard]] CString Mid(int first) const;
    [[nodiscard]] CString Mid(int first, int count) const;

    /// ASCII letters only.
    CString &MakeUpper();
    CString &MakeLower();

    /// Sets the text from a printf format. The text may itself be among the arguments.
    void Format(const char *format, ...) __attribute__((format(printf, 2, 3)));
    void AppendFormat(const char *format, ...) __attribute__((format(printf, 2, 3)));
    void FormatV(const char *format, std::va_list arguments);

    /// A writable buffer of at least `minimumLength` bytes and a closing NUL, zero-filled after the present
    /// text, for calls with a fixed-size buffer. Valid until the next change; close it with ReleaseBuffer.
    [[nodiscard]] char *GetBuffer(int minimumLength);
    /// Ends the use of the buffer. The text then ends at the first NUL if `newLength` is -1, otherwise after
    /// `newLength` bytes.
    void ReleaseBuffer(int newLength = -1);

    friend bool operator==(const CString &left, const CString &right) { return left.text_ == right.text_; }
    friend bool operator==(const CString &left, const char *right) { return left.text_ == right; }
    friend bool operator==(const CString &left, std::string_view right) { return left.view() == right; }
    friend bool operator==(const CString &left, const std::string &right) { return left.text_ == right; }
    friend auto operator<=>(const CString &left, const CString &right) { return left.text_ <=> right.text_; }

    friend CString operator+(CString left, const CString &right) { return std::move(left += right); }
    friend CString operator+(CString left, const char *right) { return std::move(left += right); }
    friend CString operator+(CString left, std::string_view right) { return std::move(left += right); }
    friend CString operator+(CString left, const std::string &right) {
        return std::move(left += std::string_view(right));
    }
    friend CString operator+(CString left, char right) { return std::move(left += right); }
    friend CString operator+(const char *left, const CString &right) { return CString(left) + right; }
    friend CString operator+(char left, const CString &right) { return CString(left, 1) + right; }

    friend std::ostream &operator<<(std::ostream &stream, const CString &text) { return stream << text.text_; }

  private:
    std::string text_;
};

/// The hash and the equality that match CompareNoCase, for containers whose keys ignore case.
struct NoCaseHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept;
};
struct NoCaseEqual {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const noexcept;
};

template <> struct std::hash<CString> {
    std::size_t operator()(const CString &text) const noexcept {
        return std::hash<std::string_view>()(text.view());
    }
};
