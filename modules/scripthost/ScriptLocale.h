#pragma once

#include <string>

namespace scripthost {

/// Puts the calling thread into the plain locale: Lua prints, reads and compares by the locale,
/// and a script must not answer differently because of the host's.
class ScriptLocale {
public:
    ScriptLocale();
    ~ScriptLocale();
    ScriptLocale(const ScriptLocale&) = delete;
    ScriptLocale& operator=(const ScriptLocale&) = delete;

private:
#ifdef _WIN32
    int formerMode_;
    std::string former_;
#else
    void* former_;
#endif
};

}  // namespace scripthost
