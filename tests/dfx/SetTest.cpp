#include <algorithm>
#include <gtest/gtest.h>
#include <new>

#include <corvane/dfx/Criteria.h>

#include "Samples.h"

// How many allocations succeed from now on, or a negative number for all of them.
extern int allocationsLeft;

namespace {

using namespace dfx;
using Set = Parameters<IParameters>;
using Number = Value<int, 3>;

std::shared_ptr<IValue> number(int key, int held) {
    return std::make_shared<Number>(key, held);
}

// What the set has under a key, or 0.
int numberOf(const IParameters& set, int key) {
    const auto found = std::dynamic_pointer_cast<Number>(set.getParameter(key));
    return found ? found->get() : 0;
}

TEST(Set, HoldsTheLastValueOfEachKey) {
    Criteria set;
    const auto first = number(7, 1);
    const std::vector keys{7, 3, INT32_MIN, INT32_MAX, -1, 0};
    set.addParameter(first);
    for (const int key : keys)
        set.addParameter(number(key, key));
    set.addParameter(nullptr);
    for (const int key : keys)
        EXPECT_EQ(numberOf(set, key), key);
    EXPECT_EQ(first.use_count(), 1);
    set.addParameter(std::make_shared<Value<double, 8>>(7, 7));
    EXPECT_EQ(set.getParameter(7)->type(), IValue::TYPE_DOUBLE);
    EXPECT_FALSE(set.getParameter(4));
}

TEST(Set, MayBeAssignedTheParentThatItKeepsAlive) {
    const auto root = std::make_shared<Set>();
    root->addParameter(number(1, 1));
    auto parent = std::make_shared<Set>(root);
    parent->addParameter(number(2, 2));
    const Set& source = *parent;
    Set set(std::move(parent));
    set = source;
    const Set& same = set;
    set = same;
    EXPECT_EQ(numberOf(set, 1) + numberOf(set, 2), 3);
}

// A set of a module's own, whose look-up is not the library's whatever it derives from.
struct Doubling : Set {
    std::shared_ptr<IValue> getParameter(const int& key) const override {
        return number(key, 2 * key);
    }
};

TEST(Set, AsksAParentByItsOwnOperation) {
    EXPECT_EQ(numberOf(Set(std::make_shared<Criteria>()), 21), 0);
    EXPECT_EQ(numberOf(Set(std::make_shared<Set>(std::make_shared<Doubling>())), 21), 42);
}

TEST(Set, IsSearchedAndEndsWhateverTheLengthOfItsChain) {
    constexpr int kLength = 100'000;
    std::vector<int> notes;
    const auto shared = std::make_shared<Set>();
    std::shared_ptr<IParameters> chain = shared;
    for (int i = 1; i <= kLength; ++i) {
        chain = std::make_shared<Set>(chain);
        chain->addParameter(std::make_shared<Functor>(-i, std::make_shared<Note>(notes, -i)));
    }
    shared->addParameter(number(1, 1));
    EXPECT_EQ(numberOf(*chain, 1), 1);
    EXPECT_FALSE(chain->getParameter(2));
    chain.reset();
    EXPECT_EQ(notes.size(), kLength);
    EXPECT_TRUE(std::is_sorted(notes.begin(), notes.end()));
    EXPECT_EQ(numberOf(*shared, 1), 1);
}

// Runs `action` with memory for no allocation, for one and so on until it succeeds, and sees that
// each failure has left things as they were. Gives how often memory ran out.
template <typename Check, typename Action>
int failuresOf(Check unchanged, Action action) {
    for (int failures = 0;; ++failures) {
        EXPECT_TRUE(unchanged()) << failures;
        allocationsLeft = failures;
        try {
            action();
            allocationsLeft = -1;
            return failures;
        } catch (const std::bad_alloc&) {
            allocationsLeft = -1;
        }
    }
}

TEST(ShortMemory, LeavesValuesAndSetsAsTheyWere) {
    using Numbers = Value<std::vector<int>, 15>;
    Numbers value(1, u"old", {1});
    const Numbers source(2, u"new", {3, 4});
    // A sanitizer may hand out arrays by itself.
    EXPECT_GE(failuresOf([&] { return value.key() == 1 && *value.description() == u'o'; },
                         [&] { value = source; }),
              1);
    Set set;
    const auto first = number(2, 1);
    const auto second = number(2, 2);
    const auto old = [&] { return !set.getParameter(1) && numberOf(set, 2) < 2; };
    EXPECT_EQ(failuresOf(old, [&] { set.addParameter(first); }), 1);
    EXPECT_EQ(failuresOf(old, [&] { set.addParameter(second); }), 0);
    Set two(set);
    two.addParameter(number(1, 1));
    set.addParameter(number(2, 1));
    EXPECT_EQ(failuresOf(old, [&] { set = two; }), 2);
    EXPECT_EQ(numberOf(set, 2), 2);
}

}  // namespace
