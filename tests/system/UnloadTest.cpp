#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <new>
#include <string>
#include <string_view>

#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"

namespace {

// Allocations that still succeed; negative for all.
int allocationsLeft = -1;

}  // namespace

// Also the library's, once it is loaded. Out of line, or the compiler sees through pairs of them.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const place = allocationsLeft == 0 ? nullptr : std::malloc(size ? size : 1);
    if (!place) throw std::bad_alloc();
    if (allocationsLeft > 0) --allocationsLeft;
    return place;
}
[[gnu::noinline]] void operator delete(void* place) noexcept {
    std::free(place);
}
[[gnu::noinline]] void operator delete(void* place, std::size_t) noexcept {
    std::free(place);
}

namespace {

// The exported functions by their names: what includes a header of the library would be linked with
// it.
constexpr const char* kGetBatchMode = "GetBatchModeStatus";
constexpr const char* kSetBatchMode = "SetBatchModeStatus";
constexpr const char* kResourceText = "_ZN7corvane12ResourceTextEj";
constexpr unsigned kRuleNameAttr = 3000;

bool isMapped(const std::string& part) {
    std::ifstream maps("/proc/self/maps");
    const std::string text{std::istreambuf_iterator<char>(maps), {}};
    return text.find(part) != std::string::npos;
}

TEST(Library, StartsAnewEachTimeItIsLoaded) {
    const TemporaryFolder registry;
    const EnvironmentScope noKeys("CORVANE_REGISTRY_DIR", registry.path());
    constexpr const char* kLoads[][2] = {
        {"fr_FR", "french"}, {"ja_JP", "japanese"}, {"en_US", "english"}, {"ko_KR", "korean"}};
    for (const auto& [locale, language] : kLoads) {
        const EnvironmentScope user("LC_ALL", locale);
        void* const library = ::dlopen(CORVANE_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library, nullptr) << ::dlerror();
        EXPECT_TRUE(isMapped(std::string("Lang/") + language)) << language;
        const auto getBatchMode =
            reinterpret_cast<void (*)(bool*)>(::dlsym(library, kGetBatchMode));
        const auto setBatchMode = reinterpret_cast<void (*)(bool)>(::dlsym(library, kSetBatchMode));
        ASSERT_NE(getBatchMode, nullptr);
        ASSERT_NE(setBatchMode, nullptr);
        bool batchMode = true;
        getBatchMode(&batchMode);
        EXPECT_FALSE(batchMode) << "left by the load before " << language;
        setBatchMode(true);
        EXPECT_EQ(::dlclose(library), 0);
        EXPECT_FALSE(isMapped("libCorvaneFrameworku")) << language;
        EXPECT_FALSE(isMapped("/Lang/")) << language;
    }
}

TEST(Library, StartsWithoutTextsWhereMemoryRunsOut) {
    const TemporaryFolder registry;
    const EnvironmentScope noKeys("CORVANE_REGISTRY_DIR", registry.path());
    registry.write("user.reg", "REGEDIT4\n[HKEY_CURRENT_USER\\Software\\Other]\n\"a\"=\"b\"\n");
    int poorStarts = 0;
    for (bool hasText = false; !hasText; ++poorStarts) {
        allocationsLeft = poorStarts;
        void* const library = ::dlopen(CORVANE_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        allocationsLeft = -1;
        ASSERT_NE(library, nullptr) << ::dlerror();
        const auto text =
            reinterpret_cast<std::u16string_view (*)(unsigned)>(::dlsym(library, kResourceText));
        ASSERT_NE(text, nullptr);
        hasText = text(kRuleNameAttr) == u"Name";
        EXPECT_TRUE(hasText || text(kRuleNameAttr).empty());
        EXPECT_EQ(::dlclose(library), 0);
        ASSERT_FALSE(isMapped("libCorvaneFrameworku")) << poorStarts;
        ASSERT_FALSE(isMapped("/Lang/")) << poorStarts;
    }
    EXPECT_GT(poorStarts, 10);
}

}  // namespace
