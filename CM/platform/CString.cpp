#include "CM/platform/CString.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::string_view whiteSpace = " \t\n\r\v\f";

constexpr char lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

constexpr char upper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

int position(std::size_t found) { return found == std::string::npos ? -1 : static_cast<int>(found); }

constexpr int sign(int value) { return (value > 0 ? 1 : 0) - (value < 0 ? 1 : 0); }

} // namespace

char CString::GetAt(int index) const {
    return index >= 0 && index < GetLength() ? text_[static_cast<std::size_t>(index)] : '\0';
}

void CString::SetAt(int index, char character) {
    if (index >= 0 && index < GetLength()) {
        text_[static_cast<std::size_t>(index)] = character;
    }
}

CString &CString::operator+=(std::string_view tail) {
    text_ += tail;
    return *this;
}

CString &CString::operator+=(char tail) {
    text_ += tail;
    return *this;
}

int CString::Compare(std::string_view other) const { return sign(view().compare(other)); }

int CString::CompareNoCase(std::string_view other) const {
    const auto common = std::min(text_.size(), other.size());
    for (std::size_t index = 0; index < common; ++index) {
        const auto left = static_cast<unsigned char>(lower(text_[index]));
        const auto right = static_cast<unsigned char>(lower(other[index]));
        if (left != right) {
            return left < right ? -1 : 1;
        }
    }
    if (text_.size() == other.size()) {
        return 0;
    }
    return text_.size() < other.size() ? -1 : 1;
}

int CString::Find(std::string_view what, int start) const {
    return start < 0 ? Find(what, 0) : position(text_.find(what, static_cast<std::size_t>(start)));
}

int CString::Find(char what, int start) const { return Find(std::string_view(&what, 1), start); }

int CString::ReverseFind(char what) const { return position(text_.rfind(what)); }

int CString::FindOneOf(std::string_view characters) const { return position(text_.find_first_of(characters)); }

int CString::ReverseFindOneOf(std::string_view characters) const {
    return position(text_.find_last_of(characters));
}

int CString::Replace(std::string_view from, std::string_view to) {
    if (from.empty()) {
        return 0;
    }
    auto found = text_.find(from);
    if (found == std::string::npos) {
        return 0;
    }
    std::string replaced;
    replaced.reserve(text_.size());
    std::size_t done = 0;
    int count = 0;
    for (; found != std::string::npos; found = text_.find(from, done)) {
        replaced.append(text_, done, found - done).append(to);
        done = found + from.size();
        ++count;
    }
    replaced.append(text_, done);
    text_ = std::move(replaced);
    return count;
}

int CString::Replace(char from, char to) {
    const auto count = std::count(text_.begin(), text_.end(), from);
    std::replace(text_.begin(), text_.end(), from, to);
    return static_cast<int>(count);
}

int CString::Remove(char character) { return static_cast<int>(std::erase(text_, character)); }

int CString::Insert(int index, std::string_view what) {
    text_.insert(static_cast<std::size_t>(std::clamp(index, 0, GetLength())), what);
    return GetLength();
}

int CString::Delete(int index, int count) {
    if (index >= 0 && index < GetLength() && count > 0) {
        text_.erase(static_cast<std::size_t>(index), static_cast<std::size_t>(count));
    }
    return GetLength();
}

CString &CString::Trim() { return Trim(whiteSpace); }
CString &CString::TrimLeft() { return TrimLeft(whiteSpace); }
CString &CString::TrimRight() { return TrimRight(whiteSpace); }

CString &CString::Trim(std::string_view characters) { return TrimRight(characters).TrimLeft(characters); }

CString &CString::TrimLeft(std::string_view characters) {
    text_.erase(0, std::min(text_.find_first_not_of(characters), text_.size()));
    return *this;
}

CString &CString::TrimRight(std::string_view characters) {
    text_.erase(text_.find_last_not_of(characters) + 1);
    return *this;
}

CString CString::Left(int count) const { return Mid(0, count); }

CString CString::Right(int count) const { return Mid(std::max(0, GetLength() - std::max(0, count))); }

CString CString::Mid(int first) const { return Mid(first, GetLength()); }

CString CString::Mid(int first, int count) const {
    const auto from = static_cast<std::size_t>(std::clamp(first, 0, GetLength()));
    return {view().substr(from, static_cast<std::size_t>(std::max(0, count)))};
}

CString &CString::MakeUpper() {
    std::transform(text_.begin(), text_.end(), text_.begin(), upper);
    return *this;
}

CString &CString::MakeLower() {
    std::transform(text_.begin(), text_.end(), text_.begin(), lower);
    return *this;
}

void CString::FormatV(const char *format, std::va_list arguments) {
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    std::string formatted(length > 0 ? static_cast<std::size_t>(length) : 0U, '\0');
    if (length > 0) {
        std::vsnprintf(formatted.data(), formatted.size() + 1, format, arguments);
    }
    text_ = std::move(formatted);
}

void CString::Format(const char *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::AppendFormat(const char *format, ...) {
    CString tail;
    std::va_list arguments;
    va_start(arguments, format);
    tail.FormatV(format, arguments);
    va_end(arguments);
    *this += tail;
}

char *CString::GetBuffer(int minimumLength) {
    if (minimumLength > GetLength()) {
        text_.resize(static_cast<std::size_t>(minimumLength), '\0');
    }
    return text_.data();
}

void CString::ReleaseBuffer(int newLength) {
    const auto length = newLength < 0 ? std::strlen(text_.c_str()) : static_cast<std::size_t>(newLength);
    text_.resize(std::min(length, text_.size()));
}

std::size_t NoCaseHash::operator()(std::string_view text) const noexcept {
    std::size_t hash = 14695981039346656037ULL; // FNV-1a, 64 bits
    for (const char character : text) {
        hash = (hash ^ static_cast<unsigned char>(lower(character))) * 1099511628211ULL;
    }
    return hash;
}

bool NoCaseEqual::operator()(std::string_view left, std::string_view right) const noexcept {
    return left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(),
                                                     [](char a, char b) { return lower(a) == lower(b); });
}
