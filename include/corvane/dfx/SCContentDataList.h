#pragma once

#include <vector>

#include <corvane/dfx/IContentData.h>
#include <corvane/dfx/ISchema.h>

namespace dfx {

/// Schema 131: content data in the order of adding.
///
/// The list owns its entries and deletes each of them once, from the first to the last, when it
/// ends. It therefore refuses to be copied; documents share the list itself.
class CORVANE_EXPORT SCContentDataList : public ISchema {
public:
    /// The number of this schema.
    static constexpr short kType = 131;

    SCContentDataList();
    SCContentDataList(const SCContentDataList&) = delete;
    SCContentDataList& operator=(const SCContentDataList&) = delete;
    ~SCContentDataList() override;

    short type() const override;

    /// Appends an object that was made with `new` and takes it over; null is an entry too. The
    /// caller's pointer stays as it is. An object may be in one list, once. With `std::bad_alloc`
    /// it stays the caller's.
    void addContentData(IContentData*& data);
    int getNumContentData() const;  ///< Number of entries.
    /// Gives the entry, which stays the list's. An index below 0 or after the last entry leaves
    /// `data` as it was.
    void getContentData(int index, IContentData*& data);

private:
    std::vector<IContentData*> entries_;
};

}  // namespace dfx
