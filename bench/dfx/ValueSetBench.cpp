// Builds, searches, changes and copies sets of values, beside other maps of values of any type: the
// standard library's map of std::any, and Qt's of QVariant where Qt is there. The maps have no
// parents, so a miss there asks four maps.

#include <algorithm>
#include <any>
#include <benchmark/benchmark.h>
#include <map>
#include <memory>
#include <random>
#include <vector>
#ifdef CORVANE_BENCH_QT
#include <QMap>
#include <QVariant>
#endif

#include <corvane/dfx/Parameters.h>
#include <corvane/dfx/Value.h>

namespace {

using Number = dfx::Value<int, dfx::IValue::TYPE_INT>;
using ValueSet = dfx::Parameters<dfx::IParameters>;

// What the benchmarks do with each kind of map. `Chain` is a set with three parents.
struct Dfx {
    using Set = ValueSet;
    static void put(Set& set, int key, int value) {
        set.addParameter(std::make_shared<Number>(key, value));
    }
    // A user who knows what is under a key casts without asking.
    static int read(const Set& set, int key) {
        return static_cast<Number&>(*set.getParameter(key)).get();
    }
    struct Chain {
        std::shared_ptr<ValueSet> lowest;
        void add(const Set& set) {
            auto next = std::make_shared<ValueSet>(lowest);
            for (int key = 0; const auto value = set.getParameter(2 * key); ++key)
                next->addParameter(value);
            lowest = next;
        }
        bool holds(int key) const { return lowest->getParameter(key) != nullptr; }
    };
};

template <typename Map>
struct MapChain {
    std::vector<Map> maps;
    void add(const Map& map) { maps.push_back(map); }
    bool holds(int key) const {
        for (const Map& map : maps)
            if (map.find(key) != map.end()) return true;
        return false;
    }
};

struct Any {
    using Set = std::map<int, std::any>;
    static void put(Set& set, int key, int value) { set.insert_or_assign(key, value); }
    static int read(const Set& set, int key) { return std::any_cast<int>(set.find(key)->second); }
    using Chain = MapChain<Set>;
};

#ifdef CORVANE_BENCH_QT
struct Variant {
    using Set = QMap<int, QVariant>;
    static void put(Set& set, int key, int value) { set.insert(key, value); }
    static int read(const Set& set, int key) { return set.find(key)->toInt(); }
    using Chain = MapChain<Set>;
};
#endif

// Even keys in an order that no tree likes or dislikes.
std::vector<int> keysOf(const benchmark::State& state) {
    std::vector<int> keys;
    for (int i = 0; i < state.range(0); ++i)
        keys.push_back(2 * i);
    std::shuffle(keys.begin(), keys.end(), std::minstd_rand(1));
    return keys;
}

template <typename Kind>
typename Kind::Set setOf(const std::vector<int>& keys) {
    typename Kind::Set set;
    for (const int key : keys)
        Kind::put(set, key, key);
    return set;
}

void report(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename Kind>
void Build(benchmark::State& state) {
    const std::vector<int> keys = keysOf(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(setOf<Kind>(keys));
    report(state);
}

template <typename Kind>
void Hit(benchmark::State& state) {
    const std::vector<int> keys = keysOf(state);
    const auto set = setOf<Kind>(keys);
    for (auto _ : state)
        for (const int key : keys)
            benchmark::DoNotOptimize(Kind::read(set, key));
    report(state);
}

template <typename Kind>
void MissThroughParents(benchmark::State& state) {
    const std::vector<int> keys = keysOf(state);
    typename Kind::Chain chain;
    for (int i = 0; i < 4; ++i)
        chain.add(setOf<Kind>(keys));
    for (auto _ : state)
        for (const int key : keys)
            benchmark::DoNotOptimize(chain.holds(key + 1));
    report(state);
}

template <typename Kind>
void Replace(benchmark::State& state) {
    const std::vector<int> keys = keysOf(state);
    auto set = setOf<Kind>(keys);
    for (auto _ : state)
        for (const int key : keys)
            Kind::put(set, key, key + 1);
    benchmark::DoNotOptimize(&set);
    report(state);
}

// The copy gets one value more, because a map may share its content until then.
template <typename Kind>
void Copy(benchmark::State& state) {
    const auto set = setOf<Kind>(keysOf(state));
    for (auto _ : state) {
        auto copy = set;
        Kind::put(copy, -1, -1);
        benchmark::DoNotOptimize(&copy);
    }
    report(state);
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(8)->Arg(64)->Arg(1'024);
}

#ifdef CORVANE_BENCH_QT
#define BESIDE_QT(operation, name) \
    BENCHMARK(operation<Variant>)->Name(name ":QVariant")->Apply(sizes)
#else
#define BESIDE_QT(operation, name)
#endif
#define COMPARE(operation, name)                                     \
    BENCHMARK(operation<Dfx>)->Name(name ":corvane")->Apply(sizes);  \
    BENCHMARK(operation<Any>)->Name(name ":std::any")->Apply(sizes); \
    BESIDE_QT(operation, name)

COMPARE(Build, "build a set");
COMPARE(Hit, "find a value");
COMPARE(MissThroughParents, "miss through parents");
COMPARE(Replace, "replace a value");
COMPARE(Copy, "copy a set");

}  // namespace
