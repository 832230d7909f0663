// Rules read from the events of expat, without a tree.
#include <expat.h>
#include <memory>
#include <type_traits>

#include "PeerEvents.h"

namespace {

struct ParserFree {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

void startElement(void* self, const char* name, const char** attributes) {
    static_cast<PeerEvents*>(self)->startElement(
        name, [&](std::string_view& key, std::string_view& value) {
            if (!*attributes) return false;
            key = attributes[0];
            value = attributes[1];
            attributes += 2;
            return true;
        });
}

void endElement(void* self, const char* name) {
    static_cast<PeerEvents*>(self)->endElement(name);
}

void characters(void* self, const char* text, int length) {
    static_cast<PeerEvents*>(self)->characters({text, static_cast<std::size_t>(length)});
}

}  // namespace

PeerRules readByExpat(const std::string& path) {
    const std::string bytes = fileBytes(path);
    PeerEvents events;
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserFree> parser(
        XML_ParserCreate(nullptr));
    XML_SetUserData(parser.get(), &events);
    XML_SetElementHandler(parser.get(), startElement, endElement);
    XML_SetCharacterDataHandler(parser.get(), characters);
    XML_Parse(parser.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE);
    return std::move(events.rules);
}
