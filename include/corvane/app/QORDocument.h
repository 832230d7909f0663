#pragma once

#include <map>

#include <corvane/base/Export.h>
#include <corvane/dfx/IDocument.h>
#include <corvane/text/CStringW.h>

/// A computation engine of a rule module. The library only hands on the pointer.
class CQorEngine;

/// The document of the add-in and the rule modules: schemas, and a table of engines by name,
/// through which rule modules hand engines to each other.
///
/// The document **owns no engine**: the caller that adds one keeps it alive for as long as the
/// document may hand it out, and frees it. A copy hands out the same engines. A document belongs to
/// one thread at a time; `std::bad_alloc` leaves it as it was.
class CORVANE_EXPORT QORDocument : public dfx::IDocument {
public:
    QORDocument();
    QORDocument(const QORDocument& source);
    QORDocument& operator=(const QORDocument& source);
    ~QORDocument() override;

    /// True for every document.
    bool isValid() const;

    /// Adds an engine, which may be null. The first engine of a name stays: when the name is
    /// taken, nothing changes. Case counts in names.
    void AddEngine(CStringW name, CQorEngine* engine);
    /// The engine of that name, or null.
    CQorEngine* GetEngine(CStringW name) const;
    /// Forgets all engines.
    void ClearEngineMap();

private:
    std::map<CStringW, CQorEngine*> m_engineMap;
};
