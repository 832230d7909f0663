#include "files/ModuleFault.h"

#include "Text.h"
#include "language/Messages.h"

CStringW moduleFault(const corvane::LoadedModule& module, const CStringW& path) {
    const CStringW shown = shownPath(path);
    if (!module.fault().empty()) return tr("{0} won't load: {1}", shown, module.fault());
    const bool bare = CStringW(lastName(path)) == path;
    return bare ? tr("there is no {0} beside the library", shown) : tr("there is no {0}", shown);
}
