// The table of settings.
#include "settings/settings_keys.h"

#include <array>

#include "base/letter_case.h"
#include "settings/setting_names.h"

namespace brenvik {

namespace {

using enum SettingKind;
using namespace setting;

constexpr std::string_view Cnc = "CNC runs";
constexpr std::string_view CncAndParts = "CNC runs, part-per-file export";
constexpr std::string_view Scan = "scan";
constexpr std::string_view ScanAndStart = "scan, start-up";
constexpr std::string_view Start = "start-up";
constexpr std::string_view Export = "export dialog";

// Switches of an installation are off but for two: the letters keep themselves up to date, and a run doesn't
// save over the drawing unless the shop asks for it. A circle up to the size of a 35 mm hinge cup is drilled.
// clang-format off
constexpr auto Settings = std::to_array<SettingEntry>({
    {WCSMeasure, "", Switch, "chkWCS", "Use WCS bounding box for measuring.", true, "0", "0", Scan},
    {NoMeasure, "", Switch, "chkNoMeasure", "Turn Off All Measuring", true, "0", "0", ScanAndStart},
    {MeasureNonSolids, "", Switch, "chkMeasureNonSolids", "Measure Non-Solids with WCS bounding box.", true,
     "0", "0", ScanAndStart},
    {SettingsEvent, "", Switch, "chkRunEvent", RunEventOffCaption, true, "1", "1",
     "EventBrenvik, UpdateNow2, start-up"},
    {PocketConversion, "", Switch, "Check1",
     "Convert pockets to routes when the pockets footprint encompasses a through route.", true, "0", "0", Cnc},
    {BiesseWorksNest, "", Switch, "Check2", "Delete outside toolpath on first side.", true, "0", "0", Cnc},
    {ConvertMaterialName, "", Switch, "Check3",
     "Convert metric material name to fractional imperial material name.", true, "0", "0", Cnc},
    {MyWindowState, "", Switch, "Check4",
     "Minimize the AutoCAD window during feature recognition. This will process the parts about 1/3 faster.",
     true, "0", "0", Cnc},
    {HorzBoreOn2, "", Switch, "Check5", "Force all horziontal boring to second side.", true, "0", "0", Cnc},
    {TwoSideUCS, "", Switch, "Check6", "Move UCS to back left corner on second side.", true, "0", "0", Cnc},
    {DeleteOT, "", Switch, "Check7", "Delete outside toolpath on second side.", true, "0", "0", Cnc},
    {ToungeProcessing, "", Switch, "Check8", "Take extra time and add lead in and out to tongues.", true, "0",
     "0", Cnc},
    {DontDoTwoSided, "", Switch, "Check9", "Do not detect or do 2-sided processing (Faster)", true, "0", "0",
     Cnc},
    {SpecialMaterial, "", Switch, "Check10", "Process parts for different materials on opposite sides.", true,
     "0", "0", Cnc},
    {CNCApplyClose, "", Switch, "Check11",
     "Turn off Auto-Apply/Close before all feature recognition. (Faster)", true, "0", "0", CncAndParts},
    {CNCSave, "", Switch, "Check12",
     "Turn off Auto-Save of current drawing before all feature recognition. (Faster)", true, "1", "1",
     CncAndParts},
    {ExportScaleSetting, "", Choice, "Option1", "", true, "2", "1", CncAndParts},
    {CircleSize, "", Number, "Text1",
     "Circles bigger then this number will be cut as through routes and pockets.", true, "35", "1.378", Cnc},
    {BiesseWorksSpoil, "", Number, "Text2", "Amount to extend through routes into spoil board.", true, "0.3",
     "0.01", Cnc},
    {CNCMultiplier, "", Number, "Text3", "Multiply CNC export quantities by this number.", true, "1", "1",
     Cnc},
    {DrillSpoilAmount, "", Number, "Text4", "Amount to extend through drilling into spoil board.", true, "1",
     "0.04", Cnc},
    {BWPriority, "", Number, "Text5",
     "Parts with a smaller surface area then this amount will given a 100 priority. BiesseWorks only.", true,
     "100000", "155", "BW target"},

    // The dialog is as its users know it, and has no control for this one.
    {ClearCores, "", Switch, "", "", true, "0", "0", Cnc},
    // The values above that are lengths, and the material library, are in these units.
    {HomeUnits, "", Text, "", "", true, "metric", "imperial", CncAndParts},

    {ApplicationPath, "", Text, "", "", true, "", "", Start},
    {ApplicationVersion, "", Text, "", "", true, "4.9", "4.9", Start},
    {MDBPath, "", Text, "", "", true, "", "", Start},
    {DialogWidth, "", Number, "", "", true, "0", "0", Start},
    {DialogHeight, "", Number, "", "", true, "0", "0", Start},
    {DialogLeft, "", Number, "", "", true, "0", "0", Start},
    {DialogTop, "", Number, "", "", true, "0", "0", Start},
    {Skipandcontinue, "", Switch, "", "", true, "0", "0", Cnc},
    {skipandcontinuevalue, "", Number, "", "", true, "0", "0", Cnc},

    {EXPORT_TYPE, "", Number, "", "", false, "", "", Export},
    {SAVE_SWITCH, "", Switch, "", "", true, "0", "0", Export},
    {CVS_ADJ_PATH, CsvSaveSubkey, Text, "", "", false, "", "", Export},
    {CVS_EXPORT_PATH, CsvSaveSubkey, Text, "", "", false, "", "", Export},
    {CVS_MAPPING_SWITCH, CsvSaveSubkey, Switch, "", "", true, "0", "0", Export},
    {CSV_REDUCE, CsvSaveSubkey, Switch, "", "", true, "0", "0", Export},
    {CVS_COL_COUNT, CsvSaveSubkey, Number, "", "", false, "", "", Export},
    {CVS_COL_KEY, CsvSaveSubkey, Counted, "", "", false, "", "", Export},
    {CVS_COL_VALUE, CsvSaveSubkey, Counted, "", "", false, "", "", Export},
    {ACCESS_EXPORT_PATH, AccessSaveSubkey, Text, "", "", false, "", "", Export},
    {ACCESS_TABLE_NAME, AccessSaveSubkey, Text, "", "", false, "", "", Export},
    {ACCESS_MAP_COUNT, AccessSaveSubkey, Number, "", "", false, "", "", Export},
    {ACCESS_KEY, AccessSaveSubkey, Counted, "", "", false, "", "", Export},
    {ACCESS_VALUE, AccessSaveSubkey, Counted, "", "", false, "", "", Export},
    {ACCESS_TAG, AccessSaveSubkey, Counted, "", "", false, "", "", Export},
    {ACCESS_TO, AccessSaveSubkey, Counted, "", "", false, "", "", Export},
});
// clang-format on

constexpr auto ScaleCaptions = std::to_array<std::string_view>({
    "Parts are Imperial and do not scale on export.   ",
    "Parts are Metric and do not scale on export.       ",
    "Parts are Imperial and scale to Metric on export.",
    "Parts are Metric and scale to Imperial on export.",
});

}  // namespace

std::span<const SettingEntry> SettingTable() { return Settings; }

const SettingEntry* FindSetting(std::string_view name) {
    for (const SettingEntry& entry : Settings)
        if (EqualsIgnoreCase(entry.name, name)) return &entry;
    return nullptr;
}

std::span<const std::string_view> ExportScaleCaptions() { return ScaleCaptions; }

}  // namespace brenvik
