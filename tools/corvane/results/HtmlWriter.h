#pragma once

#include <iosfwd>
#include <map>
#include <memory>
#include <string>

#include "ResultWriter.h"

namespace results {

/// The report's own texts in the reader's language, by the English ones. "en" is the language's
/// code. What is missing is English.
using ReportTexts = std::map<std::string, std::string, std::less<>>;

/// Writes a report for people: one page that holds everything it shows, the parts' surfaces
/// included, and asks nothing of a network. Each part is written as it comes; the scripts of the
/// page sum up, sort and draw. Texts of results reach the page as data only, never as markup.
std::unique_ptr<ResultWriter> makeHtmlWriter(std::ostream& out, ReportTexts texts = {});

}  // namespace results
