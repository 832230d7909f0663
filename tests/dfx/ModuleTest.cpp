#include <cstring>
#include <gmock/gmock.h>

#include <corvane/dfx/IContextFactory.h>
#include <corvane/dfx/ICriteriaFactory.h>
#include <corvane/dfx/IOperatorFactory.h>
#include <corvane/dfx/ISchemaFactory.h>
#include <corvane/dfx/Result.h>
#include <corvane/dfx/SCInfo.h>
#include <corvane/platform/LoadedModule.h>

#include "Samples.h"

namespace {

using namespace dfx;

TEST(DfxModule, MakesValuesThatTheProgramReadsCopiesAndEnds) {
    const corvane::LoadedModule module(u"DfxModuleProbe.dll");
    Parameters<IParameters> set;
    module.function<void (*)(IParameters&)>("AddValues")(set);
    int key = 0;
    visitSamples([&](auto number, auto sample) {
        using Held = Value<decltype(sample), number()>;
        const auto held = std::dynamic_pointer_cast<Held>(set.getParameter(key));
        ASSERT_TRUE(held) << key;
        EXPECT_EQ(held->type(), number());
        EXPECT_EQ(held->get(), sample) << key;
        Held copy(*held);
        EXPECT_EQ(copy.description(), std::u16string(u"made"));
        EXPECT_NE(copy.description(), held->description());
        EXPECT_EQ((copy = Held(-1, {})).get(), decltype(sample)()) << key;
        EXPECT_EQ((copy = *held).get(), sample) << key;
        EXPECT_EQ(copy.key(), key++);
    });
    EXPECT_EQ(key, 27);
    EXPECT_FALSE((std::dynamic_pointer_cast<Value<IUnknown*, 10>>(set.getParameter(11))));
    set.clear();
}

TEST(DfxModule, WorksOnWhatTheProgramMadeAndHandsItsOwnBack) {
    const corvane::LoadedModule module(u"DfxModuleProbe.dll");
    std::vector<int> notes;
    std::shared_ptr<IResult> result;
    auto document = std::make_shared<IDocument>();
    {
        std::shared_ptr<IOperatorFactory> factory;
        module.function<void (*)(std::shared_ptr<IOperatorFactory>&)>("MakeFactory")(factory);
        const auto parameters = std::make_shared<Parameters<IParameters>>();
        EXPECT_FALSE(factory->create(parameters, nullptr));
        const auto made = factory->create(parameters, document);
        EXPECT_FALSE(made->execute(parameters, nullptr));
        EXPECT_EQ(parameters.use_count(), 1);
        parameters->addParameter(std::make_shared<Functor>(1, std::make_shared<Note>(notes, 8)));
        result = made->execute(parameters, nullptr);
        (*dynamic_cast<Functor&>(*result->getParameter(2)).get())();
    }
    EXPECT_EQ(result->errorCode(), 7);
    result.reset();
    EXPECT_EQ(notes, std::vector{8});
    document.reset();
    EXPECT_EQ(notes, (std::vector{8, -8}));
}

template <typename Field>
Field fieldAt(const void* object, std::size_t place) {
    Field field;
    std::memcpy(&field, static_cast<const char*>(object) + place, sizeof(Field));
    return field;
}

// The slot of a virtual operation in its table, as the pointer to it says. The destructor, which is
// the first operation, has the slots 0 and 1.
template <typename... Operations>
std::vector<std::size_t> slotsOf(Operations... operations) {
    return {fieldAt<std::size_t>(&operations, 0) / sizeof(void*)...};
}

TEST(DfxLayout, KeepsTheOrderThatModulesRelyOn) {
    using testing::ElementsAre;
    EXPECT_THAT(slotsOf(&IValue::type, &IValue::key, &IValue::description), ElementsAre(2, 3, 4));
    EXPECT_THAT(slotsOf(&IResult::getParameter, &IResult::addParameter, &IResult::clear,
                        &IResult::status, &IResult::errorCode),
                ElementsAre(2, 3, 4, 5, 6));
    EXPECT_THAT(slotsOf(&ISchema::type, &ISchema::setup, &ISchema::cleanup), ElementsAre(2, 3, 4));
    EXPECT_THAT(slotsOf(&IDocument::getSchema, &IDocument::setSchema), ElementsAre(2, 3));
    EXPECT_THAT(
        slotsOf(&IVoidFunctor::operator(), &ISchemaFactory::create, &IOperator::execute,
                &IOperatorFactory::create, &IContextFactory::create, &ICriteriaFactory::create),
        testing::Each(2));

    const Value<double, 8> value(7, u"text", 2.5);
    EXPECT_EQ(fieldAt<int>(&value, 8), 7);
    EXPECT_EQ(fieldAt<const char16_t*>(&value, 16), value.description());
    EXPECT_EQ(fieldAt<double>(&value, 24), 2.5);
    const auto parent = std::make_shared<Parameters<IParameters>>();
    const Parameters<IParameters> set(parent);
    EXPECT_EQ(fieldAt<void*>(&set, 8 + sizeof(std::set<int>)), parent.get());
    const Result result(true, 42);
    EXPECT_EQ(fieldAt<int>(&result, sizeof(set)), 42);
    EXPECT_TRUE(fieldAt<bool>(&result, sizeof(set) + 4));
    const SCInfo info;
    EXPECT_EQ(fieldAt<short>(&info, 8), 129);
    std::size_t place = 16;
    for (const char16_t* const text : {info.getPartFile(), info.getRuleFile(),
                                       info.getResultFolder(), info.getDrillDatabaseUnit()}) {
        EXPECT_EQ(fieldAt<const char16_t*>(&info, place), text);
        place += sizeof(std::u16string);
    }
}

}  // namespace
