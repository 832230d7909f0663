#pragma once

#include <memory>

#include <corvane/text/CStringW.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "Console.h"

/// A rule file that was read: the rule elements below its document element.
class RuleFile {
public:
    /// Null when the file cannot be read or holds no rule; the reason is reported with its place.
    static std::unique_ptr<RuleFile> load(const CStringW& path, Console& console);

    const CStringW& path() const { return path_; }
    QorLong size() const { return elements_->GetSize(); }
    /// The element at an index below size(); it stays the file's.
    QorXMLNode& element(QorLong index) const { return *(*elements_)[index]; }
    /// "FILE:LINE" of that element.
    CStringW place(QorLong index) const;
    /// The same of a line; the file alone for line 0.
    CStringW placeOf(QorLong line) const;
    CStringW rootName() const { return root_->GetNodeName(); }

private:
    RuleFile() = default;

    CStringW path_;
    QorXMLDocument document_;
    QorXMLNode* root_ = nullptr;
    std::unique_ptr<QorXMLNodeList> elements_;
};

/// "FILE:LINE:COLUMN: message", as far as the place is known.
CStringW faultText(const CStringW& path, const corvane::XMLFault& fault);

/// An attribute's text by the number of its name; empty when the element has none.
CStringW attributeText(const QorXMLNode& element, std::uint32_t nameNumber);
