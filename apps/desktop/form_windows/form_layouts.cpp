// One table for the ten forms.
#include "form_windows/form_layouts.h"

#include <algorithm>
#include <array>

#include "base/invariant.h"

namespace brenvik::desktop {

namespace {

Place At(std::string_view name, int share = 0) { return {Place::Kind::Control, name, {}, {}, 0, share}; }
Place Space() { return {Place::Kind::Space, {}, {}, {}, 0, 1}; }
Place Row(std::vector<Place> inside, int share = 0) {
    return {Place::Kind::Row, {}, {}, std::move(inside), 0, share};
}
Place Column(std::vector<Place> inside, int share = 0) {
    return {Place::Kind::Column, {}, {}, std::move(inside), 0, share};
}
Place Table(int columns, std::vector<Place> inside, int share = 0) {
    return {Place::Kind::Table, {}, {}, std::move(inside), columns, share};
}
Place Box(std::string_view frame, std::string_view caption, std::vector<Place> inside, int share = 0) {
    return {Place::Kind::Box, frame, caption, std::move(inside), 0, share};
}
Place Heading(std::string_view caption, std::vector<Place> inside) {
    return {Place::Kind::Heading, {}, caption, std::move(inside), 0, 0};
}

FormLayout MainLayout() {
    std::vector<Place> ticks;
    for (const std::string_view name :
         {"chkPart", "chkSub", "chkMaterial", "chkLWT", "chkNotes", "chkUserData1", "chkUserData2", "chkPN",
          "chkPrice", "chkEB1", "chkEB2", "chkEB3", "chkEB4", "chkFace"})
        ticks.push_back(At(name));
    return {
        "frmMain",
        Column({At("tbMain"),
                Row({Box("fraCheckBoxes", "Columns that Quick Copy fills", {Table(7, std::move(ticks))}, 1),
                     Column({At("chkBlank"), At("CheckGroup"), At("btnAutoPN")})}),
                At("fpSpread1", 1), At("sbMain")}),
        {{"mnuActions", "", {"mnuExport", "mnuQcopy", "mnuApplyDrawing", "mnb1", "mnuApplyClose", "mnuExit"}},
         {"mnuHelpMenu", "", {"mnuHelp", "mnuAbout"}}},
        "",
        ""};
}

FormLayout SettingsLayout() {
    return {"frmSettings",
            Column({At("lblHeading"), At("TabStrip1"),
                    Box("fraMeasuring", "",
                        {At("chkWCS"), At("chkNoMeasure"), At("chkMeasureNonSolids"), At("chkRunEvent"),
                         At("lblAdvice"), Space()},
                        1),
                    Box("FraCNC", "",
                        {Row({Column({At("Check1"), At("Check2"), At("Check3"), At("Check4"), At("Check5"),
                                      At("Check6"), At("Check7"), At("Check8"), At("Check9"), At("Check10"),
                                      At("Check11"), At("Check12"), Space()},
                                     1),
                              Column({Heading("Units of the exports",
                                              {At("Option1"), At("Option2"), At("Option3"), At("Option4")}),
                                      Table(2, {At("lblText1"), At("Text1"), At("lblText2"), At("Text2"),
                                                At("lblText3"), At("Text3"), At("lblText4"), At("Text4"),
                                                At("lblText5"), At("Text5")}),
                                      Space()},
                                     1)})},
                        1),
                    Row({At("cmdResetLayout"), Space(), At("cmdApply"), At("cmdCancel")})}),
            {},
            "cmdApply",
            "cmdCancel"};
}

FormLayout MaterialsLayout() {
    return {"frmMaterials",
            Column({At("fpMaterials", 1), At("lblAdvice"), Row({Space(), At("btnSave")})}),
            {{"", "&Rows", {"mnuCopyRow", "mnuPasteRow"}}},
            "",
            ""};
}

Place CsvBox() {
    return Box("fraExportCSV", "",
               {Row({At("lblSaveCSVFile"), At("txtSaveCSVFile", 1), At("cmdCSVBrowse")}),
                Row({At("lblProfileName"), At("cboProfileName", 1), At("chkReduce")}), At("chkChooseCSV"),
                Row({Column({At("lblAvailableColumns"), At("cboCSVCaptionFrom", 1),
                             Row({At("cmdAddFrom"), At("cmdRemoveFrom")})},
                            1),
                     Column({Space(), At("btnInsert"), At("btnRemove"), Space()}),
                     Column({At("lblProfileColumns"), At("lstExportColumns", 1),
                             Row({At("cmdMoveUp"), At("cmdMoveDown")})},
                            1),
                     At("lvCVSMapping", 1)},
                    1)},
               1);
}

Place AccessBox() {
    return Box(
        "fraExportAccess", "",
        {Row({At("lblExportAccess"), At("txtExportAccess", 1), At("cmdBrowseAccess")}),
         Row({At("lblAccessTable"), At("cboAccessTable", 1)}),
         Box("fraNewAccess", "", {Row({At("lblNewTable"), At("txtNewTable", 1)})}),
         Box("fraExistingAccess", "",
             {Row({At("cboAccessFrom", 1), At("cboAccessTableList", 1), At("cmdAccessAdd"), At("cmdRemove")}),
              At("lvAccessMap", 1)},
             1),
         Space()},
        1);
}

FormLayout ExportLayout() {
    return {"frmExport",
            Column({Row({At("lblExportType"), At("cboExportType", 1), At("chkSave")}), CsvBox(), AccessBox(),
                    Box("fraSQL", "",
                        {Table(2, {At("lblSQLServer"), At("txtSQLServer"), At("lblPort"), At("txtPort"),
                                   At("lblSQLDatabase"), At("txtSQLDatabase")}),
                         Row({Space(), At("cmdConnect")})}),
                    Row({At("lblAdjustments"), At("Text1", 1), At("cmdADJBrowse"), At("Command1")}),
                    Row({Space(), At("cmdGo"), At("cmdCancel")})}),
            {},
            "cmdGo",
            "cmdCancel"};
}

FormLayout FilterLayout() {
    return {"frmFilter",
            Column({Table(3, {At("lblColumn"), At("lblOperator"), At("lblCriteria"), At("cboCol(0)", 2),
                              At("cboCrit(0)", 1), At("cboCritData(0)", 2), At("cboCol(1)"), At("cboCrit(1)"),
                              At("cboCritData(1)"), At("cboCol(2)"), At("cboCrit(2)"), At("cboCritData(2)"),
                              At("cboCol(3)"), At("cboCrit(3)"), At("cboCritData(3)")}),
                    At("chkSort"), Space(), Row({At("btnClear"), Space(), At("btnOK"), At("btnCancel")})}),
            {},
            "btnOK",
            "btnCancel"};
}

FormLayout SortLayout() {
    static constexpr auto boxes = std::to_array<std::string_view>(
        {"Check1(1)", "Check1(2)", "Check1(3)", "Check1(4)", "Check1(5)", "Check1(6)", "Check1(7)",
         "Check1(8)", "Check1(9)", "Check1(10)", "Check1(11)", "Check1(12)", "Check1(13)", "Check1(14)",
         "Check1(15)", "Check1(16)", "Check1(17)", "Check1(18)",
         // Never shown: it stands for the identity.
         "Check1(0)"});
    std::vector<Place> ticks;
    for (const std::string_view name : boxes) ticks.push_back(At(name));
    return {"frmNewSort",
            Column({Row({Column({At("lblAvailable"), At("List1", 1), At("lblAvailableNote")}, 1),
                         Column({Space(), At("btnAddOne"), At("btnAddAll"), At("btnRemoveOne"),
                                 At("btnRemoveAll"), Space()}),
                         Column({At("lblSelected"), At("List2", 1), At("lblSelectedNote")}, 1)},
                        1),
                    Box("fraGrouping", "",
                        {At("lblGroupBy"), Table(5, std::move(ticks)),
                         Row({At("Command1"), At("Command3"), Space(),
                              Column({At("lblGroupingOn"), At("lblGroupingOff")})})}),
                    Row({Space(), At("btnOK"), At("Command2")})}),
            {},
            "btnOK",
            "Command2"};
}

FormLayout LoginLayout() {
    return {"frmLogin",
            Column({At("lblAdvice"),
                    Table(2, {At("lblUsername"), At("txtUsername"), At("lblPassword"), At("txtPassword")}),
                    Space(), Row({Space(), At("cmdLogin"), At("cmdCancel")})}),
            {},
            "cmdLogin",
            "cmdCancel"};
}

FormLayout AdjustmentsLayout() {
    return {"frmAdjustments",
            Column({Row({At("lblFile"), At("Text1", 1), At("cmdADJBrowse"), At("cmdADJBrowse2")}),
                    At("fpAdjustments", 1), At("lblWarning"), Row({Space(), At("btnSave")})}),
            {},
            "",
            ""};
}

FormLayout ChoiceLayout(std::string_view form, std::vector<Place> more) {
    std::vector<Place> content{At("lblStatement"), Table(3, {At("lblBit1"), At("Option1"), At("Option2"),
                                                             At("lblBit2"), At("Option3"), At("Option4"),
                                                             At("lblBit3"), At("Option5"), At("Option6")})};
    for (Place& place : more) content.push_back(std::move(place));
    content.push_back(Space());
    content.push_back(Row({Space(), At("cmdAccept"), At("cmdExit")}));
    return {form, Column(std::move(content)), {}, "cmdAccept", "cmdExit"};
}

}  // namespace

const std::vector<FormLayout>& FormLayouts() {
    static const std::vector<FormLayout> layouts{MainLayout(),
                                                 SettingsLayout(),
                                                 MaterialsLayout(),
                                                 ExportLayout(),
                                                 FilterLayout(),
                                                 SortLayout(),
                                                 LoginLayout(),
                                                 AdjustmentsLayout(),
                                                 ChoiceLayout("frmChoice", {}),
                                                 ChoiceLayout("frmChoicetherm", {At("skip")})};
    return layouts;
}

const FormLayout& LayoutOf(std::string_view form) {
    const auto found = std::ranges::find(FormLayouts(), form, &FormLayout::form);
    Invariant(found != FormLayouts().end(), "every form has a layout");
    return *found;
}

bool TakesFreeText(std::string_view comboBox) {
    return comboBox.starts_with("cboCritData") || comboBox == "cboProfileName";
}

bool IsSecret(std::string_view textBox) { return textBox == "txtPassword"; }

}  // namespace brenvik::desktop
