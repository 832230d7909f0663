#pragma once

#include <filesystem>
#include <map>
#include <string>

/// What the help page of a rule says for a reader of results.
struct HelpPage {
    std::string why;  ///< Why the rule is there; empty when the page does not say.
    std::string how;  ///< How it is measured.
};

/// Help pages beside script folders, each read once.
class HelpPages {
public:
    /// Of a page of Markdown the paragraphs that begin with "**Why.**" and "**How it is
    /// measured.**", as plain text. A page that is missing or too large to be one says nothing, and
    /// nor does a paragraph of that kind.
    const HelpPage& of(const std::filesystem::path& scriptFolder,
                       const std::filesystem::path& page);

private:
    std::map<std::filesystem::path, HelpPage> known_;
};
