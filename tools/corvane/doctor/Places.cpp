#include "doctor/Places.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

namespace {

CStringW textOf(const fs::path& place) {
    const std::u8string bytes = place.u8string();
    return CStringW::FromUtf8(std::string(bytes.begin(), bytes.end()));
}

bool isMissing(const fs::path& place) {
    std::error_code ignored;
    return fs::status(place, ignored).type() == fs::file_type::not_found;
}

/// The uppermost part of a path that would have to be made; the path itself when it is there.
fs::path firstMissing(const fs::path& path) {
    std::error_code ignored;
    fs::path place = fs::absolute(path, ignored);
    if (!place.has_filename()) place = place.parent_path();
    while (place.has_relative_path() && isMissing(place.parent_path()))
        place = place.parent_path();
    return place;
}

/// Where a file would be made that a link without a target names.
fs::path behindLinks(fs::path place) {
    constexpr int kMostLinks = 16;
    std::error_code ignored;
    for (int i = 0; i < kMostLinks && isMissing(place) && fs::is_symlink(place, ignored); ++i)
        place = place.parent_path() / fs::read_symlink(place, ignored);
    return place;
}

bool isWritablePlace(const fs::path& path) {
    std::error_code ignored;
    const fs::path place = behindLinks(path);
    const bool isNew = isMissing(place);
    const bool writesThrough =
        fs::is_regular_file(place, ignored) || fs::is_character_file(place, ignored);
    if (!isNew && !writesThrough) return false;
    const bool opened = std::ofstream(place, std::ios::app).is_open();
    if (opened && isNew) fs::remove(place, ignored);
    return opened;
}

}  // namespace

fs::path placeOf(const CStringW& path) {
    const std::string bytes = path.ToUtf8();
    return {std::u8string(bytes.begin(), bytes.end())};
}

Presence presenceOfFile(const CStringW& path) {
    std::error_code ignored;
    const fs::path place = placeOf(path);
    const fs::file_status status = fs::status(place, ignored);
    if (status.type() == fs::file_type::not_found) return Presence::Missing;
    const bool readable = fs::is_regular_file(status) && std::ifstream(place).is_open();
    return readable ? Presence::Readable : Presence::Unreadable;
}

Presence presenceOfFolder(const CStringW& path) {
    std::error_code ignored;
    const fs::path place = placeOf(path);
    if (fs::status(place, ignored).type() == fs::file_type::not_found) return Presence::Missing;
    const bool reached = fs::is_directory(place / ".", ignored);
    return reached ? Presence::Readable : Presence::Unreadable;
}

std::optional<std::vector<CStringW>> filesIn(const CStringW& folder) {
    std::vector<CStringW> names;
    std::error_code status;
    fs::directory_iterator entry(placeOf(folder), status);
    if (status) return std::nullopt;
    for (; !status && entry != fs::directory_iterator(); entry.increment(status))
        names.push_back(textOf(entry->path().filename()));
    std::ranges::sort(names, {}, &CStringW::View);
    return names;
}

bool isWritable(const CStringW& path) {
    return isWritablePlace(placeOf(path));
}

bool canBeMade(const CStringW& path) {
    const fs::path place = firstMissing(placeOf(path));
    return isMissing(place) && isWritablePlace(place);
}

CStringW fileInTheWayOf(const CStringW& path) {
    std::error_code ignored;
    const fs::path missing = firstMissing(placeOf(path));
    const fs::path there = isMissing(missing) ? missing.parent_path() : missing;
    return fs::is_directory(there, ignored) ? CStringW() : textOf(there);
}
