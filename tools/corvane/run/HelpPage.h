#pragma once

#include <filesystem>
#include <string>

/// What the help page of a rule says for a reader of results.
struct HelpPage {
    std::string why;  ///< Why the rule is there; empty when the page does not say.
    std::string how;  ///< How it is measured.
};

/// Reads a page of Markdown: its paragraphs that begin with "**Why.**" and "**How it is
/// measured.**", as plain text. A page that is missing or too large to be one says nothing.
HelpPage readHelpPage(const std::filesystem::path& file);
