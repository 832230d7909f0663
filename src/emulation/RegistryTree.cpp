#include "emulation/RegistryTree.h"

#include <algorithm>
#include <utility>

#include "system/Unicode.h"

namespace corvane::emulation {

using namespace system;

namespace {

// Cuts the first part that is not empty off a path; empty at the end.
std::u16string_view takePart(std::u16string_view& path) {
    path.remove_prefix(std::min(path.find_first_not_of(u'\\'), path.size()));
    const std::u16string_view part = path.substr(0, path.find(u'\\'));
    path.remove_prefix(part.size());
    return part;
}

bool isAllowed(std::u16string_view path) {
    std::size_t levels = 0;
    for (auto part = takePart(path); !part.empty(); part = takePart(path)) {
        if (part.size() > RegistryNode::kLongestName || part.find(u'\0') != part.npos) return false;
        if (++levels > RegistryNode::kMostLevels) return false;
    }
    return true;
}

}  // namespace

bool RegistryNameOrder::operator()(std::u16string_view a, std::u16string_view b) const {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (a[i] == b[i]) continue;
        const char16_t x = toUpper(a[i]);
        const char16_t y = toUpper(b[i]);
        if (x != y) return x < y;
    }
    return a.size() < b.size();
}

const RegistryNode* RegistryNode::find(std::u16string_view path) const {
    const RegistryNode* node = this;
    for (auto part = takePart(path); !part.empty(); part = takePart(path)) {
        const auto found = node->subkeys_.find(part);
        if (found == node->subkeys_.end()) return nullptr;
        node = found->second.get();
    }
    return node;
}

RegistryNode* RegistryNode::make(std::u16string_view path, std::size_t& budget) {
    if (!isAllowed(path)) return nullptr;
    RegistryNode* node = this;
    for (auto part = takePart(path); !part.empty(); part = takePart(path)) {
        auto place = node->subkeys_.lower_bound(part);
        if (place == node->subkeys_.end() || RegistryNameOrder()(part, place->first)) {
            if (budget == 0) return nullptr;
            --budget;
            place = node->subkeys_.emplace_hint(place, part, std::make_unique<RegistryNode>());
        }
        node = place->second.get();
    }
    return node;
}

void RegistryNode::remove(std::u16string_view path) {
    path = path.substr(0, path.find_last_not_of(u'\\') + 1);
    const std::size_t separator = path.rfind(u'\\');
    const std::size_t nameStart = separator == path.npos ? 0 : separator + 1;
    RegistryNode* parent = find(path.substr(0, nameStart));
    if (!parent) return;
    const auto found = parent->subkeys_.find(path.substr(nameStart));
    if (found != parent->subkeys_.end()) parent->subkeys_.erase(found);
}

void RegistryNode::overlay(const RegistryNode& upper) {
    for (const auto& [name, value] : upper.values_)
        values_.insert_or_assign(name, value);
    for (const auto& [name, subkey] : upper.subkeys_) {
        auto& own = subkeys_[name];
        if (!own) own = std::make_unique<RegistryNode>();
        own->overlay(*subkey);
    }
}

void RegistryNode::index() {
    names_.clear();
    names_.reserve(subkeys_.size());
    for (const auto& [name, subkey] : subkeys_) {
        names_.emplace_back(name);
        subkey->index();
    }
}

const RegistryValue* RegistryNode::value(std::u16string_view name) const {
    const auto found = values_.find(name);
    return found == values_.end() ? nullptr : &found->second;
}

void RegistryNode::setValue(std::u16string_view name, RegistryValue value) {
    values_.insert_or_assign(std::u16string(name), std::move(value));
}

void RegistryNode::removeValue(std::u16string_view name) {
    const auto found = values_.find(name);
    if (found != values_.end()) values_.erase(found);
}

}  // namespace corvane::emulation
