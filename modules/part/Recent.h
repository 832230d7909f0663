#pragma once

#include <list>
#include <mutex>
#include <utility>

namespace corvane::part {

/// The last few results of a measure that has parameters.
template <typename Key, typename Value>
class Recent {
public:
    template <typename Make>
    Value get(const Key& key, Make make) {
        const std::lock_guard lock(mutex_);
        for (auto it = kept_.begin(); it != kept_.end(); ++it) {
            if (it->first != key) continue;
            kept_.splice(kept_.begin(), kept_, it);
            return it->second;
        }
        kept_.emplace_front(key, make());
        if (kept_.size() > kMost) kept_.pop_back();
        return kept_.front().second;
    }

private:
    static constexpr std::size_t kMost = 4;
    std::mutex mutex_;
    std::list<std::pair<Key, Value>> kept_;
};

}  // namespace corvane::part
