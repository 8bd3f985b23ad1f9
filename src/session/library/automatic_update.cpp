// The update is a load of the grid form that nobody sees, which scans and so settles the letters, and an
// apply, which writes them back together with the present extents.
#include "session/library/automatic_update.h"

#include "base/skip.h"
#include "grid/frm_main.h"
#include "session/call.h"
#include "session/ports/dialog_port.h"
#include "session/session.h"
#include "settings/settings_store.h"

namespace brenvik::commands {

namespace {

enum class PendingEvents { Left, RunFirst };

bool AutomaticUpdatingIsOn() { return StrictNumberSetting(setting::SettingsEvent) == 1; }

/// The designer is in the middle of something else, so a failure ends its own step and is not reported.
void Update(AcadApplication& app, PendingEvents pending) {
    // Without a document there is nothing to bring up to date.
    if (!Skip([&] { BeginCall(app); })) return;
    if (pending == PendingEvents::RunFirst) Skip([] { ThePlatform().dialogs->DoEvents(); });
    frmMain& form = GridFormInstance();
    Skip([&] { form.Form_Load(); });
    Skip([&] { form.applyClose(FailureTelling::Ignored); });
    // A grouped list refuses to be applied and stays; nobody is there to close it.
    Skip([&] { form.Unload(); });
}

}  // namespace

void EventBrenvik(AcadApplication& app) {
    if (AutomaticUpdatingIsOn()) Update(app, PendingEvents::Left);
}

void UpdateNow(AcadApplication& app) { Update(app, PendingEvents::RunFirst); }

void UpdateNow2(AcadApplication& app) {
    if (AutomaticUpdatingIsOn()) Update(app, PendingEvents::RunFirst);
}

}  // namespace brenvik::commands
