// Session values: what all modules share as long as the library stays loaded, and loading itself.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "session/ports/platform.h"

namespace brenvik {

class AcadApplication;
class AcadDocument;
class Connection;
class Form;

/// One sort column: a field of the part table and "Asc" or "Desc".
struct SortField {
    std::string field, direction;
};

/// One filled row of the filter dialog: column caption, operator as shown, value.
struct FilterCriterion {
    std::string column, criterion, value;
};

/// One entry of the table of captions and columns; the third text is given, and nobody reads it.
struct ColumnRelationEntry {
    std::string caption, column, spare;
};

struct Session {
    AcadApplication* AcadApp = nullptr;  ///< A given value: of the present call. Nobody reads it.
    AcadDocument* AcadDoc = nullptr;
    std::string InstallFolder;       ///< With a trailing backslash.
    std::unique_ptr<Form> GridForm;  ///< A `frmMain`, made at first use.
    int ExportTarget = 0;            ///< 0 none, 1 to 12 a CNC target.
    bool ApplyBusy = false;
    bool SettingsEvent = false, MeasureNonSolids = false, NoMeasure = false;
    std::string ApplicationPath, ApplicationVersion;
    std::string DialogWidth, DialogHeight, DialogLeft, DialogTop;
    std::string MDBPath;
    /// The column widths as the settings have them, one for each key of the column width key list.
    std::vector<std::string> ColumnCaptions;
    /// The captions of the grid form's caption list: given, and nobody reads them.
    std::vector<std::string> CaptionList;
    /// Rows 0 to 50, of which the first 23 are filled; what walks it meets the empty ones too.
    std::array<ColumnRelationEntry, 51> ColumnRelation;
    /// The record source of the grid's data control as it stood before the scan.
    std::string GridRecordSource;
    /// `CurrentSQL` starts as the full select; group fields that aren't blank mean that grouping is active.
    std::string SortClause, WhereClause, GroupFields, CurrentSQL;
    std::vector<SortField> SortFields;
    std::vector<FilterCriterion> FilterCriteria;
    /// The scan's connection stays open; the reader's is open while record sets use it.
    std::unique_ptr<Connection> ScanConnection, ReaderConnection;
    int ReaderUseCount = 0;

    Session();
    ~Session();
};

/// The one session of the loaded library.
Session& TheSession();
/// The platform handed over at load; using it before is a defect.
Platform& ThePlatform();

/// Takes the platform and starts with fresh session values. A required port that is missing is a defect.
void StartSession(const Platform& platform);
/// Closes connections, drops the forms, and resets the state of every module.
void EndSession();

}  // namespace brenvik
