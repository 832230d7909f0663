#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace corvane::emulation {

class RegistryNode;
struct RegistryTrees;

enum class RegistryRoot {
    ClassesRoot,  ///< The user's classes over the machine's.
    CurrentUser,
    LocalMachine,
};

/// What look-ups below a root need of the registry now, or as the RegistryState of the calling
/// thread has it. The files are read only when they, or the places where they lie, have changed
/// since the last call. Safe on any thread.
std::shared_ptr<const RegistryTrees> registryTrees(RegistryRoot root);

/// One open key of the registry. Names ignore case; subkeys stand in name order, as the original
/// platform has them (upper-case folding, by code unit).
///
/// On POSIX the registry is read from text files in the .reg export format (UTF-8 or UTF-16, with
/// or without BOM, "REGEDIT4" and "Windows Registry Editor Version 5.00"). The environment variable
/// CORVANE_REGISTRY_DIR names a folder that holds "machine.reg" and "user.reg"; then no other file
/// is read. Without it the machine's keys come from "registry/machine.reg" in the install folder,
/// then "/etc/corvane/machine.reg" over it, and the user's from "corvane/user.reg" in
/// $XDG_CONFIG_HOME or ~/.config. A machine's file fills HKEY_LOCAL_MACHINE and a user's
/// HKEY_CURRENT_USER; HKEY_CLASSES_ROOT in either means "Software\Classes" there. A damaged line is
/// passed over; a missing file, or one above 64 MiB, is empty. A file is read again when it has
/// changed. Keys may be opened on any thread, and an open key stays as it was when it was opened.
class RegistryKey {
public:
    /// Opens a key for reading; `path` is separated by "\", and empty for the root itself. Nothing
    /// when it is not there or begins with a separator.
    static std::optional<RegistryKey> open(RegistryRoot root, std::u16string_view path);

    std::size_t subkeyCount() const;
    /// The name of a subkey as it was created; `index` is below subkeyCount().
    std::u16string subkeyName(std::size_t index) const;

    /// The default value as text: an empty text when the key has none, nothing when it is not text.
    std::optional<std::u16string> defaultText() const;
    /// A named value of that type, or nothing.
    std::optional<std::u16string> text(std::u16string_view valueName) const;
    std::optional<std::uint32_t> number(std::u16string_view valueName) const;

private:
    explicit RegistryKey(std::shared_ptr<const RegistryNode> node) : node_(std::move(node)) {}

    std::shared_ptr<const RegistryNode> node_;
};

/// Has the calling thread see the registry in one state for as long as it lives: that of the first
/// look-up in it, for CurrentUser apart. Look-ups that belong together agree so, and the files are
/// looked at once. Within another one it changes nothing.
class RegistryState {
public:
    RegistryState();
    RegistryState(const RegistryState&) = delete;
    RegistryState& operator=(const RegistryState&) = delete;
    ~RegistryState();

private:
    friend std::shared_ptr<const RegistryTrees> registryTrees(RegistryRoot root);

    RegistryState* outer_;
    // Of the outermost one.
    std::shared_ptr<const RegistryTrees> users_;
    std::shared_ptr<const RegistryTrees> all_;
};

}  // namespace corvane::emulation
