#include <string_view>

#include <corvane/scriptrules/VSTAQueries.h>

#include "platform/Files.h"
#include "platform/Modules.h"
#include "platform/Paths.h"
#include "platform/Registry.h"

using corvane::platform::RegistryKey;
using corvane::platform::RegistryRoot;

namespace {

// The tools are 32-bit programs and register in that view of the registry.
constexpr std::u16string_view kToolsKey = u"SOFTWARE\\Wow6432Node\\Microsoft\\VSTAHostConfig";
constexpr std::u16string_view kProductKey =
    u"SOFTWARE\\Wow6432Node\\Microsoft\\VSTAHost\\CorvaneServer";
constexpr std::u16string_view kCreoModules = u"QORProeAddinCreo*u.dll";

bool machineHasKey(std::u16string_view path) {
    return RegistryKey::open(RegistryRoot::LocalMachine, path).has_value();
}

}  // namespace

void IsVSTAInstalled(bool* installed) {
    *installed = machineHasKey(kToolsKey);
}

void AreVSTARulesSupported(bool* supported) {
    IsVSTAInstalled(supported);
}

void CanUseVSTARules(bool* usable) {
    *usable = machineHasKey(kProductKey);
}

void IsCorvaneForCreoParametric(bool* creo) {
    using namespace corvane::platform;
    *creo = anyFileMatches(parentFolder(ownModuleFile()), kCreoModules);
}
