// The hand-over to a CNC run: both lists are made in memory and written as whole files.
#include "export/cnc_hand_off.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "base/skip.h"
#include "base/text.h"
#include "export/adjustment_file.h"
#include "export/adjustments.h"
#include "export/cnc_group_check.h"
#include "export/export_cells.h"
#include "export/export_troubles.h"
#include "export/frm_export.h"
#include "forms/form_guards.h"
#include "grid/frm_main.h"
#include "parts/cnc_list.h"
#include "parts/mdatabase.h"
#include "parts/part_table.h"
#include "parts/part_trouble.h"
#include "query/frm_new_sort.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "session/text_files.h"

namespace brenvik {

namespace {

constexpr std::string_view NothingToGroupBy =
    "The columns of this export have nothing behind the quantity, so different parts would count as one. "
    "Choose a profile with more columns than ID and QTY. This export is now aborting.";

/// The run takes single solids, so a grouped list is of no use to it.
void TurnGroupingOff() {
    auto& sort = StateOf<frmNewSort>();
    sort.PressByCode("Command3");
    sort.PressByCode("btnOK");
}

struct ListPlan {
    LineMaker maker;
    AdjustmentRules rules;
    bool groups = true;  ///< False where no column stands behind the quantity.
};

/// Empty, after a message, if the adjustments can't be applied or a column is unknown: parts that differ only
/// in that column would be cut as one.
std::optional<ListPlan> PlanOf(const frmExport& form, std::string_view adjustmentPath) {
    const bool fractions = form.chkReduce.Value() == 1;
    if (form.chkChooseCSV.Value() != 1)
        return ListPlan{LineMaker(Split(CncColumns, ','), ColumnSource::Standard, fractions), {}, true};
    AdjustmentSource adjustments = ReadExportAdjustments(adjustmentPath);
    if (!adjustments.usable) return std::nullopt;
    const auto& columns = form.lstExportColumns.Items();
    constexpr std::size_t idAndQuantity = 2;
    LineMaker maker(columns, ColumnSource::Profile, fractions);
    form.NoteProfileTroubles(maker.UnknownNames());
    if (!maker.UnknownNames().empty()) {
        ShowMessage("Parts are told apart by the columns of this export, and these are none of the list's: " +
                    Join(maker.UnknownNames(), ", ") + ". This export is now aborting.");
        return std::nullopt;
    }
    return ListPlan{std::move(maker), std::move(adjustments.rules), columns.size() > idAndQuantity};
}

/// All rows of the part table: what a filter hides goes out too.
std::vector<std::string> LinesOfAllParts(const ListPlan& plan) {
    std::vector<std::string> lines;
    std::unique_ptr<Recordset> records;
    ResumeNoted(ListNotRead, [&] { mDatabase::OpenRecordset(FullSelect(), records); });
    if (records == nullptr) return lines;
    ForEachRow(*records, [&] { lines.push_back(plan.maker.Line(*records, plan.rules.For(*records))); });
    Skip([&] { mDatabase::CloseRecordset(records); });
    return lines;
}

std::string TextOfLines(std::span<const std::string> lines, std::string_view lineEnd) {
    std::string text;
    for (const std::string& line : lines) {
        text += line;
        text += lineEnd;
    }
    return text;
}

/// Replaces a file; what stood there is gone even if the new one can't be written.
void ReplaceFile(const std::string& path, const std::string& content) {
    FilesPort& files = *ThePlatform().files;
    Skip([&] {
        if (files.FileExists(path)) files.RemoveFile(path);
    });
    files.WriteFile(path, content);
}

/// False when the list of an earlier run stands there still: the run would cut other parts than the user
/// sees.
bool WriteRunList(const std::string& path, const std::string& content) {
    const std::optional<Failure> failure = Attempt([&] { ReplaceFile(path, content); });
    if (!failure) return true;
    bool oldOneStands = true;
    Skip([&] { oldOneStands = ThePlatform().files->FileExists(path); });
    if (oldOneStands) ShowFailureWithDetail(*failure);
    return !oldOneStands;
}

/// Reports the parts that no group takes, since nothing stands behind their quantity. False if none is left
/// to be cut.
bool TellPartsWithoutKey(const ListPlan& plan, std::span<const std::string> lines) {
    if (!plan.groups && !lines.empty()) {
        ShowMessage(std::string(NothingToGroupBy));
        return false;
    }
    std::vector<std::string> ids;
    for (const std::string& line : lines)
        if (!StandsInAGroup(line)) ids.push_back(IdOf(line));
    if (ids.empty()) return true;
    ShowMessage(
        "Nothing stands behind the quantity in the lines of these parts, so this run leaves them out: " +
        Join(ids, ", "));
    return ids.size() < lines.size();
}

/// Whoever has filtered the list may not expect the others to be cut.
void NoteHiddenRows(std::size_t handedOver) {
    const auto shown = static_cast<std::size_t>(GridFormInstance().fpSpread1.MaxRows());
    if (IsBlank(TheSession().WhereClause) || shown >= handedOver) return;
    const std::size_t hidden = handedOver - shown;
    NotePartTrouble(
        {"", "",
         std::to_string(hidden) +
             (hidden == 1 ? " part that the filter hides goes" : " parts that the filter hides go") +
             " to the CNC run too, which takes all parts of the list; to leave them out, select the others "
             "in the drawing",
         false, true});
}

}  // namespace

void HandOffToCnc(frmExport& form, int exportTarget) {
    TurnGroupingOff();
    const std::optional<std::string> adjustmentPath = TakeExportAdjustmentPath();
    if (!adjustmentPath) return;
    {
        const HourglassShown hourglass(form);
        const std::optional<ListPlan> plan = PlanOf(form, *adjustmentPath);
        if (!plan) return;
        const std::string_view lineEnd = ThePlatform().files->LineEnd();
        const std::vector<std::string> lines = LinesOfAllParts(*plan);
        if (!TellPartsWithoutKey(*plan, lines)) return;
        // The run doesn't read it, but people do.
        ResumeNoted("the list of this export was not written to " + form.ExportPath,
                    [&] { ReplaceFile(form.ExportPath, TextOfLines(lines, lineEnd)); });
        if (!WriteRunList(HandOverFolder() + std::string(CncListFile), GroupedCncList(lines, lineEnd)))
            return;
        NoteHiddenRows(lines.size());
        LookAtCncGroups(CncGroupsOf(lines));
    }
    TheSession().ExportTarget = exportTarget;
    form.exportEnded = true;
    form.Unload();
}

}  // namespace brenvik
