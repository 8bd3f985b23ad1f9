// The export dialog: the one door to all exports of the list. The user picks a type, fills the frame that it
// brings up, and presses Export.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "export/access_export.h"
#include "export/profiles.h"
#include "forms/form.h"
#include "settings/seen_values.h"

namespace brenvik {

class frmMain;

/// The entries of `cboExportType` by number; the ones from the third on hand the parts to a CNC run.
inline constexpr int CsvExportType = 0, AccessExportType = 1, FirstCncExportType = 2;

class frmExport : public Form {
  public:
    frmExport();

    /// Fills `cboProfileName` from the profile file of the CSV export, or of the hand-over to a CNC run. A
    /// missing file leaves it empty.
    void LoadProfiles();
    void LoadCNCProfiles();
    /// Takes the adjustment file: the one of the settings, else the delivered one, which is stored then.
    /// Shows a message where there is none.
    void Populate();
    /// Fills `cboAccessTable` with the tables of the file in `txtExportAccess`.
    void populateTableList();

    /// Chooses a profile by name, as a click in `cboProfileName` does. Returns false when it isn't there.
    bool ChooseProfile(std::string_view profileName);
    std::span<const ExportProfile> Profiles() const { return mProfiles; }
    /// Reports faults of the profile and names that stand for no column, for an export by the columns on
    /// screen. Each is given with its place if it comes from the file of the chosen profile.
    void NoteProfileTroubles(std::span<const std::string> unknownNames) const;

    void OnResize() override;

    ListControl& cboExportType;
    CheckControl& chkSave;
    Control& Text1;
    Control& txtSaveCSVFile;
    CheckControl& chkChooseCSV;
    CheckControl& chkReduce;
    ListControl& cboProfileName;
    ListControl& cboCSVCaptionFrom;
    ListControl& cboDBNames;
    ListControl& lstExportColumns;
    ListViewControl& lvCVSMapping;
    Control& txtExportAccess;
    ListControl& cboAccessTable;
    Control& txtNewTable;
    ListControl& cboAccessFrom;
    ListControl& cboFromDBVals;
    ListControl& cboAccessTableList;
    ListControl& cboAccessFieldTypes;
    ListViewControl& lvAccessMap;

    /// 1 for the types of CNC runs, else 0.
    int CncMode = 0;
    /// The work file of a hand-over to a CNC run.
    std::string ExportPath;
    /// The adjustment file.
    std::string ExportAdjPath;
    /// The login of a protected database, held for as long as the dialog is open.
    DatabaseLogin login;
    /// The last attempt to reach a database failed.
    bool connectFailed = false;
    /// The last run went to its end. Stays when the dialog is unloaded.
    bool exportEnded = false;

  protected:
    void OnLoad() override;

  private:
    void AddButton(const char* name, const char* buttonCaption, void (frmExport::*handler)());
    void OnClickOf(Control& control, void (frmExport::*handler)());
    void AddFixedControls();
    void AddCsvFrame();
    void AddAccessFrame();
    void AddSqlServerFrame();

    void TypeChanged();
    void OfferTypes();
    void OfferColumns();
    void ReadProfiles(std::string_view file);
    void ChooseCsvSwitched();
    void ProfileChosen();
    const ExportProfile* ShownProfile() const;
    void InsertColumns();
    void RemoveColumn();
    void MoveColumn(int step);
    void MoveUp() { MoveColumn(-1); }
    void MoveDown() { MoveColumn(1); }
    void AddFrom();
    void RemoveFrom();

    void Go();
    void GoCsv();
    void GoAccess();
    void GoCnc();
    void BrowseCsv();
    void BrowseAccess();
    void BrowseAdjustments();
    void ModifyAdjustments();

    void RestoreState();
    void RestoreTarget();
    /// Saves only what was changed in this dialog. Overwriting another program's change is reported.
    void SaveState();
    /// One of the dialog's choices that it keeps: how it stands in the settings, and how it goes there.
    struct KeptChoice {
        std::string name;
        std::function<std::string()> stored;
        std::function<void()> save;
        std::string text;
    };
    std::vector<KeptChoice> KeptChoices() const;
    void NoteStored();
    void NoteShown();

    void TableChosen();
    void AddMapping();
    void RemoveMapping();
    void CheckSqlServer();

    std::vector<ExportProfile> mProfiles;
    SeenValues mSeen;
    bool mResizing = false;
};

/// The dialog as the grid opens it: modal, and the grid form unloads itself when a CNC target was chosen in
/// it.
void ShowExportDialog(frmMain& form);

}  // namespace brenvik
