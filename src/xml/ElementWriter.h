#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include <corvane/xml/QorXMLNode.h>

namespace corvane::xml {

class Element;

/// Builds an element as the library's own writers do: without a node object for each child, and in
/// one piece of memory where `make` begins it. Names of attributes and children are the caller's
/// literals, known to be XML names without prefix. Text that XML cannot carry raises kErrorFail,
/// and memory that runs out kErrorOutOfMemory.
/// Who knows how many attributes an element gets says so when it is made, which saves memory.
class ElementWriter {
public:
    /// A new element for a document, attached to nothing. Raises kErrorPointer for a document
    /// without parser, and kErrorFail for a name that is no XML name or has a prefix.
    static std::unique_ptr<QorXMLNode> make(const QorXMLDocument& document,
                                            std::u16string_view name, std::size_t attributes = 0);

    /// An empty node raises kErrorPointer.
    explicit ElementWriter(const QorXMLNode& node);
    explicit ElementWriter(Element& element) : element_(element) {}

    Element& element() const { return element_; }

    /// Appends an attribute that is not there yet.
    void attribute(std::u16string_view name, std::u16string_view value);
    /// Appends an empty child element.
    ElementWriter child(std::u16string_view name, std::size_t attributes = 0);
    /// Gives an empty element its text.
    void text(std::u16string_view text);

private:
    Element& element_;
};

}  // namespace corvane::xml
