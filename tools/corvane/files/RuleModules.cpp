#include "files/RuleModules.h"

#include <utility>

#include <corvane/host/RuleInterface.h>
#include <corvane/host/RuleModule.h>

#include "Text.h"
#include "language/Messages.h"

namespace {

constexpr const char16_t* kLibrary = u"CorvaneFrameworku.dll";
constexpr const char16_t* kModulesBesideLibrary = u"rules";

CStringW installedModules() {
    const CStringW library = corvane::LoadedModule(kLibrary).file();
    return library.Left(library.GetLength() - static_cast<int>(lastName(library).size())) +
           kModulesBesideLibrary;
}

/// A path for the loader: it has a separator, so that the loader looks in the folder alone.
CStringW pathIn(const CStringW& folder, const CStringW& name) {
    return shownPath(folder + u"\\" + name);
}

}  // namespace

RuleModules::RuleModules(const std::vector<CStringW>& folders) : folders_(folders) {
    folders_.push_back(installedModules());
}

bool RuleModules::isModuleName(const CStringW& file) {
    return file.Right(4).CompareNoCase(u".dll") == 0 || file.Right(3).CompareNoCase(u".so") == 0;
}

const corvane::LoadedModule& RuleModules::load(const CStringW& name) {
    const auto [entry, isNew] = modules_.try_emplace(name);
    corvane::LoadedModule& module = entry->second;
    // A module that won't load is not passed over for an older one of a later folder.
    for (std::size_t i = 0; isNew && !module && module.fault().empty() && i < folders_.size(); ++i)
        module = corvane::LoadedModule(pathIn(folders_[i], name));
    return module;
}

CQorRule* RuleModules::makeRule(const CStringW& file, const CStringW& ruleName,
                                results::Remark& problem) {
    const CStringW name = lastName(file);
    const corvane::LoadedModule& module = load(name);
    if (!module && !module.fault().empty()) {
        problem = remark("the rule module \"{0}\" cannot be loaded: {1}", name, module.fault());
        return nullptr;
    }
    if (!module) {
        CStringW places;
        for (const CStringW& folder : folders_)
            places += (places.IsEmpty() ? CStringW() : CStringW(u", ")) + folder;
        problem = remark("there is no rule module \"{0}\" in {1}", name, places);
        return nullptr;
    }
    const auto create = module.function<CreateQorRuleFunction>(kCreateQorRuleName);
    if (!create) {
        problem = remark("{0} is no rule module: it does not export {1}", module.file(),
                         kCreateQorRuleName);
        return nullptr;
    }
    const auto stamp = module.function<corvane::RuleInterfaceFunction>(corvane::kRuleInterfaceName);
    if (stamp && stamp() != corvane::kRuleInterface) {
        problem = remark(
            "the rule module {0} was built for another version of the library: build "
            "it again",
            module.file());
        return nullptr;
    }
    CQorRule* rule = create(ruleName);
    if (!rule) problem = remark("the rule module {0} has no rule \"{1}\"", module.file(), ruleName);
    return rule;
}
