#include <gtest/gtest.h>

#include <corvane/dfx/Value.h>

namespace {

using namespace dfx;

// Counts its references and outlives them.
struct Component : IUnknown {
    HResult QueryInterface(const Guid&, void** object) override {
        *object = nullptr;
        return corvane::kErrorNoInterface;
    }
    QorULong AddRef() override { return ++calls, ++references; }
    QorULong Release() override { return ++calls, --references; }

    std::uint32_t references = 0;
    int calls = 0;
};

TEST(Value, KeepsItsDescriptionUntilItIsGivenAnother) {
    using Numbers = Value<std::vector<int>, 15>;
    Numbers value(1, u"", {1});
    const char16_t* const before = value.description();
    const Numbers& same = value;
    value = same;
    EXPECT_EQ(value.description(), before);
    value = Numbers(2, nullptr, {3});
    EXPECT_EQ(value.description(), before);
    EXPECT_EQ(*before, u'\0');
    EXPECT_EQ(value.key(), 2);
    EXPECT_EQ(value.get(), std::vector{3});
    value = Numbers(2, u"another", {3});
    EXPECT_EQ(std::u16string_view(value.description()), u"another");
}

using Work = Value<std::shared_ptr<IVoidFunctor>, 23>;

// Looks at the value that held it while it ends.
struct Looking : IVoidFunctor {
    explicit Looking(const Work& value) : holder(value) {}
    ~Looking() override { EXPECT_FALSE(holder.get()); }
    void operator()() override {}
    const Work& holder;
};

TEST(Value, HoldsTheNewContentWholeWhenTheOldOneEnds) {
    Work value(1, nullptr);
    value.get() = std::make_shared<Looking>(value);
    value = Work(2, nullptr);
}

TEST(Value, CountsWhatItHoldsByHandleOnly) {
    using Counted = Value<ATL::CComPtr<IUnknown>, 10>;
    Component component;
    Component other;
    {
        Counted value(1, &component);
        const Value<IUnknown*, 10> borrowed(1, &component);
        const auto alias(borrowed);
        EXPECT_EQ(component.references, 1U);
        const Counted copy(value);
        EXPECT_EQ(component.references, 2U);
        const int calls = component.calls;
        value = copy;
        EXPECT_EQ(component.calls, calls);
        value = Counted(1, &other);
        EXPECT_EQ(component.references + other.references, 2U);
        *&value.get() = nullptr;
        EXPECT_EQ(other.references, 0U);
        ATL::CComPtr<IUnknown> moved = std::move(value.get() = copy.get());
        value.get().Attach(moved.Detach());
        EXPECT_EQ(component.references, 2U);
    }
    EXPECT_EQ(component.references, 0U);
}

}  // namespace
