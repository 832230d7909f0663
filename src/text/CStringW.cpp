#include <algorithm>

#include <corvane/text/CStringW.h>

#include "system/Unicode.h"
#include "text/Numbers.h"

namespace {

using corvane::text::isSpace;

constexpr std::size_t kNone = std::u16string_view::npos;

int position(std::size_t found) {
    return found == kNone ? -1 : static_cast<int>(found);
}

// Cuts a position or a count into 0 to `limit`.
std::size_t clamp(int value, std::size_t limit) {
    return value < 0 ? 0 : std::min(static_cast<std::size_t>(value), limit);
}

template <typename Predicate>
void trimLeft(std::u16string& text, Predicate trimmed) {
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), trimmed));
}

template <typename Predicate>
void trimRight(std::u16string& text, Predicate trimmed) {
    text.erase(std::find_if_not(text.rbegin(), text.rend(), trimmed).base(), text.end());
}

auto isOneOf(std::u16string_view units) {
    return [units](char16_t unit) { return units.find(unit) != kNone; };
}

}  // namespace

CStringW::CStringW(const char16_t* text) : text_(text ? text : u"") {}

CStringW::CStringW(const char16_t* text, int length)
    : text_(text ? std::u16string_view(text, clamp(length, kNone)) : std::u16string_view()) {}

CStringW::CStringW(char16_t unit, int repeat) : text_(clamp(repeat, kNone), unit) {}

CStringW::CStringW(const char* text) : text_(corvane::system::widen(text ? text : "")) {}

CStringW CStringW::FromUtf8(std::string_view bytes) {
    return corvane::system::fromUtf8(bytes);
}

std::string CStringW::ToUtf8() const {
    return corvane::system::toUtf8(text_);
}

std::string CStringW::ToNarrow() const {
    return corvane::system::narrow(text_);
}

char16_t CStringW::GetAt(int at) const {
    return at >= 0 && at < GetLength() ? text_[static_cast<std::size_t>(at)] : u'\0';
}

void CStringW::SetAt(int at, char16_t unit) {
    if (at >= 0 && at < GetLength()) text_[static_cast<std::size_t>(at)] = unit;
}

CStringW& CStringW::operator=(const char16_t* text) {
    text_ = std::u16string(text ? text : u"");  // the pointer may point into this text
    return *this;
}

CStringW& CStringW::operator+=(const CStringW& text) {
    text_ += text.text_;
    return *this;
}

CStringW& CStringW::operator+=(std::u16string_view text) {
    text_ += text;
    return *this;
}

CStringW& CStringW::operator+=(const char16_t* text) {
    if (text) text_ += text;
    return *this;
}

CStringW& CStringW::operator+=(char16_t unit) {
    text_ += unit;
    return *this;
}

void CStringW::Preallocate(int length) {
    text_.reserve(clamp(length, kNone));
}

void CStringW::Truncate(int length) {
    text_.resize(clamp(length, text_.size()));
}

char16_t* CStringW::GetBuffer(int length) {
    text_.resize(std::max(text_.size(), clamp(length, kNone)));
    return text_.data();
}

void CStringW::ReleaseBuffer(int length) {
    text_.resize(length < 0 ? std::min(text_.find(u'\0'), text_.size())
                            : clamp(length, text_.size()));
}

int CStringW::Compare(std::u16string_view other) const {
    return text_.compare(other);
}

int CStringW::CompareNoCase(std::u16string_view other) const {
    return corvane::system::compareNoCase(text_, other);
}

int CStringW::Collate(std::u16string_view other) const {
    return corvane::system::collate(text_, other);
}

int CStringW::CollateNoCase(std::u16string_view other) const {
    return CStringW(*this).MakeLower().Collate(CStringW(other).MakeLower());
}

int CStringW::Find(std::u16string_view text, int start) const {
    return position(text_.find(text, clamp(start, kNone)));
}

int CStringW::Find(char16_t unit, int start) const {
    return position(text_.find(unit, clamp(start, kNone)));
}

int CStringW::ReverseFind(char16_t unit) const {
    return position(text_.rfind(unit));
}

int CStringW::FindOneOf(std::u16string_view units) const {
    return position(text_.find_first_of(units));
}

CStringW CStringW::Left(int count) const {
    return text_.substr(0, clamp(count, text_.size()));
}

CStringW CStringW::Mid(int first) const {
    return text_.substr(clamp(first, text_.size()));
}

CStringW CStringW::Mid(int first, int count) const {
    return text_.substr(clamp(first, text_.size()), clamp(count, text_.size()));
}

CStringW CStringW::Right(int count) const {
    return text_.substr(text_.size() - clamp(count, text_.size()));
}

CStringW CStringW::SpanIncluding(std::u16string_view units) const {
    return text_.substr(0, text_.find_first_not_of(units));
}

CStringW CStringW::SpanExcluding(std::u16string_view units) const {
    return text_.substr(0, text_.find_first_of(units));
}

CStringW CStringW::Tokenize(std::u16string_view separators, int& at) const {
    const std::size_t first =
        at < 0 ? kNone : text_.find_first_not_of(separators, static_cast<std::size_t>(at));
    if (first == kNone) {
        at = -1;
        return {};
    }
    const std::size_t end = std::min(text_.find_first_of(separators, first), text_.size());
    at = static_cast<int>(std::min(end + 1, text_.size()));
    return text_.substr(first, end - first);
}

int CStringW::Replace(std::u16string_view from, std::u16string_view to) {
    if (from.empty()) return 0;
    int count = 0;
    std::u16string result;
    std::size_t done = 0;
    for (std::size_t at = text_.find(from); at != kNone; at = text_.find(from, done)) {
        result.append(text_, done, at - done).append(to);
        done = at + from.size();
        ++count;
    }
    if (count == 0) return 0;
    result.append(text_, done);
    text_.swap(result);
    return count;
}

int CStringW::Replace(char16_t from, char16_t to) {
    const auto count = std::count(text_.begin(), text_.end(), from);
    std::replace(text_.begin(), text_.end(), from, to);
    return static_cast<int>(count);
}

int CStringW::Remove(char16_t unit) {
    return static_cast<int>(std::erase(text_, unit));
}

int CStringW::Insert(int at, std::u16string_view text) {
    text_.insert(clamp(at, text_.size()), std::u16string(text));
    return GetLength();
}

int CStringW::Delete(int at, int count) {
    text_.erase(clamp(at, text_.size()), clamp(count, text_.size()));
    return GetLength();
}

CStringW& CStringW::MakeLower() {
    std::transform(text_.begin(), text_.end(), text_.begin(), corvane::system::toLower);
    return *this;
}

CStringW& CStringW::MakeUpper() {
    std::transform(text_.begin(), text_.end(), text_.begin(), corvane::system::toUpper);
    return *this;
}

CStringW& CStringW::MakeReverse() {
    std::reverse(text_.begin(), text_.end());
    return *this;
}

CStringW& CStringW::Trim() {
    return TrimRight().TrimLeft();
}

CStringW& CStringW::Trim(std::u16string_view units) {
    return TrimRight(units).TrimLeft(units);
}

CStringW& CStringW::TrimLeft() {
    trimLeft(text_, isSpace);
    return *this;
}

CStringW& CStringW::TrimLeft(std::u16string_view units) {
    trimLeft(text_, isOneOf(units));
    return *this;
}

CStringW& CStringW::TrimRight() {
    trimRight(text_, isSpace);
    return *this;
}

CStringW& CStringW::TrimRight(std::u16string_view units) {
    trimRight(text_, isOneOf(units));
    return *this;
}
