#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include <corvane/scriptrules/RegisteredTypeLibraries.h>
#include <corvane/scriptrules/TypeLibDetails.h>

#include "emulation/Components.h"
#include "emulation/Registry.h"
#include "emulation/TypeLibrary.h"
#include "system/Files.h"
#include "system/Modules.h"
#include "system/Paths.h"

using corvane::RegisteredTypeLibrary;
using corvane::emulation::RegistryKey;

namespace {

constexpr const char16_t* kRootKey = u"TypeLib";
constexpr const char16_t* kPlatformKey = u"win64";

// What the registry hands out in one piece: longer names and paths count as unreadable.
constexpr int kLongestKeyName = 254;
constexpr std::size_t kLongestPath = 259;

std::optional<RegistryKey> openKey(const CStringW& path) {
    return RegistryKey::open(corvane::emulation::RegistryRoot::ClassesRoot, path);
}

std::vector<CStringW> subkeys(const CStringW& path) {
    std::vector<CStringW> names;
    const auto key = openKey(path);
    if (!key) return names;
    names.reserve(key->subkeyCount());
    for (std::size_t i = 0; i < key->subkeyCount(); ++i)
        names.push_back(key->subkeyName(i));
    return names;
}

CStringW libraryKey(const CStringW& guid) {
    CStringW key;
    key.Format(u"%s\\%s", kRootKey, guid);
    return key;
}

// Of the registered versions the one that counts: the last. Nothing without one.
std::optional<CStringW> countingVersion(const std::vector<CStringW>& versions) {
    for (std::size_t index = versions.size(); index-- > 0;)
        if (versions[index].GetLength() <= kLongestKeyName) return versions[index];
    return std::nullopt;
}

// An installation registers its own type libraries by paths from the library's folder, so that it
// can be moved. Where no such file is there, the path counts as it is.
CStringW foundFile(std::u16string_view registered) {
    namespace system = corvane::system;
    const bool isRelative = !registered.empty() && registered.find(u':') == registered.npos &&
                            registered.front() != u'/' && registered.front() != u'\\';
    if (!isRelative) return CStringW(registered);
    const std::u16string file =
        system::join(system::parentFolder(system::ownModuleFile()), registered);
    return CStringW(system::pathExists(file) ? std::u16string_view(file) : registered);
}

// False when there is none for 64-bit use, with `path` untouched, or one that is too long, with
// `path` empty. A registration with an empty path, or with none, is one all the same.
bool readFile(const CStringW& guid, const CStringW& version, const CStringW& locale,
              CStringW& path) {
    CStringW registration;
    registration.Format(u"%s\\%s\\%s\\%s", libraryKey(guid), version, locale, kPlatformKey);
    const auto key = openKey(registration);
    if (!key) return false;
    const auto file = key->defaultText();
    const bool fits = file && file->size() <= kLongestPath;
    path = fits ? foundFile(file->c_str()) : CStringW();
    return fits;
}

// A version key holds its locales beside keys of other names.
bool isLocale(const CStringW& name) {
    return !name.IsEmpty() &&
           name.View().find_first_not_of(u"0123456789abcdefABCDEF") == name.View().npos;
}

void addLibrary(const CStringW& guid, std::vector<RegisteredTypeLibrary>& libraries) {
    const std::vector<CStringW> versions = subkeys(libraryKey(guid));
    const std::optional<CStringW> counting = countingVersion(versions);
    for (const CStringW& version : versions) {
        for (const CStringW& locale : subkeys(libraryKey(guid) + u"\\" + version)) {
            if (!isLocale(locale)) continue;
            RegisteredTypeLibrary library{guid, version, locale, {}, false};
            const bool read = readFile(guid, version, locale, library.file);
            library.found = read && version == counting;
            libraries.push_back(std::move(library));
        }
    }
}

}  // namespace

TypeLibDetails::TypeLibDetails(CStringW file) : fileName(std::move(file)) {}

bool TypeLibDetails::FindTypeLibFile(CStringW& path, const CStringW& libraryId,
                                     const CStringW& /*major*/, const CStringW& /*minor*/,
                                     CStringW localeId) {
    const corvane::emulation::ComponentRuntime runtime;
    const corvane::emulation::RegistryState registry;
    const auto version = countingVersion(subkeys(libraryKey(libraryId)));
    return version && readFile(libraryId, *version, localeId, path);
}

bool TypeLibDetails::ReadTypeLibAttributes() {
    const corvane::emulation::ComponentRuntime runtime;
    const auto attributes = corvane::emulation::readTypeLibrary(fileName);
    if (!attributes) return false;
    guid = attributes->guid;
    majorVersion = attributes->majorVersion;
    minorVersion = attributes->minorVersion;
    lcid = attributes->lcid;
    return true;
}

namespace corvane {

std::vector<RegisteredTypeLibrary> GetRegisteredTypeLibraries() {
    const emulation::RegistryState registry;
    std::vector<RegisteredTypeLibrary> libraries;
    for (const CStringW& guid : subkeys(kRootKey))
        addLibrary(guid, libraries);
    return libraries;
}

}  // namespace corvane
