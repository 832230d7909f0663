#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include <corvane/scriptrules/TypeLibDetails.h>

#include "platform/Components.h"
#include "platform/Registry.h"
#include "platform/TypeLibrary.h"

using corvane::platform::RegistryKey;
using corvane::platform::RegistryRoot;

namespace {

constexpr const char16_t* kRootKey = u"TypeLib";
constexpr const char16_t* kPlatformKey = u"win64";

// What the registry hands out in one piece: longer names and paths count as unreadable.
constexpr std::size_t kLongestKeyName = 254;
constexpr std::size_t kLongestPath = 259;

std::optional<std::u16string> lastVersion(const CStringW& guid) {
    CStringW library;
    library.Format(u"%s\\%s", kRootKey, guid);
    const auto key = RegistryKey::open(RegistryRoot::ClassesRoot, library);
    if (!key) return std::nullopt;
    for (std::size_t index = key->subkeyCount(); index-- > 0;) {
        std::u16string name = key->subkeyName(index);
        if (name.size() <= kLongestKeyName) return name;
    }
    return std::nullopt;
}

}  // namespace

TypeLibDetails::TypeLibDetails(CStringW file) : fileName(std::move(file)) {}

bool TypeLibDetails::FindTypeLibFile(CStringW& path, const CStringW& libraryId,
                                     const CStringW& /*major*/, const CStringW& /*minor*/,
                                     CStringW localeId) {
    const corvane::platform::ComponentRuntime runtime;
    const auto version = lastVersion(libraryId);
    if (!version) return false;
    CStringW registration;
    registration.Format(u"%s\\%s\\%s\\%s\\%s", kRootKey, libraryId, *version, localeId,
                        kPlatformKey);
    const auto key = RegistryKey::open(RegistryRoot::ClassesRoot, registration);
    if (!key) return false;
    const auto file = key->defaultText();
    const bool fits = file && file->size() <= kLongestPath;
    path = fits ? file->c_str() : u"";
    return fits;
}

bool TypeLibDetails::ReadTypeLibAttributes() {
    const corvane::platform::ComponentRuntime runtime;
    const auto attributes = corvane::platform::readTypeLibrary(fileName);
    if (!attributes) return false;
    guid = attributes->guid;
    majorVersion = attributes->majorVersion;
    minorVersion = attributes->minorVersion;
    lcid = attributes->lcid;
    return true;
}
