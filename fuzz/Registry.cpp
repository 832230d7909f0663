// The text of a .reg file, which is applied to both roots. Applied once more it changes nothing.

#include "Fuzz.h"
#include "emulation/RegistryText.h"
#include "system/TextLines.h"

namespace {

using namespace corvane::emulation;
using namespace corvane::system;

void walk(const RegistryNode& node, std::u16string path, std::u16string& shown) {
    shown += path + u'\n';
    if (const RegistryValue* value = node.value({})) shown += value->text.value_or(u"#") + u'\n';
    for (const std::u16string_view name : node.subkeyNames()) {
        const RegistryNode* const child = node.find(name);
        fuzz::require(child != nullptr, "a subkey has the name that it shows");
        if (path.size() < 400) walk(*child, path + u'\\' + std::u16string(name), shown);
    }
}

std::u16string shown(RegistryNode& root) {
    root.index();
    std::u16string text;
    walk(root, u"", text);
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Quick quick;
    const std::u16string text = decodeText(fuzz::textOf(data, size), UnmarkedText::Guessed);
    for (const RegistryRoot own : {RegistryRoot::LocalMachine, RegistryRoot::CurrentUser}) {
        RegistryNode root;
        applyRegistryText(text, own, root);
        const std::u16string once = shown(root);
        applyRegistryText(text, own, root);
        fuzz::require(shown(root) == once, "applied again, a text changes nothing");
    }
    return 0;
}
