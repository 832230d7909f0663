#include <memory>
#include <utility>

#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "emulation/UserInterface.h"
#include "xml/Access.h"
#include "xml/Document.h"
#include "xml/Edits.h"
#include "xml/Failure.h"
#include "xml/Serializer.h"
#include "xml/Tree.h"

using corvane::xml::Access;
using corvane::xml::Document;
using corvane::xml::Element;
using corvane::xml::guarded;
using corvane::xml::raiseError;
using corvane::xml::required;

namespace {

// Codes in this range stand for the numbered errors of an automation object.
constexpr HResult kFirstNumbered = static_cast<HResult>(0x80040200);
constexpr HResult kAfterNumbered = static_cast<HResult>(0x80050000);

const char16_t* knownText(HResult code) {
    switch (code) {
        case corvane::kErrorOutOfMemory:
            return u"Not enough memory to complete the operation.";
        case corvane::kErrorClassNotRegistered:
            return u"The class is not registered.";
        case corvane::kErrorModuleNotFound:
            return u"The module could not be found.";
        case corvane::kErrorNoInterface:
            return u"The interface is not supported.";
        case corvane::kErrorFail:
            return u"Unspecified error.";
        default:
            return nullptr;
    }
}

// What a message box says about a failure code.
CStringW errorText(HResult code) {
    if (const char16_t* known = knownText(code)) return known;
    CStringW text;
    if (code > kFirstNumbered && code < kAfterNumbered)
        text.Format(u"IDispatch error #%d", code - kFirstNumbered);
    else
        text.Format(u"Unknown error 0x%0lX", code);
    return text;
}

}  // namespace

QorXMLDocument* g_pXMLDoc = nullptr;

void SetXMLDoc(QorXMLDocument* document) {
    g_pXMLDoc = document;
}

void SetXMLDoc2(QorXMLDocument* document) {
    SetXMLDoc(document);
}

QorXMLDocument::QorXMLDocument() {
    const HResult status = corvane::xml::makeDocument(m_pDocument);
    if (!corvane::failed(status)) return;
    m_pDocument = nullptr;
    corvane::emulation::messageBox(errorText(status), u"", corvane::emulation::kMessageOk);
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
    return guarded([&]() -> QorXMLNode* {
        Document& document = required(m_pDocument);
        if (!document.loadFile(path)) return nullptr;
        QorXMLNode* node = document.addRootNode();
        Element* root = document.root();
        corvane::xml::hold(root);
        corvane::xml::release(std::exchange(m_pRootElement, root));
        m_pRootNode = node;
        return node;
    });
}

QorXMLNode* QorXMLDocument::LoadFromFile1(const char* path) {
    return guarded([&] { return LoadFromFile(CStringW(path)); });
}

QorXMLNode* QorXMLDocument::LoadFromXMLString(CStringW& text) {
    return guarded([&] {
        Document& document = required(m_pDocument);
        if (document.loadText(text)) m_pRootNode = document.addRootNode();
        return m_pRootNode;
    });
}

QorXMLNode* QorXMLDocument::CreateNode(CStringW name) {
    required(m_pDocument);
    return guarded([&] {
        auto node = std::make_unique<QorXMLNode>();
        *node = Access::node(corvane::xml::makeFreeElement(name, nullptr));
        return node.release();
    });
}

QorXMLNode* QorXMLDocument::CreateNode1(const char* name) {
    return guarded([&] { return CreateNode(CStringW(name)); });
}

void QorXMLDocument::DeleteNode(QorXMLNode*& node) {
    QorXMLNode::DeleteNode(node);
}

void QorXMLDocument::AppendNode(QorXMLNode* node) {
    if (!node) return;
    Document& document = required(m_pDocument);
    Element* element = Access::element(*node);
    if (!element) raiseError(corvane::kErrorInvalidArgument);
    guarded([&] { corvane::xml::appendElement(document.tree(), *element); });
}

bool QorXMLDocument::Save(CStringW path) {
    try {
        corvane::SaveXML(*this, path);
    } catch (...) {
        // Memory has run out. SaveXML tells.
    }
    return true;
}

bool QorXMLDocument::Save1(const char* path) {
    try {
        return Save(CStringW(path));
    } catch (...) {
        return true;
    }
}

CStringW QorXMLDocument::GetXML() const {
    if (m_pRootNode) return m_pRootNode->GetXML();
    const Element* root = m_pDocument ? m_pDocument->root() : nullptr;
    if (!root) return {};
    return guarded([&] { return CStringW(corvane::xml::serialized(*root)); });
}

bool corvane::SaveXML(QorXMLDocument& document, const CStringW& path) {
    const Document* source = Access::document(document);
    return source && guarded([&] { return source->save(path); });
}

corvane::XMLFault corvane::LastXMLFault(const QorXMLDocument& document) {
    const Document* source = Access::document(document);
    if (!source) return {};
    const corvane::xml::Fault& fault = source->fault();
    return {fault.line, fault.column, CStringW::FromUtf8(fault.message)};
}
