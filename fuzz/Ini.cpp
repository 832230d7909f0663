// An INI file, and after a line "%%" a section, a key and a value, a line each. A value that is set
// is there, and the rest of the file stays what it was. The same file is read as a profile of the
// first platform.

#include <algorithm>
#include <cctype>
#include <optional>

#include <corvane/config/ModuleConfiguration.h>

#include "Fuzz.h"
#include "config/CIniFile.h"
#include "config/IniRecord.h"
#include "emulation/Profile.h"

namespace {

const fuzz::Folder& folder() {
    static const fuzz::Folder folder;
    return folder;
}

using corvane::config::IniRecord;
using corvane::config::IniRecords;

// A text of which no part has a meaning of its own.
bool isPlain(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](unsigned char c) { return std::isalnum(c) != 0; });
}

IniRecords recordsOf(std::string_view text) {
    IniRecords records;
    corvane::config::IniReader reader(text);
    while (std::optional<IniRecord> record = reader.next())
        records.push_back(std::move(*record));
    return records;
}

bool isSame(const IniRecord& a, const IniRecord& b) {
    return a.Comments == b.Comments && a.Commented == b.Commented && a.Section == b.Section &&
           a.Key == b.Key && a.Value == b.Value;
}

bool areSame(const IniRecords& a, const IniRecords& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame);
}

// What the file holds once these records are written: not all of them read back as they were.
IniRecords written(IniRecords records) {
    corvane::config::groupBySection(records);
    return recordsOf(corvane::config::iniFileText(records));
}

void expectRecords(const std::string& file, IniRecords expected, const char* promise) {
    fuzz::require(areSame(recordsOf(fuzz::contentOf(file)), written(std::move(expected))), promise);
}

// A value that is set is there, the rest stays as it was, and a profile of that value alone is read
// alike.
void set(const CIniFile& ini, const std::string& file, const std::string& section,
         const std::string& key, const std::string& value) {
    IniRecords records = recordsOf(fuzz::contentOf(file));
    const bool keepsAll = areSame(written(records), records);
    const auto inSection = std::find_if(records.begin(), records.end(),
                                        [&](const IniRecord& r) { return r.Section == section; });
    const auto same = std::find_if(inSection, records.end(),
                                   [&](const IniRecord& r) { return r.matches(key, section); });
    const IniRecord heading{{}, ' ', section, {}, {}}, record{{}, ' ', section, key, value};
    if (same != records.end()) {
        same->Value = value;
    } else if (inSection != records.end()) {
        records.insert(inSection + 1, record);
    } else {
        records.insert(records.end(), {heading, record});
    }
    if (!ini.SetValue(key, value, section, file)) return;
    expectRecords(file, records, "only the value changes");
    if (!isPlain(section) || !isPlain(key) || !isPlain(value)) return;
    if (keepsAll)
        fuzz::require(ini.GetValue(key, section, file) == value, "a value that is set is there");
    const std::string alone = folder().path("alone.ini");
    fuzz::require(ini.Create(alone) && ini.SetValue(key, value, section, alone), "a file is made");
    fuzz::require(CStringW(corvane::emulation::profileText(
                      CStringW::FromUtf8(section), CStringW::FromUtf8(key),
                      folder().wide("alone.ini"))) == CStringW::FromUtf8(value).Left(259),
                  "a profile has the value");
}

template <typename Change>
void expectChanged(const std::string& file, bool done, IniRecords records, Change change) {
    if (!done) return;
    change(records);
    expectRecords(file, std::move(records), "only what was asked for changes");
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
    set(ini, file, section, key, value);
    const std::string content = ini.Content(file);
    if (ini.CommentRecord(';', key, section, file) && ini.UnCommentRecord(key, section, file))
        fuzz::require(ini.RecordExists(key, section, file), "a comment keeps its record");
    ini.SetRecordComments("; " + value, key, section, file);
    IniRecords before = recordsOf(fuzz::contentOf(file));
    expectChanged(file, ini.RenameSection(section, value, file), before, [&](IniRecords& records) {
        for (IniRecord& record : records)
            if (record.Section == section) record.Section = value;
    });
    before = recordsOf(fuzz::contentOf(file));
    expectChanged(file, ini.CommentSection('#', value, file), before, [&](IniRecords& records) {
        for (IniRecord& record : records)
            if (record.Section == value) record.Commented = '#';
    });
    ini.Sort(file, content.size() % 2 == 0);
    ini.DeleteRecord(key, value, file);
    before = recordsOf(fuzz::contentOf(file));
    expectChanged(file, ini.DeleteSection(section, file), before, [&](IniRecords& records) {
        std::erase_if(records, [&](const IniRecord& r) { return r.Section == section; });
    });
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
