#pragma once

#include <memory>
#include <ostream>

#include "Console.h"
#include "results/ResultWriter.h"

namespace results {

/// Writes tables for people. The console must outlive the writer.
std::unique_ptr<ResultWriter> makeTextWriter(Console& console);

/// The same to a file.
std::unique_ptr<ResultWriter> makePlainTextWriter(std::ostream& out);

/// "passed", "not run" and so on.
CStringW wordOf(Verdict verdict);

/// "5 rules: 4 passed, 1 failed"
CStringW sumText(const Counts& counts);

}  // namespace results
