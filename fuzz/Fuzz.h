#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>

#include <corvane/text/CStringW.h>

namespace fuzz {

/// Ends the process, which the fuzzer reports together with the input, when a promise is broken.
inline void require(bool holds, const char* promise) {
    if (holds) return;
    std::fprintf(stderr, "Broken: %s\n", promise);
    std::abort();
}

/// Breaks the promise that an input takes a few seconds at most. It counts the time that the
/// process computes, so that a busy machine breaks nothing; the fuzzer's own limit ends what never
/// returns.
class Quick {
public:
    Quick() = default;
    Quick(const Quick&) = delete;
    Quick& operator=(const Quick&) = delete;
    ~Quick() {
        require(std::clock() - start_ < kMostSeconds * CLOCKS_PER_SEC, "an input is read quickly");
    }

private:
    static constexpr std::clock_t kMostSeconds = 4;
    std::clock_t start_ = std::clock();
};

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Parts a text at the first line "%%", so that a seed is a file that a person can read.
inline std::pair<std::string_view, std::string_view> parted(std::string_view text) {
    const std::size_t at = text.find("\n%%\n");
    if (at == text.npos) return {text, {}};
    return {text.substr(0, at + 1), text.substr(at + 4)};
}

/// Cuts the part ahead of the first `end` off the front of `rest`, or all of it.
inline std::string_view take(std::string_view& rest, char end) {
    const std::size_t at = rest.find(end);
    const std::string_view taken = rest.substr(0, at);
    rest.remove_prefix(at == rest.npos ? rest.size() : at + 1);
    return taken;
}

inline std::string contentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A folder of this process, in memory where the system has such a place, gone at its end.
class Folder {
public:
    Folder() {
        const std::filesystem::path memory = "/dev/shm";
        const auto base =
            std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
        path_ = base / ("corvane-fuzz-" + std::to_string(getpid()));
        std::filesystem::create_directories(path_);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string path(std::string_view name = {}) const { return (path_ / name).string(); }
    CStringW wide(std::string_view name = {}) const { return CStringW::FromUtf8(path(name)); }
    void write(std::string_view name, std::string_view bytes) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

private:
    std::filesystem::path path_;
};

}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
