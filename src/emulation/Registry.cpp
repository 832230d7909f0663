#include "emulation/Registry.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <corvane/platform/RegistrySources.h>

#include "emulation/RegistryText.h"
#include "emulation/RegistryTree.h"
#include "system/Files.h"
#include "system/Lasting.h"
#include "system/Modules.h"
#include "system/Paths.h"
#include "system/Process.h"
#include "system/TextLines.h"

namespace corvane::emulation {

using namespace system;

namespace {

constexpr std::size_t kLargestRegistryFile = std::size_t{64} << 20;
constexpr std::u16string_view kMachineFile = u"machine.reg";
constexpr std::u16string_view kUserFile = u"user.reg";
constexpr std::u16string_view kEnding = u".reg";

struct SourceFile {
    std::u16string path;
    RegistryRoot root;
    FileStamp stamp;
};

// A relative folder would depend on the process's current folder, so it counts as not set.
std::u16string folderVariable(std::u16string_view name) {
    std::u16string folder = environmentVariable(name).value_or(std::u16string());
    return !folder.empty() && isSeparator(folder.front()) ? folder : std::u16string();
}

std::u16string userFolder() {
    if (const std::u16string folder = folderVariable(u"XDG_CONFIG_HOME"); !folder.empty())
        return join(folder, u"corvane");
    const std::u16string home = folderVariable(u"HOME");
    return home.empty() ? home : join(home, u".config/corvane");
}

using Names = std::vector<std::u16string>;

// The registry of the installation. Each companion brings a file of its own, which lies over the
// library's.
class InstalledFiles {
public:
    const std::u16string& folder() const { return folder_; }

    // In the order in which they are laid one over the other, and the same object as long as they
    // are the same. The folder is listed again when it has changed, and that a file in it has
    // changed is for the file's own stamp to tell.
    std::shared_ptr<const Names> names() {
        const FileStamp stamp = FileStamp::of(folder_);
        const std::lock_guard lock(mutex_);
        if (stamp_ && stamp_->proves(stamp)) return names_;
        Names names = list();
        if (!names_ || *names_ != names) names_ = std::make_shared<const Names>(std::move(names));
        stamp_ = stamp;
        return names_;
    }

private:
    Names list() const {
        Names names{std::u16string(kMachineFile)};
        for (std::u16string& name : namesIn(folder_))
            if (name.ends_with(kEnding) && name != kMachineFile) names.push_back(std::move(name));
        return names;
    }

    const std::u16string folder_ = join(installFolder(), u"registry");
    std::mutex mutex_;
    std::optional<FileStamp> stamp_;
    std::shared_ptr<const Names> names_;
};

InstalledFiles& installedFiles() {
    static Lasting<InstalledFiles> files;
    return files.get();
}

// What says which files there are.
struct Places {
    std::u16string only;                     // the one folder; empty for the usual ones
    std::u16string user;                     // empty for none
    std::shared_ptr<const Names> installed;  // null with one folder

    bool operator==(const Places&) const = default;
};

// Those of the user's keys alone, or of all.
Places currentPlaces(bool isUsersAlone) {
    std::u16string only = environmentVariable(u"CORVANE_REGISTRY_DIR").value_or(std::u16string());
    if (!only.empty()) return {isUsersAlone ? u"" : only, only, nullptr};
    return {{}, userFolder(), isUsersAlone ? nullptr : installedFiles().names()};
}

// In the order in which they are laid one over the other.
std::vector<SourceFile> filesIn(const Places& places) {
    std::vector<SourceFile> files;
    const auto add = [&files](std::u16string_view folder, std::u16string_view name,
                              RegistryRoot root) {
        std::u16string path = join(folder, name);
        const FileStamp stamp = FileStamp::of(path);
        files.push_back({std::move(path), root, stamp});
    };
    if (places.installed) {
        for (const std::u16string& name : *places.installed)
            add(installedFiles().folder(), name, RegistryRoot::LocalMachine);
        add(u"/etc/corvane", kMachineFile, RegistryRoot::LocalMachine);
    } else if (!places.only.empty()) {
        add(places.only, kMachineFile, RegistryRoot::LocalMachine);
    }
    if (!places.user.empty()) add(places.user, kUserFile, RegistryRoot::CurrentUser);
    return files;
}

bool apply(const SourceFile& file, RegistryNode& tree) {
    const std::optional<std::string> bytes = readFile(file.path, kLargestRegistryFile);
    if (bytes) applyRegistryText(decodeText(*bytes, UnmarkedText::Guessed), file.root, tree);
    return bytes.has_value();
}

// The registry as its files were when they were read.
struct Reading {
    explicit Reading(Places where) : places(std::move(where)), files(filesIn(places)) {
        for (const SourceFile& file : files)
            apply(file, file.root == RegistryRoot::LocalMachine ? trees.machine : trees.user);
        for (const RegistryNode* root : {&trees.machine, &trees.user}) {
            if (const RegistryNode* classes = root->find(kClassesPath))
                trees.classes.overlay(*classes);
        }
        for (RegistryNode* root : {&trees.machine, &trees.user, &trees.classes})
            root->index();
    }

    bool isCurrent(const Places& now) const {
        return places == now && std::ranges::all_of(files, [](const SourceFile& file) {
                   return file.stamp.proves(FileStamp::of(file.path));
               });
    }

    const Places places;
    // Stamped before they are read: a change in between shows at the next call.
    const std::vector<SourceFile> files;
    RegistryTrees trees;
};

std::shared_ptr<const RegistryTrees> currentTrees(bool isUsersAlone) {
    static std::mutex mutex;
    static Lasting<std::array<std::shared_ptr<const Reading>, 2>> lasting;
    std::shared_ptr<const Reading>& known = lasting.get()[isUsersAlone];
    Places places = currentPlaces(isUsersAlone);
    std::shared_ptr<const Reading> reading;
    {
        const std::lock_guard lock(mutex);
        reading = known;
    }
    if (!reading || !reading->isCurrent(places)) {
        reading = std::make_shared<const Reading>(std::move(places));
        const std::lock_guard lock(mutex);
        known = reading;
    }
    return {reading, &reading->trees};
}

// The outermost one of this thread.
thread_local RegistryState* currentState = nullptr;

}  // namespace

std::shared_ptr<const RegistryTrees> registryTrees(RegistryRoot root) {
    // The library asks for the user's language at its start, and many a program for nothing else.
    const bool isUsersAlone = root == RegistryRoot::CurrentUser;
    if (!currentState) return currentTrees(isUsersAlone);
    auto& trees = isUsersAlone ? currentState->users_ : currentState->all_;
    if (!trees) trees = currentTrees(isUsersAlone);
    return trees;
}

RegistryState::RegistryState() : outer_(currentState) {
    if (!outer_) currentState = this;
}

RegistryState::~RegistryState() {
    if (!outer_) currentState = nullptr;
}

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
    const std::shared_ptr<const RegistryTrees> trees = registryTrees(root);
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

namespace corvane {

std::vector<RegistrySource> GetRegistrySources() {
    std::vector<RegistrySource> sources;
    for (emulation::SourceFile& file : emulation::filesIn(emulation::currentPlaces(false))) {
        emulation::RegistryNode tree;
        const bool readable = emulation::apply(file, tree);
        tree.index();
        sources.push_back({std::move(file.path), readable, !tree.subkeyNames().empty()});
    }
    return sources;
}

}  // namespace corvane
