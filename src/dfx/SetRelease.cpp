#include "dfx/SetRelease.h"

#include <new>
#include <utility>
#include <vector>

namespace dfx {
namespace {

using Values = std::set<std::shared_ptr<IValue>, IsValueLessThan>;

// What is left of a set whose destructor has run.
struct Remains {
    std::shared_ptr<IParameters> parent;
    Values values;
};

// Ends the sets of a chain. Each of them, in its destructor, leaves its remains here.
class ChainRelease {
public:
    ChainRelease() : outer_(std::exchange(innermost_, this)) {}
    ChainRelease(const ChainRelease&) = delete;
    ChainRelease& operator=(const ChainRelease&) = delete;
    ~ChainRelease() { innermost_ = outer_; }

    void run(std::shared_ptr<IParameters> parent) {
        release(std::move(parent));
        while (!remains_.empty()) {
            if (remains_.back().parent) {
                release(std::move(remains_.back().parent));
            } else {
                // Out of the list first: what ends with the values may end other sets.
                const Remains last = std::move(remains_.back());
                remains_.pop_back();
            }
        }
    }

    // False when the set is none of a chain that is being released here, or memory is short.
    static bool takeOver(const IParameters* set, std::shared_ptr<IParameters>& parent,
                         Values& values) {
        if (!innermost_ || innermost_->releasing_ != set) return false;
        try {
            Remains& remains = innermost_->remains_.emplace_back();
            remains.parent.swap(parent);
            remains.values.swap(values);
        } catch (const std::bad_alloc&) {
            return false;
        }
        return true;
    }

private:
    void release(std::shared_ptr<IParameters> set) {
        releasing_ = set.get();
        set.reset();
        releasing_ = nullptr;
    }

    static thread_local ChainRelease* innermost_;

    ChainRelease* outer_;
    const IParameters* releasing_ = nullptr;
    std::vector<Remains> remains_;
};

thread_local ChainRelease* ChainRelease::innermost_ = nullptr;

}  // namespace

void releaseParent(const IParameters* set, std::shared_ptr<IParameters> parent,
                   Values& values) noexcept {
    if (!parent || ChainRelease::takeOver(set, parent, values)) return;
    ChainRelease().run(std::move(parent));
}

}  // namespace dfx
