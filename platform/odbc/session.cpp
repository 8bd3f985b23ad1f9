// Connecting, and running statements.
#include "odbc/session.h"

#include <cstdint>
#include <utility>

#include "odbc/text_calls.h"

namespace brenvik::odbc {
namespace {

// How long a server may take, in seconds: the limits that ADO sets. A driver that can't watch the time says
// so, and works without.
constexpr std::uintptr_t LoginSeconds = 15;
constexpr std::uintptr_t StatementSeconds = 30;

// The manager takes a number in the place of a pointer.
SQLPOINTER NumberValue(std::uintptr_t number) {
    return reinterpret_cast<SQLPOINTER>(number);  // NOLINT(performance-no-int-to-ptr)
}

}  // namespace

Handle NewEnvironment() {
    Handle environment(SQL_HANDLE_ENV, Handle());
    Require(SQLSetEnvAttr(environment.Get(), SQL_ATTR_ODBC_VERSION, NumberValue(SQL_OV_ODBC3), 0),
            environment);
    return environment;
}

Session::Session(Handle environment, std::string_view connectionString, TextCalls calls)
    : mEnvironment(std::move(environment)), mConnection(SQL_HANDLE_DBC, mEnvironment, calls) {
    SQLSetConnectAttrW(mConnection.Get(), SQL_ATTR_LOGIN_TIMEOUT, NumberValue(LoginSeconds), 0);
    Connect(mConnection, connectionString);
    mOpen = true;
}

// A connection that has a transaction open refuses to end; every statement here commits by itself, so the
// rollback only meets what a driver that knows no such mode has left.
void Session::Close() noexcept {
    if (!mOpen) return;
    mOpen = false;
    for (const std::weak_ptr<Handle>& held : mStatements)
        if (const std::shared_ptr<Handle> statement = held.lock()) statement->Free();
    mStatements.clear();
    if (!SQL_SUCCEEDED(SQLDisconnect(mConnection.Get()))) {
        SQLEndTran(SQL_HANDLE_DBC, mConnection.Get(), SQL_ROLLBACK);
        SQLDisconnect(mConnection.Get());
    }
    mConnection.Free();
    mEnvironment.Free();
}

std::shared_ptr<Handle> Session::NewStatement() {
    std::erase_if(mStatements, [](const std::weak_ptr<Handle>& held) { return held.expired(); });
    auto statement = std::make_shared<Handle>(SQL_HANDLE_STMT, mConnection);
    mStatements.push_back(statement);
    SQLSetStmtAttrW(statement->Get(), SQL_ATTR_QUERY_TIMEOUT, NumberValue(StatementSeconds), 0);
    return statement;
}

std::shared_ptr<Handle> Session::Run(std::string_view sql) {
    std::shared_ptr<Handle> statement = NewStatement();
    RunStatement(*statement, sql);
    return statement;
}

std::shared_ptr<Handle> Session::Tables(std::string_view type) {
    std::shared_ptr<Handle> statement = NewStatement();
    ListTables(*statement, type);
    return statement;
}

}  // namespace brenvik::odbc
