#include "xml/NameTable.h"

#include <string>

#include "system/Unicode.h"

namespace corvane::xml {
namespace {

// The prefix of declarations in a key: no pointer of the parser's.
constexpr xmlChar kXmlns[] = "xmlns";

std::string_view bytes(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}

}  // namespace

const Name* NameTable::name(const xmlChar* prefix, const xmlChar* local) {
    const Name*& known = names_[{prefix, local}];
    if (!known) {
        std::u16string name;
        if (prefix) {
            system::appendFromUtf8(name, bytes(prefix));
            name += u':';
        }
        system::appendFromUtf8(name, bytes(local));
        known = Name::makeAt(pool_.allocate(Name::sizeFor(name), alignof(Name)), name);
    }
    return known;
}

const Name* NameTable::declaration(const xmlChar* prefix) {
    return prefix ? name(kXmlns, prefix) : name(nullptr, kXmlns);
}

}  // namespace corvane::xml
