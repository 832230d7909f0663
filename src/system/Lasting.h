#pragma once

#include <memory>
#include <utility>

namespace corvane::system {

/// A static object of this library that gives up its content when the library is unloaded or the
/// process ends, and is not destroyed: code that asks for it later finds it as new. So unloading
/// leaks nothing, and the destructors of a host's own statics may still use the library.
template <typename Content>
class Lasting {
public:
    template <typename... Arguments>
    explicit Lasting(Arguments&&... arguments) {
        std::construct_at(&content_, std::forward<Arguments>(arguments)...);
    }
    ~Lasting() {
        // Assignment may keep what the content holds, as texts do.
        std::destroy_at(&content_);
        std::construct_at(&content_);
    }
    Lasting(const Lasting&) = delete;
    Lasting& operator=(const Lasting&) = delete;

    Content& get() { return content_; }

private:
    union {
        Content content_;
    };
};

}  // namespace corvane::system
