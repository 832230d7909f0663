#pragma once

#include <memory>
#include <vector>

#include <corvane/text/CStringW.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "Console.h"
#include "results/Remark.h"

/// A rule file that was read: the rule elements below its document element, those of the files that
/// it includes before its own.
///
/// `<Include Set="milling"/>` takes the rules of a set of the installation, `<Include
/// File="shop.xml"/>` those of a file beside this one, and `<Exclude Name="..."/>` drops one of
/// them. A rule of this file whose name an included rule has takes that one's place. Without a
/// `File` of its own it is the same rule with other values: what it does not say, the included one
/// says. Of two included rules of one name the first counts.
class RuleFile {
public:
    /// Null when the file cannot be read or holds no rule; the reason is reported with its place.
    static std::unique_ptr<RuleFile> load(const CStringW& path, Console& console);
    /// The same with the reason in `problem`.
    static std::unique_ptr<RuleFile> load(const CStringW& path, CStringW& problem);

    const CStringW& path() const { return path_; }
    QorLong size() const { return static_cast<QorLong>(rules_.size()); }
    /// The element at an index below size(); it stays the file's.
    QorXMLNode& element(QorLong index) const { return at(index).element; }
    /// "FILE:LINE" of that element, or of the <Include> that brings it.
    CStringW place(QorLong index) const { return placeOf(line(index)); }
    QorLong line(QorLong index) const { return at(index).line; }
    /// The same of a line; the file alone for line 0.
    CStringW placeOf(QorLong line) const;
    /// Where the definition and the script of that element are; empty for the configured folder.
    const CStringW& scriptFolder(QorLong index) const { return at(index).scriptFolder; }
    /// Whether that element says other values for an included rule.
    bool isOverride(QorLong index) const { return at(index).isOverride; }
    /// Where the limits of that element come from when this file, or one that it includes, changes
    /// them; empty where the rule's own source holds.
    const results::Remark& changedSource(QorLong index) const { return at(index).changedSource; }
    CStringW rootName() const { return root_.GetNodeName(); }
    /// What the document element says of the file in its attribute Title.
    CStringW title() const;
    /// The indexes of this file's own rules, in its order.
    const std::vector<QorLong>& own() const { return own_; }
    /// The files that this one includes, in the order in which they are read.
    const std::vector<CStringW>& included() const { return included_; }

private:
    friend class RuleFileReader;
    struct Rule {
        mutable QorXMLNode element;
        CStringW name, scriptFolder;
        QorLong line = 0;
        bool isIncluded = false, isOverride = false;
        results::Remark changedSource = "";
    };

    RuleFile() = default;
    const Rule& at(QorLong index) const { return rules_[static_cast<std::size_t>(index)]; }

    CStringW path_;
    QorXMLNode root_;
    std::vector<Rule> rules_;
    std::vector<QorLong> own_;
    std::vector<CStringW> included_;
};

/// "FILE:LINE:COLUMN: message", as far as the place is known.
CStringW faultText(const CStringW& path, const corvane::XMLFault& fault);

/// An attribute's text by the number of its name; empty when the element has none.
CStringW attributeText(const QorXMLNode& element, std::uint32_t nameNumber);
