#include <gtest/gtest.h>

#include <corvane/dfx/IDocument.h>
#include <corvane/dfx/ISchemaFactory.h>
#include <corvane/dfx/SCContentDataList.h>
#include <corvane/dfx/SCInfo.h>

namespace {

using namespace dfx;

TEST(Document, FilesSchemasUnderTheirOwnNumber) {
    IDocument document;
    for (const int number : {131, 130, 129, 0, -1, 129})
        document.setSchema(131, createFactory()->create(static_cast<short>(number)));
    const auto first = document.getSchema(129);
    IDocument copy(document);
    copy.setSchema(131, std::make_shared<SCInfo>());
    std::vector<short> numbers;
    for (const auto& schema : copy)
        numbers.push_back(schema->type());
    EXPECT_EQ(numbers, (std::vector<short>{129, 131}));
    EXPECT_NE(copy.getSchema(129), first);
    copy = document;
    document.clear();
    EXPECT_EQ(copy.getSchema(129), first);
    EXPECT_FALSE(document.getSchema(129));
}

struct Entry : IContentData {
    explicit Entry(std::vector<const IContentData*>& list) : ended(list) {}
    ~Entry() override { ended.push_back(this); }
    std::vector<const IContentData*>& ended;
};

TEST(ContentDataList, DeletesEachEntryOnceInTheirOrder) {
    std::vector<const IContentData*> ended;
    IContentData* entries[] = {new Entry(ended), nullptr, new Entry(ended)};
    {
        SCContentDataList list;
        for (IContentData*& entry : entries)
            list.addContentData(entry);
        EXPECT_EQ(list.getNumContentData(), 3);
        for (const int index : {-1, 0, 1, 2, 3}) {
            Entry other(ended);
            IContentData* found = &other;
            list.getContentData(index, found);
            EXPECT_EQ(found, index >= 0 && index < 3 ? entries[index] : &other) << index;
        }
        ended.clear();
    }
    EXPECT_EQ(ended, (std::vector<const IContentData*>{entries[0], entries[2]}));
}

}  // namespace
