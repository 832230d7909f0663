#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

/// The document in a form that makes no other tree, and that only the general parser reads: with a
/// declaration in single quotes. Empty for a source that cannot be changed so.
inline std::string forGeneralParser(std::string_view source) {
    constexpr std::string_view kUsual = "<?xml version=\"1.0\"";
    constexpr std::string_view kOther = "<?xml version='1.0'";
    if (source.starts_with(kUsual)) return std::string(kOther).append(source.substr(kUsual.size()));
    if (!source.starts_with('<') || source.starts_with("<?")) return {};
    return std::string(kOther).append("?>").append(source);
}

/// A document as text, and the line of each of its elements; why it cannot be loaded otherwise.
inline std::string treeOf(std::string_view utf8) {
    CStringW text = CStringW::FromUtf8(utf8);
    QorXMLDocument document;
    const QorXMLNode* const root = document.LoadFromXMLString(text);
    if (!root) return corvane::LastXMLFault(document).message.ToUtf8();
    std::string result = document.GetXML().ToUtf8();
    const std::unique_ptr<QorXMLNodeList> elements(root->GetNodeList(u"descendant-or-self::*"));
    for (QorLong i = 0; i < elements->GetSize(); ++i)
        result += " " + std::to_string(corvane::XMLLine(*(*elements)[i]));
    return result;
}
