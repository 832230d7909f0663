#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include <corvane/text/CStringW.h>

/// One value of the kind Type_CustomRuleData: an ordered sequence of texts. Copying copies the
/// texts.
class QORCustomRuleData {
public:
    using const_iterator = std::vector<CStringW>::const_iterator;  ///< For a loop over the texts.

    QORCustomRuleData() = default;
    /// A value of these texts.
    explicit QORCustomRuleData(std::vector<CStringW> texts) : texts_(std::move(texts)) {}

    void Add(CStringW text) { texts_.push_back(std::move(text)); }   ///< Appends a text.
    int GetSize() const { return static_cast<int>(texts_.size()); }  ///< Number of texts.
    /// The text at a position from 0 to GetSize() minus 1; the range is the caller's to keep.
    const CStringW& GetAt(int index) const { return texts_[static_cast<std::size_t>(index)]; }

    const_iterator begin() const { return texts_.begin(); }
    const_iterator end() const { return texts_.end(); }

    friend bool operator==(const QORCustomRuleData&, const QORCustomRuleData&) = default;

private:
    std::vector<CStringW> texts_;
};
