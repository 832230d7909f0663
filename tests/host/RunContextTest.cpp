#include <barrier>
#include <gtest/gtest.h>
#include <thread>

#include <corvane/host/QORResultSet.h>
#include <corvane/host/RunContext.h>

#include "support/EnvironmentScope.h"

using corvane::CurrentPartPath;
using corvane::CurrentRunContext;
using corvane::RunContext;
using corvane::RunContextScope;

namespace {

struct Texts : QORResultSet {
    std::vector<CStringW> texts;
    void AddFinding(const CStringW& text) override { texts.push_back(text); }
};

}  // namespace

TEST(RunContext, ScopesNestAndRestore) {
    RunContext outer, inner;
    ASSERT_EQ(CurrentRunContext(), nullptr);
    {
        RunContextScope first(outer);
        {
            RunContextScope second(inner);
            EXPECT_EQ(CurrentRunContext(), &inner);
        }
        EXPECT_EQ(CurrentRunContext(), &outer);
    }
    EXPECT_EQ(CurrentRunContext(), nullptr);
}

TEST(RunContext, ThePartOfTheContextComesBeforeTheEnvironments) {
    EnvironmentScope environment("CORVANE_PART", "from/environment.stl");
    RunContext withPart, withoutPart;
    withPart.partPath = u"/from/context.stl";
    EXPECT_EQ(CurrentPartPath(), u"from/environment.stl");
    RunContextScope outer(withPart);
    EXPECT_EQ(CurrentPartPath(), u"/from/context.stl");
    RunContextScope inner(withoutPart);
    EXPECT_EQ(CurrentPartPath(), u"from/environment.stl");
}

TEST(RunContext, TwoThreadsDoNotMeet) {
    std::barrier bothAreSet(2);
    const RunContext* seen[2];
    RunContext contexts[2];
    const auto run = [&](int i) {
        RunContextScope scope(contexts[i]);
        bothAreSet.arrive_and_wait();
        seen[i] = CurrentRunContext();
        bothAreSet.arrive_and_wait();
    };
    std::thread other(run, 1);
    run(0);
    other.join();
    EXPECT_EQ(seen[0], &contexts[0]);
    EXPECT_EQ(seen[1], &contexts[1]);
    EXPECT_EQ(CurrentRunContext(), nullptr);
}

TEST(ResultSet, OneThatKeepsTextsTakesMessagesAndDropsNotes) {
    Texts set;
    corvane::Finding finding;
    finding.message = u"too thin";
    set.ReportFinding(finding);
    finding.isNote = true;
    set.ReportFinding(finding);
    EXPECT_EQ(set.texts, std::vector<CStringW>{u"too thin"});
}
