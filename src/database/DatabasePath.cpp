#include "database/DatabasePath.h"

#include <string>

#include "system/Files.h"
#include "system/Paths.h"
#include "system/Process.h"

namespace corvane::database {
namespace {

constexpr int kLongestVariableName = 49;
constexpr const char16_t* kDefaultFileName = u"qorSqliteDb.dat";

CStringW variableValue(const CStringW& name) {
    if (name.GetLength() > kLongestVariableName) return {};
    std::string bytes;
    for (const char16_t unit : name.View())
        bytes += static_cast<char>(unit & 0xFF);
    return system::environmentVariableOfBytes(bytes).value_or(std::u16string());
}

}  // namespace

CStringW expandVariable(const CStringW& text) {
    const int end = text.ReverseFind(u'%');
    if (end < 0) return text;
    return variableValue(text.Mid(1, end - 1)) + text.Mid(end + 1);
}

CStringW defaultDatabaseFile() {
    const std::u16string folder =
        system::environmentVariable(u"CORVANE_DATABASE_DIR").value_or(std::u16string());
    if (!folder.empty() && system::pathExists(folder)) return CStringW(folder) + kDefaultFileName;
    std::u16string path = system::commonDataFolder();
    for (const char16_t* name : {u"TessalyLtd", u"Corvane", u"QORDataBase", kDefaultFileName})
        path = system::join(path, name);
    return path;
}

}  // namespace corvane::database
