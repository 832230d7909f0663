#pragma once

#include <string>
#include <string_view>

#include <corvane/base/Export.h>

namespace corvane {

/// A loaded shared module, freed with this object. Movable, not copyable.
class CORVANE_EXPORT LoadedModule {
public:
    LoadedModule() = default;
    /// Loads a module by the name that Windows gives it, with or without a folder:
    /// "QORDatabaseu.dll" is the platform's shared object of that stem. A bare name is looked for
    /// in this library's folder, then where the system's loader looks.
    explicit LoadedModule(std::u16string_view path);
    LoadedModule(LoadedModule&& other) noexcept;
    LoadedModule& operator=(LoadedModule&& other) noexcept;
    ~LoadedModule();

    /// False when there is no such module or it won't load.
    explicit operator bool() const { return handle_ != nullptr; }

    /// What the system's loader says of a module that is there and won't load; empty when the
    /// module is loaded and when there is none.
    const std::u16string& fault() const { return fault_; }

    /// The full path of the module's file; empty without a module.
    std::u16string file() const;

    /// An exported function by its case-sensitive name, or null. Valid as long as the module is.
    template <typename Function>
    Function function(const char* name) const {
        return reinterpret_cast<Function>(symbol(name));
    }

private:
    void* symbol(const char* name) const;

    void* handle_ = nullptr;
    std::u16string fault_;
};

}  // namespace corvane
