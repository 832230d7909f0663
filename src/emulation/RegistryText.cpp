#include "emulation/RegistryText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "system/TextLines.h"
#include "system/Unicode.h"

namespace corvane::emulation {

using namespace system;

namespace {

enum RegistryType : std::uint32_t { Text = 1, ExpandableText = 2, Binary = 3, Number = 4 };

constexpr std::size_t kDigitsOfByte = 2;
constexpr std::size_t kDigitsOfNumber = 8;

std::optional<std::uint32_t> takeHex(std::u16string_view& rest, std::size_t mostDigits) {
    std::uint32_t number = 0;
    std::size_t digits = 0;
    while (digits < rest.size()) {
        const int digit = hexDigit(rest[digits]);
        if (digit < 0) break;
        if (++digits > mostDigits) return std::nullopt;
        number = number << 4 | static_cast<std::uint32_t>(digit);
    }
    if (digits == 0) return std::nullopt;
    rest.remove_prefix(digits);
    return number;
}

bool takeWord(std::u16string_view& rest, std::u16string_view word) {
    if (compareNoCase(rest.substr(0, word.size()), word) != 0) return false;
    rest.remove_prefix(word.size());
    return true;
}

// Appends the bytes of one line; false when something else is between them. `continued` tells
// whether a backslash at the end announces a further line.
bool appendBytes(std::string& bytes, std::u16string_view line, bool& continued) {
    continued = line.ends_with(u'\\');
    if (continued) line.remove_suffix(1);
    for (line = trimmed(line); !isLineEnd(line); line = trimmed(line)) {
        const std::optional<std::uint32_t> byte = takeHex(line, kDigitsOfByte);
        if (!byte) return false;
        bytes += static_cast<char>(*byte);
        line = trimmed(line);
        if (line.starts_with(u','))
            line.remove_prefix(1);
        else if (!isLineEnd(line))
            return false;
    }
    return true;
}

// A line that begins like a key or a value is no continuation, whatever was announced before it.
std::optional<std::string> readBytes(std::u16string_view line, TextLines& lines) {
    std::string bytes;
    bool continued = false;
    bool valid = appendBytes(bytes, line, continued);
    while (continued) {
        const std::optional<std::u16string_view> next = lines.peek();
        if (!next || (next->front() != u'\\' && hexDigit(next->front()) < 0)) return std::nullopt;
        lines.next();
        std::string more;
        valid = appendBytes(more, *next, continued) && valid;
        bytes += more;
    }
    if (!valid) return std::nullopt;
    return bytes;
}

// Its readers take it up to the first zero.
RegistryValue textValue(std::u16string text) {
    text.resize(std::min(text.find(u'\0'), text.size()));
    return {std::move(text), std::nullopt};
}

std::optional<RegistryValue> readHex(std::u16string_view text, TextLines& lines, bool eightBit) {
    std::uint32_t type = Binary;
    bool valid = true;
    if (text.starts_with(u'(')) {
        text.remove_prefix(1);
        const std::optional<std::uint32_t> given = takeHex(text, kDigitsOfNumber);
        valid = given && takeWord(text, u")");
        type = given.value_or(Binary);
    }
    valid = takeWord(text, u":") && valid;
    const std::optional<std::string> bytes = readBytes(text, lines);
    if (!valid || !bytes) return std::nullopt;
    if (type == Text || type == ExpandableText)
        return textValue(eightBit ? widen(*bytes) : fromUtf16Bytes(*bytes));
    if (type != Number || bytes->size() != sizeof(std::uint32_t)) return RegistryValue();
    std::uint32_t number = 0;
    for (std::size_t i = bytes->size(); i-- > 0;)
        number = number << 8 | static_cast<std::uint8_t>((*bytes)[i]);
    return RegistryValue{std::nullopt, number};
}

}  // namespace

std::optional<std::u16string> takeQuoted(std::u16string_view& rest) {
    if (!rest.starts_with(u'"')) return std::nullopt;
    std::u16string text;
    for (std::size_t i = 1; i < rest.size(); ++i) {
        const bool escape = rest[i] == u'\\' && i + 1 < rest.size() &&
                            (rest[i + 1] == u'\\' || rest[i + 1] == u'"');
        if (escape) {
            ++i;
        } else if (rest[i] == u'"') {
            rest.remove_prefix(i + 1);
            return text;
        }
        text += rest[i];
    }
    return std::nullopt;
}

bool isLineEnd(std::u16string_view rest) {
    rest = trimmed(rest);
    return rest.empty() || rest.front() == u';';
}

std::optional<RegistryValue> readRegistryData(std::u16string_view text, TextLines& lines,
                                              bool eightBit) {
    if (takeWord(text, u"hex")) return readHex(text, lines, eightBit);
    if (takeWord(text, u"dword:")) {
        text = trimmed(text);
        const std::optional<std::uint32_t> number = takeHex(text, kDigitsOfNumber);
        if (!number || !isLineEnd(text)) return std::nullopt;
        return RegistryValue{std::nullopt, *number};
    }
    std::optional<std::u16string> quoted = takeQuoted(text);
    if (!quoted || !isLineEnd(text)) return std::nullopt;
    return textValue(*std::move(quoted));
}

namespace {

// More keys than a whole machine has; a file that makes more of them is not meant well.
constexpr std::size_t kMostKeys = 1'000'000;
constexpr std::u16string_view kEightBitHeading = u"REGEDIT4";

struct RootName {
    std::u16string_view longName;
    std::u16string_view shortName;
    RegistryRoot root;
};

constexpr RootName kRootNames[] = {
    {u"HKEY_CLASSES_ROOT", u"HKCR", RegistryRoot::ClassesRoot},
    {u"HKEY_CURRENT_USER", u"HKCU", RegistryRoot::CurrentUser},
    {u"HKEY_LOCAL_MACHINE", u"HKLM", RegistryRoot::LocalMachine},
};

class Reader {
public:
    Reader(std::u16string_view text, RegistryRoot own, RegistryNode& root)
        : lines_(text), own_(own), root_(root) {}

    void run() {
        while (const std::optional<std::u16string_view> line = lines_.next()) {
            if (line->front() == u'[')
                readHeading(*line);
            else if (line->front() == u'"' || line->front() == u'@')
                readValue(*line);
            else if (*line == kEightBitHeading)
                eightBit_ = true;
        }
    }

private:
    void readHeading(std::u16string_view line) {
        current_ = nullptr;
        const std::size_t end = line.rfind(u']');
        if (end == line.npos || !isLineEnd(line.substr(end + 1))) return;
        line = line.substr(1, end - 1);
        const bool removal = line.starts_with(u'-');
        if (removal) line.remove_prefix(1);
        const std::optional<std::u16string> path = pathBelowRoot(line);
        const bool isRoot = line.find_first_not_of(u'\\', line.find(u'\\')) == line.npos;
        if (!path) return;
        if (!removal)
            current_ = root_.make(*path, budget_);
        else if (!isRoot)
            root_.remove(*path);
    }

    std::optional<std::u16string> pathBelowRoot(std::u16string_view path) const {
        const std::size_t length = std::min(path.find(u'\\'), path.size());
        const std::u16string_view name = path.substr(0, length);
        path.remove_prefix(length);
        for (const RootName& known : kRootNames) {
            if (compareNoCase(name, known.longName) != 0 &&
                compareNoCase(name, known.shortName) != 0)
                continue;
            if (known.root == own_) return std::u16string(path);
            if (known.root == RegistryRoot::ClassesRoot)
                return std::u16string(kClassesPath).append(path);
        }
        return std::nullopt;
    }

    // The data is read even where the value has no key, so that its further lines are passed over.
    void readValue(std::u16string_view line) {
        std::optional<std::u16string> name;
        if (line.front() == u'@') {
            name.emplace();
            line.remove_prefix(1);
        } else {
            name = takeQuoted(line);
        }
        line = trimmed(line);
        if (!name || !line.starts_with(u'=')) return;
        line = trimmed(line.substr(1));
        const bool removal = line.starts_with(u'-') && isLineEnd(line.substr(1));
        std::optional<RegistryValue> value;
        if (!removal) value = readRegistryData(line, lines_, eightBit_);
        if (!current_ || name->find(u'\0') != name->npos) return;
        if (removal)
            current_->removeValue(*name);
        else if (value)
            current_->setValue(*name, *std::move(value));
    }

    TextLines lines_;
    RegistryRoot own_;
    RegistryNode& root_;
    RegistryNode* current_ = nullptr;
    std::size_t budget_ = kMostKeys;
    bool eightBit_ = false;
};

}  // namespace

void applyRegistryText(std::u16string_view text, RegistryRoot own, RegistryNode& root) {
    Reader(text, own, root).run();
}

}  // namespace corvane::emulation
