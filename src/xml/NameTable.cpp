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
    const Key key{prefix, local};
    auto& recent = recent_[Hash()(key) % recent_.size()];
    if (!recent.second || recent.first != key) recent = {key, find(key)};
    return recent.second;
}

const Name* NameTable::find(const Key& key) {
    const Name*& known = names_[key];
    if (!known) {
        std::u16string name;
        if (key.prefix) {
            system::appendFromUtf8(name, bytes(key.prefix));
            name += u':';
        }
        system::appendFromUtf8(name, bytes(key.local));
        known = Name::makeIn(pool_, name);
    }
    return known;
}

const Name* NameTable::declaration(const xmlChar* prefix) {
    return prefix ? name(kXmlns, prefix) : name(nullptr, kXmlns);
}

}  // namespace corvane::xml
