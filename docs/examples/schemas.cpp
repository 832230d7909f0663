#include <string_view>

#include <corvane/dfx/IDocument.h>
#include <corvane/dfx/ISchemaFactory.h>
#include <corvane/dfx/SCContentDataList.h>
#include <corvane/dfx/SCInfo.h>

namespace {

struct Sketch : dfx::IContentData {
    int lines = 4;
};

}  // namespace

int main() {
    dfx::IDocument document;
    const auto factory = dfx::createFactory();
    document.setSchema(dfx::SCInfo::kType, factory->create(dfx::SCInfo::kType));

    const auto info =
        std::dynamic_pointer_cast<dfx::SCInfo>(document.getSchema(dfx::SCInfo::kType));
    info->setPartFile(u"bracket.stl");

    // The list owns what is added to it.
    const auto list = std::make_shared<dfx::SCContentDataList>();
    dfx::IContentData* sketch = new Sketch;
    list->addContentData(sketch);
    document.setSchema(list->type(), list);

    dfx::IContentData* found = nullptr;
    list->getContentData(0, found);
    const bool right = static_cast<Sketch*>(found)->lines == 4 &&
                       info->getPartFile() == std::u16string_view(u"bracket.stl") &&
                       info->getDrillDatabaseUnit() == std::u16string_view(u"DocumentUnit") &&
                       (*document.begin())->type() == dfx::SCInfo::kType &&
                       !document.getSchema(130);
    return right ? 0 : 1;
}
