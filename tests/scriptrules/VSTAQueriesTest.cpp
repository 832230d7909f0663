#include <gtest/gtest.h>

#include <corvane/scriptrules/VSTAQueries.h>

#include "platform/Modules.h"
#include "platform/Paths.h"
#include "scriptrules/Site.h"

namespace {

bool answerOf(void (*query)(bool*)) {
    bool answer = true;
    query(&answer);
    return answer;
}

TEST(VSTAQueries, AskForTheirOwnKeyOrFileAlone) {
    for (const bool tools : {false, true}) {
        Site site;
        site.enter("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\",
                   {tools ? "VSTAHostConfig" : "VSTAHost\\CorvaneServer"});
        EXPECT_EQ(answerOf(IsVSTAInstalled), tools);
        EXPECT_EQ(answerOf(AreVSTARulesSupported), tools);
        EXPECT_EQ(answerOf(CanUseVSTARules), !tools);
    }
    using namespace corvane::platform;
    EXPECT_FALSE(answerOf(IsCorvaneForCreoParametric));
    const std::filesystem::path file(
        join(parentFolder(ownModuleFile()), u"QORProeAddinCreo7u.dll"));
    std::ofstream(file).put('x');
    EXPECT_TRUE(answerOf(IsCorvaneForCreoParametric));
    std::filesystem::remove(file);
}

}  // namespace
