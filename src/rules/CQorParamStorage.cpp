#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

#include <corvane/app/StringResources.h>
#include <corvane/platform/MessageBox.h>
#include <corvane/rules/CQorParamStorage.h>

#include "rules/Storages.h"

namespace corvane::rules {
namespace {

using List = CQorArray<CQorParamStorage*>;

// A walk over fewer storages costs less than what an index asks for.
constexpr int kShortList = 64;
// An index costs about as much as this many walks, so it is made after as many.
constexpr std::size_t kWalksBeforeIndex = 4;

std::atomic<bool> anyIndex = false;
std::atomic<std::uint64_t> storagesGone = 0;

// The numbers of one list. It is kept outside the rule, whose fields are fixed.
class StorageIndex {
public:
    CQorParamStorage* find(const List& list, QorLong id) {
        if (!isOf(list)) begin(list);
        if (!indexed_) {
            CQorParamStorage* const storage = findStorage(list, id);
            walked_ += storages_.size();
            if (walked_ >= kWalksBeforeIndex * storages_.size()) make(list);
            return storage;
        }
        const auto at = std::lower_bound(numbers_.begin(), numbers_.end(), std::pair(id, 0));
        // A number that is not there may have been given to a storage since.
        if (at == numbers_.end() || at->first != id) return findStorage(list, id);
        // The storages up to there have to be those of the index: that makes it the first.
        const auto seen = static_cast<std::ptrdiff_t>(at->second) + 1;
        CQorParamStorage* const storage = storages_[static_cast<std::size_t>(at->second)];
        if (std::equal(storages_.begin(), storages_.begin() + seen, list.begin()) &&
            storage->m_lId == id)
            return storage;
        begin(list);
        return findStorage(list, id);
    }

private:
    bool isOf(const List& list) const {
        return data_ == list.m_pData &&
               storages_.size() == static_cast<std::size_t>(list.GetSize()) &&
               gone_ == storagesGone.load(std::memory_order_relaxed);
    }

    void begin(const List& list) {
        data_ = list.m_pData;
        gone_ = storagesGone.load(std::memory_order_relaxed);
        storages_.assign(list.begin(), list.end());
        numbers_.clear();
        walked_ = 0;
        indexed_ = false;
    }

    void make(const List& list) {
        anyIndex.store(true, std::memory_order_relaxed);
        begin(list);
        for (int i = 0; i < list.GetSize(); ++i) {
            if (list.GetAt(i)) numbers_.emplace_back(list.GetAt(i)->m_lId, i);
        }
        std::sort(numbers_.begin(), numbers_.end());
        indexed_ = true;
    }

    CQorParamStorage* const* data_ = nullptr;
    std::uint64_t gone_ = 0;
    std::vector<CQorParamStorage*> storages_;
    std::vector<std::pair<QorLong, int>> numbers_;  // with their places, in order
    std::size_t walked_ = 0;
    bool indexed_ = false;
};

// Few lists are looked at in turn; two that meet in one slot take turns without an index.
struct Slot {
    std::mutex mutex;
    StorageIndex index;
};

Slot& slotOf(const List& list) {
    static std::array<Slot, 16> slots;
    constexpr std::uintptr_t kGranularity = 64;
    return slots[reinterpret_cast<std::uintptr_t>(&list) / kGranularity % slots.size()];
}

}  // namespace

CQorParamStorage* findIndexed(const List& storages, QorLong id) {
    if (storages.GetSize() <= kShortList) return findStorage(storages, id);
    Slot& slot = slotOf(storages);
    const std::unique_lock lock(slot.mutex, std::try_to_lock);
    if (!lock) return findStorage(storages, id);
    try {
        return slot.index.find(storages, id);
    } catch (const std::bad_alloc&) {
        slot.index = StorageIndex();
        return findStorage(storages, id);
    }
}

void forgetStorage() {
    if (anyIndex.load(std::memory_order_relaxed))
        storagesGone.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace corvane::rules

// Defined here, so that they are among the library's exports.
CQorParamStorage::CQorParamStorage() = default;
CQorParamStorage& CQorParamStorage::operator=(const CQorParamStorage&) = default;

CQorParamStorage::~CQorParamStorage() {
    corvane::rules::forgetStorage();
    corvane::rules::visitParameter(this, []<typename T>(CQorParameter<T>& parameter) {
        if constexpr (corvane::kClonedValue<T>) {
            for (const T value : parameter.m_Values)
                delete value;
        }
        delete &parameter;
    });
}

namespace corvane::rules {

void reportIllegalParameter() {
    AfxMessageBox(ResourceText(resource::kIllegalParameter).data());
}

}  // namespace corvane::rules
