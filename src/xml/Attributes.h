#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "xml/Node.h"

namespace corvane::xml {

/// The attributes of an element, which follow this in memory, in the order of their making.
class AttributeList {
public:
    std::span<Attribute> items() { return {reinterpret_cast<Attribute*>(this + 1), size_}; }

private:
    friend Attribute* findAttribute(const Element& element, std::u16string_view name);
    friend Attribute& addAttribute(Element& element, const Name* name, std::u16string_view value,
                                   std::size_t expected);
    friend void reserveAttributes(Element& element, std::size_t expected);
    friend void dropAttributes(Element& element) noexcept;
    class Index;

    static AttributeList* make(Pool* pool, std::size_t capacity);

    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 0;
    std::unique_ptr<Index> index_;  ///< Where there are many, once one has been looked for.
};

inline std::span<Attribute> attributesOf(Element& element) {
    return element.attributeList ? element.attributeList->items() : std::span<Attribute>();
}
inline std::span<const Attribute> attributesOf(const Element& element) {
    return attributesOf(const_cast<Element&>(element));
}

/// The attribute of that name, prefix included, or null.
Attribute* findAttribute(const Element& element, std::u16string_view name);

/// Adds an attribute after the others, for a name and units that lie in the element's pool; the
/// caller says otherwise in what this gives. `expected` is how many the element will have in the
/// end.
Attribute& addAttribute(Element& element, const Name* name, std::u16string_view value,
                        std::size_t expected);

/// Makes room for the attributes of an element that has none.
void reserveAttributes(Element& element, std::size_t expected);

/// Adds an attribute that is not there yet, in the pool of an element that has one.
void appendAttribute(Element& element, std::u16string_view name, std::u16string_view value);

/// Adds or changes an attribute with texts of its own. Name and value are known to be lawful.
void setAttribute(Element& element, std::u16string_view name, std::u16string_view value);

void dropAttributes(Element& element) noexcept;

}  // namespace corvane::xml
