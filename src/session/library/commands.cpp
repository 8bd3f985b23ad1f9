// From `Show` to the grid and back, and on to the CNC run that was chosen in it.
#include "session/library/commands.h"

#include "grid/frm_main.h"
#include "session/library/target_drivers.h"
#include "session/module_state.h"
#include "session/ports/dialog_port.h"
#include "session/session.h"
#include "settings/frm_settings.h"

namespace brenvik {

namespace commands {

void Show(AcadApplication& app) {
    frmMain& form = GridFormInstance();
    // A form that was loaded unseen has a list of its own.
    form.Unload();
    ThePlatform().dialogs->ShowModal(form);
    RunChosenTarget(app);
}

void ShowSettings() { ThePlatform().dialogs->ShowModal(StateOf<frmSettings>()); }

}  // namespace commands

}  // namespace brenvik
