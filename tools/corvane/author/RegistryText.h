#pragma once

#include <optional>
#include <string>

#include <corvane/scriptrules/TypeLibDetails.h>
#include <corvane/text/CStringW.h>

// The text of a registry file, as far as registering engines changes it.
namespace registry {

/// The text with an entry for the type library at its end, since a later entry comes over an
/// earlier one. The same text when it ends so already.
std::string withEntry(std::string text, const TypeLibDetails& library, bool forMachine);

/// The text without the entries of the type library: those of its identity, when the file could
/// still be read, and those that lead to its path. Nothing when there is none.
std::optional<std::string> withoutEntries(const std::string& text, const TypeLibDetails& library,
                                          bool isRead);

}  // namespace registry
