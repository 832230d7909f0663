#include "scriptrules/RuleIndex.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <corvane/app/StringResources.h>
#include <corvane/scriptrules/RuleIndexScope.h>
#include <corvane/scriptrules/ScriptFolderScope.h>
#include <corvane/xml/QorXMLDocument.h>

#include "config/DataFolders.h"
#include "system/FileState.h"
#include "system/Paths.h"
#include "system/Unicode.h"
#include "xml/ElementAccess.h"

namespace corvane::scriptrules {
namespace {

using xml::ElementView;

constexpr std::u16string_view kIndexFile = u"UserDefinedFile.xml";

std::unique_ptr<QorXMLNode> counted(ElementView element) {
    return element ? std::make_unique<QorXMLNode>(element.node()) : nullptr;
}

xml::ChildrenNamed entriesOf(const QorXMLNode& root) {
    return {ElementView(root), ResourceText(resource::kRuleNode)};
}

std::u16string_view nameOf(ElementView entry) {
    return entry.attribute(ResourceText(resource::kRuleNameAttr)).value_or(u"");
}

// An index by the names of its entries.
class NamedEntries {
public:
    explicit NamedEntries(const QorXMLNode& root) {
        for (const ElementView entry : entriesOf(root))
            entries_.emplace_back(folded(nameOf(entry)), entry);
        // Sorting, unlike hashing, stays fast for whatever names a hostile file holds.
        std::stable_sort(entries_.begin(), entries_.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
    }

    ElementView find(std::u16string_view name) const {
        const std::u16string wanted = folded(name);
        const auto at = std::lower_bound(
            entries_.begin(), entries_.end(), wanted,
            [](const auto& entry, const std::u16string& text) { return entry.first < text; });
        return at != entries_.end() && at->first == wanted ? at->second : ElementView();
    }

private:
    static std::u16string folded(std::u16string_view name) {
        std::u16string text(name);
        std::transform(text.begin(), text.end(), text.begin(), system::toLower);
        return text;
    }

    std::vector<std::pair<std::u16string, ElementView>> entries_;  // in the order of the file
};

}  // namespace

class RuleIndexCache {
public:
    std::unique_ptr<QorXMLNode> find(const CStringW& path, const CStringW& name) {
        std::unique_ptr<Index>& index = indexes_[path];
        if (!index || !index->file.isCurrent(path)) index = std::make_unique<Index>(path);
        return index->entries ? counted(index->entries->find(name)) : nullptr;
    }

private:
    struct Index {
        explicit Index(const CStringW& path) : file(path) {
            if (const QorXMLNode* const root = document.LoadFromFile(path)) entries.emplace(*root);
        }

        system::FileState file;
        QorXMLDocument document;
        std::optional<NamedEntries> entries;  // none without a document
    };

    std::map<CStringW, std::unique_ptr<Index>> indexes_;  // of each script folder
};

namespace {

// What the outermost scope of this thread keeps.
thread_local RuleIndexCache* currentCache = nullptr;
// The folder of the innermost scope that names one.
thread_local const CStringW* currentFolder = nullptr;

}  // namespace

std::optional<CStringW> scriptFolder() {
    return currentFolder ? *currentFolder : config::scriptFolder();
}

std::unique_ptr<QorXMLNode> findIndexEntry(const CStringW& folder, const CStringW& name) {
    const CStringW path = system::join(folder, kIndexFile);
    if (currentCache) return currentCache->find(path, name);
    QorXMLDocument index;
    const QorXMLNode* const root = index.LoadFromFile(path);
    if (!root) return nullptr;
    for (const ElementView entry : entriesOf(*root)) {
        if (system::compareNoCase(nameOf(entry), name) == 0) return counted(entry);
    }
    return nullptr;
}

}  // namespace corvane::scriptrules

namespace corvane {

RuleIndexScope::RuleIndexScope() {
    if (scriptrules::currentCache) return;
    cache_ = std::make_unique<scriptrules::RuleIndexCache>();
    scriptrules::currentCache = cache_.get();
}

RuleIndexScope::~RuleIndexScope() {
    if (cache_) scriptrules::currentCache = nullptr;
}

ScriptFolderScope::ScriptFolderScope(CStringW folder)
    : folder_(std::move(folder)), former_(scriptrules::currentFolder) {
    if (!folder_.IsEmpty()) scriptrules::currentFolder = &folder_;
}

ScriptFolderScope::~ScriptFolderScope() {
    scriptrules::currentFolder = former_;
}

}  // namespace corvane
