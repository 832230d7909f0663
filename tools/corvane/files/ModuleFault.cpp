#include "files/ModuleFault.h"

#include "Text.h"

CStringW moduleFault(const corvane::LoadedModule& module, const CStringW& path) {
    const CStringW shown = shownPath(path);
    if (!module.fault().empty()) return shown + u" won't load: " + CStringW(module.fault());
    const bool bare = CStringW(lastName(path)) == path;
    return u"there is no " + shown + (bare ? u" beside the library" : u"");
}
