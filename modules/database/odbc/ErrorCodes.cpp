#include "ErrorCodes.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace qor_db::odbc {
namespace {

constexpr int kMostRecords = 8;
constexpr std::size_t kMostUnits = 4096;

// A state, or the class that its first two letters are. The first entry that fits counts.
// https://learn.microsoft.com/sql/odbc/reference/appendixes/appendix-a-odbc-error-codes
constexpr std::pair<std::u16string_view, ErrorCode> kStates[] = {
    {u"07", ErrorCode::BadParameter},   {u"08", ErrorCode::Unreachable},
    {u"21", ErrorCode::BadQuery},       {u"22", ErrorCode::BadParameter},
    {u"23", ErrorCode::Constraint},     {u"25006", ErrorCode::ReadOnly},
    {u"25", ErrorCode::BadTransaction}, {u"28", ErrorCode::Unreachable},
    {u"37", ErrorCode::BadQuery},       {u"40", ErrorCode::Locked},
    {u"42", ErrorCode::BadQuery},       {u"44", ErrorCode::Constraint},
    {u"53100", ErrorCode::StorageFull}, {u"53200", ErrorCode::OutOfMemory},
    {u"HY001", ErrorCode::OutOfMemory}, {u"HY013", ErrorCode::OutOfMemory},
    {u"HYT00", ErrorCode::Locked},      {u"HYT01", ErrorCode::Unreachable},
    {u"S0", ErrorCode::BadQuery},       {u"S1T00", ErrorCode::Locked},
};

// While connecting, whatever isn't the fault of the installation keeps the server out of reach.
// The manager reports a driver library that won't load as a warning.
ErrorCode whenConnecting(std::u16string_view state) {
    const bool installation = state.starts_with(u"IM") || state.starts_with(u"01");
    return installation ? ErrorCode::DriverNotLoaded : ErrorCode::Unreachable;
}

bool isWarning(const Diagnostic& diagnostic) {
    return diagnostic.state.starts_with(u"01");
}

}  // namespace

std::vector<Diagnostic> diagnosticsOf(SQLSMALLINT type, SQLHANDLE handle) {
    std::vector<Diagnostic> result;
    for (SQLSMALLINT record = 1; record <= kMostRecords; ++record) {
        char16_t state[6] = {};
        std::u16string message(kMostUnits, u'\0');
        SQLINTEGER nativeCode = 0;
        SQLSMALLINT length = 0;
        const SQLRETURN given =
            SQLGetDiagRecW(type, handle, record, units(state), &nativeCode, units(message.data()),
                           static_cast<SQLSMALLINT>(message.size()), &length);
        if (!SQL_SUCCEEDED(given)) break;
        state[5] = u'\0';
        message.resize(std::min(message.find(u'\0'), message.size()));
        result.push_back({state, static_cast<int>(nativeCode), std::move(message)});
    }
    return result;
}

const Diagnostic* essential(const std::vector<Diagnostic>& diagnostics) {
    const auto found = std::find_if_not(diagnostics.begin(), diagnostics.end(), isWarning);
    if (found != diagnostics.end()) return &*found;
    return diagnostics.empty() ? nullptr : &diagnostics.front();
}

// Class 40: the server has rolled the transaction back.
bool endsTransaction(const Diagnostic& diagnostic, const Product& product) {
    const NativeCode* native = product.find(diagnostic.nativeCode);
    return diagnostic.state.starts_with(u"40") || (native && native->endsTransaction);
}

ErrorCode codeOf(const Diagnostic& diagnostic, const Product& product, Phase phase) {
    if (phase == Phase::Connect) return whenConnecting(diagnostic.state);
    if (const NativeCode* native = product.find(diagnostic.nativeCode)) return native->code;
    // The wait for a lock has an error of its own: what ran out is the time of the whole statement.
    if (product.lockTimeout && diagnostic.state == u"HYT00") return ErrorCode::TimedOut;
    const auto* state =
        std::find_if(std::begin(kStates), std::end(kStates),
                     [&](const auto& entry) { return diagnostic.state.starts_with(entry.first); });
    if (state != std::end(kStates)) return state->second;
    return phase == Phase::Prepare ? ErrorCode::BadQuery : ErrorCode::Failed;
}

}  // namespace qor_db::odbc
