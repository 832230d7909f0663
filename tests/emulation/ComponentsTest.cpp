#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <utility>

#include <corvane/platform/LoadedModule.h>

#include "emulation/Components.h"
#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"
#include "system/Unicode.h"

namespace {

using namespace corvane::emulation;
using namespace corvane::system;
using namespace std::string_literals;

TEST(GuidText, IsReadOnlyInItsOwnForm) {
    const Guid guid{0x0A1B2C3D, 0x4E5F, 0x6071, {0x82, 0x93, 0xA4, 0xB5, 0xC6, 0xD7, 0xE8, 0xF9}};
    const std::u16string text = u"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}";
    EXPECT_EQ(guidText(guid), text);
    EXPECT_EQ(guidFromText(text), guid);
    EXPECT_EQ(guidFromText(u"{0a1b2c3d-4e5f-6071-8293-a4b5c6d7e8f9}"), guid);
    for (const std::u16string& other :
         {u""s, u"{}"s, text.substr(1, 36), u" " + text, text + u" ",
          u"(" + text.substr(1, 36) + u")", u"{0A1B2C3D04E5F-6071-8293-A4B5C6D7E8F9}"s,
          u"{0G1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}"s})
        EXPECT_FALSE(guidFromText(other)) << toUtf8(other);
}

TEST(ComponentRuntime, CountsPairsForEachThread) {
    const ComponentRuntime outer;
    {
        const ComponentRuntime inner;
        EXPECT_EQ(ComponentRuntime::depth(), 2);
        std::thread([] { EXPECT_EQ(ComponentRuntime::depth(), 0); }).join();
    }
    EXPECT_EQ(ComponentRuntime::depth(), 1);
}

class Components : public testing::Test {
protected:
    static Guid classId(std::uint32_t number) { return {number, 0, 0, {}}; }

    void registerModule(std::uint32_t number, const std::string& module) {
        registry_ += "[HKCR\\CLSID\\" + toUtf8(guidText(classId(number))) +
                     "\\InprocServer32]\n@=\"" + module + "\"\n";
        folder_.write("machine.reg", registry_);
    }

    // The status of making an object, which is released again.
    static HResult make(std::uint32_t number,
                        const Guid& interfaceId = corvane::interfaceId<IUnknown>) {
        int untouched = 0;
        void* object = &untouched;
        const HResult status = createInstance(classId(number), interfaceId, &object);
        EXPECT_EQ(corvane::failed(status), object == nullptr) << number;
        if (object) static_cast<IUnknown*>(object)->Release();
        return status;
    }

    TemporaryFolder folder_;
    EnvironmentScope scope_{"CORVANE_REGISTRY_DIR", folder_.path()};
    std::string registry_;
};

TEST_F(Components, FindsClassesByProgramIdentifier) {
    folder_.write("machine.reg",
                  "[HKCR\\A.B\\CLSID]\n@=\"{00000001-0000-0000-0000-000000000000}\"\n"
                  "[HKCR\\Ill\\CLSID]\n@=\"00000001-0000-0000-0000-000000000000\"\n[HKCR\\CLSID]\n"
                  "@=\"{00000001-0000-0000-0000-000000000000}\"\n[HKCR\\Empty\\CLSID]\n");
    EXPECT_EQ(classFromProgramId(u"a.b"), classId(1));
    for (const std::u16string_view id : {u"", u"Ill", u"Empty", u"Missing", u"{0}", u"\\"})
        EXPECT_FALSE(classFromProgramId(id)) << toUtf8(id);
}

TEST_F(Components, AreMadeOrTellWhyNot) {
    for (std::uint32_t number = 1; number <= 5; ++number)
        registerModule(number, "CorvaneTestComponent.dll");
    registerModule(6, "NoSuchModule.dll");
    registerModule(7, folder_.path("broken.so"));
    registerModule(8, "");
    registerModule(9, "libc.so.6");
    folder_.write("broken.so", "no module");
    const std::pair<std::uint32_t, std::uint32_t> cases[] = {
        {1, 0},          {2, 0x80040111}, {3, 0x8000FFFF}, {4, 0x8007000E}, {5, 0x8000FFFF},
        {6, 0x8007007E}, {7, 0x8007007E}, {8, 0x80040154}, {9, 0x800401F9}, {10, 0x80040154}};
    for (const auto& [number, status] : cases)
        EXPECT_EQ(make(number), static_cast<HResult>(status)) << number;
    EXPECT_EQ(make(1, corvane::interfaceId<IClassFactory>), corvane::kErrorNoInterface);
    EXPECT_EQ(createInstance(classId(1), corvane::interfaceId<IUnknown>, nullptr),
              corvane::kErrorPointer);

    const corvane::LoadedModule module(u"corvanetestcomponent.DLL");
    EXPECT_EQ(module.function<int (*)()>("LiveObjects")(), 0);
}

TEST(LoadedModule, IsFoundByEveryFormOfItsName) {
    const std::u16string file = fromUtf8(CORVANE_TEST_COMPONENT);
    const std::u16string folder = file.substr(0, file.rfind(u'/'));
    for (const std::u16string_view name :
         {u"CorvaneTestComponent.dll", u"corvaneTESTcomponent.so", u"CorvaneTestComponent"}) {
        EXPECT_EQ(corvane::LoadedModule(name).file(), file) << toUtf8(name);
        EXPECT_EQ(corvane::LoadedModule(folder + u"\\" + std::u16string(name)).file(), file);
    }
    EXPECT_TRUE(corvane::LoadedModule(u"libc.so.6"));
    for (const std::u16string_view name : {u"", u"Missing.dll", u"/", u"/CorvaneTestComponent.dll"})
        EXPECT_FALSE(corvane::LoadedModule(name)) << toUtf8(name);

    corvane::LoadedModule module(file);
    EXPECT_EQ(module.function<void (*)()>("liveobjects"), nullptr);
    const corvane::LoadedModule moved = std::move(module);
    EXPECT_NE(moved.function<void (*)()>("LiveObjects"), nullptr);
}

}  // namespace
