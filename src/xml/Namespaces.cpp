#include "xml/Namespaces.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

#include "xml/Attributes.h"
#include "xml/Names.h"
#include "xml/Tree.h"

namespace corvane::xml {
namespace {

constexpr std::u16string_view kXml = u"xml";
constexpr std::u16string_view kXmlns = u"xmlns";
constexpr std::u16string_view kXmlUri = u"http://www.w3.org/XML/1998/namespace";
constexpr std::u16string_view kXmlnsUri = u"http://www.w3.org/2000/xmlns/";

constexpr std::size_t kFew = 8;

const Attribute* declarationAt(const Element& element, std::u16string_view prefix) {
    if (attributesOf(element).size() > kFew)
        return findAttribute(element, std::u16string(kXmlns) + u':' + std::u16string(prefix));
    for (const Attribute& at : attributesOf(element)) {
        if (at.name->prefix() == kXmlns && at.name->local() == prefix) return &at;
    }
    return nullptr;
}

// The declaration in force for a prefix at `from` or above, below `end`.
const Attribute* declarationOf(const Element* from, std::u16string_view prefix,
                               const Element* end = nullptr) {
    for (; from != end; from = from->parent) {
        if (const Attribute* found = declarationAt(*from, prefix)) return found;
    }
    return nullptr;
}

const Attribute* defaultDeclarationOf(const Element* from) {
    for (; from; from = from->parent) {
        if (const Attribute* found = findAttribute(*from, kXmlns)) return found;
    }
    return nullptr;
}

bool isAmbiguous(const Element& element, std::u16string_view name) {
    const std::u16string_view prefix = prefixOf(name);
    const std::u16string_view local = localNameOf(name);
    for (const Attribute& at : attributesOf(element)) {
        const std::u16string_view other = at.name->prefix();
        if (other.empty() || other == prefix || other == kXmlns) continue;
        if (at.name->local() == local &&
            namespaceOf(element, other) == namespaceOf(element, prefix))
            return true;
    }
    return false;
}

// True when two attributes of one element would come to have the same name and namespace if `top`
// declared the prefix so.
bool wouldMakeAmbiguous(const Element& top, std::u16string_view prefix, std::u16string_view uri) {
    const auto clashes = [&](const Element& element, std::u16string_view local) {
        for (const Attribute& at : attributesOf(element)) {
            const std::u16string_view other = at.name->prefix();
            if (other.empty() || other == prefix || at.name->local() != local) continue;
            if (other != kXmlns && namespaceOf(element, other) == uri) return true;
        }
        return false;
    };
    for (const Node* node = &top; node; node = following(node, &top)) {
        if (!node->isElement()) continue;
        const Element& element = *asElement(node);
        for (const Attribute& at : attributesOf(element)) {
            if (at.name->prefix() == prefix && clashes(element, at.name->local()) &&
                !declarationOf(&element, prefix, &top))
                return true;
        }
    }
    return false;
}

bool anyPrefixDeclared(const Element* from) {
    for (; from; from = from->parent) {
        for (const Attribute& at : attributesOf(*from)) {
            if (at.name->prefix() == kXmlns) return true;
        }
    }
    return false;
}

// Gathers the prefixes that names at or below `top` use and nothing there declares, in one walk.
class OpenPrefixes {
public:
    std::vector<std::u16string_view> gather(const Element& top) {
        const Node* at = &top;
        while (true) {
            if (at->isElement()) enter(*asElement(at));
            const Node* next = following(at, &top);
            if (!next) return std::move(open_);
            if (next->parent != at) leave(at, next->parent);
            at = next;
        }
    }

private:
    void enter(const Element& element) {
        for (const Attribute& at : attributesOf(element)) {
            if (at.name->prefix() == kXmlns) ++declared_[at.name->local()];
        }
        use(element.name->view());
        for (const Attribute& at : attributesOf(element))
            use(at.name->view());
    }
    void leave(const Node* from, const Node* to) {
        for (; from != to; from = from->parent) {
            if (!from->isElement()) continue;
            for (const Attribute& at : attributesOf(*asElement(from))) {
                if (at.name->prefix() == kXmlns) --declared_[at.name->local()];
            }
        }
    }
    void use(std::u16string_view name) {
        const std::u16string_view prefix = prefixOf(name);
        if (prefix.empty() || prefix == kXml || prefix == kXmlns) return;
        const auto declared = declared_.find(prefix);
        if (declared != declared_.end() && declared->second > 0) return;
        if (std::find(open_.begin(), open_.end(), prefix) == open_.end()) open_.push_back(prefix);
    }

    std::unordered_map<std::u16string_view, int> declared_;
    std::vector<std::u16string_view> open_;
};

}  // namespace

bool isDeclaration(std::u16string_view name) {
    return name == kXmlns || prefixOf(name) == kXmlns;
}

std::size_t prefixesInScope(const Element& element) {
    std::size_t count = 0;
    for (const Element* at = &element; at; at = at->parent) {
        const auto attributes = attributesOf(*at);
        count += static_cast<std::size_t>(std::count_if(
            attributes.begin(), attributes.end(),
            [](const Attribute& attribute) { return isDeclaration(attribute.name->view()); }));
    }
    return count;
}

std::u16string_view namespaceOf(const Element& element, std::u16string_view prefix) {
    if (prefix == kXml) return kXmlUri;
    const Attribute* declaration =
        prefix.empty() ? defaultDeclarationOf(&element) : declarationOf(&element, prefix);
    return declaration ? declaration->value() : std::u16string_view();
}

bool isDeclarationAllowed(std::u16string_view name, std::u16string_view uri) {
    if (name == kXmlns) return uri != kXmlUri && uri != kXmlnsUri;
    const std::u16string_view prefix = localNameOf(name);
    if (prefix == kXml) return uri == kXmlUri;
    return prefix != kXmlns && !uri.empty() && uri != kXmlUri && uri != kXmlnsUri;
}

bool isPrefixInScope(const Element* scope, std::u16string_view prefix) {
    if (prefix.empty() || prefix == kXml) return true;
    return prefix != kXmlns && declarationOf(scope, prefix);
}

bool isAttributeAllowed(const Element& element, std::u16string_view name,
                        std::u16string_view value) {
    if (name == kXmlns) return isDeclarationAllowed(name, value);
    const std::u16string_view prefix = prefixOf(name);
    if (prefix == kXmlns) {
        return isDeclarationAllowed(name, value) &&
               !wouldMakeAmbiguous(element, localNameOf(name), value);
    }
    if (prefix.empty()) return true;
    return isPrefixInScope(&element, prefix) && !isAmbiguous(element, name);
}

void keepNamespaces(Element& element) {
    if (!element.parent || !anyPrefixDeclared(element.parent)) return;
    copyNamespaces(element, element);
}

void copyNamespaces(const Element& source, Element& copy) {
    if (!anyPrefixDeclared(source.parent)) return;
    for (const std::u16string_view prefix : OpenPrefixes().gather(source)) {
        const Attribute* declaration = declarationOf(source.parent, prefix);
        if (declaration) setAttribute(copy, declaration->name->view(), declaration->value());
    }
}

}  // namespace corvane::xml
