#include "Session.h"

#include <algorithm>
#include <limits>
#include <new>

#include "common/Guard.h"

namespace qor_db::odbc {
namespace {

// The manager counts in seconds, and 0 would wait for ever.
SQLPOINTER seconds(int milliseconds) {
    return number(static_cast<SQLULEN>(std::max(milliseconds, 1) - 1) / 1000 + 1);
}

// The environment must know its version before it hands out a connection.
SQLHANDLE prepared(SQLHANDLE environment) {
    if (environment)
        SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, number(SQL_OV_ODBC3), SQL_IS_INTEGER);
    return environment;
}

}  // namespace

Outcome<std::shared_ptr<Session>> Session::connect(const OpenRequest& request) {
    if (request.target.GetLength() > std::numeric_limits<SQLSMALLINT>::max() ||
        request.target.Find(u'\0') >= 0)
        return driver::failure(ErrorCode::Unreachable,
                               u"The connection string is too long or holds a zero character.");
    auto session = std::make_shared<Session>(request);
    if (!session->handle()) throw std::bad_alloc();
    Status status = session->open(request);
    if (!status.ok()) return status;
    return session;
}

Session::Session(const OpenRequest& request)
    : environment_(SQL_NULL_HANDLE),
      connection_(prepared(environment_.get())),
      passwords_(request.target),
      product_(&Product::named({})),
      timeout_(request.timeoutMilliseconds),
      statementLimit_(request.statementMilliseconds) {}

Session::~Session() {
    if (inTransaction_) SQLEndTran(SQL_HANDLE_DBC, handle(), SQL_ROLLBACK);
    if (connected_) SQLDisconnect(handle());
}

Status Session::open(const OpenRequest& request) {
    // A driver that cannot limit the time says so here, and does its best.
    SQLSetConnectAttrW(handle(), SQL_ATTR_LOGIN_TIMEOUT, seconds(timeout_), SQL_IS_UINTEGER);
    const SQLRETURN result = SQLDriverConnectW(handle(), nullptr, units(request.target.GetString()),
                                               static_cast<SQLSMALLINT>(request.target.GetLength()),
                                               nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result)) return fault(Phase::Connect);
    connected_ = true;
    learn();
    setTimeout(timeout_);
    return {};
}

CStringW Session::info(SQLUSMALLINT which) const {
    char16_t text[128] = {};
    SQLSMALLINT bytes = 0;
    if (!SQL_SUCCEEDED(SQLGetInfoW(handle(), which, text, sizeof(text) - sizeof(*text), &bytes)))
        return {};
    return text;
}

void Session::learn() {
    product_ = &Product::named(info(SQL_DBMS_NAME));
    readOnly_ = info(SQL_DATA_SOURCE_READ_ONLY) == u"Y";
}

Status Session::fault(SQLSMALLINT type, SQLHANDLE handle, Phase phase) {
    const std::vector<Diagnostic> diagnostics = diagnosticsOf(type, handle);
    const Diagnostic* cause = essential(diagnostics);
    if (!cause) return driver::failure(ErrorCode::Failed, u"The driver gives no reason.");
    if (inTransaction_ && endsTransaction(*cause, *product_)) broken_ = true;
    CStringW message;
    for (const Diagnostic& diagnostic : diagnostics) {
        if (!message.IsEmpty()) message += u"; ";
        message += u"[" + CStringW(diagnostic.state) + u"] " + diagnostic.message;
    }
    return driver::failure(codeOf(*cause, *product_, phase), passwords_.mask(message),
                           cause->nativeCode);
}

void Session::setTimeout(int milliseconds) {
    timeout_ = std::max(milliseconds, 0);
    if (!product_->lockTimeout) return;
    CStringW text;
    text.Format(product_->lockTimeout, timeout_);
    const StatementHandle statement(handle());
    if (statement.get()) SQLExecDirectW(statement.get(), units(text.GetString()), SQL_NTS);
}

void Session::limit(const StatementHandle& statement) const {
    const int limit = product_->lockTimeout ? statementLimit_ : timeout_;
    SQLSetStmtAttrW(statement.get(), SQL_ATTR_QUERY_TIMEOUT, seconds(limit), SQL_IS_UINTEGER);
}

Status Session::brokenTransaction() const {
    if (!broken_) return {};
    return driver::failure(ErrorCode::BadTransaction,
                           u"The transaction was rolled back after a fault.");
}

Status Session::begin() {
    if (!SQL_SUCCEEDED(SQLSetConnectAttrW(handle(), SQL_ATTR_AUTOCOMMIT, number(SQL_AUTOCOMMIT_OFF),
                                          SQL_IS_UINTEGER)))
        return fault(Phase::Execute);
    inTransaction_ = true;
    return {};
}

Status Session::commit() {
    Status status = brokenTransaction();
    return status.ok() ? end(SQL_COMMIT) : status;
}

Status Session::rollback() {
    return end(SQL_ROLLBACK);
}

Status Session::end(SQLSMALLINT how) {
    if (!SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, handle(), how))) {
        // Nobody knows what of it is kept, so that nothing may follow on this connection.
        if (how == SQL_ROLLBACK) broken_ = true;
        return fault(Phase::Execute);
    }
    inTransaction_ = false;
    broken_ = false;
    // Fails only with a connection that is lost, as what follows will tell.
    SQLSetConnectAttrW(handle(), SQL_ATTR_AUTOCOMMIT, number(SQL_AUTOCOMMIT_ON), SQL_IS_UINTEGER);
    return {};
}

}  // namespace qor_db::odbc
