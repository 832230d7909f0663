#pragma once

#include <corvane/platform/ComPtr.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/scriptrules/IScriptProcessor.h>
#include <corvane/text/CStringW.h>

/// Runs a script in a fresh object of the script host, without the library between. False when the
/// rule is not met or the script fails.
inline bool runInHost(const CStringW& text) {
    constexpr Guid kClassId{
        0x5B0E6A0D, 0x93C4, 0x4F1B, {0x8F, 0x57, 0x2E, 0x4C, 0x1D, 0x7A, 0x96, 0xB3}};
    static const corvane::LoadedModule module(u"QorScriptHost.dll");
    static const auto getClass = module.function<GetClassObjectFunction>("DllGetClassObject");
    void* factory = nullptr;
    if (corvane::failed(getClass(kClassId, corvane::interfaceId<IClassFactory>, &factory)))
        return false;
    ATL::CComPtr<IClassFactory> maker;
    maker.Attach(static_cast<IClassFactory*>(factory));
    void* object = nullptr;
    if (corvane::failed(maker->CreateInstance(nullptr, IScriptProcessor::kInterfaceId, &object)))
        return false;
    ATL::CComPtr<IScriptProcessor> host;
    host.Attach(static_cast<IScriptProcessor*>(object));
    std::int16_t success = 0;
    host->SetScriptText(text);
    host->PrepareScript(&success);
    if (success == 1) host->RunScript(&success);
    return success == 1 && !corvane::failed(host->EndScript());
}
