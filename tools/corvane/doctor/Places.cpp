#include "doctor/Places.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

fs::path placeOf(const CStringW& path) {
    const std::string bytes = path.ToUtf8();
    return {std::u8string(bytes.begin(), bytes.end())};
}

Presence presenceOfFile(const CStringW& path) {
    std::error_code ignored;
    const fs::path place = placeOf(path);
    if (!fs::exists(place, ignored)) return Presence::Missing;
    const bool readable = fs::is_regular_file(place, ignored) && std::ifstream(place).is_open();
    return readable ? Presence::Readable : Presence::Unreadable;
}

Presence presenceOfFolder(const CStringW& path) {
    std::error_code status;
    const fs::path place = placeOf(path);
    if (!fs::exists(place, status)) return Presence::Missing;
    const fs::directory_iterator entries(place, status);
    return status ? Presence::Unreadable : Presence::Readable;
}

std::vector<CStringW> filesIn(const CStringW& folder) {
    std::vector<CStringW> names;
    std::error_code status;
    fs::directory_iterator entry(placeOf(folder), status);
    for (; !status && entry != fs::directory_iterator(); entry.increment(status)) {
        const std::u8string name = entry->path().filename().u8string();
        names.push_back(CStringW::FromUtf8(std::string(name.begin(), name.end())));
    }
    std::ranges::sort(names, {}, &CStringW::View);
    return names;
}

bool isWritable(const CStringW& path) {
    std::error_code ignored;
    const fs::path place = placeOf(path);
    const bool isNew = !fs::exists(place, ignored);
    const bool writesThrough =
        fs::is_regular_file(place, ignored) || fs::is_character_file(place, ignored);
    if (!isNew && !writesThrough) return false;
    const bool opened = std::ofstream(place, std::ios::app).is_open();
    if (opened && isNew) fs::remove(place, ignored);
    return opened;
}
