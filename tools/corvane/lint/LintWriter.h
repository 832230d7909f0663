#pragma once

#include <iosfwd>
#include <span>
#include <string_view>

#include "lint/Report.h"

namespace lint {

/// "FILE:LINE:COLUMN: error: MESSAGE [L201 not-a-number]" with the consequence and the mend below.
void writeText(std::ostream& out, std::span<const Problem> problems);

/// {"format": "corvane-lint", "version": 1, "problems": [...]}
void writeJson(std::ostream& out, std::span<const Problem> problems);

/// SARIF 2.1.0, with all codes as rules.
void writeSarif(std::ostream& out, std::span<const Problem> problems, std::string_view version);

}  // namespace lint
