#include "xml/Shadow.h"

#include <algorithm>
#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <map>
#include <new>
#include <string>
#include <utility>

#include "system/Unicode.h"
#include "xml/Names.h"
#include "xml/Tree.h"

namespace corvane::xml {
namespace {

const xmlChar* chars(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

template <typename Made>
Made* checked(Made* made) {
    if (!made) throw std::bad_alloc();
    return made;
}

}  // namespace

class Shadow::Builder {
public:
    explicit Builder(Shadow& shadow) : shadow_(shadow), document_(shadow.document_) {}

    void copy(const Element& top) {
        auto* parent = reinterpret_cast<xmlNodePtr>(document_);
        if (top.isElement()) parent = add(parent, top);
        const Node* from = &top;
        while (const Node* to = following(from, &top)) {
            if (to->parent != from) {
                for (; from->parent != to->parent; from = from->parent) {
                    parent = parent->parent;
                    run_ = 0;
                }
            }
            // `parent` is the copy of the parent of `to`, and then of `to` if that is an element.
            from = to;
            if (to->isElement()) {
                parent = add(parent, *asElement(to));
                if (!asElement(to)->firstChild) parent = parent->parent;
            } else {
                add(parent, *asData(to));
            }
        }
    }

private:
    xmlNodePtr add(xmlNodePtr parent, const Element& element) {
        const std::u16string_view name = element.name.view();
        const std::string local = system::toUtf8(localNameOf(name));
        xmlNodePtr node = checked(xmlNewDocNode(document_, nullptr, chars(local), nullptr));
        xmlAddChild(parent, node);
        if (!root_) root_ = node;
        node->_private = const_cast<Element*>(&element);
        xmlSetNs(node, space(prefixOf(name)));
        run_ = 0;
        for (const Attribute* at = element.firstAttribute; at; at = at->next)
            add(node, *at);
        run_ = 0;
        shadow_.nodes_.emplace(&element, node);
        element.shadowed = true;
        return node;
    }

    void add(xmlNodePtr node, const Attribute& attribute) {
        const std::u16string_view prefix = prefixOf(attribute.name.view());
        const std::string local = system::toUtf8(localNameOf(attribute.name.view()));
        if (prefix == u"xmlns" || (prefix.empty() && local == "xmlns")) return;
        const std::string value = system::toUtf8(attribute.value.view());
        checked(xmlNewNsProp(node, space(prefix), chars(local), chars(value)));
        countRun();
    }

    void add(xmlNodePtr parent, const CharacterData& data) {
        if (data.kind == Kind::DocType) return;
        if (data.isText()) {
            addText(parent, data);
            return;
        }
        const std::string text = system::toUtf8(data.text.view());
        if (data.kind == Kind::Instruction)
            addInstruction(parent, text);
        else
            xmlAddChild(parent, checked(xmlNewDocComment(document_, chars(text))));
        countRun();
    }

    // Adds what stands together as one text, as the evaluator wants it, at its first piece: joining
    // piece by piece would copy all that is there each time.
    void addText(xmlNodePtr parent, const CharacterData& first) {
        if (first.previous && first.previous->isText()) return;
        std::string text;
        for (const Node* at = &first; at && at->isText(); at = at->next)
            system::appendUtf8(text, asData(at)->text.view());
        if (text.empty()) return;
        const int length = static_cast<int>(text.size());
        xmlAddChild(parent, checked(xmlNewDocTextLen(document_, chars(text), length)));
        countRun();
    }

    void countRun() { shadow_.longestRun_ = std::max(shadow_.longestRun_, ++run_); }

    void addInstruction(xmlNodePtr parent, const std::string& text) {
        const std::size_t blank = text.find(' ');
        const std::string target = text.substr(0, blank);
        const std::string data = blank == text.npos ? std::string() : text.substr(blank + 1);
        xmlAddChild(parent, checked(xmlNewDocPI(document_, chars(target), chars(data))));
    }

    // The namespace of a prefix, declared once at the first element.
    xmlNsPtr space(std::u16string_view prefix) {
        if (prefix.empty()) return nullptr;
        const auto known = spaces_.find(prefix);
        if (known != spaces_.end()) return known->second;
        const std::string name = system::toUtf8(prefix);
        xmlNsPtr made =
            name == "xml" ? xmlSearchNs(document_, root_, chars(name)) : declared(chars(name));
        spaces_.emplace(prefix, checked(made));
        return made;
    }

    // In front of the others: to put it behind them would be to pass all of them.
    xmlNsPtr declared(const xmlChar* name) {
        xmlNsPtr made = checked(xmlNewNs(nullptr, name, name));
        made->next = std::exchange(root_->nsDef, made);
        return made;
    }

    Shadow& shadow_;
    xmlDocPtr document_;
    xmlNodePtr root_ = nullptr;
    std::size_t run_ = 0;
    std::map<std::u16string, xmlNsPtr, std::less<>> spaces_;
};

Shadow::Shadow(const Element& top)
    : document_(checked(xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0")))) {
    try {
        Builder(*this).copy(top);
    } catch (...) {
        xmlFreeDoc(document_);
        throw;
    }
    xmlXPathOrderDocElems(document_);
}

Shadow::~Shadow() {
    xmlFreeDoc(document_);
}

const Element* Shadow::original(const _xmlNode* node) {
    return node->type == XML_ELEMENT_NODE ? static_cast<const Element*>(node->_private) : nullptr;
}

}  // namespace corvane::xml
