#pragma once

#include <exception>
#include <mutex>
#include <new>
#include <utility>

namespace corvane::part {

/// A value that is made when it is first asked for. What cannot be made stays empty, so that the
/// next question does not repeat the work of the first.
template <typename T>
class Lazy {
public:
    template <typename Make>
    const T& get(Make make) {
        std::call_once(once_, [&] {
            try {
                value_ = make();
            } catch (const std::bad_alloc&) {
                throw;
            } catch (const std::exception&) {
                value_ = T();
            }
        });
        return value_;
    }

private:
    std::once_flag once_;
    T value_{};
};

}  // namespace corvane::part
