#include "TestHost.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED TestHost testHost;
TestHost testHost;

namespace {

HResult answer(const char16_t* call) {
    testHost.calls.emplace_back(call);
    return testHost.fault == call ? corvane::kErrorFail : corvane::kOk;
}

// The host and its own factory: all references must be given back.
class Processor final : public IScriptProcessor, public IClassFactory {
public:
    HResult QueryInterface(const Guid& id, void** object) override {
        const bool known =
            id == IScriptProcessor::kInterfaceId && testHost.fault != u"QueryInterface";
        if (!known) return corvane::kErrorNoInterface;
        return testHost.fault == u"null interface" ? corvane::kOk
                                                   : CreateInstance(nullptr, id, object);
    }
    HResult CreateInstance(IUnknown*, const Guid&, void** object) override {
        *object = static_cast<IScriptProcessor*>(this);
        AddRef();
        return corvane::kOk;
    }
    HResult LockServer(int) override { return corvane::kOk; }
    QorULong AddRef() override { return static_cast<QorULong>(++testHost.references); }
    QorULong Release() override { return static_cast<QorULong>(--testHost.references); }
    HResult GetTypeInfoCount(unsigned*) override { return corvane::kErrorFail; }
    HResult GetTypeInfo(unsigned, QorULong, ITypeInfo**) override { return corvane::kErrorFail; }
    HResult GetIDsOfNames(const Guid&, OLECHAR**, unsigned, QorULong, QorLong*) override {
        return corvane::kErrorFail;
    }
    HResult Invoke(QorLong, const Guid&, QorULong, std::uint16_t, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                   unsigned*) override {
        return corvane::kErrorFail;
    }

    HResult RunScript(std::int16_t* success) override {
        *success = testHost.ran;
        return answer(u"RunScript");
    }
    HResult EndScript() override { return answer(u"EndScript"); }
    HResult SetScriptText(const char16_t* text) override {
        testHost.script = text;
        return answer(u"SetScriptText");
    }
    HResult AddEngineFile(const char16_t* path) override { return answer(path); }
    HResult PrepareScript(std::int16_t* success) override {
        *success = testHost.prepared;
        return answer(u"PrepareScript");
    }
    HResult GetScriptError(std::int32_t* line, std::int32_t*, BSTR* message, BSTR* type,
                           BSTR* source, std::int32_t* number, std::int32_t* code) override {
        if (corvane::failed(answer(u"GetScriptError"))) return corvane::kErrorFail;
        *line = testHost.line;
        *message = SysAllocString(u"too short");
        *type = SysAllocString(testHost.errorType);
        *source = SysAllocString(u"check");
        *number = 17;
        *code = corvane::kErrorFail;
        return corvane::kOk;
    }
};

}  // namespace

EXPORTED HResult DllGetClassObject(const Guid&, const Guid&, void** object) {
    static Processor processor;
    *object = static_cast<IClassFactory*>(&processor);
    processor.AddRef();
    return corvane::kOk;
}
