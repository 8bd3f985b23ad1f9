// One open connection of the driver manager with the statements that run on it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "odbc/api.h"

namespace brenvik::odbc {

/// An environment of the driver manager, asking for the behaviour of the third release of ODBC.
Handle NewEnvironment();

class Session {
  public:
    /// Connects without asking anything of the user. Fails as the driver does.
    Session(Handle environment, std::string_view connectionString, TextCalls calls);
    ~Session() { Close(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Ends every statement, then the connection. Once closed, nothing happens.
    void Close() noexcept;

    /// A statement that ends with the session, whoever still holds it.
    std::shared_ptr<Handle> NewStatement();

    /// Runs a statement; what it gives can be fetched from it. Fails as the driver does.
    std::shared_ptr<Handle> Run(std::string_view sql);

    /// The schema list of tables of one type.
    std::shared_ptr<Handle> Tables(std::string_view type);

  private:
    Handle mEnvironment;
    Handle mConnection;
    std::vector<std::weak_ptr<Handle>> mStatements;
    bool mOpen = false;
};

}  // namespace brenvik::odbc
