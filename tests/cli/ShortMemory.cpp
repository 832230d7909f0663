// Preloaded, refuses every large block of memory, as a machine does that has nearly none left.

#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kLargest = 300'000;

}  // namespace

void* operator new(std::size_t size) {
    void* const place = size > kLargest ? nullptr : std::malloc(size ? size : 1);
    if (!place) throw std::bad_alloc();
    return place;
}
void operator delete(void* place) noexcept {
    std::free(place);
}
void operator delete(void* place, std::size_t) noexcept {
    std::free(place);
}
