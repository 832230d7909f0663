#include "xml/Namespaces.h"

#include <algorithm>
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

bool declares(const Attribute& attribute, std::u16string_view prefix) {
    const std::u16string_view name = attribute.name.view();
    return prefixOf(name) == kXmlns && localNameOf(name) == prefix;
}

const Attribute* declarationAt(const Element& element, std::u16string_view prefix) {
    for (const Attribute* at = element.firstAttribute; at; at = at->next) {
        if (declares(*at, prefix)) return at;
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

bool isDeclarationAllowed(std::u16string_view prefix, std::u16string_view uri) {
    if (prefix == kXml) return uri == kXmlUri;
    return prefix != kXmlns && !uri.empty() && uri != kXmlUri && uri != kXmlnsUri;
}

// The namespace that attributes with the prefix have at the element, if `changed` stood for
// `uri` there.
std::u16string_view namespaceOf(const Element& element, std::u16string_view prefix) {
    if (prefix == kXml) return kXmlUri;
    const Attribute* declaration = declarationOf(&element, prefix);
    return declaration ? declaration->value.view() : std::u16string_view();
}

bool isAmbiguous(const Element& element, std::u16string_view name) {
    const std::u16string_view prefix = prefixOf(name);
    const std::u16string_view local = localNameOf(name);
    for (const Attribute* at = element.firstAttribute; at; at = at->next) {
        const std::u16string_view other = prefixOf(at->name.view());
        if (other.empty() || other == prefix || other == kXmlns) continue;
        if (localNameOf(at->name.view()) == local &&
            namespaceOf(element, other) == namespaceOf(element, prefix))
            return true;
    }
    return false;
}

bool anyPrefixDeclared(const Element* from) {
    for (; from; from = from->parent) {
        for (const Attribute* at = from->firstAttribute; at; at = at->next) {
            if (prefixOf(at->name.view()) == kXmlns) return true;
        }
    }
    return false;
}

// Gathers the prefixes that names below `top` use and nothing there declares.
class OpenPrefixes {
public:
    explicit OpenPrefixes(const Element& top) : top_(top) {
        for (const Node* at = &top; at; at = following(at, &top)) {
            if (!at->isElement()) continue;
            const Element& element = *asElement(at);
            use(element, element.name.view());
            for (const Attribute* name = element.firstAttribute; name; name = name->next)
                use(element, name->name.view());
        }
    }
    const std::vector<std::u16string_view>& all() const { return prefixes_; }

private:
    void use(const Element& element, std::u16string_view name) {
        const std::u16string_view prefix = prefixOf(name);
        if (prefix.empty() || prefix == kXml || prefix == kXmlns) return;
        if (std::find(prefixes_.begin(), prefixes_.end(), prefix) != prefixes_.end()) return;
        if (!declarationOf(&element, prefix, top_.parent)) prefixes_.push_back(prefix);
    }

    const Element& top_;
    std::vector<std::u16string_view> prefixes_;
};

}  // namespace

bool isPrefixInScope(const Element* scope, std::u16string_view prefix) {
    if (prefix.empty() || prefix == kXml) return true;
    return prefix != kXmlns && declarationOf(scope, prefix);
}

bool isAttributeAllowed(const Element& element, std::u16string_view name,
                        std::u16string_view value) {
    if (name == kXmlns) return value != kXmlUri && value != kXmlnsUri;
    const std::u16string_view prefix = prefixOf(name);
    if (prefix == kXmlns) return isDeclarationAllowed(localNameOf(name), value);
    if (prefix.empty()) return true;
    return isPrefixInScope(&element, prefix) && !isAmbiguous(element, name);
}

void keepNamespaces(Element& element) {
    if (!element.parent || !anyPrefixDeclared(element.parent)) return;
    copyNamespaces(element, element);
}

void copyNamespaces(const Element& source, Element& copy) {
    if (!anyPrefixDeclared(source.parent)) return;
    for (const std::u16string_view prefix : OpenPrefixes(source).all()) {
        const Attribute* declaration = declarationOf(source.parent, prefix);
        if (declaration) setAttribute(copy, declaration->name.view(), declaration->value.view());
    }
}

}  // namespace corvane::xml
