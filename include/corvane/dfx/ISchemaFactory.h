#pragma once

#include <memory>

#include <corvane/dfx/ISchema.h>

namespace dfx {

/// Makes schemas by number. A module brings a factory of its own for its own schemas.
class CORVANE_EXPORT ISchemaFactory {
public:
    ISchemaFactory() = default;
    ISchemaFactory(const ISchemaFactory&) = default;
    ISchemaFactory& operator=(const ISchemaFactory&) = default;
    virtual ~ISchemaFactory();

    /// A new schema, which is in no document yet, or an empty handle for a number that the
    /// factory does not know. The body knows none.
    virtual std::shared_ptr<ISchema> create(const short& type) = 0;
};

/// A new factory of the library's own schemas, 129 and 131.
CORVANE_EXPORT std::shared_ptr<ISchemaFactory> createFactory();

}  // namespace dfx
