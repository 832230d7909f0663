#include "author/RegistryText.h"

#include <algorithm>

#include <corvane/platform/ComponentRegistration.h>

namespace registry {

namespace {

/// As it is between quotes.
CStringW quoted(const TypeLibDetails& library) {
    CStringW path = library.fileName;
    path.Replace(u"\\", u"\\\\");
    path.Replace(u"\"", u"\\\"");
    return u"\"" + path + u"\"";
}

/// The end of the key of a type library, which is the same for the user and for the machine.
CStringW keyEnd(const TypeLibDetails& library) {
    CStringW text;
    text.Format(u"\\Software\\Classes\\TypeLib\\%s\\%x.%x\\%x\\win64]",
                CStringW(corvane::GuidText(library.guid)), library.majorVersion,
                library.minorVersion, library.lcid);
    return text;
}

bool isEntry(const std::string& block, const TypeLibDetails& library, bool isRead) {
    const CStringW text = CStringW::FromUtf8(block);
    const CStringW key = text.Left(std::max(text.Find(u']'), 0) + 1);
    const CStringW end = keyEnd(library);
    if (isRead && key.Right(end.GetLength()).CompareNoCase(end) == 0) return true;
    return CStringW(key).MakeLower().Find(u"\\typelib\\") >= 0 &&
           text.Find(u"@=" + quoted(library)) >= 0;
}

}  // namespace

std::string withEntry(std::string text, const TypeLibDetails& library, bool forMachine) {
    const CStringW root = forMachine ? u"HKEY_LOCAL_MACHINE" : u"HKEY_CURRENT_USER";
    const std::string entry =
        (u"\n[" + root + keyEnd(library) + u"\n@=" + quoted(library) + u"\n").ToUtf8();
    if (text.ends_with(entry)) return text;
    if (text.empty()) text = "Windows Registry Editor Version 5.00\n";
    if (!text.ends_with('\n')) text += '\n';
    return text + entry;
}

std::optional<std::string> withoutEntries(const std::string& text, const TypeLibDetails& library,
                                          bool isRead) {
    std::string kept;
    bool isFound = false;

    for (std::size_t at = 0; at < text.size();) {
        // A key and its values, up to the next key.
        const std::size_t next = text.find("\n[", at + 1);
        const std::size_t end = next == text.npos ? text.size() : next + 1;
        const std::string block = text.substr(at, end - at);
        at = end;
        const bool isKept = block.front() != '[' || !isEntry(block, library, isRead);
        if (isKept) kept += block;
        isFound = isFound || !isKept;
        // The empty line before an entry goes with it.
        if (!isKept && kept.ends_with("\n\n")) kept.pop_back();
    }
    if (!isFound) return std::nullopt;
    return kept;
}

}  // namespace registry
