#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include <corvane/platform/ComPtr.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/scriptrules/IScriptProcessor.h>
#include <corvane/text/CStringW.h>

/// What the host said of one run.
struct Outcome {
    HResult status = corvane::kOk;  ///< The first negative one, or that of GetScriptError.
    bool success = false;
    std::int32_t line = -2;
    std::int32_t character = -2;
    std::int32_t number = 0;
    std::int32_t code = 0;
    std::string type, source, message;
};

using Host = ATL::CComPtr<IScriptProcessor>;

/// A host from the module's class factory, as the component look-up makes it.
inline Host makeHost() {
    static const corvane::LoadedModule module(u"QorScriptHost.dll");
    const Guid classId{
        0x5B0E6A0D, 0x93C4, 0x4F1B, {0x8F, 0x57, 0x2E, 0x4C, 0x1D, 0x7A, 0x96, 0xB3}};
    const auto getClass = module.function<GetClassObjectFunction>("DllGetClassObject");
    void* factory = nullptr;
    if (!getClass ||
        getClass(classId, corvane::interfaceId<IClassFactory>, &factory) != corvane::kOk)
        throw std::runtime_error("no script host");
    ATL::CComPtr<IClassFactory> made;
    made.Attach(static_cast<IClassFactory*>(factory));
    void* object = nullptr;
    if (made->CreateInstance(nullptr, IScriptProcessor::kInterfaceId, &object) != corvane::kOk)
        throw std::runtime_error("no script host object");
    Host host;
    host.Attach(static_cast<IScriptProcessor*>(object));
    return host;
}

inline std::string takeText(BSTR text) {
    std::string bytes = CStringW(text).ToUtf8();
    SysFreeString(text);
    return bytes;
}

inline Outcome askError(IScriptProcessor& host) {
    Outcome result;
    BSTR message = nullptr;
    BSTR type = nullptr;
    BSTR source = nullptr;
    result.status = host.GetScriptError(&result.line, &result.character, &message, &type, &source,
                                        &result.number, &result.code);
    result.message = takeText(message);
    result.type = takeText(type);
    result.source = takeText(source);
    return result;
}

/// One whole run, call after call as the library makes them.
inline Outcome runScript(const CStringW& text, const std::vector<CStringW>& engines = {}) {
    const Host host = makeHost();
    Outcome result;
    for (const CStringW& engine : engines)
        if (corvane::failed(result.status = host->AddEngineFile(engine))) return result;
    std::int16_t success = 0;
    if (corvane::failed(result.status = host->SetScriptText(text)) ||
        corvane::failed(result.status = host->PrepareScript(&success)) ||
        (success == 1 && corvane::failed(result.status = host->RunScript(&success))))
        return result;
    if (success != 1) return askError(*host);
    result.success = true;
    result.status = host->EndScript();
    return result;
}

inline Outcome runScript(const std::string& text, const std::vector<CStringW>& engines = {}) {
    return runScript(CStringW::FromUtf8(text), engines);
}
