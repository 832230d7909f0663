#pragma once

#include <memory>

#include "xml/Node.h"

namespace corvane::xml {

class Shadow;

/// The parent of a document element and of what stands beside it.
class DocumentNode : public Element {
public:
    explicit DocumentNode(Kind ofKind);
    ~DocumentNode();

    /// What queries on the tree use, until the tree changes.
    mutable std::unique_ptr<Shadow> shadow;
};

}  // namespace corvane::xml
