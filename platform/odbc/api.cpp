// Handles, and diagnostics put into failures word for word.
#include "odbc/api.h"

#include <optional>
#include <string>

#include "odbc/failures.h"
#include "odbc/text_calls.h"

namespace brenvik::odbc {

Handle::Handle(SQLSMALLINT kind, const Handle& parent, TextCalls calls) : mKind(kind), mCalls(calls) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(kind, parent.Get(), &mHandle))) {
        mHandle = nullptr;
        throw DiagnosticOf(parent);
    }
}

void Handle::Free() noexcept {
    if (mHandle != nullptr) SQLFreeHandle(mKind, mHandle);
    mHandle = nullptr;
}

Failure DiagnosticOf(const Handle& handle, std::string_view detail) {
    const std::optional<Diagnostic> diagnostic =
        handle.Get() == nullptr ? std::nullopt : FirstDiagnostic(handle);
    if (!diagnostic)
        return ExportFailure(failure_number::DatabaseUnavailable,
                             "The database driver failed and gave no reason", std::string(detail));
    std::string where = diagnostic->state.empty() ? "" : "SQLSTATE " + diagnostic->state;
    if (!detail.empty()) where += (where.empty() ? "" : ": ") + std::string(detail);
    return ExportFailure(NumberOfState(diagnostic->state), diagnostic->text, where);
}

void Require(SQLRETURN result, const Handle& handle, std::string_view detail) {
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) throw DiagnosticOf(handle, detail);
}

}  // namespace brenvik::odbc
