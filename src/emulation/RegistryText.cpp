#include "emulation/RegistryText.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "emulation/RegistryData.h"
#include "system/TextLines.h"
#include "system/Unicode.h"

namespace corvane::emulation {

using namespace system;

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
