#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include <corvane/text/CStringW.h>

class TemporaryFolder;

/// Whose settings a command runs with.
enum class SettingsOrigin {
    Named,     ///< Those of --data or CORVANE_DATA_DIR.
    User,      ///< Those of the user's configuration folder.
    Machine,   ///< Those of the machine's data folder.
    Examples,  ///< Nobody has any: those that the examples of the installation need.
    None,      ///< Nobody has any, and there are no examples.
};

/// The user's configuration folder: "corvane" in XDG_CONFIG_HOME, else in ~/.config. Nothing
/// without a home.
std::optional<std::filesystem::path> userConfigurationFolder();

/// The settings that commands run with. The library looks for them in one place, which a variable
/// of the environment names; here are the places that people expect besides. Settings that have to
/// be made are in a temporary folder, which goes with the last copy of this object.
class Settings {
public:
    /// Finds the settings and hands them to the library, through the environment. `data` comes
    /// over all others, and `scripts` over the script folder of what is found; either may be empty.
    /// Raises std::runtime_error when `scripts` cannot be handed over.
    void apply(const CStringW& data, const CStringW& scripts);
    /// Lets the rule database be where the user may make it, unless it is configured or there.
    /// With `mayMake` false no folder is made that stays.
    void placeDatabase(bool mayMake);

    SettingsOrigin origin() const { return origin_; }

private:
    void find();
    bool write(const CStringW& scripts);

    SettingsOrigin origin_ = SettingsOrigin::None;
    std::shared_ptr<const TemporaryFolder> made_;
    std::shared_ptr<const TemporaryFolder> database_;
};
