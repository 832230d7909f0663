#include "ScriptLocale.h"

#include <locale.h>

namespace scripthost {

#ifdef _WIN32

ScriptLocale::ScriptLocale() : formerMode_(_configthreadlocale(_ENABLE_PER_THREAD_LOCALE)) {
    if (const char* name = setlocale(LC_ALL, nullptr)) former_ = name;
    setlocale(LC_ALL, "C");
}

ScriptLocale::~ScriptLocale() {
    setlocale(LC_ALL, former_.c_str());
    _configthreadlocale(formerMode_);
}

#else

ScriptLocale::ScriptLocale() {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    former_ = uselocale(plain);
}

ScriptLocale::~ScriptLocale() {
    uselocale(static_cast<locale_t>(former_));
}

#endif

}  // namespace scripthost
