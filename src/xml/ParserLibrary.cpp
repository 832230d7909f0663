#include "xml/ParserLibrary.h"

#include <mutex>

#include <corvane/base/Version.h>
#include <corvane/platform/LoadedModule.h>

#include "system/Lasting.h"
#include "system/Unicode.h"

namespace corvane::xml {
namespace {

struct Loaded {
    LoadedModule module;
    const ParserLibrary* library = nullptr;
};

}  // namespace

const ParserLibrary* parserLibrary(std::string& fault) {
    static std::mutex mutex;
    static system::Lasting<Loaded> lasting;
    const std::lock_guard lock(mutex);
    Loaded& loaded = lasting.get();
    if (loaded.library) return loaded.library;
    loaded.module = LoadedModule(u"CorvaneXmlParser.dll");
    if (const auto operations = loaded.module.function<ParserLibraryFunction>(kParserLibraryName)) {
        loaded.library = operations(kVersion);
        if (!loaded.library)
            fault = "The module CorvaneXmlParser is of another version than the library";
    } else {
        const std::u16string& said = loaded.module.fault();
        fault = "The module CorvaneXmlParser, which this document needs, " +
                (said.empty() ? "is missing" : "cannot be loaded: " + system::toUtf8(said));
    }
    return loaded.library;
}

}  // namespace corvane::xml
