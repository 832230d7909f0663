#pragma once

#include <cmath>

#include <corvane/database/IQuery.h>

#include "common/Guard.h"

namespace qor_db::driver {

/// What the queries of all drivers share: the state of their results.
class DriverQuery : public IQuery {
public:
    Status execute(const std::vector<Value>& parameters) final {
        row_ = Row();
        changedRows_ = 0;
        status_ = guarded([&] {
            Status fault = check(parameters);
            return fault.ok() ? run(parameters) : fault;
        });
        reading_ = status_.ok();
        return guarded([this] { return status_; });
    }

    bool next() final {
        if (!reading_) return false;
        row_ = Row();
        const Outcome<bool> there = guarded([this] { return advance(row_); });
        if (!there) status_ = guarded([&] { return there.status(); });
        reading_ = there && *there;
        return reading_;
    }

    const Row& row() const noexcept final { return row_; }
    const std::vector<CStringW>& columns() const noexcept final { return columns_; }
    std::int64_t changedRows() const noexcept final { return changedRows_; }
    const Status& status() const noexcept final { return status_; }

protected:
    /// Executes with parameters of the right number.
    virtual Status run(const std::vector<Value>& parameters) = 0;
    /// Reads the next row; false after the last one, after which it is not called again.
    virtual Outcome<bool> advance(Row& row) = 0;

    std::vector<CStringW> columns_;
    std::int64_t changedRows_ = 0;

private:
    Status check(const std::vector<Value>& parameters) const {
        CStringW message;
        if (parameters.size() != static_cast<std::size_t>(parameterCount())) {
            message.Format(u"The query takes %d parameters and was given %u.", parameterCount(),
                           parameters.size());
            return failure(ErrorCode::BadParameter, message);
        }
        // Databases keep no such value: some store null instead, unseen.
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            if (!parameters[i].real() || !std::isnan(*parameters[i].real())) continue;
            message.Format(u"Parameter %u is not a number.", i + 1);
            return failure(ErrorCode::BadParameter, message);
        }
        return {};
    }

    Row row_;
    Status status_;
    bool reading_ = false;
};

}  // namespace qor_db::driver
