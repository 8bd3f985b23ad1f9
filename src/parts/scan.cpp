// The scan: the host's previous selection becomes the rows of the part table. A failure of any of its
// statements is shown, and the scan goes on at the statement behind it; so a row may be missing, or the next
// statement runs on what is there.
#include "base/failure.h"
#include "base/skip.h"
#include "base/text.h"
#include "grid/frm_main.h"
#include "parts/extents.h"
#include "parts/mautocad.h"
#include "parts/mdatabase.h"
#include "parts/part_row.h"
#include "parts/part_table.h"
#include "session/host_interface.h"
#include "session/message.h"
#include "session/session.h"
#include "settings/settings_store.h"

namespace brenvik::mAutoCAD {

namespace {

/// Runs one statement of the scan under its handler.
template <typename Statement>
bool Resume(Statement&& statement) {
    return ShowAndResume(
        [](const Failure& failure) {
            ShowFailure(failure);
            GridFormInstance().mousePointer = MousePointer::Normal;
        },
        std::forward<Statement>(statement));
}

template <typename T>
T& Needed(T* object, const char* what) {
    if (object == nullptr) throw ObjectNotSet(what);
    return *object;
}

/// What one scan carries from entity to entity.
struct Scan {
    MeasuringChoice choice;
    std::unique_ptr<SolidMeasurer> measurer;
    PartRow row;
};

/// The set "prev" made anew and filled with the previous selection.
AcadSelectionSet* TakePreviousSelection() {
    AcadDocument* document = TheSession().AcadDoc;
    // There is none in a document that was never scanned.
    Skip([&] { Needed(document, "document").SelectionSets().Item("prev")->Delete(); });
    AcadSelectionSet* set = nullptr;
    Resume([&] { set = Needed(document, "document").SelectionSets().Add("prev"); });
    Resume([&] { Needed(set, "prev").Select(SelectMode::Previous); });
    return set;
}

void ReadPartData(AcadEntity& entity, PartRow& row) {
    for (const std::string& key : Split(PartDataKeyList, ','))
        if (std::string* value = row.ValueOf(key))
            Resume([&] { *value = GetPartData(entity.Handle(), key); });
}

void SettleLettersAndSizes(PartRow& row) {
    const OrieInput input{row.ORIE, {row.OLDVALUE1, row.OLDVALUE2, row.OLDVALUE3}, row.extents};
    const OrieResult result = UpdateOrie(input);
    row.ORIE = result.letters;
    row.length = result.length;
    row.width = result.width;
    row.thickness = result.thickness;
}

void ScanEntity(AcadEntity& entity, Scan& scan) {
    PartRow& row = scan.row;
    row.OLDVALUE1.clear();
    row.OLDVALUE2.clear();
    row.OLDVALUE3.clear();
    row.ORIE.clear();
    ReadPartData(entity, row);
    Resume([&] {
        ObtainExtents(entity, scan.choice, {row.OLDVALUE1, row.OLDVALUE2, row.OLDVALUE3}, scan.measurer,
                      row.extents);
    });
    Resume([&] { SettleLettersAndSizes(row); });
    if (row.QUANTITY.empty()) row.QUANTITY = "1";
    Resume([&] { mDatabase::ExecuteSql(InsertStatement(row, entity.Handle(), entity.Layer())); });
}

void ScanEntities(AcadSelectionSet* set, Scan& scan) {
    int count = 0;
    Resume([&] { count = Needed(set, "prev").Count(); });
    for (int index = 0; index < count; ++index) {
        AcadEntity* entity = nullptr;
        if (Resume([&] { entity = &Needed(set->Item(index), "entity"); })) ScanEntity(*entity, scan);
    }
}

void BindGrid() {
    frmMain& form = GridFormInstance();
    TheSession().GridRecordSource = form.Adodc1.recordSource;
    form.Adodc1.recordSource = ScanSelect;
    Resume([&] { form.fpSpread1.SetDataSource(&form.Adodc1); });
    Resume([&] { form.Adodc1.Refresh(); });
    Resume([&] { form.fpSpread1.SetMaxRows(Needed(form.Adodc1.Records(), "record set").RecordCount()); });
}

}  // namespace

void ScanSelection() {
    Scan scan;
    // Read ahead of the handler: a switch that holds no number stops the call.
    scan.choice.MeasureNonSolids = StrictIntegerSetting("MeasureNonSolids");
    scan.choice.NoMeasure = StrictIntegerSetting("NoMeasure");
    scan.choice.WCSMeasure = SwitchIsOn("WCSMeasure");

    frmMain& form = GridFormInstance();
    form.mousePointer = MousePointer::Hourglass;
    AcadSelectionSet* set = TakePreviousSelection();
    bool empty = false;
    Resume([&] { empty = Needed(set, "prev").Count() == 0; });
    if (empty) return;

    Session& session = TheSession();
    Resume(mDatabase::OpenScanConnection);
    Resume([] { mDatabase::ExecuteSql("delete from brenvik_data"); });
    Resume([&] { Needed(session.ScanConnection.get(), "scan connection").BeginTrans(); });
    ScanEntities(set, scan);
    Resume([&] { Needed(session.ScanConnection.get(), "scan connection").CommitTrans(); });
    BindGrid();
    form.mousePointer = MousePointer::Normal;
}

}  // namespace brenvik::mAutoCAD
