#pragma once

#include <corvane/base/Export.h>

class QorXMLDocument;

extern "C" {

/// The document on which the rule classes make their elements when they write XML. Null until the
/// host sets it; the host owns it and keeps it alive for as long as it is set here.
CORVANE_EXPORT extern QorXMLDocument* g_pXMLDoc;

/// Makes a document the current one, or null none.
CORVANE_EXPORT void SetXMLDoc(QorXMLDocument* document);
CORVANE_EXPORT void SetXMLDoc2(QorXMLDocument* document);  ///< The same as SetXMLDoc.
}
