#include <csignal>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

#include <corvane/dfx/Logger.h>

#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"

namespace {

using dfx::ILogSink;
using dfx::Logger;

class ExecutionLog : public testing::Test {
protected:
    // The logger is built once in a process, so each use has a process of its own.
    static void inProcess(const std::function<void()>& use) {
        EXPECT_EXIT((use(), std::exit(HasFailure() ? 1 : 0)), testing::ExitedWithCode(0), "");
    }

    TemporaryFolder folder;
    EnvironmentScope path{"QOR_EXECUTION_LOG", folder.path("log")};
    EnvironmentScope level{"QOR_EXECUTION_LEVEL", nullptr};
};

TEST_F(ExecutionLog, PassesTheLevelsThatShareABitWithTheMask) {
    const std::pair<std::string, std::string> cases[] = {{"", "diwen"},
                                                         {"8", "e"},
                                                         {"0", ""},
                                                         {"-1", "diwen"},
                                                         {"12abc", "we"},
                                                         {" \t+4", "w"},
                                                         {"1.9", "dn"},
                                                         {"16", ""},
                                                         {std::string(258, '0') + "8", "e"},
                                                         {std::string(259, '0') + "8", "diwen"}};
    for (const auto& [mask, passed] : cases) {
        level.set(mask.c_str());
        folder.write("log", "from an earlier run");
        inProcess([] {
            const char16_t* texts[] = {u"never", u"d", u"i", u"n", u"w", u"", u"", u"", u"e"};
            for (const int number : {0, 1, 2, 4, 8, 3})
                Logger::instance().print(static_cast<ILogSink::LOGLEVEL>(number), texts[number]);
        });
        std::string text = folder.read("log");
        if (passed == "diwen") {
            EXPECT_EQ(text, "DEBUG\t\t: dINFO\t\t: iWARNING\t: wERROR\t\t: eNONE\t\t: n");
        }
        std::erase_if(text, [](char unit) { return unit < 'a'; });
        EXPECT_EQ(text, passed) << mask;
    }
}

TEST_F(ExecutionLog, AnUnusableLevelThrowsAtEachCallUntilItIsMended) {
    const auto thrown = [this](const char* mask) -> std::string {
        level.set(mask);
        folder.write("log", "from an earlier call");
        try {
            Logger::instance().error(u"text");
        } catch (const std::invalid_argument& error) {
            return error.what() + folder.read("log");
        } catch (const std::out_of_range& error) {
            return error.what() + folder.read("log");
        }
        return folder.read("log");
    };
    inProcess([&thrown] {
        for (const char* mask : {"abc", " ", "+", "- 5", "+-5"})
            EXPECT_EQ(thrown(mask), "invalid stoi argument") << mask;
        for (const char* mask : {"2147483648", "-99999999999"})
            EXPECT_EQ(thrown(mask), "stoi argument out of range") << mask;
        EXPECT_EQ(thrown("8"), "ERROR\t\t: text");
    });
}

TEST_F(ExecutionLog, IsSilentWithoutAFileThatItCanWrite) {
    const std::string shortest = folder.path("x");
    const std::string longest = shortest + std::string(259 - shortest.size(), 'x');
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    const auto use = [] { Logger::instance().error(u"text"); };
    for (const std::string& name : {std::string(), longest + "x", folder.path("none/log"),
                                    folder.path(), folder.path("pipe"), std::string("/dev/full")}) {
        path.set(name.c_str());
        inProcess(use);
    }
    path.set(nullptr);
    inProcess(use);
    EXPECT_FALSE(std::filesystem::exists(longest + "x"));
    path.set(longest.c_str());
    inProcess(use);
    EXPECT_EQ(TemporaryFolder::readFile(longest), "ERROR\t\t: text");
}

TEST_F(ExecutionLog, ChangesItsMaskAtAnyTimeAndACopyHasItsOwn) {
    inProcess([this] {
        static const struct Late {
            ~Late() { Logger::instance().error(u"when the sink is gone"); }
        } late;
        Logger& logger = Logger::instance();
        const Logger copy = logger;
        logger.setLevel(0);
        logger.error(u"dropped");
        copy.info(u"a\u00E4\U0001F600");
        logger.setLevel(15);
        logger.info(nullptr);
        logger.info(u"b\xD800|\r\n");
        EXPECT_EQ(folder.read("log"),
                  "INFO\t\t: a\xC3\xA4\xF0\x9F\x98\x80INFO\t\t: b\xEF\xBF\xBD|\r\n");
        EXPECT_TRUE(dfx::createLoggingSink());  // cuts the file for the logger too
        logger.info(u"c");
        EXPECT_EQ(folder.read("log"), "INFO\t\t: c");
    });
}

TEST_F(ExecutionLog, DropsEveryMessageBehindTheFirstThatGotLost) {
    inProcess([this] {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit small{20, limit.rlim_max};
        Logger::instance().info(u"whole ");
        setrlimit(RLIMIT_FSIZE, &small);
        Logger::instance().info(u"cut");
        setrlimit(RLIMIT_FSIZE, &limit);
        Logger::instance().info(u"dropped");
        EXPECT_EQ(folder.read("log"), "INFO\t\t: whole INFO\t\t");
    });
}

TEST_F(ExecutionLog, MessagesOfSeveralThreadsDoNotMix) {
    constexpr int kMessages = 500;
    inProcess([this] {
        const auto work = [] {
            for (int i = 0; i < kMessages; ++i)
                Logger::instance().info(u"message\n");
        };
        std::thread other(work);
        work();
        other.join();
        std::string expected;
        for (int i = 0; i < 2 * kMessages; ++i)
            expected += "INFO\t\t: message\n";
        EXPECT_EQ(folder.read("log"), expected);
    });
}

}  // namespace
