#pragma once

#include <gtest/gtest.h>
#include <libxml/xmlversion.h>
#include <memory>
#include <string>

#include <corvane/platform/ComError.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/XMLFault.h>

#include "support/Text.h"

using NodePtr = std::unique_ptr<QorXMLNode>;
using ListPtr = std::unique_ptr<QorXMLNodeList>;

inline QorXMLNode* load(QorXMLDocument& document, CStringW text) {
    return document.LoadFromXMLString(text);
}

/// The failure code that an operation raises; 0 when it raises none.
template <typename Operation>
HResult codeOf(Operation operation) {
    try {
        operation();
    } catch (const _com_error& error) {
        return error.Error();
    }
    return 0;
}

/// How deep a tree the parser can be given: as deep as overflows a stack, but from libxml2 2.13 on
/// it reads no more than 2,048 levels.
inline constexpr std::size_t kDeepest = LIBXML_VERSION < 21300 ? 100'000 : 2'000;

inline std::string repeated(const std::string& piece, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}
