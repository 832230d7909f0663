#include <algorithm>
#include <array>
#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

#include "AnyRule.h"

namespace {

using Storage = std::unique_ptr<CQorParamStorage>;
using Storages = std::vector<Storage>;

// Every field from the first to the last says the number.
Storage numbered(QorLong number) {
    AnyRule rule;
    Storage storage(rule.CreateParamStorageObject(Type_CStringPtr, number, QorOperator_Default,
                                                  QorParamType_Plain, number % 2 == 0, false));
    auto& parameter = *static_cast<CQorParameter<CStringW*>*>(storage->m_pParameter);
    parameter.m_csName.Format(u"%d", number);
    parameter.m_csRemarks = parameter.m_csName;
    parameter.m_Values.Add(std::make_unique<CStringW>(parameter.m_csName).release());
    parameter.m_lMode = number;
    return storage;
}

bool isWhole(const Storage& storage) {
    if (!storage) return true;
    const auto& parameter = *static_cast<CQorParameter<CStringW*>*>(storage->m_pParameter);
    const QorLong number = storage->m_lId;
    CStringW text;
    text.Format(u"%d", number);
    return parameter.m_csName == text && parameter.m_csRemarks == text &&
           valuesOf(parameter).size() == 1 && *valuesOf(parameter)[0] == text &&
           parameter.m_lType == number && parameter.m_lMode == number &&
           parameter.m_bStatus == (number % 2 == 0);
}

// Each thread works on its own storages and those of its neighbour.
template <typename Work>
void inThreads(std::array<Storages, 4>& made, Work work) {
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < made.size(); ++i)
        threads.emplace_back([&made, i, work] { work(made[i], made[(i + 1) % made.size()]); });
    for (std::thread& thread : threads)
        thread.join();
}

TEST(ParameterMemory, IsOneParametersAloneWhicheverThreadDropsWhichFirst) {
    constexpr QorLong kMany = 3'000;
    std::array<Storages, 4> made;
    const auto areWhole = [&made] {
        return std::all_of(made.begin(), made.end(), [](const Storages& storages) {
            return std::all_of(storages.begin(), storages.end(), isWhole);
        });
    };
    for (int round = 0; round < 3; ++round) {
        inThreads(made, [](Storages& own, Storages&) {
            for (QorLong number = 0; number < kMany; ++number)
                own.push_back(numbered(number));
        });
        EXPECT_TRUE(areWhole());
        // Some of what another thread has made goes, in other order, and some of it is made anew.
        inThreads(made, [](Storages&, Storages& others) {
            for (std::size_t i = others.size(); i-- > 0;) {
                if (i % 3 != 0) others[i].reset();
                if (i % 7 == 0) others[i] = numbered(static_cast<QorLong>(i));
            }
        });
        EXPECT_TRUE(areWhole());
        made[0].clear();
    }
}

}  // namespace
