#pragma once

#include <vector>

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/text/CStringW.h>

class QorXMLNode;

namespace corvane {

/// Something that a rule's element held and that is not in the element that the rule writes.
struct WritingLoss {
    CStringW text;     ///< "parameter 5011: ...", in English.
    QorLong line = 0;  ///< Where it is in the file that was read; 0 when it was not loaded.
};

/// What is lost when `after`, which a rule wrote after it had read `before`, takes the place of
/// `before`: attributes of the rule that change, parameters and constraints that are left out or
/// have other values, categories, engines, and elements that no rule reads. A rule drops them
/// without a word, as its file format asks for; a program that writes rule files can say so. The
/// other form of the same number, such as "1.5" and "1.500000", is no loss. An empty node raises
/// _com_error.
CORVANE_EXPORT std::vector<WritingLoss> FindWritingLosses(const QorXMLNode& before,
                                                          const QorXMLNode& after);

}  // namespace corvane
