// The table of settings.
#include "settings/settings_keys.h"

#include <array>

#include "base/letter_case.h"
#include "settings/setting_names.h"

namespace brenvik {

namespace {

using enum SettingKind;
using namespace setting;

// Switches of an installation are off but for two: the letters keep themselves up to date, and a run doesn't
// save over the drawing unless the shop asks for it. A circle up to the size of a 35 mm hinge cup is drilled.
// clang-format off
constexpr auto Settings = std::to_array<SettingEntry>({
    // For measuring, and for the letters.
    {WCSMeasure, "", Switch, "chkWCS", "Use WCS bounding box for measuring.", true, "0", "0"},
    {NoMeasure, "", Switch, "chkNoMeasure", "Turn Off All Measuring", true, "0", "0"},
    {MeasureNonSolids, "", Switch, "chkMeasureNonSolids", "Measure Non-Solids with WCS bounding box.", true,
     "0", "0"},
    {SettingsEvent, "", Switch, "chkRunEvent", RunEventOffCaption, true, "1", "1"},
    // For CNC runs; `CNCApplyClose`, `CNCSave` and `ExportScaleSetting` also for drawings of single parts.
    {PocketConversion, "", Switch, "Check1",
     "Convert pockets to routes when the pockets footprint encompasses a through route.", true, "0", "0"},
    {BiesseWorksNest, "", Switch, "Check2", "Delete outside toolpath on first side.", true, "0", "0"},
    {ConvertMaterialName, "", Switch, "Check3",
     "Convert metric material name to fractional imperial material name.", true, "0", "0"},
    {MyWindowState, "", Switch, "Check4",
     "Minimize the AutoCAD window during feature recognition. This will process the parts about 1/3 faster.",
     true, "0", "0"},
    {HorzBoreOn2, "", Switch, "Check5", "Force all horziontal boring to second side.", true, "0", "0"},
    {TwoSideUCS, "", Switch, "Check6", "Move UCS to back left corner on second side.", true, "0", "0"},
    {DeleteOT, "", Switch, "Check7", "Delete outside toolpath on second side.", true, "0", "0"},
    {ToungeProcessing, "", Switch, "Check8", "Take extra time and add lead in and out to tongues.", true, "0",
     "0"},
    {DontDoTwoSided, "", Switch, "Check9", "Do not detect or do 2-sided processing (Faster)", true, "0", "0"},
    {SpecialMaterial, "", Switch, "Check10", "Process parts for different materials on opposite sides.", true,
     "0", "0"},
    {CNCApplyClose, "", Switch, "Check11",
     "Turn off Auto-Apply/Close before all feature recognition. (Faster)", true, "0", "0"},
    {CNCSave, "", Switch, "Check12",
     "Turn off Auto-Save of current drawing before all feature recognition. (Faster)", true, "1", "1"},
    {ExportScaleSetting, "", Choice, "Option1", "", true, "2", "1"},
    {CircleSize, "", Number, "Text1",
     "Circles bigger then this number will be cut as through routes and pockets.", true, "35", "1.378"},
    {BiesseWorksSpoil, "", Number, "Text2", "Amount to extend through routes into spoil board.", true, "0.3",
     "0.01"},
    {CNCMultiplier, "", Number, "Text3", "Multiply CNC export quantities by this number.", true, "1", "1"},
    {DrillSpoilAmount, "", Number, "Text4", "Amount to extend through drilling into spoil board.", true, "1",
     "0.04"},
    {BWPriority, "", Number, "Text5",
     "Parts with a smaller surface area then this amount will given a 100 priority. BiesseWorks only.", true,
     "100000", "155"},

    // The dialog is as its users know it, and has no control for this one.
    {ClearCores, "", Switch, "", "", true, "0", "0"},
    // The values above that are lengths, and the material library, are in these units.
    {HomeUnits, "", Text, "", "", true, "metric", "imperial"},

    // For the start of a session.
    {ApplicationPath, "", Text, "", "", true, "", ""},
    {ApplicationVersion, "", Text, "", "", true, "4.9", "4.9"},
    {MDBPath, "", Text, "", "", true, "", ""},
    {DialogWidth, "", Number, "", "", true, "0", "0"},
    {DialogHeight, "", Number, "", "", true, "0", "0"},
    {DialogLeft, "", Number, "", "", true, "0", "0"},
    {DialogTop, "", Number, "", "", true, "0", "0"},
    // The standing answers of a run.
    {Skipandcontinue, "", Switch, "", "", true, "0", "0"},
    {skipandcontinuevalue, "", Number, "", "", true, "0", "0"},

    // For the export dialog.
    {EXPORT_TYPE, "", Number, "", "", false, "", ""},
    {SAVE_SWITCH, "", Switch, "", "", true, "0", "0"},
    {CVS_ADJ_PATH, CsvSaveSubkey, Text, "", "", false, "", ""},
    {CVS_EXPORT_PATH, CsvSaveSubkey, Text, "", "", false, "", ""},
    {CVS_MAPPING_SWITCH, CsvSaveSubkey, Switch, "", "", true, "0", "0"},
    {CSV_REDUCE, CsvSaveSubkey, Switch, "", "", true, "0", "0"},
    {CVS_COL_COUNT, CsvSaveSubkey, Number, "", "", false, "", ""},
    {CVS_COL_KEY, CsvSaveSubkey, Counted, "", "", false, "", ""},
    {CVS_COL_VALUE, CsvSaveSubkey, Counted, "", "", false, "", ""},
    {ACCESS_EXPORT_PATH, AccessSaveSubkey, Text, "", "", false, "", ""},
    {ACCESS_TABLE_NAME, AccessSaveSubkey, Text, "", "", false, "", ""},
    {ACCESS_MAP_COUNT, AccessSaveSubkey, Number, "", "", false, "", ""},
    {ACCESS_KEY, AccessSaveSubkey, Counted, "", "", false, "", ""},
    {ACCESS_VALUE, AccessSaveSubkey, Counted, "", "", false, "", ""},
    {ACCESS_TAG, AccessSaveSubkey, Counted, "", "", false, "", ""},
    {ACCESS_TO, AccessSaveSubkey, Counted, "", "", false, "", ""},
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
