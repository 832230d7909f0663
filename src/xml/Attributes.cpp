#include "xml/Attributes.h"

#include <algorithm>
#include <new>
#include <unordered_map>
#include <utility>

namespace corvane::xml {
namespace {

// From here on a name is looked up in an index.
constexpr std::size_t kMany = 16;
constexpr std::size_t kFirstCapacity = 4;
constexpr std::size_t kGrowth = 2;

const char16_t* ownCopy(std::u16string_view text) {
    if (text.empty()) return nullptr;
    auto* units = new char16_t[text.size()];
    std::copy(text.begin(), text.end(), units);
    return units;
}

void dropValue(Attribute& attribute) noexcept {
    if (attribute.ownsValue) delete[] attribute.units;
}

}  // namespace

class AttributeList::Index {
public:
    explicit Index(std::span<const Attribute> attributes) {
        for (const Attribute& attribute : attributes)
            add(attribute.name->view());
    }
    void add(std::u16string_view name) {
        places_.emplace(name, static_cast<std::uint32_t>(places_.size()));
    }
    // The number of attributes, when there is none of that name.
    std::size_t find(std::u16string_view name) const {
        const auto found = places_.find(name);
        return found == places_.end() ? places_.size() : found->second;
    }

private:
    std::unordered_map<std::u16string_view, std::uint32_t> places_;
};

AttributeList* AttributeList::make(Pool* pool, std::size_t capacity) {
    const std::size_t size = sizeof(AttributeList) + capacity * sizeof(Attribute);
    void* place = pool ? pool->allocate(size, alignof(AttributeList)) : ::operator new(size);
    auto* list = new (place) AttributeList;
    list->capacity_ = static_cast<std::uint32_t>(capacity);
    return list;
}

Attribute* findAttribute(const Element& element, std::u16string_view name) {
    AttributeList* list = element.attributeList;
    if (!list) return nullptr;
    const std::span<Attribute> items = list->items();
    if (items.size() > kMany) {
        if (!list->index_) {
            list->index_ = std::make_unique<AttributeList::Index>(items);
            if (element.pool()) element.pool()->unseal();  // The index does not lie in it.
        }
        const std::size_t place = list->index_->find(name);
        return place == items.size() ? nullptr : &items[place];
    }
    for (Attribute& item : items) {
        if (item.name->is(name)) return &item;
    }
    return nullptr;
}

Attribute& addAttribute(Element& element, const Name* name, std::u16string_view value,
                        std::size_t expected) {
    AttributeList*& list = element.attributeList;
    if (!list) {
        list = AttributeList::make(element.pool(), std::max(expected, std::size_t{1}));
    } else if (list->size_ == list->capacity_) {
        AttributeList* larger = AttributeList::make(element.pool(), list->capacity_ * kGrowth);
        larger->size_ = list->size_;
        const std::span<Attribute> items = list->items();
        std::copy(items.begin(), items.end(), larger->items().begin());
        larger->index_ = std::move(list->index_);
        AttributeList* old = std::exchange(list, larger);
        old->~AttributeList();
        if (!element.pool()) ::operator delete(old);
    }
    if (list->index_) list->index_->add(name->view());
    ++list->size_;
    Attribute& added = list->items().back();
    added = Attribute();
    added.name = name;
    added.units = value.data();
    added.size = static_cast<std::uint32_t>(value.size());
    return added;
}

void reserveAttributes(Element& element, std::size_t expected) {
    if (expected > 0) element.attributeList = AttributeList::make(element.pool(), expected);
}

void appendAttribute(Element& element, std::u16string_view name, std::u16string_view value) {
    if (!element.pool()) return setAttribute(element, name, value);
    const Name* pooledName = element.pool()->name(name);
    addAttribute(element, pooledName, {element.pool()->copy(value), value.size()}, kFirstCapacity);
}

void setAttribute(Element& element, std::u16string_view name, std::u16string_view value) {
    if (element.pool()) element.pool()->unseal();
    std::unique_ptr<const char16_t[]> units(ownCopy(value));
    Attribute* attribute = findAttribute(element, name);
    if (!attribute) {
        std::unique_ptr<const Name, NameDrop> ownName(Name::make(name));
        attribute = &addAttribute(element, ownName.get(), {}, kFirstCapacity);
        attribute->ownsName = true;
        static_cast<void>(ownName.release());
    }
    dropValue(*attribute);
    attribute->units = units.release();
    attribute->size = static_cast<std::uint32_t>(value.size());
    attribute->ownsValue = attribute->units != nullptr;
}

void dropAttributes(Element& element) noexcept {
    AttributeList* list = std::exchange(element.attributeList, nullptr);
    if (!list) return;
    for (Attribute& attribute : list->items()) {
        if (attribute.ownsName) Name::drop(attribute.name);
        dropValue(attribute);
    }
    list->~AttributeList();
    if (!element.pool()) ::operator delete(list);
}

}  // namespace corvane::xml
