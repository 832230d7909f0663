#include "files/TextFile.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "doctor/Places.h"
#include "files/RuleFile.h"
#include "language/Messages.h"
#include "lint/SourceTree.h"
#include "results/OutputFile.h"

namespace fs = std::filesystem;

std::optional<std::string> bytesOfFile(const CStringW& path) {
    if (presenceOfFile(path) != Presence::Readable) return std::nullopt;
    std::ifstream file(placeOf(path), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

bool replaceFile(const CStringW& path, const std::string& bytes) {
    std::error_code failed;
    const fs::path place = fs::weakly_canonical(placeOf(path), failed);
    const fs::file_status former = fs::status(place, failed);
    results::OutputFile file(place.string());
    if (!file.isOpen()) return false;
    file.stream() << bytes;
    if (!file.commit()) return false;
    if (fs::is_regular_file(former)) fs::permissions(place, former.permissions(), failed);
    return true;
}

std::optional<std::string> xmlOfFile(const CStringW& path, CStringW& problem) {
    QorXMLDocument document;
    const std::optional<std::string> bytes = bytesOfFile(path);
    if (bytes && document.LoadFromFile(path)) return lint::utf8Of(*bytes);
    problem =
        bytes ? faultText(path, corvane::LastXMLFault(document)) : tr("{0}: cannot be read", path);
    return std::nullopt;
}
