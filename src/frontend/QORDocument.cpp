#include <utility>

#include <corvane/app/QORDocument.h>

QORDocument::QORDocument() = default;
QORDocument::QORDocument(const QORDocument& source) = default;
QORDocument::~QORDocument() = default;

QORDocument& QORDocument::operator=(const QORDocument& source) {
    if (this == &source) return *this;
    auto engines = source.m_engineMap;
    IDocument::operator=(source);
    m_engineMap.swap(engines);
    return *this;
}

bool QORDocument::isValid() const {
    return true;
}

void QORDocument::AddEngine(CStringW name, CQorEngine* engine) {
    m_engineMap.try_emplace(std::move(name), engine);
}

CQorEngine* QORDocument::GetEngine(CStringW name) const {
    const auto found = m_engineMap.find(name);
    return found == m_engineMap.end() ? nullptr : found->second;
}

void QORDocument::ClearEngineMap() {
    m_engineMap.clear();
}
