#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <list>
#include <mutex>
#include <string>

#include "corvane/part/Part.h"

namespace corvane::part {

/// The last few parts of the process, so that all rules share one reading. A file that changes is
/// read again.
class Cache {
public:
    using Read = std::function<OpenResult(const std::filesystem::path&)>;

    static Cache& instance();
    OpenResult get(const std::string& path, const std::string& units, const Read& read);

private:
    struct Entry {
        std::filesystem::path file;
        std::string units;
        std::uintmax_t size = 0;
        std::filesystem::file_time_type time;
        OpenResult result;
    };
    static constexpr std::size_t kMost = 4;

    std::mutex mutex_;
    std::list<Entry> entries_;
};

}  // namespace corvane::part
