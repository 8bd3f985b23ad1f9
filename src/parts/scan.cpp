// The scan: the host's previous selection becomes the rows of the part table. A failure of any of its
// statements is shown, and the scan goes on at the statement behind it; so a row may be missing, or the next
// statement runs on what is there.
#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/skip.h"
#include "base/text.h"
#include "forms/form.h"
#include "forms/grid_control.h"
#include "parts/dropped_parts.h"
#include "parts/extents.h"
#include "parts/letters_in_use.h"
#include "parts/mautocad.h"
#include "parts/mdatabase.h"
#include "parts/part_data_faults.h"
#include "parts/part_row.h"
#include "parts/part_table.h"
#include "parts/part_trouble.h"
#include "parts/statement_quotes.h"
#include "session/message.h"
#include "session/ports/database_failures.h"
#include "session/ports/host_interface.h"
#include "session/progress.h"
#include "session/session.h"
#include "settings/settings_store.h"

namespace brenvik::mAutoCAD {

namespace {

/// The scan's handler: a user who reads a failure isn't waiting any more.
struct FailureTeller {
    void operator()(const Failure& failure) const {
        ShowFailure(failure);
        form.mousePointer = MousePointer::Normal;
    }

    Form& form;
};

template <typename T>
T& Needed(T* object, const char* what) {
    if (object == nullptr) throw ObjectNotSet(what);
    return *object;
}

/// The work table during one scan. A table that can't be used fails every statement of the scan; the
/// first of them is reported, and not each solid's.
class WorkTable {
  public:
    explicit WorkTable(FailureTeller failureTeller) : mTell(failureTeller) {}

    /// Runs a statement that every row depends on: if it fails, the table can't be used.
    template <typename Statement>
    bool Prepare(Statement&& statement) {
        return Run([&] { statement(); }, true);
    }
    /// Adds a row. Nothing where that worked, else why it didn't; blank where the whole table is at fault.
    template <typename Statement>
    std::optional<std::string> Add(Statement&& statement) {
        if (Run([&] { statement(); }, false)) return std::nullopt;
        return mUnusable ? std::string() : mLastFailure;
    }

  private:
    bool Run(const std::function<void()>& statement, bool everyRowNeedsIt) {
        const std::optional<Failure> failure = Attempt(statement);
        if (!failure) return true;
        const bool toldAlready = mUnusable;
        mUnusable = mUnusable || everyRowNeedsIt || IsOfTheFile(*failure) || RefusesToBeRead();
        if (!toldAlready) mTell(*failure);
        mLastFailure = failure->description();
        return false;
    }
    static bool IsOfTheFile(const Failure& failure) {
        return failure.number() == failure_number::DatabaseUnavailable ||
               failure.number() == failure_number::ObjectClosed;
    }
    /// A table that isn't there, or without its columns, refuses the rows and this alike. It is asked once: a
    /// question for each refused row would take longer than the rows.
    bool RefusesToBeRead() {
        if (!mRefusesToBeRead)
            mRefusesToBeRead = !Skip([] {
                TheSession().ScanConnection->OpenRecordset(FullSelect() + " where bv_id = ''")->Close();
            });
        return *mRefusesToBeRead;
    }

    FailureTeller mTell;
    std::optional<bool> mRefusesToBeRead;
    bool mUnusable = false;
    std::string mLastFailure;
};

/// What one scan carries from entity to entity.
struct Scan {
    explicit Scan(const ScanScreen& shown) : screen(shown), tell{shown.form}, table(tell) {}

    /// Runs one statement under the scan's handler.
    template <typename Statement>
    bool Resume(Statement&& statement) const {
        return ShowAndResume(tell, std::forward<Statement>(statement));
    }

    ScanScreen screen;
    FailureTeller tell;
    MeasuringChoice choice;
    std::unique_ptr<SolidMeasurer> measurer;
    PartRow row;
    WorkTable table;
    /// The parts whose rows wait for the commit.
    std::vector<DroppedPart> uncommitted;
};

/// The set "prev" made anew and filled with the previous selection.
AcadSelectionSet* TakePreviousSelection(const Scan& scan) {
    AcadDocument* document = TheSession().AcadDoc;
    // There is none in a document that was never scanned.
    Skip([&] { Needed(document, "document").SelectionSets().Item("prev")->Delete(); });
    AcadSelectionSet* set = nullptr;
    scan.Resume([&] { set = Needed(document, "document").SelectionSets().Add("prev"); });
    scan.Resume([&] { Needed(set, "prev").Select(SelectMode::Previous); });
    return set;
}

/// What goes into a part's row and can't be right. The row is made all the same; the part's name is known
/// when all of its data are read.
using RowTroubles = std::vector<std::pair<std::string, bool>>;

void ReadPartData(AcadEntity& entity, Scan& scan, RowTroubles& troubles) {
    PartRow& row = scan.row;
    for (const std::string& key : Split(PartDataKeyList, ','))
        if (std::string* value = row.ValueOf(key))
            if (!scan.Resume([&] { *value = GetPartData(entity.Handle(), key); }))
                troubles.emplace_back("a text was expected under " + key +
                                          "; the list has what the part before it left there, \"" + *value +
                                          "\"",
                                      true);
}

std::string ExtentsText(std::span<const double, 3> values) {
    return NumberToText(values[0]) + " x " + NumberToText(values[1]) + " x " + NumberToText(values[2]);
}

/// Letters that became others because of data that can't be right are nobody's: no run may cut by them.
bool WereGuessed(const std::string& letters, const PartRow& row) {
    const std::array<std::string_view, 3> saved{row.OLDVALUE1, row.OLDVALUE2, row.OLDVALUE3};
    return !IsBlank(row.ORIE) && !EqualsIgnoreCase(letters, row.ORIE) &&
           (LettersFault(letters) || SavedExtentsFault(saved));
}

/// Whether the row has neither measured nor saved sizes.
bool HasNoExtents(const PartRow& row) {
    return std::ranges::all_of(row.extents.E, [](double extent) { return extent == 0; });
}

std::string NoExtentsFault(const MeasuringChoice& choice) {
    return choice.NoMeasure != 0 && !choice.WCSMeasure
               ? "its extents are 0 x 0 x 0: NoMeasure is on, and no extents are saved on it; expected "
                 "OLDVALUE1 to OLDVALUE3, or NoMeasure 0"
               : "its extents are 0 x 0 x 0, expected the size of a part";
}

/// The letters as they stood on the solid, against what became of them.
void LookAtLetters(const std::string& letters, const PartRow& row, RowTroubles& troubles) {
    const std::string sizes = "; the list has the sizes " + row.length + " x " + row.width + " x " +
                              row.thickness + " and the letters \"" + row.ORIE + "\"";
    if (const auto fault = LettersFault(letters)) {
        troubles.emplace_back(*fault + sizes, false);
        return;
    }
    if (IsBlank(letters)) return;
    const std::array<std::string_view, 3> saved{row.OLDVALUE1, row.OLDVALUE2, row.OLDVALUE3};
    if (const auto fault = SavedExtentsFault(saved))
        troubles.emplace_back(*fault + sizes, false);
    else if (IsBlank(row.ORIE))
        troubles.emplace_back("its letters " + letters + " are dropped, since its extents were " +
                                  row.OLDVALUE1 + " x " + row.OLDVALUE2 + " x " + row.OLDVALUE3 +
                                  " when they were saved and are " + ExtentsText(row.extents.E) + " now" +
                                  sizes,
                              false);
}

/// Whether the letters are a guess.
bool SettleLettersAndSizes(PartRow& row, RowTroubles& troubles) {
    const OrieInput input{row.ORIE, {row.OLDVALUE1, row.OLDVALUE2, row.OLDVALUE3}, row.extents};
    const OrieResult result = UpdateOrie(input);
    const std::string letters = std::exchange(row.ORIE, result.letters);
    row.length = result.length;
    row.width = result.width;
    row.thickness = result.thickness;
    LookAtLetters(letters, row, troubles);
    return WereGuessed(letters, row);
}

/// Why a row was refused, for people. Where it is a quote, a box has said already what the engine saw of a
/// statement that nobody typed.
std::string ReasonOf(const std::string& refusal, const PartRow& row, const AcadEntity& entity) {
    if (refusal.empty()) return {};
    std::string text;
    Skip([&] { text = TextWithQuote(row, entity.Layer()); });
    if (text.empty()) return refusal;
    return "a single quote stands in its " + text + ", and the list can't take one; take the quote out";
}

void AddRow(const AcadEntity& entity, Scan& scan) {
    static const auto texts =
        static_cast<std::size_t>(std::ranges::count(PartColumns(), PartColumnKind::Text, &PartColumn::kind));
    std::string handle;
    const std::optional<std::string> refusal = scan.table.Add([&] {
        handle = entity.Handle();
        const std::string statement = InsertStatement(scan.row, handle, entity.Layer());
        RefusePairedQuotes(statement, texts);
        mDatabase::ExecuteSql(statement);
    });
    DroppedPart part{handle, scan.row.PARTNAME, refusal ? ReasonOf(*refusal, scan.row, entity) : ""};
    if (refusal)
        NoteDroppedPart(std::move(part));
    else
        scan.uncommitted.push_back(std::move(part));
}

/// Rows that no transaction holds have been kept one by one.
void Commit(Scan& scan, bool begun) {
    const bool committed = scan.table.Prepare(
        [] { Needed(TheSession().ScanConnection.get(), "scan connection").CommitTrans(); });
    if (committed || !begun) return;
    for (DroppedPart& part : scan.uncommitted) NoteDroppedPart(std::move(part));
}

/// False when the extents are still those of the part before.
bool Measure(const AcadEntity& entity, Scan& scan) {
    PartRow& row = scan.row;
    bool measured = false;
    scan.Resume([&] {
        measured = ObtainExtents(entity, scan.choice, {row.OLDVALUE1, row.OLDVALUE2, row.OLDVALUE3},
                                 scan.measurer, row.extents);
    });
    return measured;
}

/// False when the user has cancelled the scan at this part.
bool ScanEntity(AcadEntity& entity, Scan& scan, Progress& progress) {
    PartRow& row = scan.row;
    RowTroubles troubles;
    row.OLDVALUE1.clear();
    row.OLDVALUE2.clear();
    row.OLDVALUE3.clear();
    row.ORIE.clear();
    ReadPartData(entity, scan, troubles);
    if (!progress.Next(row.PARTNAME)) return false;
    const bool measured = Measure(entity, scan);
    if (!measured)
        troubles.emplace_back("it could not be measured; the list has the extents " +
                                  ExtentsText(row.extents.E) + ", which are not its own",
                              false);
    bool guessed = false;
    scan.Resume([&] { guessed = SettleLettersAndSizes(row, troubles); });
    if (row.QUANTITY.empty()) row.QUANTITY = "1";
    if (const auto fault = QuantityFault(row.QUANTITY)) troubles.emplace_back(*fault, false);
    if (measured && HasNoExtents(row)) troubles.emplace_back(NoExtentsFault(scan.choice), false);
    AddRow(entity, scan);
    if (troubles.empty()) return true;
    std::string handle;
    Skip([&] { handle = entity.Handle(); });
    if (guessed) NoteGuessedLetters(handle, row.ORIE);
    for (auto& [text, inABox] : troubles) NotePartTrouble({handle, row.PARTNAME, std::move(text), inABox});
    return true;
}

/// False when the user has cancelled the scan.
bool ScanEntities(AcadSelectionSet* set, Scan& scan) {
    int count = 0;
    scan.Resume([&] { count = Needed(set, "prev").Count(); });
    Progress progress({"Reading the parts", count, true});
    for (int index = 0; index < count; ++index) {
        AcadEntity* entity = nullptr;
        if (!scan.Resume([&] { entity = &Needed(set->Item(index), "entity"); })) continue;
        if (!ScanEntity(*entity, scan, progress)) return false;
    }
    return true;
}

/// Some rows of a drawing are no list: the table is left empty, and the form goes.
void GiveUp(Scan& scan) {
    Skip([] { Needed(TheSession().ScanConnection.get(), "scan connection").RollbackTrans(); });
    Skip([] { mDatabase::ExecuteSql("delete from brenvik_data"); });
    scan.screen.form.mousePointer = MousePointer::Normal;
    scan.screen.form.Unload();
}

void BindGrid(Scan& scan) {
    DataControl& data = scan.screen.data;
    GridControl& grid = scan.screen.grid;
    TheSession().GridRecordSource = data.recordSource;
    data.recordSource = ScanSelect;
    scan.Resume([&] { grid.SetDataSource(&data); });
    // Without a record set there is nothing to count either.
    if (!scan.table.Prepare([&] { data.Refresh(); }) && data.Records() == nullptr) return;
    scan.Resume([&] { grid.SetMaxRows(Needed(data.Records(), "record set").RecordCount()); });
}

}  // namespace

void ScanSelection(const ScanScreen& screen) {
    Scan scan(screen);
    // Read ahead of the handler: a switch that holds no number stops the call.
    scan.choice.MeasureNonSolids = StrictIntegerSetting(setting::MeasureNonSolids);
    scan.choice.NoMeasure = StrictIntegerSetting(setting::NoMeasure);
    scan.choice.WCSMeasure = SwitchIsOn(setting::WCSMeasure);

    screen.form.mousePointer = MousePointer::Hourglass;
    AcadSelectionSet* set = TakePreviousSelection(scan);
    bool empty = false;
    scan.Resume([&] { empty = Needed(set, "prev").Count() == 0; });
    if (empty) return;

    ForgetGuessedLetters();
    scan.table.Prepare(mDatabase::OpenScanConnection);
    scan.table.Prepare([] { mDatabase::ExecuteSql("delete from brenvik_data"); });
    const bool begun =
        scan.table.Prepare([] { Needed(TheSession().ScanConnection.get(), "scan connection").BeginTrans(); });
    if (!ScanEntities(set, scan)) return GiveUp(scan);
    Commit(scan, begun);
    BindGrid(scan);
    screen.form.mousePointer = MousePointer::Normal;
}

}  // namespace brenvik::mAutoCAD
