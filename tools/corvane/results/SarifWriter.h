#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "results/ResultWriter.h"

namespace results {

/// Writes SARIF 2.1.0: a result for each finding, with its fingerprint, its place and, when it is
/// waived, a suppression; a notification of the tool for each rule that could not judge. Rules that
/// passed are among the rules and have no result.
std::unique_ptr<ResultWriter> makeSarifWriter(std::ostream& out);

/// A path as a reference: relative as it is, absolute as a file's.
std::string uriOf(const std::string& path);

}  // namespace results
