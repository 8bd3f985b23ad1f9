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
    explicit GridOnItsLastList(frmMain& gridForm) : mForm(gridForm) {
        mForm.Adodc1.connectionString = mDatabase::ConnectionString();
        mForm.Adodc1.recordSource = FullSelect();
        mForm.fpSpread1.SetDataSource(&mForm.Adodc1);
        mForm.Adodc1.Refresh();
        if (const Recordset* records = mForm.Adodc1.Records())
            mForm.fpSpread1.SetMaxRows(records->RecordCount());
    }
    ~GridOnItsLastList() {
        mForm.Adodc1.Close();
        mForm.fpSpread1.SetDataSource(nullptr);
    }
    GridOnItsLastList(const GridOnItsLastList&) = delete;
    GridOnItsLastList& operator=(const GridOnItsLastList&) = delete;

  private:
    frmMain& mForm;
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
