#pragma once

#include <string_view>

#include "xml/TreeBuilder.h"

namespace corvane::xml {

/// Parses what nearly all documents are: tags, attributes, text and comments in UTF-8, with the
/// five predefined entities, and without namespaces or a document type. False for everything else
/// and for all that is not well-formed; the builder is then of no use, and the parsing library has
/// to judge the whole text. What is true here is a document there too, with the same tree.
/// The text has a zero after its end and none in it.
bool parsePlain(std::string_view utf8, TreeBuilder& builder);

}  // namespace corvane::xml
