#include "DatabaseFile.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "common/Guard.h"

namespace qor_db::sqlite {
namespace {

namespace fs = std::filesystem;

fs::path pathOf(const CStringW& text) {
    const std::string bytes = text.ToUtf8();
    std::u8string units(bytes.begin(), bytes.end());
    // Every platform takes this one.
    std::replace(units.begin(), units.end(), u8'\\', u8'/');
    return fs::path(units);
}

Status failureAt(ErrorCode code, const CStringW& target, const char16_t* what,
                 const std::error_code& error = {}) {
    CStringW message = u"\"" + target + u"\" " + what;
    if (error) message += u": " + CStringW::FromUtf8(error.message());
    return driver::failure(code, message + u".", error.value());
}

bool isUnreserved(char byte) {
    constexpr std::string_view kOthers = "/-._~";
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9') || kOthers.find(byte) != kOthers.npos;
}

Status checkMissing(const OpenRequest& request, const fs::path& path) {
    if (!request.mayCreate) return failureAt(ErrorCode::Missing, request.target, u"does not exist");
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    if (!error) return {};
    return failureAt(ErrorCode::CannotOpen, request.target, u"has no folder and none can be made",
                     error);
}

}  // namespace

std::string DatabaseFile::uri(const char* parameters) const {
    constexpr const char* kDigits = "0123456789ABCDEF";
    // The path of a Windows drive has no separator in front.
    std::string result = path.front() == '/' ? "file://" : "file:///";
    for (const char byte : path) {
        if (isUnreserved(byte)) {
            result += byte;
        } else {
            const unsigned value = static_cast<unsigned char>(byte);
            result += {'%', kDigits[value >> 4], kDigits[value & 0xF]};
        }
    }
    return result + parameters;
}

bool DatabaseFile::hasJournal() const {
    const char* const kEndings[] = {"-wal", "-journal"};
    return std::any_of(std::begin(kEndings), std::end(kEndings), [this](const char* ending) {
        const std::string name = path + ending;
        std::error_code error;
        const auto size = fs::file_size(fs::path(std::u8string(name.begin(), name.end())), error);
        return !error && size > 0;
    });
}

Outcome<DatabaseFile> findDatabaseFile(const OpenRequest& request) {
    if (request.target.IsEmpty())
        return driver::failure(ErrorCode::Missing, u"No database file is named.");
    if (request.target.Find(u'\0') >= 0)
        return driver::failure(ErrorCode::CannotOpen, u"The file's name holds a zero character.");
    std::error_code error;
    const fs::path path = fs::absolute(pathOf(request.target), error);
    if (error) return failureAt(ErrorCode::CannotOpen, request.target, u"is no path", error);
    const fs::file_status status = fs::status(path, error);
    const std::u8string units = path.generic_u8string();
    DatabaseFile file{std::string(units.begin(), units.end()), fs::exists(status)};
    if (status.type() == fs::file_type::not_found) {
        Status fault = checkMissing(request, path);
        if (!fault.ok()) return fault;
    } else if (status.type() == fs::file_type::none) {
        return failureAt(ErrorCode::CannotOpen, request.target, u"cannot be reached", error);
    } else if (status.type() == fs::file_type::directory) {
        return failureAt(ErrorCode::CannotOpen, request.target, u"is a folder");
    } else if (status.type() != fs::file_type::regular) {
        return failureAt(ErrorCode::CannotOpen, request.target, u"is no file");
    }
    return file;
}

}  // namespace qor_db::sqlite
