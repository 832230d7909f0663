#pragma once

#include <concepts>
#include <memory>

#include <corvane/base/Export.h>

namespace dfx {

/// A block of typed data in a document, with the number of its kind. SCInfo has 129 and
/// SCContentDataList 131; modules choose others for schemas of their own.
///
/// Schemas are held by `std::shared_ptr<ISchema>`, and one schema may be in several documents.
/// The order of the virtual operations is part of the interface to modules.
class CORVANE_EXPORT ISchema {
public:
    explicit ISchema(const short& type);  ///< A schema of that number.
    ISchema(const ISchema& source);
    /// Takes over the number too, so the target must not be in a document under another one.
    ISchema& operator=(const ISchema& source);
    virtual ~ISchema();

    /// The number of the schema. The body gives the one from the constructor; each schema defines
    /// the operation and may call it.
    virtual short type() const = 0;
    ///@{
    /// For the module that owns the schema to prepare it and to give up what it holds. The bodies
    /// do nothing, and the library calls neither: documents don't, and the destructor doesn't.
    virtual void setup();
    virtual void cleanup();
    ///@}

private:
    short type_;
};

/// The order of schemas in a document: by number alone. Handles are not empty. A document is also
/// searched by a predicate that holds for the schemas before the place that is looked for.
struct IsSchemaLessThan {
    /// Lets a set be searched by a predicate.
    using is_transparent = void;

    ///@{
    /// True when the first argument comes before the second.
    bool operator()(const std::shared_ptr<ISchema>& left,
                    const std::shared_ptr<ISchema>& right) const {
        return left->type() < right->type();
    }
    template <std::predicate<const std::shared_ptr<ISchema>&> IsBefore>
    bool operator()(const std::shared_ptr<ISchema>& left, const IsBefore& isBefore) const {
        return isBefore(left);
    }
    ///@}
};

}  // namespace dfx
