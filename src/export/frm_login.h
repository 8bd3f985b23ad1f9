// The login of a protected database: user name and password.
#pragma once

#include <optional>

#include "export/access_export.h"
#include "forms/form.h"

namespace brenvik {

class frmLogin : public Form {
  public:
    frmLogin();

    Control& txtUsername;
    Control& txtPassword;
    /// What the user gave; null if the dialog was left without a login.
    std::optional<DatabaseLogin> entered;

  protected:
    void OnLoad() override { entered.reset(); }

  private:
    void Login();
};

/// Asks for a login, with a password to begin with. Null if the user gives up.
std::optional<DatabaseLogin> AskForLogin(const DatabaseLogin& held);

}  // namespace brenvik
