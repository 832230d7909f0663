#pragma once

#include <memory>
#include <string_view>

#include <corvane/xml/QorXMLNode.h>

namespace corvane::xml {

class Element;

/// Builds an element as the library's own writers do: in memory of its own, without a node object
/// for each child. Names are the caller's literals and known to be XML names without a prefix; text
/// that XML cannot carry raises kErrorFail.
class ElementWriter {
public:
    /// A new element for a document, attached to nothing. Raises kErrorPointer for a document
    /// without parser.
    static std::unique_ptr<QorXMLNode> make(const QorXMLDocument& document,
                                            std::u16string_view name);

    /// For a node that `make` gave, to which nothing but this class has added.
    explicit ElementWriter(const QorXMLNode& node);

    /// Appends an attribute that is not there yet.
    void attribute(std::u16string_view name, std::u16string_view value);
    /// Appends an empty child element.
    ElementWriter child(std::u16string_view name);
    /// Gives an empty element its text.
    void text(std::u16string_view text);

private:
    explicit ElementWriter(Element& element) : element_(element) {}

    Element& element_;
};

}  // namespace corvane::xml
