#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

#include "scripthost/HostRun.h"
#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"

namespace {

using testing::HasSubstr;

constexpr HResult kRefused = static_cast<HResult>(0x8000FFFF);

TEST(ScriptHost, AScriptSaysByWhatItReturnsWhetherItsRuleIsMet) {
    for (const char* script :
         {"", "   ", "return", "return true", "return nil", "return nil, nil",
          "return true, 'fine'", "\xEF\xBB\xBF#!/usr/bin/lua\nreturn true",
          "# only a shell reads this", "local s = ('x'):rep(3) return s == 'xxx'    ",
          "-- ends in a comment, then blanks     "}) {
        const Outcome outcome = runScript(std::string(script));
        EXPECT_TRUE(outcome.success) << script << ": " << outcome.message;
        EXPECT_EQ(outcome.status, corvane::kOk);
    }
}

TEST(ScriptHost, EachFailureIsReportedWithItsKindAndPlace) {
    const struct {
        const char* script;
        int number, line, character;
        const char* type;
        const char* message;
    } cases[] = {
        {"local x = = 1", 1, 0, 0, "Syntax error", "unexpected symbol near '='"},
        {"\n  local x = 1 +* 2", 1, 1, 15, "Syntax error", "unexpected symbol near '*'"},
        {"ä = 'é' ]", 1, 0, 0, "Syntax error", "unexpected symbol near"},
        {"local t = {'ä', ]}", 1, 0, 16, "Syntax error", "near ']'"},
        {"if true then\n\n", 1, 0, 0, "Syntax error", "'end' expected"},
        {"#!x\nlocal", 1, 1, 0, "Syntax error", "<name> expected near <eof>"},
        {"\x1BLua", 1, 0, 0, "Syntax error", "unexpected symbol near"},
        {"\n\n  local t = nil; t.x = 1", 2, 2, 2, "Run-time error", "attempt to index a nil value"},
        {"local function f()\n  error('deep')\nend\nf()", 2, 1, 2, "Run-time error", "deep"},
        {"local function f()\n  error('far', 2)\nend\n\n f()", 2, 4, 1, "Run-time error", "far"},
        {"\nerror({message = 'told'})", 2, 1, 0, "Run-time error", "told"},
        {"\nerror({})", 2, 1, 0, "Run-time error", "an error object without text"},
        {"\n\nerror(setmetatable({}, {__tostring = function() return 'own' end}))", 2, 2, 0,
         "Run-time error", "own"},
        {"\nerror(nil)", 2, 1, 0, "Run-time error", "nil"},
        {"\nerror(42)", 2, 1, 0, "Run-time error", "42"},
        {"\nerror(print)", 2, 1, 0, "Run-time error", "function: "},
        {"\nerror('a\\0b')", 2, 1, 0, "Run-time error", "a"},
        {"\n\ncoroutine.wrap(function()\n error('inside') end)()", 2, 3, 1, "Run-time error",
         "inside"},
        {"\nlocal ok, why = pcall(error, 'again')\nerror(why, 0)", 2, 2, 0, "Run-time error",
         "again"},
        {"\nload('error(\"x\")', '=other')()", 2, 1, 0, "Run-time error", "other:1: x"},
        {"\n\n  return false, 'wall too thin'", 3, 2, 2, "Rule not met", "wall too thin"},
        {"return false", 3, 0, 0, "Rule not met", "the rule is not met"},
        {"return nil, 'no part'", 3, 0, 0, "Rule not met", "no part"},
        {"local function check()\n  return false, 1.5\nend\n  return check()", 3, 3, 2,
         "Rule not met", "1.5"},
        {"if 1 > 2 then\nreturn true\nelse\nreturn false, {}\nend", 2, 3, 0, "Run-time error",
         "a finding needs a 'message'"},
        {"\nreturn 'the wall is thin'", 2, 1, 0, "Run-time error",
         "returned a string where true or false belongs"},
        {"\nreturn 0", 2, 1, 0, "Run-time error", "returned a number"},
        {"\nreturn false, print", 2, 1, 0, "Run-time error", "a text or a table, not a function"},
        {"\nreturn false, setmetatable({}, {__tostring = function() return 'own' end})", 3, 1, 0,
         "Rule not met", "own"},
    };
    for (const auto& [script, number, line, character, type, message] : cases) {
        SCOPED_TRACE(script);
        const Outcome outcome = runScript(std::string(script));
        EXPECT_FALSE(outcome.success);
        EXPECT_EQ(outcome.type, type);
        EXPECT_THAT(outcome.message, HasSubstr(message));
        EXPECT_EQ(outcome.message.find("script:"), std::string::npos) << outcome.message;
        EXPECT_EQ(outcome.source, "script");
        EXPECT_EQ(outcome.number, number);
        EXPECT_EQ(outcome.code, static_cast<std::int32_t>(0x80040200) + number);
        EXPECT_EQ(outcome.line, line);
        EXPECT_EQ(outcome.character, character);
    }
}

TEST(ScriptHost, TablesCanHaveWeakValuesButNeverWeakKeys) {
    const Outcome outcome = runScript(std::string(R"(
        local late, keys, values = {}, {}, setmetatable({}, {__mode = 'v'})
        setmetatable(keys, late)
        keys[{}], values[1], late.__mode = 1, {}, 'k'
        for i = 1, 1e5 do local _ = {} end
        return false, tostring(next(keys) ~= nil) .. ' ' .. #values)"));
    EXPECT_EQ(outcome.message, "true 0");
}

TEST(ScriptHost, CallsOutOfTurnAreRefusedAndHarmNothing) {
    const Host host = makeHost();
    std::int16_t success = 1;
    EXPECT_EQ(host->PrepareScript(&success), kRefused);
    EXPECT_EQ(success, 0);
    EXPECT_EQ(host->RunScript(&success), kRefused);
    EXPECT_EQ(host->EndScript(), kRefused);
    EXPECT_EQ(askError(*host).status, kRefused);
    EXPECT_EQ(host->SetScriptText(nullptr), corvane::kErrorPointer);
    EXPECT_EQ(host->AddEngineFile(nullptr), corvane::kErrorPointer);
    ASSERT_EQ(host->SetScriptText(u"return true"), corvane::kOk);
    EXPECT_EQ(host->SetScriptText(u"return false"), kRefused);
    EXPECT_EQ(host->PrepareScript(nullptr), corvane::kErrorPointer);
    ASSERT_EQ(host->PrepareScript(&success), corvane::kOk);
    EXPECT_EQ(success, 1);
    EXPECT_EQ(host->PrepareScript(&success), kRefused);
    EXPECT_EQ(host->AddEngineFile(u"mesh.tlb"), kRefused);
    EXPECT_EQ(host->EndScript(), kRefused);
    ASSERT_EQ(host->RunScript(&success), corvane::kOk);
    EXPECT_EQ(success, 1);
    EXPECT_EQ(host->RunScript(&success), kRefused);
    EXPECT_EQ(host->GetScriptError(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
              corvane::kErrorPointer);
    EXPECT_EQ(host->EndScript(), corvane::kOk);
    EXPECT_EQ(host->EndScript(), kRefused);
    EXPECT_EQ(askError(*host).status, kRefused);
}

TEST(ScriptHost, ComponentsAreAskedForByClassAndInterface) {
    const corvane::LoadedModule module(u"QorScriptHost.dll");
    const auto getClass = module.function<GetClassObjectFunction>("DllGetClassObject");
    void* object = &object;
    EXPECT_TRUE(corvane::failed(getClass(Guid{}, corvane::interfaceId<IClassFactory>, &object)));
    EXPECT_EQ(object, nullptr);
    const Host host = makeHost();
    for (const Guid& known : {corvane::interfaceId<IUnknown>, corvane::interfaceId<IDispatch>,
                              IScriptProcessor::kInterfaceId}) {
        ASSERT_EQ(host->QueryInterface(known, &object), corvane::kOk);
        EXPECT_EQ(static_cast<IScriptProcessor*>(object)->Release(), 1U);
    }
    EXPECT_EQ(host->QueryInterface(corvane::interfaceId<IClassFactory>, &object),
              corvane::kErrorNoInterface);
    EXPECT_EQ(object, nullptr);
    std::uint32_t count = 7;
    EXPECT_EQ(host->GetTypeInfoCount(&count), corvane::kOk);
    EXPECT_EQ(count, 0U);
}

TEST(ScriptHost, LimitsComeFromTheEnvironmentAndFallBack) {
    const auto limitWith = [](const char* value) {
        const EnvironmentScope scope("CORVANE_SCRIPT_MAX_MEMORY_MB", value);
        return runScript(std::string("('x'):rep(2^27)")).message;
    };
    EXPECT_THAT(limitWith("16"), HasSubstr("more than 16 MB"));
    for (const char* bad : {"", "0", "-5", "1e3", "16 ", "65537", "99999999999999999999"})
        EXPECT_THAT(limitWith(bad), HasSubstr("more than 128 MB")) << bad;
}

TEST(ScriptHost, PrintedTextGoesToStandardErrorAndIsBounded) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_TRUE(runScript(std::string("print('a', 1, nil, '\\27[2J') "
                                      "for i = 1, 1e5 do print('again') end"))
                    .success);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_THAT(errors, testing::StartsWith("a\t1\tnil\t?[2J\nagain\n"));
    EXPECT_LT(errors.size(), 70'000U);
}

class ScriptEngines : public testing::Test {
protected:
    CStringW engine(const char* name, std::string_view source) {
        folder.write(std::string(name) + ".lua", source);
        return library(name);
    }
    CStringW library(const std::string& name) { return folder.wide(name + ".tlb"); }

    TemporaryFolder folder;
};

TEST_F(ScriptEngines, TheirTablesAreGlobalsOfTheScript) {
    const std::vector<CStringW> engines{
        engine("one", "local name = ... return {name = name, fail = function() error('bad') end}"),
        engine("two",
               "\xEF\xBB\xBF#!\nreturn {first = one.name, loop = function() "
               "while true do end end, system = io or os or require}"),
        CStringW(u"" SHARED_ENGINE)};
    CStringW backslashes = engines[0];
    backslashes.Replace(u'/', u'\\');
    EXPECT_TRUE(runScript("assert(one.name == 'one' and two.first == 'one' and not two.system) "
                          "assert(sharedengine.make())",
                          engines)
                    .success);
    EXPECT_TRUE(runScript("return one.name == 'one'", {backslashes}).success);
    EXPECT_TRUE(runScript("return true", {engines[0], engines[0]}).success) << "twice the same";
    const Outcome outcome = runScript("local x = 1\none.fail()", engines);
    EXPECT_EQ(outcome.message, "one.lua:1: bad");
    EXPECT_EQ(outcome.line, 1);
    const EnvironmentScope instructions("CORVANE_SCRIPT_MAX_INSTRUCTIONS", "1000000");
    EXPECT_EQ(runScript("\npcall(two.loop)", engines).line, 1);
}

TEST_F(ScriptEngines, ThoseThatCannotBeUsedAreRefusedWithTheirReason) {
    const EnvironmentScope instructions("CORVANE_SCRIPT_MAX_INSTRUCTIONS", "1000000");
    folder.write("broken.so", "no module");
    std::filesystem::copy_file(SHARED_ENGINE_FILE, folder.path("renamed.so"));
    const struct {
        CStringW path;
        std::uint32_t status;
    } cases[] = {
        {library("missing"), 0x8007007E},
        {CStringW(), 0x80070057},
        {library(""), 0x80070057},
        {library("two words"), 0x80070057},
        {library("end"), 0x80070057},
        {library("1st"), 0x80070057},
        {library("broken"), 0x800700C1},
        {library("renamed"), 0x8007007F},
        {engine("string", "return {}"), 0x800700B7},
        {engine("print", "return {}"), 0x800700B7},
        {engine("syntax", "return {"), 0x8007045A},
        {engine("raising", "error('no licence')"), 0x8007045A},
        {engine("number", "return 5"), 0x8007045A},
        {engine("nothing", ""), 0x8007045A},
        {engine("looping", "while true do end"), 0x8007045A},
    };
    for (const auto& [path, status] : cases)
        EXPECT_EQ(runScript("return true", {path}).status, static_cast<HResult>(status))
            << path.ToUtf8();
    folder.write("other/one.lua", "return {}");
    EXPECT_EQ(runScript("", {engine("one", "return {}"), folder.wide("other/one.tlb")}).status,
              static_cast<HResult>(0x800700B7));
    const Host host = makeHost();
    EXPECT_TRUE(corvane::failed(host->AddEngineFile(cases[11].path)));
    const Outcome outcome = askError(*host);
    EXPECT_EQ(outcome.type + "/" + outcome.source + "/" + outcome.message,
              "Engine error/raising.lua/no licence");
    EXPECT_EQ(outcome.line, 0);
    EXPECT_EQ(outcome.character, -1);
}

TEST_F(ScriptEngines, SharedModulesOutliveTheirObjectsAndTheirErrorsAreTheScripts) {
    const CStringW shared(u"" SHARED_ENGINE);
    const corvane::LoadedModule module(shared.View().substr(0, shared.View().size() - 4));
    const auto alive = module.function<int (*)()>("aliveObjects");
    ASSERT_TRUE(alive);
    EXPECT_TRUE(runScript("kept = {} for i = 1, 100 do kept[i] = sharedengine.make() end "
                          "assert(getmetatable(kept[1]) == nil)",
                          {shared})
                    .success);
    EXPECT_EQ(alive(), 0);
    const Outcome failing = runScript("\nsharedengine.fail()", {shared});
    EXPECT_EQ(failing.message, "the engine fails");
    EXPECT_EQ(failing.line, 1);
    const EnvironmentScope instructions("CORVANE_SCRIPT_MAX_INSTRUCTIONS", "1000000");
    EXPECT_EQ(runScript("sharedengine.call(function() while true do end end)", {shared}).number, 4);
    const EnvironmentScope seconds("CORVANE_SCRIPT_MAX_SECONDS", "1");
    EXPECT_EQ(runScript("sharedengine.rest()", {shared}).number, 5);
    engine("sharedengine", "return {lua = true}");
    EXPECT_TRUE(runScript("return sharedengine.lua", {library("sharedengine")}).success);
}

TEST(ScriptHost, HostsOnManyThreadsAreIndependent) {
    std::vector<std::thread> threads;
    std::vector<std::string> messages(4);
    for (std::size_t i = 0; i < messages.size(); ++i) {
        threads.emplace_back([i, &messages] {
            const std::string number = std::to_string(i);
            for (int round = 0; round < 20; ++round)
                messages[i] = runScript("x = (x or 0) + 1 + " + number +
                                        " for i = 1, 1e4 do x = x + 1 end return false, x")
                                  .message;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t i = 0; i < messages.size(); ++i)
        EXPECT_EQ(messages[i], std::to_string(10001 + i));
}

}  // namespace
