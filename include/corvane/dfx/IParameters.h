#pragma once

#include <memory>

#include <corvane/dfx/IValue.h>

namespace dfx {

/// A set of typed values, looked up by key. Parameters is its implementation.
///
/// Sets are held by `std::shared_ptr<IParameters>`. The order of the virtual operations is part of
/// the interface to modules.
class CORVANE_EXPORT IParameters {
public:
    IParameters() = default;
    IParameters(const IParameters&) = default;
    IParameters& operator=(const IParameters&) = default;
    virtual ~IParameters();

    /// The value with that key, or an empty handle.
    virtual std::shared_ptr<IValue> getParameter(const int& key) const = 0;
    /// Adds a value in place of the one that the set has under its key. An empty handle does
    /// nothing.
    virtual void addParameter(std::shared_ptr<IValue> value) = 0;
    /// Removes all values that were added.
    virtual void clear() = 0;
};

}  // namespace dfx
