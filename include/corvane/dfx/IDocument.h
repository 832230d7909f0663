#pragma once

#include <memory>
#include <set>

#include <corvane/dfx/ISchema.h>

namespace dfx {

/// A document: schemas by number, at most one of each.
///
/// It shares its schemas with all others that hold them, and so does a copy. It is complete and may
/// be derived from. A thread that changes it must have it to itself. `std::bad_alloc` leaves it as
/// it was. The order of the virtual operations is part of the interface to modules.
class CORVANE_EXPORT IDocument {
public:
    using Schemas = std::set<std::shared_ptr<ISchema>, IsSchemaLessThan>;  ///< Schemas by number.

    IDocument();
    IDocument(const IDocument& source);
    IDocument& operator=(const IDocument& source);
    virtual ~IDocument();

    /// The schemas by ascending number, for reading: setSchema replaces one.
    Schemas::const_iterator begin();
    Schemas::const_iterator end();
    Schemas::const_iterator begin() const;
    Schemas::const_iterator end() const;

    /// The schema of that number, or an empty handle.
    virtual std::shared_ptr<ISchema> getSchema(const short& type);
    /// Files a schema under its own number, whatever `type` says, in place of the one that the
    /// document has there. An empty handle does nothing. No hook of either schema is called.
    virtual void setSchema(const short& type, std::shared_ptr<ISchema> schema);
    /// Lets go of all schemas, without a call of their hooks.
    void clear();

private:
    Schemas schemas_;
};

}  // namespace dfx
