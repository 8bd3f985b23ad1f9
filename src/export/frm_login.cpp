// The login dialog.
#include "export/frm_login.h"

#include "session/message.h"
#include "session/module_state.h"
#include "session/ports/dialog_port.h"
#include "session/session.h"

namespace brenvik {

frmLogin::frmLogin()
    : Form("frmLogin", "Database Login"),
      txtUsername(Add<Control>(ControlKind::TextBox, "txtUsername")),
      txtPassword(Add<Control>(ControlKind::TextBox, "txtPassword")) {
    width = 4800;
    height = 2700;
    Add<Control>(ControlKind::Label, "lblAdvice", "Please Enter Database Username and Password ");
    Add<Control>(ControlKind::Label, "lblUsername", "Username");
    Add<Control>(ControlKind::Label, "lblPassword", "Password");
    Add<Control>(ControlKind::Button, "cmdLogin", "Login").onClick = [this] { Login(); };
    Add<Control>(ControlKind::Button, "cmdCancel", "Cancel").onClick = [this] { Unload(); };
}

void frmLogin::Login() {
    if (txtUsername.Text().empty() || txtPassword.Text().empty())
        return ShowMessage("You must enter a username and password...", "Missing Values", MessageIcon::Stop);
    entered = DatabaseLogin{txtUsername.Text(), txtPassword.Text()};
    Unload();
}

std::optional<DatabaseLogin> AskForLogin(const DatabaseLogin& held) {
    auto& form = StateOf<frmLogin>();
    form.Load();
    form.txtUsername.SetText(held.DbUser);
    form.txtPassword.SetText(held.DbPassword);
    // The one user that every file of this kind has.
    form.txtUsername.SetText("Admin");
    ThePlatform().dialogs->ShowModal(form);
    return form.entered;
}

}  // namespace brenvik
