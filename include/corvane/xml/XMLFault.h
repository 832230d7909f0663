#pragma once

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/text/CStringW.h>

class QorXMLDocument;
class QorXMLNode;

namespace corvane {

/// Why a load failed and where. Line and column count from 1; 0 means "nowhere in particular",
/// such as in a file that cannot be read.
struct XMLFault {
    QorLong line = 0;    ///< From 1.
    QorLong column = 0;  ///< From 1, in characters.
    CStringW message;    ///< One line of English; empty when there is no fault.
};

/// The fault of the document's last load; without a message when that succeeded or there was none.
CORVANE_EXPORT XMLFault LastXMLFault(const QorXMLDocument& document);

/// The line on which the element's start tag begins in the source that it was loaded from, from 1;
/// 0 for an element that was not loaded and for an empty node.
CORVANE_EXPORT QorLong XMLLine(const QorXMLNode& node);

/// Saves like QorXMLDocument::Save, and tells whether the file was written. A document without
/// parser or without root element is not written, so that a file is never replaced by one that
/// cannot be read back. On failure the old file is left whole.
CORVANE_EXPORT bool SaveXML(QorXMLDocument& document, const CStringW& path);

}  // namespace corvane
