#include <corvane/dfx/SCContentDataList.h>

namespace dfx {

IContentData::~IContentData() = default;

SCContentDataList::SCContentDataList() : ISchema(kType) {}

SCContentDataList::~SCContentDataList() {
    for (const IContentData* const entry : entries_)
        delete entry;
    entries_.clear();
}

short SCContentDataList::type() const {
    return ISchema::type();
}

void SCContentDataList::addContentData(IContentData*& data) {
    entries_.push_back(data);
}

int SCContentDataList::getNumContentData() const {
    return static_cast<int>(entries_.size());
}

void SCContentDataList::getContentData(int index, IContentData*& data) {
    if (index >= 0 && index < getNumContentData()) data = entries_[static_cast<std::size_t>(index)];
}

}  // namespace dfx
