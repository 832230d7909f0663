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
// Places that each look-up compares with those of the index, which takes no longer than the rest.
constexpr std::ptrdiff_t kAlwaysCompared = 512;

// Counted from the first index on: new storages, and those that go or take over another number.
std::atomic<bool> anyIndex = false;
std::atomic<std::uint64_t> storagesMade = 0;
std::atomic<std::uint64_t> numbersLost = 0;

void countOne(std::atomic<std::uint64_t>& counter) {
    if (anyIndex.load(std::memory_order_relaxed)) counter.fetch_add(1, std::memory_order_relaxed);
}

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
        if (CQorParamStorage* const storage = proved(list, at)) return storage;
        begin(list);
        return findStorage(list, id);
    }

private:
    using Entry = std::pair<QorLong, int>;

    bool isOf(const List& list) {
        if (data_ != list.m_pData || storages_.size() != static_cast<std::size_t>(list.GetSize()) ||
            lost_ != numbersLost.load(std::memory_order_relaxed))
            return false;
        const std::uint64_t made = storagesMade.load(std::memory_order_relaxed);
        if (made == std::exchange(made_, made)) return true;
        return std::equal(storages_.begin(), storages_.end(), list.begin());
    }

    // The storage of an entry when it is still the first of its number. If another one of the index
    // has the number, the storages before it have to be those of the index. If none has, only a
    // storage that the index does not know could come before it: isOf notices a new one, and one of
    // another list stays there for life.
    CQorParamStorage* proved(const List& list, std::vector<Entry>::const_iterator entry) const {
        CQorParamStorage* const storage = storages_[static_cast<std::size_t>(entry->second)];
        const auto next = entry + 1;
        const bool isOnlyOne = next == numbers_.end() || next->first != entry->first;
        const std::ptrdiff_t before = entry->second;
        const auto compared = isOnlyOne ? std::min(before, kAlwaysCompared) : before;
        const bool isFirst =
            list.GetAt(entry->second) == storage && storage->m_lId == entry->first &&
            std::equal(storages_.begin(), storages_.begin() + compared, list.begin());
        return isFirst ? storage : nullptr;
    }

    void begin(const List& list) {
        data_ = list.m_pData;
        made_ = storagesMade.load(std::memory_order_relaxed);
        lost_ = numbersLost.load(std::memory_order_relaxed);
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
    std::uint64_t made_ = 0;
    std::uint64_t lost_ = 0;
    std::vector<CQorParamStorage*> storages_;
    std::vector<Entry> numbers_;  // with their places, in order
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

}  // namespace corvane::rules

// Defined here, so that they are among the library's exports.
CQorParamStorage::CQorParamStorage() {
    corvane::rules::countOne(corvane::rules::storagesMade);
}

CQorParamStorage& CQorParamStorage::operator=(const CQorParamStorage& source) {
    if (this == &source) return *this;
    corvane::rules::countOne(corvane::rules::numbersLost);
    m_Type = source.m_Type;
    m_lId = source.m_lId;
    m_bOption = source.m_bOption;
    m_bStatus = source.m_bStatus;
    m_pParameter = source.m_pParameter;
    return *this;
}

CQorParamStorage::~CQorParamStorage() {
    corvane::rules::countOne(corvane::rules::numbersLost);
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
