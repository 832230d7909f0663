#include <algorithm>
#include <deque>

#include <corvane/xml/QorXMLNode.h>
#include <corvane/xml/QorXMLNodeList.h>

namespace corvane::xml {

/// The nodes of a list, where they stay while it and its copies grow.
class NodeStore {
public:
    QorXMLNode* add(const QorXMLNode& node) { return &nodes_.emplace_back(node); }

private:
    std::deque<QorXMLNode> nodes_;
};

}  // namespace corvane::xml

namespace {

constexpr QorLong kFirstCapacity = 10;
constexpr QorLong kFirstGrowth = 1;
// Growth rises by a step up to the limit and by a fifth from there on.
constexpr QorLong kGrowthStep = 3;
constexpr QorLong kGrowthStepLimit = 10;

}  // namespace

QorXMLNodeList::QorXMLNodeList()
    : m_pItems(std::make_unique<QorXMLNode*[]>(kFirstCapacity)),
      m_nSize(0),
      m_nCapacity(kFirstCapacity),
      m_nGrowBy(kFirstGrowth),
      m_pNodes(std::make_shared<corvane::xml::NodeStore>()) {}

QorXMLNodeList::QorXMLNodeList(const QorXMLNodeList& other)
    : m_pItems(std::make_unique<QorXMLNode*[]>(static_cast<std::size_t>(other.m_nCapacity))),
      m_nSize(other.m_nSize),
      m_nCapacity(other.m_nCapacity),
      m_nGrowBy(other.m_nGrowBy),
      m_pNodes(other.m_pNodes) {
    std::copy_n(other.m_pItems.get(), m_nSize, m_pItems.get());
}

QorXMLNodeList& QorXMLNodeList::operator=(const QorXMLNodeList& other) {
    QorXMLNodeList copy(other);
    std::swap(m_pItems, copy.m_pItems);
    std::swap(m_nSize, copy.m_nSize);
    std::swap(m_nCapacity, copy.m_nCapacity);
    std::swap(m_nGrowBy, copy.m_nGrowBy);
    std::swap(m_pNodes, copy.m_pNodes);
    return *this;
}

QorXMLNodeList::~QorXMLNodeList() = default;

void QorXMLNodeList::append(const QorXMLNode& node) {
    if (m_nSize >= m_nCapacity) grow();
    m_pItems[static_cast<std::size_t>(m_nSize)] = m_pNodes->add(node);
    ++m_nSize;
}

void QorXMLNodeList::grow() {
    const QorLong capacity = m_nCapacity + m_nGrowBy;
    auto items = std::make_unique<QorXMLNode*[]>(static_cast<std::size_t>(capacity));
    std::copy_n(m_pItems.get(), m_nSize, items.get());
    m_pItems = std::move(items);
    m_nCapacity = capacity;
    m_nGrowBy = m_nGrowBy < kGrowthStepLimit ? m_nGrowBy + kGrowthStep : m_nGrowBy + m_nGrowBy / 5;
}
