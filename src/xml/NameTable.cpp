#include "xml/NameTable.h"

#include <string>

#include "system/Unicode.h"

namespace corvane::xml {
namespace {

// Stands for the prefix of declarations in a key: no pointer of the parser's.
constexpr xmlChar kXmlns[] = "xmlns";

std::string_view bytes(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}

}  // namespace

std::u16string_view NameTable::name(const xmlChar* prefix, const xmlChar* local) {
    std::u16string_view& known = names_[{prefix, local}];
    if (known.empty()) {
        std::u16string name;
        if (prefix) {
            system::appendFromUtf8(name, bytes(prefix));
            name += u':';
        }
        system::appendFromUtf8(name, bytes(local));
        known = pool_.copy(name);
    }
    return known;
}

std::u16string_view NameTable::declaration(const xmlChar* prefix) {
    return prefix ? name(kXmlns, prefix) : name(nullptr, kXmlns);
}

}  // namespace corvane::xml
