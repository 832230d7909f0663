#include <dlfcn.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

#include "support/EnvironmentScope.h"
#include "support/TemporaryFolder.h"

namespace {

// The exported functions by their names: what includes a header of the library would be linked with
// it.
constexpr const char* kGetBatchMode = "GetBatchModeStatus";
constexpr const char* kSetBatchMode = "SetBatchModeStatus";

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
        ASSERT_TRUE(getBatchMode && setBatchMode);
        bool batchMode = true;
        getBatchMode(&batchMode);
        EXPECT_FALSE(batchMode) << "left by the load before " << language;
        setBatchMode(true);
        EXPECT_EQ(::dlclose(library), 0);
        EXPECT_FALSE(isMapped("libCorvaneFrameworku")) << language;
        EXPECT_FALSE(isMapped("/Lang/")) << language;
    }
}

}  // namespace
