#pragma once

#include <optional>
#include <utility>

#include <corvane/text/CStringW.h>

namespace qor_db {

/// What became of a database operation.
enum class ErrorCode {
    Ok,
    DriverNotLoaded,  ///< No driver module is configured, or it cannot be loaded.
    Missing,          ///< The database file or its folder does not exist.
    CannotOpen,       ///< The file exists and cannot be opened: rights, a folder in its place.
    Unreachable,      ///< The server cannot be reached or refuses the connection.
    Damaged,          ///< The file is no database, or its pages contradict each other.
    NewerVersion,     ///< A later release has made the tables; this one does not know them.
    NoSchema,         ///< A database without the reference tables. Queries work.
    Locked,           ///< Another process holds the lock for longer than the time-out.
    ReadOnly,         ///< The database may be read and not written.
    BadQuery,         ///< The query does not fit the language or the tables.
    BadParameter,     ///< Wrong number or kind of parameters, or a lookup value out of range.
    Constraint,       ///< The change contradicts a constraint of the tables.
    BadTransaction,   ///< begin inside a transaction, commit or rollback outside one.
    NotFound,         ///< The lookup has no such row.
    BadRow,           ///< A row of reference data has no number where a lookup needs one.
    NotOpen,          ///< There is no connection; see IDatabaseCollector::status for why.
    StorageFull,      ///< The disk or the database is full.
    OutOfMemory,
    TimedOut,  ///< A statement ran for longer than one may, and was ended.
    Failed,    ///< Anything else; the message says what.
};

/// The outcome of an operation without a value. No operation of a collector or a driver raises.
/// What may pass through those that are not `noexcept` is the unwinding of a thread that is
/// cancelled.
struct [[nodiscard]] Status {
    ErrorCode code = ErrorCode::Ok;  ///< What became of it.
    CStringW message;    ///< What is wrong, in English and for people; never holds a password.
    int nativeCode = 0;  ///< The database's own number for the error, 0 when it has none.

    bool ok() const { return code == ErrorCode::Ok; }  ///< True when nothing failed.
};

/// A value, or the reason why there is none.
template <typename Value>
class [[nodiscard]] Outcome {
public:
    Outcome(Value value) : value_(std::move(value)) {}  ///< A value.
    /// A status that reports no failure does not say why there is no value, so it counts as one.
    Outcome(Status error) : status_(std::move(error)) {
        if (!status_.ok()) return;
        status_.code = ErrorCode::Failed;
        status_.message = u"There is no value, and no reason was given.";
    }

    bool ok() const { return value_.has_value(); }   ///< True when there is a value.
    explicit operator bool() const { return ok(); }  ///< The same as ok().
    const Status& status() const {
        return status_;
    }  ///< Why there is no value; Ok when there is one.

    ///@{
    /// The value. Ask for it only when ok().
    Value& operator*() & { return *value_; }
    const Value& operator*() const& { return *value_; }
    ///@}
    /// By value, so that a loop over `*reference.materials()` has something to walk.
    Value operator*() && { return std::move(*value_); }
    ///@{
    /// The value's members. Ask for them only when ok().
    Value* operator->() { return &*value_; }
    const Value* operator->() const { return &*value_; }
    ///@}

private:
    Status status_;
    std::optional<Value> value_;
};

}  // namespace qor_db
