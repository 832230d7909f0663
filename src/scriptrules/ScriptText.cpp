#include "scriptrules/ScriptText.h"

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>

#include "system/Files.h"
#include "system/Lasting.h"
#include "system/Unicode.h"

namespace corvane::scriptrules {
namespace {

constexpr std::size_t kMarkUnits = 5;
constexpr char16_t kReplacement = 0xFFFD;

std::u16string decodeUtf16(std::string_view bytes, bool highFirst) {
    std::u16string text;
    text.reserve(bytes.size());
    std::size_t at = 0;
    for (; at + 1 < bytes.size(); at += 2) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        text += static_cast<char16_t>(highFirst ? first << 8 | second : second << 8 | first);
    }
    if (at < bytes.size()) text += kReplacement;
    return text;
}

std::u16string decode(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) return decodeUtf16(bytes, false);
    if (bytes.starts_with("\xFE\xFF")) return decodeUtf16(bytes, true);
    return system::fromUtf8(bytes);
}

bool mayBeMark(char16_t unit) {
    const unsigned low = unit & 0xFFU;
    return low == 0xEF || low == 0xBB || low == 0xBF || low == 0xFF || low == 0xFE;
}

// Line ends and U+0000, in place.
void settle(std::u16string& text) {
    std::size_t end = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n') continue;
        text[end++] = text[at] ? text[at] : kReplacement;
    }
    text.resize(end);
}

}  // namespace

CStringW scriptText(std::string_view bytes) {
    std::u16string text = decode(bytes);
    settle(text);
    text.resize(bytes.size(), u' ');
    const auto marks =
        text.begin() + static_cast<std::ptrdiff_t>(std::min(kMarkUnits, text.size()));
    text.erase(std::remove_if(text.begin(), marks, mayBeMark), marks);
    return CStringW(std::move(text));
}

namespace {

// The texts of scripts whose files have not changed, for hosts that run the same rules on one part
// after the other.
class KnownScripts {
public:
    std::optional<CStringW> find(const CStringW& path, const system::FileStamp& now) {
        const std::lock_guard lock(mutex_);
        const auto known = scripts_.find(path);
        if (known == scripts_.end() || !known->second.stamp.proves(now)) return std::nullopt;
        return known->second.text;
    }

    void keep(const CStringW& path, const system::FileStamp& stamp, const CStringW& text) {
        if (!stamp.proves(stamp) || text.GetLength() > kLongestKept) return;
        const std::lock_guard lock(mutex_);
        if (scripts_.size() == kMostKept) scripts_.clear();
        scripts_.insert_or_assign(path, Script{stamp, text});
    }

private:
    static constexpr std::size_t kMostKept = 256;
    static constexpr int kLongestKept = 1 << 15;

    struct Script {
        system::FileStamp stamp;
        CStringW text;
    };

    std::mutex mutex_;
    std::unordered_map<CStringW, Script> scripts_;
};

}  // namespace

std::optional<CStringW> readScript(const CStringW& path) {
    static system::Lasting<KnownScripts> lasting;
    KnownScripts& known = lasting.get();
    // A change between the stamp and the reading shows at the next call.
    const auto stamp = system::FileStamp::now(path);
    std::optional<CStringW> text = known.find(path, stamp);
    if (text) return text;
    if (const auto bytes = system::readFile(path, kLargestScript)) {
        text = scriptText(*bytes);
        known.keep(path, stamp, *text);
    }
    return text;
}

bool isTooLarge(const CStringW& path) {
    const auto file = system::InputFile::open(path);
    return file && file->size() > kLargestScript;
}

}  // namespace corvane::scriptrules
