// Connections to Access files, statements for their tables, and the run.
#include "export/access_export.h"

#include <cmath>
#include <map>
#include <optional>

#include "base/letter_case.h"
#include "base/noise.h"
#include "base/number_text.h"
#include "base/skip.h"
#include "base/text.h"
#include "export/adjustment_file.h"
#include "export/export_cells.h"
#include "export/export_troubles.h"
#include "export/frm_export.h"
#include "export/frm_login.h"
#include "export/record_values.h"
#include "forms/form_guards.h"
#include "parts/mdatabase.h"
#include "parts/part_table.h"
#include "parts/statement_quotes.h"
#include "session/message.h"
#include "session/output_rule.h"
#include "session/progress.h"
#include "session/session.h"

namespace brenvik {

namespace {

/// The driver's whole text for a wrong password; any other text is another failure.
constexpr std::string_view InvalidPassword =
    "[Microsoft][ODBC Microsoft Access Driver] Not a valid password.";

void OpenConnection(ExportConnection& connection, const std::string& connectionString) {
    connection.SetCursorLocation(CursorLocation::Client);
    connection.Open(connectionString);
}

/// A semicolon would end the value, and the database be looked for under the half of its name. So would a
/// brace at its head. Only such a value gets braces, since not every driver takes them off.
std::string AttributeValue(std::string_view value) {
    if (value.find(';') == std::string_view::npos && !value.starts_with('{')) return std::string(value);
    return "{" + ReplaceAll(std::string(value), "}", "}}") + "}";
}

void ShowDescription(const Failure& failure) { ShowMessage(failure.description()); }

std::string ValueForTarget(const AccessMapping& mapping, const Recordset& records,
                           const SizeAdjustment& adjustment, bool fractions) {
    const auto number = [&records](std::string_view field) { return ValueNumber(records.Value(field)); };
    const std::string& caption = mapping.caption;
    if (caption == ThicknessMaterialImperial || caption == ThicknessMaterialMetric)
        return ThicknessMaterialText(caption, NoiseAsZero(number("bv_thickness") + adjustment.thickness),
                                     ValueText(records.Value("bv_material")));
    if (caption == "Length") return SizeText(NoiseAsZero(number("bv_length") + adjustment.length), fractions);
    if (caption == "Width") return SizeText(NoiseAsZero(number("bv_width") + adjustment.width), fractions);
    if (caption == "Thickness")
        return SizeText(NoiseAsZero(number("bv_thickness") + adjustment.thickness), fractions);
    return ValueText(records.Value(mapping.field));
}

/// What a list with these columns would have in its cells.
LineMaker CellsOf(std::span<const AccessMapping> mappings, bool fractions) {
    std::vector<std::string> captions;
    for (const AccessMapping& mapping : mappings) captions.push_back(mapping.caption);
    return LineMaker(captions, ColumnSource::Standard, fractions);
}

std::vector<AccessMapping> MappingsOf(const ListViewControl& view) {
    std::vector<AccessMapping> mappings;
    for (const ListViewControl::Row& row : view.rows)
        mappings.push_back({row.text, SplitAtFirst(row.tag, ',').head,
                            row.subItems.empty() ? std::string() : row.subItems.front()});
    return mappings;
}

/// How many rows a table has; null if the database doesn't say.
std::optional<double> RowsOf(ExportConnection& connection, const std::string& table) {
    std::optional<double> rows;
    Skip([&] {
        const auto counted = connection.OpenRecordset("SELECT COUNT(*) FROM " + table);
        rows = ValueNumber(counted->Value(counted->FieldName(0)));
    });
    return rows;
}

/// A table may put a row in the place of another one, as by a rule for equal keys, and say that all is well.
void NoteReplacedRows(const std::string& table, std::optional<double> before, std::optional<double> after,
                      int taken) {
    if (!before || !after || *after >= *before + taken) return;
    const double more = *after - *before;
    NoteExportTrouble(
        "the table " + table + " took " + std::to_string(taken) + " rows and has " +
        NumberToText(std::abs(more)) + (more < 0 ? " fewer" : " more") +
        " than before; expected as many more: rows have taken the place of others, or are gone");
}

/// What to say where two columns go into one field: a database keeps one of the values, and says nothing.
std::optional<std::string> TargetOfTwo(std::span<const AccessMapping> mappings) {
    std::map<std::string, std::string, LessIgnoreCase> captions;
    for (const AccessMapping& mapping : mappings) {
        const auto [first, isNew] = captions.try_emplace(mapping.target, mapping.caption);
        if (!isNew)
            return "The columns " + first->second + " and " + mapping.caption + " both go into the field " +
                   mapping.target + ". Choose a field of its own for each. This export is now aborting.";
    }
    return std::nullopt;
}

/// A new connection to a database that isn't ours. Fails with 429 where the platform has none.
std::unique_ptr<ExportConnection> NewExportConnection() {
    ExportDatabasePort* databases = ThePlatform().exportDatabases;
    if (databases == nullptr)
        throw Failure(failure_number::CannotCreateObject, std::string(OwnSource),
                      "This build can't reach other databases: it has no ODBC");
    return databases->CreateConnection();
}

}  // namespace

std::string AccessConnectionString(std::string_view path, std::string_view password) {
    return "Driver={Microsoft Access Driver (*.mdb)};Dbq=" + AttributeValue(path) +
           ";Uid=Admin;Pwd=" + AttributeValue(password) + ";";
}

std::unique_ptr<ExportConnection> ConnectToAccess(std::string_view path, DatabaseLogin& login) {
    for (;;) {
        std::unique_ptr<ExportConnection> connection;
        const std::optional<Failure> failure = Attempt([&] {
            connection = NewExportConnection();
            OpenConnection(*connection, AccessConnectionString(path, login.DbPassword));
        });
        if (!failure) return connection;
        std::optional<DatabaseLogin> entered;
        if (failure->description() == InvalidPassword) entered = AskForLogin(login);
        if (!entered) {
            ShowDescription(*failure);
            // Drivers say what is wrong, but not with which file.
            NoteExportTrouble("the database " + std::string(path) +
                              " can't be opened: " + failure->description());
            return nullptr;
        }
        login = *entered;
    }
}

bool IsOfferedTable(std::string_view name) {
    const std::string upper = FoldUpper(name);
    return Left(upper, 4) != "MSYS" && Left(upper, 11) != "SWITCHBOARD";
}

std::string FieldsStatement(std::string_view table) {
    return DropRight(FullSelect(), PartTableName.size()) + std::string(table);
}

std::string InsertStatement(std::string_view table, std::span<const AccessMapping> mappings,
                            const Recordset& records, const SizeAdjustment& adjustment, bool fractions) {
    std::string columns = "(";
    for (const AccessMapping& mapping : mappings) columns += mapping.target + ",";
    columns = ReplaceAll(columns + ")", ",)", ")");
    std::string values = " VALUES('";
    std::size_t count = 0;
    for (const AccessMapping& mapping : mappings) {
        const bool written =
            Skip([&] { values += ValueForTarget(mapping, records, adjustment, fractions) + "','"; });
        if (written) ++count;
    }
    // The last comma has opened a text that isn't there.
    RefusePairedQuotes(values + "'", count + 1);
    return "INSERT INTO " + std::string(table) + " " + columns + ReplaceAll(values + ")", "',')", "')");
}

void RunAccessExport(frmExport& form) {
    const std::optional<std::string> adjustmentPath = TakeExportAdjustmentPath();
    if (!adjustmentPath) return;
    {
        const HourglassShown hourglass(form);
        if (!ShowAndResume(ShowFailure,
                           [&] { RequireOutputPlace(form.txtExportAccess.Text(), OutputKind::List); }))
            return;
        const std::unique_ptr<ExportConnection> connection =
            ConnectToAccess(form.txtExportAccess.Text(), form.login);
        form.connectFailed = connection == nullptr;
        if (form.connectFailed) return;
        const AdjustmentSource adjustments = ReadExportAdjustments(*adjustmentPath);
        if (!adjustments.usable) return;
        const std::string table = form.cboAccessTable.Text();
        const std::vector<AccessMapping> mappings = MappingsOf(form.lvAccessMap);
        if (const auto twice = TargetOfTwo(mappings)) return ShowMessage(*twice);
        const bool fractions = form.chkReduce.Value() == 1;
        const LineMaker cells = CellsOf(mappings, fractions);
        std::unique_ptr<Recordset> records;
        const std::optional<double> rowsBefore = RowsOf(*connection, table);
        int taken = 0;
        ResumeNoted(ListNotRead, [&] { mDatabase::OpenRecordset(TheSession().CurrentSQL, records); });
        // The rows go into a table of others one by one, so this isn't cancelled.
        Progress progress({"Export", records == nullptr ? 0 : records->RecordCount()});
        const auto insert = [&] {
            progress.Next({});
            const SizeAdjustment adjustment = adjustments.rules.For(*records);
            NoteLostSizes(*records, cells, adjustment);
            NoteOddQuantity(*records);
            connection->Execute(InsertStatement(table, mappings, *records, adjustment, fractions));
            NoteAdjusted(adjustment, *adjustmentPath);
            ++taken;
        };
        if (records != nullptr) NoteRowsLeftOut(*records);
        if (records != nullptr) ForEachRow(*records, [&] { ShowAndResume(ShowDescription, insert); });
        Skip([&] { mDatabase::CloseRecordset(records); });
        NoteReplacedRows(table, rowsBefore, RowsOf(*connection, table), taken);
    }
    ShowMessage("Export Complete!!!", "Done.", MessageIcon::Exclamation);
    form.exportEnded = true;
    form.Unload();
}

void CheckSqlServerConnection(std::string_view server, std::string_view database,
                              const DatabaseLogin& login) {
    const bool reached = Skip([&] {
        const std::unique_ptr<ExportConnection> connection = NewExportConnection();
        connection->Open("Driver={SQL Server}; Server=" + std::string(server) + "; Database=" +
                         std::string(database) + "; UID=" + login.DbUser + "; PWD=" + login.DbPassword);
        connection->OpenRecordset("SELECT * FROM kids_news")->Value("news_desc");
    });
    ShowMessage(reached ? "connection success" : "failed connection");
}

}  // namespace brenvik
