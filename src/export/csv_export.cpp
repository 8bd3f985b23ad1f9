// Columns and statement of a CSV file, and its run.
#include "export/csv_export.h"

#include <memory>
#include <optional>

#include "base/skip.h"
#include "base/text.h"
#include "export/adjustment_file.h"
#include "export/export_troubles.h"
#include "export/frm_export.h"
#include "export/record_values.h"
#include "forms/form_guards.h"
#include "grid/column_relation.h"
#include "parts/grouped_quantities.h"
#include "parts/mdatabase.h"
#include "parts/part_table.h"
#include "parts/part_trouble.h"
#include "session/message.h"
#include "session/output_rule.h"
#include "session/ports/dialog_port.h"
#include "session/ports/files_port.h"
#include "session/progress.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr std::string_view AllColumns =
    "PN,QTY,Part Name,Sub Assembly,Width,Length,Thickness,Material,Notes,User Data1,User "
    "Data2,Price,EB1,EB2,EB3,EB4,Face,Layer,Thickness-Material (Imperial),Thickness-Material (Metric)";

void NoteShiftingCells(const Recordset& records, const LineMaker& maker, const SizeAdjustment& adjustment) {
    for (const LineMaker::ShiftingCell& cell : maker.ShiftingCells(records, adjustment))
        NotePartTrouble({TextIfThere(records, "bv_id"), TextIfThere(records, "bv_partname"),
                         "it moves the columns of the file, where nothing is quoted: a text without commas, "
                         "quotes and line breaks was expected under " +
                             cell.column + ", found \"" + cell.text + "\""});
}

/// The columns of a list without a profile, parted by commas: all of them, or, while the list is grouped, the
/// quantity and the columns of the group.
std::string StandardColumnList() {
    const std::string& groupFields = TheSession().GroupFields;
    if (groupFields.empty()) return std::string(AllColumns);
    std::vector<std::string> captions;
    for (const std::string& field : Split(groupFields, ','))
        captions.push_back(CaptionForColumn(Trim(field)));
    return "QTY," + Join(captions, ",");
}

/// The header of a profile's columns: their names without vertical bars and blanks around them.
std::string HeaderOfColumns(const std::vector<std::string>& columnNames) {
    std::vector<std::string> shown;
    shown.reserve(columnNames.size());
    for (const std::string& name : columnNames) shown.push_back(Trim(ReplaceAll(name, "|", "")));
    return Join(shown, ",");
}

/// What a run takes from the dialog, and what it makes of it.
struct ListPlan {
    std::string adjustmentPath;
    std::string header;
    LineMaker maker;
    AdjustmentRules rules;
};

/// Empty, after a message, if the adjustments can't be applied.
std::optional<ListPlan> PlanOf(const frmExport& form, std::string_view adjustmentPath) {
    const bool fractions = form.chkReduce.Value() == 1;
    if (form.chkChooseCSV.Value() != 1) {
        const std::string columns = StandardColumnList();
        return ListPlan{{}, columns, LineMaker(Split(columns, ','), ColumnSource::Standard, fractions), {}};
    }
    AdjustmentSource adjustments = ReadExportAdjustments(adjustmentPath);
    if (!adjustments.usable) return std::nullopt;
    const std::vector<std::string>& names = form.lstExportColumns.Items();
    LineMaker maker(names, ColumnSource::Profile, fractions);
    form.NoteProfileTroubles(maker.UnknownNames());
    return ListPlan{std::string(adjustmentPath), HeaderOfColumns(names), std::move(maker),
                    std::move(adjustments.rules)};
}

/// A line for each record, every line with its end; cells that move their line's columns are noted. A failure
/// of the record set ends the lines. Null if the user has cancelled the export.
std::optional<std::string> LinesOfRecords(Recordset& records, const ListPlan& plan,
                                          std::string_view lineEnd) {
    const LineMaker& maker = plan.maker;
    std::string lines;
    bool cancelled = false;
    Progress progress({"Export", records.RecordCount(), true});
    ForEachRow(records, [&] {
        cancelled = cancelled || !progress.Next({});
        if (cancelled) return;
        const SizeAdjustment adjustment = plan.rules.For(records);
        NoteAdjusted(adjustment, plan.adjustmentPath);
        lines += maker.Line(records, adjustment);
        lines += lineEnd;
        NoteShiftingCells(records, maker, adjustment);
        NoteLostSizes(records, maker, adjustment);
        NoteOddQuantity(records);
    });
    if (cancelled) return std::nullopt;
    return lines;
}

/// The whole file, or null when the user has cancelled the export. A statement that the engine refuses
/// leaves the header alone.
std::optional<std::string> FileText(const ListPlan& plan) {
    const std::string_view lineEnd = ThePlatform().files->LineEnd();
    std::string text = plan.header;
    text += lineEnd;
    std::unique_ptr<Recordset> records;
    ResumeNoted(ListNotRead, [&] { mDatabase::OpenRecordset(ExportStatement(), records); });
    if (records == nullptr) return text;
    NoteRowsLeftOut(*records);
    NoteGroupedQuantities();
    const std::optional<std::string> lines = LinesOfRecords(*records, plan, lineEnd);
    Skip([&] { mDatabase::CloseRecordset(records); });
    if (!lines) return std::nullopt;
    return text + *lines;
}

/// A list never overwrites a file that it is made from.
void RequireListPlace(const std::string& path, const std::string& adjustmentPath) {
    RequireOutputPlace(path, OutputKind::List);
    FilesPort& files = *ThePlatform().files;
    if (files.PlaceOf(path) == files.PlaceOf(adjustmentPath))
        throw Failure(
            failure_number::PathAccess, std::string(OwnSource),
            path +
                ": expected a file of its own for the output, found the adjustment file; nothing was "
                "written");
}

bool MayWrite(const std::string& path) {
    bool exists = false;
    Skip([&] { exists = ThePlatform().files->FileExists(path); });
    if (!exists) return true;
    return ThePlatform().dialogs->Show({"This file already exists. Do you want to overwrite it?",
                                        "Overwrite File", MessageIcon::Question, MessageButtons::YesNo}) ==
           MessageAnswer::Yes;
}

}  // namespace

std::string ExportStatement() {
    const Session& session = TheSession();
    if (!session.GroupFields.empty()) return session.CurrentSQL;
    std::string statement = FullSelect();
    if (!session.WhereClause.empty()) statement += " " + session.WhereClause;
    if (!session.SortClause.empty()) statement += " order by " + session.SortClause;
    return statement;
}

void RunCsvExport(frmExport& form) {
    const std::optional<std::string> adjustmentPath = TakeExportAdjustmentPath();
    if (!adjustmentPath) return;
    const std::string path = form.txtSaveCSVFile.Text();
    const bool placed = ShowAndResume(ShowFailure, [&] { RequireListPlace(path, *adjustmentPath); });
    if (!placed || !MayWrite(path)) return;
    {
        const HourglassShown hourglass(form);
        const std::optional<ListPlan> plan = PlanOf(form, *adjustmentPath);
        if (!plan) return;
        const std::optional<std::string> text = FileText(*plan);
        // Whoever cancels finds the dialog open still.
        if (!text) return;
        if (!ShowAndResume(ShowFailureWithDetail, [&] { ThePlatform().files->WriteFile(path, *text); }))
            return;
    }
    ShowMessage(ListExportComplete, "Done.");
    form.exportEnded = true;
    form.Unload();
}

}  // namespace brenvik
