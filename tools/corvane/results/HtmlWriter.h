#pragma once

#include <iosfwd>
#include <memory>

#include "ResultWriter.h"

namespace results {

/// Writes a report for people: one page that holds everything it shows, the parts' surfaces
/// included, and asks nothing of a network. Each part is written as it comes; the scripts of the
/// page sum up, sort and draw. Texts of results reach the page as data only, never as markup.
std::unique_ptr<ResultWriter> makeHtmlWriter(std::ostream& out);

}  // namespace results
