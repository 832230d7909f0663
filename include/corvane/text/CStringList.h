#pragma once

#include <cstddef>
#include <list>
#include <utility>

#include <corvane/text/CStringW.h>

/// A doubly linked list of texts. It owns copies of what is added.
///
/// A position is an iterator: it stays valid until its own entry is removed.
class CStringList {
public:
    using iterator = std::list<CStringW>::iterator;              ///< A position for changing.
    using const_iterator = std::list<CStringW>::const_iterator;  ///< A position for reading.

    /// Adds an entry before the first one.
    void AddHead(CStringW text) { entries_.push_front(std::move(text)); }
    /// Adds an entry after the last one.
    void AddTail(CStringW text) { entries_.push_back(std::move(text)); }
    /// Adds all entries of a list, which may be this one, after the last one.
    void AddTail(const CStringList& other) {
        const std::list<CStringW> copy(other.entries_);  // `other` may be this list
        entries_.insert(entries_.end(), copy.begin(), copy.end());
    }

    ///@{
    /// The first and the last entry. The list must not be empty.
    const CStringW& GetHead() const { return entries_.front(); }
    const CStringW& GetTail() const { return entries_.back(); }
    ///@}
    ///@{
    /// Removes an end and hands its text out; an empty list gives an empty text.
    CStringW RemoveHead() { return take(entries_.begin()); }
    CStringW RemoveTail() { return take(entries_.empty() ? entries_.end() : --entries_.end()); }
    ///@}
    void RemoveAll() { entries_.clear(); }  ///< Empties the list.
    /// Removes an entry and gives the position of the next one.
    iterator RemoveAt(iterator position) { return entries_.erase(position); }
    /// Adds an entry before a position, end() too, and gives its position.
    iterator InsertBefore(iterator position, CStringW text) {
        return entries_.insert(position, std::move(text));
    }

    /// The position of the first entry equal to `text`, or end().
    const_iterator Find(const CStringW& text) const {
        auto position = entries_.begin();
        while (position != entries_.end() && *position != text)
            ++position;
        return position;
    }

    std::size_t GetCount() const { return entries_.size(); }  ///< Number of entries.
    bool IsEmpty() const { return entries_.empty(); }         ///< True without entries.

    iterator begin() { return entries_.begin(); }
    iterator end() { return entries_.end(); }
    const_iterator begin() const { return entries_.begin(); }
    const_iterator end() const { return entries_.end(); }

    friend bool operator==(const CStringList&, const CStringList&) = default;

private:
    CStringW take(iterator position) {
        if (position == entries_.end()) return {};
        CStringW text = std::move(*position);
        entries_.erase(position);
        return text;
    }

    std::list<CStringW> entries_;
};
