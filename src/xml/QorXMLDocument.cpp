#include <exception>
#include <utility>

#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "emulation/MessageBox.h"
#include "xml/Access.h"
#include "xml/Construction.h"
#include "xml/Document.h"
#include "xml/ErrorText.h"
#include "xml/Failure.h"
#include "xml/Serializer.h"
#include "xml/Tree.h"

using corvane::xml::Access;
using corvane::xml::Document;
using corvane::xml::Element;
using corvane::xml::raiseError;
using corvane::xml::required;

QorXMLDocument::QorXMLDocument() {
    const HResult status = corvane::xml::makeDocument(m_pDocument);
    if (!corvane::failed(status)) return;
    m_pDocument = nullptr;
    corvane::emulation::messageBox(corvane::xml::errorText(status), u"",
                                   corvane::emulation::kMessageOk);
}

QorXMLDocument::QorXMLDocument(QorXMLDocument&) {}

QorXMLDocument& QorXMLDocument::operator=(QorXMLDocument& other) {
    if (this == &other) return *this;
    // Shares first: both may hold the same.
    if (other.m_pDocument) other.m_pDocument->share();
    corvane::xml::hold(other.m_pRootElement);
    corvane::xml::release(std::exchange(m_pRootElement, other.m_pRootElement));
    m_pRootNode = other.m_pRootNode;
    if (Document* former = std::exchange(m_pDocument, other.m_pDocument)) former->drop();
    return *this;
}

QorXMLDocument::~QorXMLDocument() {
    corvane::xml::release(m_pRootElement);
    if (m_pDocument) m_pDocument->drop();
}

QorXMLNode* QorXMLDocument::LoadFromFile(CStringW path) {
    Document& document = required(m_pDocument);
    if (!document.loadFile(path)) return nullptr;
    Element* root = document.root();
    corvane::xml::hold(root);
    corvane::xml::release(std::exchange(m_pRootElement, root));
    m_pRootNode = document.addRootNode();
    return m_pRootNode;
}

QorXMLNode* QorXMLDocument::LoadFromFile1(const char* path) {
    return LoadFromFile(CStringW(path));
}

QorXMLNode* QorXMLDocument::LoadFromXMLString(CStringW& text) {
    Document& document = required(m_pDocument);
    if (document.loadText(text)) m_pRootNode = document.addRootNode();
    return m_pRootNode;
}

QorXMLNode* QorXMLDocument::CreateNode(CStringW name) {
    required(m_pDocument);
    return Access::newNode(corvane::xml::makeElement(name, nullptr)).release();
}

QorXMLNode* QorXMLDocument::CreateNode1(const char* name) {
    return CreateNode(CStringW(name));
}

void QorXMLDocument::DeleteNode(QorXMLNode*& node) {
    QorXMLNode::DeleteNode(node);
}

void QorXMLDocument::AppendNode(QorXMLNode* node) {
    if (!node) return;
    Document& document = required(m_pDocument);
    Element* element = Access::element(*node);
    if (!element) raiseError(corvane::kErrorInvalidArgument);
    corvane::xml::appendElement(document.tree(), *element);
}

bool QorXMLDocument::Save(CStringW path) {
    try {
        corvane::SaveXML(*this, path);
    } catch (const std::exception&) {
        // Memory has run out; whoever wants to know calls SaveXML.
    }
    return true;
}

bool QorXMLDocument::Save1(const char* path) {
    return Save(CStringW(path));
}

CStringW QorXMLDocument::GetXML() const {
    if (m_pRootNode) return m_pRootNode->GetXML();
    const Element* root = m_pDocument ? m_pDocument->root() : nullptr;
    return root ? corvane::xml::serialized(*root) : std::u16string();
}

bool corvane::SaveXML(QorXMLDocument& document, const CStringW& path) {
    const Document* source = Access::document(document);
    return source && source->save(path);
}

corvane::XMLFault corvane::LastXMLFault(const QorXMLDocument& document) {
    const Document* source = Access::document(document);
    if (!source) return {};
    const corvane::xml::Fault& fault = source->fault();
    return {fault.line, fault.column, CStringW::FromUtf8(fault.message)};
}
