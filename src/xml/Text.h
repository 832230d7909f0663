#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace corvane::xml {

/// The text of a node or an attribute: on the heap, or in the pool of the node that holds it.
class Text {
public:
    Text() = default;
    static Text own(std::u16string_view text) {
        if (text.empty()) return {};
        auto* units = new char16_t[text.size()];
        std::copy(text.begin(), text.end(), units);
        return {units, text.size(), true};
    }
    static Text pooled(std::u16string_view text) { return {text.data(), text.size(), false}; }

    Text(Text&& other) noexcept { swap(other); }
    Text& operator=(Text&& other) noexcept {
        swap(other);
        return *this;
    }
    ~Text() {
        if (owned_) delete[] units_;
    }

    std::u16string_view view() const { return {units_, size_}; }

private:
    Text(const char16_t* units, std::size_t size, bool owned)
        : units_(units), size_(static_cast<std::uint32_t>(size)), owned_(owned) {}
    void swap(Text& other) noexcept {
        std::swap(units_, other.units_);
        std::swap(size_, other.size_);
        std::swap(owned_, other.owned_);
    }

    const char16_t* units_ = nullptr;
    std::uint32_t size_ = 0;
    bool owned_ = false;
};

}  // namespace corvane::xml
