// Rules read from the events of libxml2, without a tree, and those events alone.
#include <libxml/parser.h>

#include "PeerEvents.h"

namespace {

std::string_view view(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}

void startElement(void* self, const xmlChar* name, const xmlChar*, const xmlChar*, int,
                  const xmlChar**, int count, int, const xmlChar** attributes) {
    const xmlChar** const end = attributes + 5 * count;
    static_cast<PeerEvents*>(self)->startElement(
        view(name), [&](std::string_view& key, std::string_view& value) {
            if (attributes == end) return false;
            key = view(attributes[0]);
            value = {reinterpret_cast<const char*>(attributes[3]),
                     static_cast<std::size_t>(attributes[4] - attributes[3])};
            attributes += 5;
            return true;
        });
}

void endElement(void* self, const xmlChar* name, const xmlChar*, const xmlChar*) {
    static_cast<PeerEvents*>(self)->endElement(view(name));
}

void characters(void* self, const xmlChar* text, int length) {
    static_cast<PeerEvents*>(self)->characters(
        {reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
}

void parse(const std::string& path, xmlSAXHandler handler, void* self) {
    const std::string bytes = fileBytes(path);
    handler.initialized = XML_SAX2_MAGIC;
    xmlSAXUserParseMemory(&handler, self, bytes.data(), static_cast<int>(bytes.size()));
}

}  // namespace

PeerRules readBySax(const std::string& path) {
    PeerEvents events;
    xmlSAXHandler handler{};
    handler.startElementNs = startElement;
    handler.endElementNs = endElement;
    handler.characters = characters;
    handler.ignorableWhitespace = characters;
    parse(path, handler, &events);
    return std::move(events.rules);
}

void parseEvents(const std::string& path) {
    xmlSAXHandler handler{};
    handler.startElementNs = [](void*, const xmlChar*, const xmlChar*, const xmlChar*, int,
                                const xmlChar**, int, int, const xmlChar**) {};
    handler.endElementNs = [](void*, const xmlChar*, const xmlChar*, const xmlChar*) {};
    handler.characters = [](void*, const xmlChar*, int) {};
    handler.ignorableWhitespace = handler.characters;
    parse(path, handler, nullptr);
}
