#include "xml/DocumentNode.h"

#include "xml/Shadow.h"

namespace corvane::xml {

DocumentNode::DocumentNode(Kind ofKind) : Element(ofKind) {}
DocumentNode::~DocumentNode() = default;

}  // namespace corvane::xml
