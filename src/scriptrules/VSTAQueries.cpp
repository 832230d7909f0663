#include <string_view>

#include <corvane/scriptrules/VSTAQueries.h>

#include "emulation/Registry.h"
#include "system/Modules.h"
#include "system/Paths.h"

using corvane::emulation::RegistryKey;
using corvane::emulation::RegistryRoot;

namespace {

// The tools are 32-bit programs and register in that view of the registry.
constexpr std::u16string_view kToolsKey = u"SOFTWARE\\Wow6432Node\\Microsoft\\VSTAHostConfig";
constexpr std::u16string_view kProductKey =
    u"SOFTWARE\\Wow6432Node\\Microsoft\\VSTAHost\\CorvaneServer";
constexpr std::u16string_view kCreoModules = u"QORProeAddinCreo*u.dll";

// Whatever keeps a query from its answer counts as no.
template <typename Query>
void answer(bool* result, Query query) {
    if (!result) return;
    try {
        *result = query();
    } catch (...) {
        *result = false;
    }
}

void answerWhetherKeyOpens(bool* result, std::u16string_view path) {
    answer(result, [&] { return RegistryKey::open(RegistryRoot::LocalMachine, path).has_value(); });
}

}  // namespace

void IsVSTAInstalled(bool* installed) {
    answerWhetherKeyOpens(installed, kToolsKey);
}

void AreVSTARulesSupported(bool* supported) {
    IsVSTAInstalled(supported);
}

void CanUseVSTARules(bool* usable) {
    answerWhetherKeyOpens(usable, kProductKey);
}

void IsCorvaneForCreoParametric(bool* creo) {
    using namespace corvane::emulation;
    using namespace corvane::system;
    answer(creo, [] { return anyModuleFits(parentFolder(ownModuleFile()), kCreoModules); });
}
