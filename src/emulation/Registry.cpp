#include "emulation/Registry.h"

#include "emulation/RegistryFiles.h"

namespace corvane::emulation {

namespace {

const RegistryNode& rootNode(const RegistryTrees& trees, RegistryRoot root) {
    switch (root) {
        case RegistryRoot::ClassesRoot:
            return trees.classes;
        case RegistryRoot::CurrentUser:
            return trees.user;
        case RegistryRoot::LocalMachine:
            break;
    }
    return trees.machine;
}

}  // namespace

std::optional<RegistryKey> RegistryKey::open(RegistryRoot root, std::u16string_view path) {
    if (path.starts_with(u'\\')) return std::nullopt;
    const std::shared_ptr<const RegistryTrees> trees = registryTrees();
    const RegistryNode* node = rootNode(*trees, root).find(path);
    if (!node) return std::nullopt;
    return RegistryKey(std::shared_ptr<const RegistryNode>(trees, node));
}

std::size_t RegistryKey::subkeyCount() const {
    return node_->subkeyNames().size();
}

std::u16string RegistryKey::subkeyName(std::size_t index) const {
    return std::u16string(node_->subkeyNames()[index]);
}

std::optional<std::u16string> RegistryKey::defaultText() const {
    if (!node_->value({})) return std::u16string();
    return text({});
}

std::optional<std::u16string> RegistryKey::text(std::u16string_view valueName) const {
    const RegistryValue* value = node_->value(valueName);
    return value ? value->text : std::nullopt;
}

std::optional<std::uint32_t> RegistryKey::number(std::u16string_view valueName) const {
    const RegistryValue* value = node_->value(valueName);
    return value ? value->number : std::nullopt;
}

}  // namespace corvane::emulation
