#include "Engine.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace scripthost {
namespace {

constexpr std::u16string_view kSeparators = u"/\\";

constexpr std::string_view kKeywords =
    " and break do else elseif end false for function goto if in local nil not or repeat return "
    "then true until while ";

bool isNamePart(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_' ||
           (unit >= u'0' && unit <= u'9');
}

bool isLuaName(std::u16string_view text) {
    return !text.empty() && !(text.front() >= u'0' && text.front() <= u'9') &&
           std::all_of(text.begin(), text.end(), isNamePart);
}

}  // namespace

std::optional<Engine> Engine::fromLibrary(std::u16string_view path) {
    const std::size_t cut = path.find_last_of(kSeparators);
    std::u16string_view stem = cut == path.npos ? path : path.substr(cut + 1);
    stem = stem.substr(0, stem.rfind(u'.'));
    if (!isLuaName(stem)) return std::nullopt;
    Engine engine;
    engine.folder = cut == path.npos ? u"." : path.substr(0, cut);
    std::transform(stem.begin(), stem.end(), std::back_inserter(engine.name),
                   [](char16_t unit) { return static_cast<char>(unit); });
    if (kKeywords.find(" " + engine.name + " ") != kKeywords.npos) return std::nullopt;
    // Every platform takes this one.
    std::replace(engine.folder.begin(), engine.folder.end(), u'\\', u'/');
    return engine;
}

std::u16string Engine::file(std::u16string_view ending) const {
    return folder + u"/" + std::u16string(name.begin(), name.end()) + std::u16string(ending);
}

bool isFile(const std::u16string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(std::filesystem::path(path), error);
}

std::optional<std::string> readFile(const std::u16string& path, std::uint64_t most) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary | std::ios::ate);
    const std::streamoff size = file ? std::streamoff(file.tellg()) : -1;
    if (size < 0 || static_cast<std::uint64_t>(size) > most) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size), '\0');
    file.seekg(0);
    if (!file.read(bytes.data(), size)) return std::nullopt;
    return bytes;
}

}  // namespace scripthost
