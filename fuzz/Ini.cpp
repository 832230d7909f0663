// An INI file, and after a line "%%" a section, a key and a value, a line each. A value that is set
// is there, and the rest of the file stays what it was. The same file is read as a profile of the
// first platform.

#include <algorithm>
#include <cctype>

#include <corvane/config/ModuleConfiguration.h>

#include "Fuzz.h"
#include "config/CIniFile.h"
#include "emulation/Profile.h"

namespace {

const fuzz::Folder& folder() {
    static const fuzz::Folder folder;
    return folder;
}

// Whether a text reads back as it was written: blanks, line ends and marks mean something of their
// own.
bool isPlain(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](unsigned char c) { return std::isalnum(c) != 0; });
}

void readAll(const CIniFile& ini, const std::string& file) {
    for (const std::string& section : ini.GetSectionNames(file)) {
        ini.SectionExists(section, file);
        for (const auto& record : ini.GetSection(section, file)) {
            ini.GetRecord(record.Key, section, file);
            ini.GetValue(record.Key, section, file);
        }
    }
    ini.GetSections(file);
}

void edit(const CIniFile& ini, const std::string& file, const std::string& section,
          const std::string& key, const std::string& value) {
    if (ini.SetValue(key, value, section, file) && isPlain(section) && isPlain(key) &&
        isPlain(value) && !key.empty() && !section.empty())
        fuzz::require(ini.GetValue(key, section, file) == value, "a value that is set is there");
    const std::string content = ini.Content(file);
    if (ini.CommentRecord(';', key, section, file) && ini.UnCommentRecord(key, section, file))
        fuzz::require(ini.RecordExists(key, section, file), "a comment keeps its record");
    ini.SetRecordComments("; " + value, key, section, file);
    ini.RenameSection(section, value, file);
    ini.CommentSection('#', value, file);
    ini.Sort(file, content.size() % 2 == 0);
    ini.DeleteRecord(key, value, file);
    ini.DeleteSection(section, file);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Quick quick;
    const auto [source, rest] = fuzz::parted(fuzz::textOf(data, size));
    folder().write("file.ini", source);
    std::string_view lines = rest;
    const std::string section(fuzz::take(lines, '\n'));
    const std::string key(fuzz::take(lines, '\n'));
    const std::string value(fuzz::take(lines, '\n'));

    const std::u16string profile = corvane::emulation::profileText(
        CStringW::FromUtf8(section), CStringW::FromUtf8(key), folder().wide("file.ini"));
    fuzz::require(profile.size() < 260, "a value of a profile fits its buffer");

    const CIniFile ini;
    const std::string file = folder().path("file.ini");
    readAll(ini, file);
    edit(ini, file, section, key, value);
    readAll(ini, file);
    return 0;
}
