#pragma once

#include <cstddef>
#include <memory>

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>

class QorXMLNode;

namespace corvane::xml {
class NodeStore;
struct Access;
}  // namespace corvane::xml

/// The nodes that a query or a walk found, in document order. The list owns its nodes: a pointer
/// taken from it is valid until the list and every copy of it are gone, and nobody else deletes it.
class CORVANE_EXPORT QorXMLNodeList {
public:
    QorXMLNodeList();
    /// A copy has an array of its own and shares the nodes, which go with the last list that holds
    /// them.
    QorXMLNodeList(const QorXMLNodeList& other);
    QorXMLNodeList& operator=(const QorXMLNodeList& other);
    ~QorXMLNodeList();

    QorLong GetSize() const { return m_nSize; }  ///< Number of entries.
    /// The entry at `index`, which is 0 to GetSize() minus 1: there is no guard. Stays the list's.
    QorXMLNode* operator[](QorLong index) const {
        return m_pItems[static_cast<std::size_t>(index)];
    }

private:
    friend struct corvane::xml::Access;

    void append(const QorXMLNode& node);
    void grow();

    std::unique_ptr<QorXMLNode*[]> m_pItems;
    QorLong m_nSize;
    QorLong m_nCapacity;
    QorLong m_nGrowBy;
    std::shared_ptr<corvane::xml::NodeStore> m_pNodes;
};
