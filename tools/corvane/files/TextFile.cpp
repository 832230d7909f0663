#include "files/TextFile.h"

#include <fstream>
#include <iterator>

#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "doctor/Places.h"
#include "files/RuleFile.h"
#include "language/Messages.h"
#include "lint/SourceTree.h"
#include "results/OutputFile.h"

std::optional<std::string> bytesOfFile(const CStringW& path) {
    if (presenceOfFile(path) != Presence::Readable) return std::nullopt;
    std::ifstream file(placeOf(path), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

bool replaceFile(const CStringW& path, const std::string& bytes) {
    results::OutputFile file(placeOf(path).string());
    file.stream() << bytes;
    return file.commit();
}

std::optional<std::string> xmlOfFile(const CStringW& path, CStringW& problem) {
    QorXMLDocument document;
    const std::optional<std::string> bytes = bytesOfFile(path);
    if (bytes && document.LoadFromFile(path)) return lint::utf8Of(*bytes);
    problem =
        bytes ? faultText(path, corvane::LastXMLFault(document)) : tr("{0}: cannot be read", path);
    return std::nullopt;
}
