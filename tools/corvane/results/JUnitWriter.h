#pragma once

#include <iosfwd>
#include <memory>

#include "results/ResultWriter.h"

namespace results {

/// Writes JUnit XML as servers for continuous integration read it: a test suite for each part, a
/// test case for each rule. A waived rule counts as passed and one that was not run as skipped.
std::unique_ptr<ResultWriter> makeJUnitWriter(std::ostream& out);

}  // namespace results
