#include <corvane/xml/CurrentDocument.h>

QorXMLDocument* g_pXMLDoc = nullptr;

void SetXMLDoc(QorXMLDocument* document) {
    g_pXMLDoc = document;
}

void SetXMLDoc2(QorXMLDocument* document) {
    SetXMLDoc(document);
}
