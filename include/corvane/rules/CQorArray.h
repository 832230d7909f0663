#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>

/// The growable array of the rule model: parameter values, storages and constraints.
///
/// It owns its buffer, unless its capacity is 0, and nothing that pointer elements point to.
/// Elements are plain values that are copied as one block; every slot of a new buffer is zero. An
/// index is the caller's to keep in range except where an operation says otherwise. The fields and
/// their order are part of the interface to rule modules; change them through the operations only.
template <typename T>
class CQorArray {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    static constexpr int kInitialCapacity = 10;  ///< Slots of a new array.
    static constexpr int kInitialGrowBy = 1;     ///< Growth step of a new array.

    CQorArray() : m_pData(zeroed(kInitialCapacity)) {}

    /// Copies the elements (pointers as pointers), the capacity and the growth step.
    CQorArray(const CQorArray& source)
        : m_pData(copyOf(source)),
          m_nCount(source.m_nCount),
          m_nCapacity(capacityOf(source)),
          m_nGrowBy(source.m_nGrowBy) {}

    CQorArray& operator=(const CQorArray& source) {
        if (this == &source) return *this;
        replaceBuffer(copyOf(source));
        m_nCount = source.m_nCount;
        m_nCapacity = capacityOf(source);
        m_nGrowBy = source.m_nGrowBy;
        return *this;
    }

    ~CQorArray() { freeBuffer(); }

    int GetSize() const { return m_nCount; }  ///< Number of elements.
    ///@{
    /// The element at `index`, from 0.
    T& GetAt(int index) { return m_pData[index]; }
    const T& GetAt(int index) const { return m_pData[index]; }
    ///@}

    /// The elements in order, for loops. Adding, removing and Reset end what these give.
    T* begin() { return m_pData; }
    T* end() { return m_pData + m_nCount; }
    const T* begin() const { return m_pData; }
    const T* end() const { return m_pData + m_nCount; }

    /// Appends. A full array grows by its growth step, and the step itself grows.
    void Add(T value) {
        if (m_nCount >= m_nCapacity) grow();
        m_pData[m_nCount] = value;
        ++m_nCount;
    }

    /// Removes one element; the later ones move down. False, with nothing done, when `index` is not
    /// below the size. `index` must not be negative. What a pointer points to is not released.
    bool RemoveAt(int index) {
        if (index >= m_nCount) return false;
        std::copy(begin() + index + 1, end(), begin() + index);
        --m_nCount;
        return true;
    }

    /// Empties the array and gives it the capacity and the growth step of a new one. What pointers
    /// point to is not released.
    void Reset() {
        if (m_nCapacity == kInitialCapacity) {
            std::fill_n(m_pData, m_nCapacity, T());
        } else {
            replaceBuffer(zeroed(kInitialCapacity));
            m_nCapacity = kInitialCapacity;
        }
        m_nGrowBy = kInitialGrowBy;
        m_nCount = 0;
    }

    T* m_pData;                          ///< m_nCapacity slots.
    int m_nCount = 0;                    ///< Elements in use.
    int m_nCapacity = kInitialCapacity;  ///< Slots allocated.
    int m_nGrowBy = kInitialGrowBy;      ///< Slots that the next growth adds.

private:
    static T* zeroed(int capacity) {
        return capacity > 0 ? new T[static_cast<std::size_t>(capacity)]() : nullptr;
    }

    // A copy owns its buffer, so it has the capacity for what a borrowed one holds.
    static int capacityOf(const CQorArray& source) {
        return std::max(source.m_nCapacity, source.m_nCount);
    }

    static T* copyOf(const CQorArray& source) {
        T* const data = zeroed(capacityOf(source));
        std::copy(source.begin(), source.end(), data);
        return data;
    }

    // A rule module that sets the capacity to 0 keeps the buffer for itself.
    void freeBuffer() {
        if (m_nCapacity > 0) delete[] m_pData;
    }

    void replaceBuffer(T* data) {
        freeBuffer();
        m_pData = data;
    }

    // Small arrays grow in small steps, since most parameters have a handful of values; from a step
    // of 10 on the step grows by a fifth, so that appending stays linear over all.
    void grow() {
        constexpr int kFirstLargeStep = 10;
        // A borrowed buffer may hold more than the capacity says.
        const int capacity = std::max(m_nCapacity + m_nGrowBy, m_nCount + 1);
        T* const data = zeroed(capacity);
        std::copy(begin(), end(), data);
        replaceBuffer(data);
        m_nCapacity = capacity;
        m_nGrowBy += m_nGrowBy < kFirstLargeStep ? 3 : m_nGrowBy / 5;
    }
};
