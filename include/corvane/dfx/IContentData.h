#pragma once

#include <corvane/base/Export.h>

namespace dfx {

/// An entry of a content data list. The modules that exchange entries derive from it and agree on
/// what an entry offers; the list only deletes it.
class CORVANE_EXPORT IContentData {
public:
    IContentData() = default;
    IContentData(const IContentData&) = default;
    IContentData& operator=(const IContentData&) = default;
    virtual ~IContentData();
};

}  // namespace dfx
