// The one place that knows all modules.
#include "session/library/loading.h"

#include "grid/frm_main.h"
#include "parts/part_table.h"
#include "session/library/grid_actions.h"
#include "session/session.h"

namespace brenvik {

void LoadSystem(const Platform& platform) {
    UnloadSystem();
    StartSession(platform);
    TheSession().CurrentSQL = FullSelect();
    SetGridCommands({RunToolbarKey, RunMenuEntry});
}

void UnloadSystem() { EndSession(); }

}  // namespace brenvik
