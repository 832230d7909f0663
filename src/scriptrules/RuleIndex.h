#pragma once

#include <memory>
#include <optional>

#include <corvane/text/CStringW.h>
#include <corvane/xml/QorXMLNode.h>

namespace corvane::scriptrules {

/// The folder of the user-defined rules: that of the innermost ScriptFolderScope, or the configured
/// one; nothing when there is none.
std::optional<CStringW> scriptFolder();

/// The first entry of that name, case ignored, in the index of a script folder; a missing name is
/// an empty one. Null when there is no index or no such entry.
std::unique_ptr<QorXMLNode> findIndexEntry(const CStringW& folder, const CStringW& name);

}  // namespace corvane::scriptrules
