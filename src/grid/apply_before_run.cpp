// The automatic apply, with the grid open and with the list that it left.
#include "grid/apply_before_run.h"

#include "base/numbers.h"
#include "base/skip.h"
#include "grid/frm_main.h"
#include "parts/mdatabase.h"
#include "parts/part_table.h"
#include "session/message.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

/// Binds the unloaded grid form to the list that it closed on, and lets go of it again.
class GridOnItsLastList {
  public:
    explicit GridOnItsLastList(frmMain& gridForm) : form(gridForm) {
        form.Adodc1.connectionString = mDatabase::ConnectionString();
        form.Adodc1.recordSource = FullSelect();
        form.fpSpread1.SetDataSource(&form.Adodc1);
        form.Adodc1.Refresh();
        if (const Recordset* records = form.Adodc1.Records())
            form.fpSpread1.SetMaxRows(records->RecordCount());
    }
    ~GridOnItsLastList() {
        form.Adodc1.Close();
        form.fpSpread1.SetDataSource(nullptr);
    }
    GridOnItsLastList(const GridOnItsLastList&) = delete;
    GridOnItsLastList& operator=(const GridOnItsLastList&) = delete;

  private:
    frmMain& form;
};

}  // namespace

bool ApplyOpenGrid() {
    if (ToInteger(NumberSetting(setting::CNCApplyClose)) != 0) return true;
    frmMain& form = GridFormInstance();
    if (!form.Loaded()) return false;
    form.Apply();
    form.Unload();
    return true;
}

void ApplyLastList() {
    ShowAndResume(ShowFailure, [&] {
        frmMain& form = GridFormInstance();
        const GridOnItsLastList list(form);
        form.Apply();
    });
}

}  // namespace brenvik
