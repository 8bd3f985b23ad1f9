// The statements that the fake knows: emptying the table, adding a row, copying a value, and selecting.
#include "core/fakes/fake_database.h"

#include <algorithm>
#include <functional>
#include <regex>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/text.h"
#include "parts/part_table.h"

namespace brenvik::fakes {

namespace {

Failure SyntaxError(std::string_view statement) {
    return Failure(-2147217900, "FakeDatabase", "Syntax error in the statement", std::string(statement));
}

int ColumnPlace(std::string_view name) {
    const PartColumn* column = FindPartColumn(name);
    return column == nullptr ? -1 : column->gridColumn - 1;
}

/// The values of an INSERT: quoted texts and numbers, parted by commas.
std::vector<FieldValue> ParseValues(std::string_view statement, std::string_view values) {
    std::vector<FieldValue> parsed;
    while (!values.empty()) {
        values.remove_prefix(std::min(values.find_first_not_of(' '), values.size()));
        if (values.starts_with('\'')) {
            const auto end = values.find('\'', 1);
            if (end == std::string_view::npos) throw SyntaxError(statement);
            parsed.emplace_back(std::string(values.substr(1, end - 1)));
            values.remove_prefix(end + 1);
        } else {
            const auto end = std::min(values.find(','), values.size());
            if (!IsNumeric(values.substr(0, end))) throw SyntaxError(statement);
            parsed.emplace_back(StrictNumber(values.substr(0, end)));
            values.remove_prefix(end);
        }
        values.remove_prefix(std::min(values.find_first_not_of(' '), values.size()));
        if (values.empty()) break;
        if (!values.starts_with(',')) throw SyntaxError(statement);
        values.remove_prefix(1);
    }
    return parsed;
}

Row ParseInsert(std::string_view statement) {
    const auto open = statement.find('('), close = statement.find(')');
    const auto values = statement.find(" values (");
    if (values == std::string_view::npos || !statement.ends_with(')')) throw SyntaxError(statement);
    const std::vector<std::string> columns = Split(statement.substr(open + 1, close - open - 1), ',');
    const std::vector<FieldValue> parsed =
        ParseValues(statement, statement.substr(values + 9, statement.size() - values - 10));
    if (parsed.size() != columns.size()) throw SyntaxError(statement);
    Row row(PartColumns().size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int place = ColumnPlace(Trim(columns[i]));
        if (place < 0) throw SyntaxError(statement);
        row[static_cast<std::size_t>(place)] = parsed[i];
    }
    return row;
}

bool IsBlankValue(const FieldValue& value) {
    return std::holds_alternative<std::monostate>(value) || value == FieldValue(std::string());
}

/// One condition: "column = 'text'", or the test for blank cells in either of its spacings.
using Condition = std::function<bool(const Row&)>;
Condition ParseCondition(std::string_view statement, const std::string& text) {
    const auto column = [&](const std::string& name) {
        const int place = ColumnPlace(name);
        if (place < 0) throw SyntaxError(statement);
        return static_cast<std::size_t>(place);
    };
    std::smatch found;
    static const std::regex blank(R"(\(isnull\((\w+)\) {1,2}or {1,2}(\w+) = ''\))");
    if (std::regex_match(text, found, blank)) {
        const std::size_t first = column(found[1]), second = column(found[2]);
        return [=](const Row& row) { return IsBlankValue(row[first]) || IsBlankValue(row[second]); };
    }
    static const std::regex equal(R"((\w+) = '([^']*)')");
    if (!std::regex_match(text, found, equal)) throw SyntaxError(statement);
    const std::size_t place = column(found[1]);
    const FieldValue wanted = found[2].str();
    return [=](const Row& row) { return row[place] == wanted; };
}

/// Everything that stands behind "where", conditions parted by " AND "; all rows for a blank text.
Condition ParseWhere(std::string_view statement, std::string_view where) {
    std::vector<Condition> conditions;
    std::string rest = Trim(where);
    if (rest.empty()) return [](const Row&) { return true; };
    if (!StartsWithIgnoreCase(rest, "where ")) throw SyntaxError(statement);
    rest = Trim(rest.substr(6));
    for (auto at = rest.find(" AND "); at != std::string::npos; at = rest.find(" AND ")) {
        conditions.push_back(ParseCondition(statement, Trim(rest.substr(0, at))));
        rest = rest.substr(at + 5);
    }
    conditions.push_back(ParseCondition(statement, Trim(rest)));
    return [conditions](const Row& row) {
        return std::all_of(conditions.begin(), conditions.end(),
                           [&](const Condition& condition) { return condition(row); });
    };
}

void RunUpdate(std::string_view statement, Rows& rows) {
    std::smatch found;
    static const std::regex update(R"(update brenvik_data set (\w+) = '([^']*)' (.*))");
    const std::string text(statement);
    if (!std::regex_match(text, found, update)) throw SyntaxError(statement);
    const int place = ColumnPlace(found[1].str());
    if (place < 0) throw SyntaxError(statement);
    const Condition applies = ParseWhere(statement, found[3].str());
    for (Row& row : rows)
        if (applies(row)) row[static_cast<std::size_t>(place)] = found[2].str();
}

/// The places of the rows that a select of all columns gives, filtered and sorted by one column.
std::vector<std::size_t> SelectedRows(std::string_view statement, const Rows& rows) {
    std::string_view rest;
    for (const std::string_view head : {ScanSelect, std::string_view(FullSelect())})
        if (statement.starts_with(head)) rest = statement.substr(head.size());
    const auto order = rest.find(" order by ");
    const Condition applies = ParseWhere(statement, rest.substr(0, order));
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < rows.size(); ++place)
        if (applies(rows[place])) places.push_back(place);
    if (order == std::string_view::npos) return places;
    const HeadAndTail field = SplitAtFirst(rest.substr(order + 10), ' ');
    const auto column = static_cast<std::size_t>(ColumnPlace(field.head));
    std::stable_sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
        return field.tail == "Desc" ? rows[b][column] < rows[a][column] : rows[a][column] < rows[b][column];
    });
    return places;
}

/// What a connection's transaction has not committed yet.
using Pending = std::optional<Rows>;

class FakeRecordset : public Recordset {
  public:
    FakeRecordset(FakeDatabase& owner, std::string databasePath, std::shared_ptr<Pending> openTransaction,
                  std::vector<std::size_t> selectedRows, bool isUpdatable)
        : database(owner),
          path(std::move(databasePath)),
          pending(std::move(openTransaction)),
          places(std::move(selectedRows)),
          updatable(isUpdatable) {
        for (const std::size_t selected : places) rows.push_back(owner.databases.at(path).at(selected));
        ++database.openRecordsets;
    }
    ~FakeRecordset() override { --database.openRecordsets; }
    bool Eof() const override { return place >= RecordCount(); }
    void MoveNext() override { ++place; }
    int RecordCount() const override { return static_cast<int>(rows.size()); }
    int FieldCount() const override { return static_cast<int>(PartColumns().size()); }
    std::string FieldName(int index) const override {
        return std::string(PartColumns()[static_cast<std::size_t>(index)].column);
    }
    FieldValue Value(std::string_view fieldName) const override { return Value(ColumnPlace(fieldName)); }
    FieldValue Value(int index) const override { return ValueAt(place, index); }
    FieldValue ValueAt(int record, int index) const override {
        return rows.at(static_cast<std::size_t>(record)).at(static_cast<std::size_t>(index));
    }
    bool Updatable() const override { return updatable; }
    void Update(int record, int index, const FieldValue& value) override {
        database.Note("UPDATE " + FieldName(index));
        const auto* text = std::get_if<std::string>(&value);
        if (text != nullptr && CharacterCount(*text) > 255)
            throw Failure(-2147217887, "FakeDatabase", "The field is too small for the text");
        const auto row = static_cast<std::size_t>(record), field = static_cast<std::size_t>(index);
        rows.at(row).at(field) = value;
        Rows& table = *pending ? **pending : database.databases.at(path);
        table.at(places.at(row)).at(field) = value;
    }
    void Close() override {}

  private:
    FakeDatabase& database;
    std::string path;
    std::shared_ptr<Pending> pending;
    std::vector<std::size_t> places;
    Rows rows;
    bool updatable;
    int place = 0;
};

class FakeConnection : public Connection {
  public:
    explicit FakeConnection(FakeDatabase& owner) : database(owner) {}
    ~FakeConnection() override { CountClosed(); }
    void Open(std::string_view connectionString) override {
        if (state == ConnectionState::Open) throw Failure(3705, "FakeDatabase", "The connection is open");
        database.connectionStrings.emplace_back(connectionString);
        const auto source = connectionString.find("Data Source=") + 12;
        path = FoldLower(connectionString.substr(source, connectionString.find(';', source) - source));
        if (!database.databases.contains(path))
            throw Failure(-2147467259, "FakeDatabase", "Could not find file", path);
        state = ConnectionState::Open;
        ++database.openConnections;
        ++database.openByPath[path];
    }
    void Close() override {
        CountClosed();
        state = ConnectionState::Closed;
        pending->reset();
    }
    ConnectionState State() const override { return state; }
    void Execute(std::string_view sql) override {
        database.Note(sql);
        if (state != ConnectionState::Open) throw Failure(3704, "FakeDatabase", "The connection is closed");
        Rows& rows = *pending ? **pending : database.databases.at(path);
        if (sql == "delete from brenvik_data") return rows.clear();
        if (sql == "select 1=1") return;
        if (sql.starts_with("update ")) return RunUpdate(sql, rows);
        if (sql.starts_with("INSERT INTO brenvik_data")) return rows.push_back(ParseInsert(sql));
        throw SyntaxError(sql);
    }
    std::unique_ptr<Recordset> OpenRecordset(std::string_view sql) override {
        database.Note(sql);
        const bool grouped = StartsWithIgnoreCase(sql, "select count");
        if (!grouped && !sql.starts_with(ScanSelect) && !sql.starts_with(FullSelect()))
            throw SyntaxError(sql);
        const Rows& rows = database.databases.at(path);
        return std::make_unique<FakeRecordset>(database, path, pending,
                                               SelectedRows(grouped ? ScanSelect : sql, rows), !grouped);
    }
    void BeginTrans() override {
        database.Note("BEGIN");
        if (state != ConnectionState::Open) throw Failure(3704, "FakeDatabase", "The connection is closed");
        if (*pending) throw Failure(-2147168237, "FakeDatabase", "A transaction has begun already");
        *pending = database.databases.at(path);
    }
    void CommitTrans() override {
        database.Note("COMMIT");
        if (state != ConnectionState::Open) throw Failure(3704, "FakeDatabase", "The connection is closed");
        if (!*pending) throw Failure(-2147168242, "FakeDatabase", "No transaction has begun");
        database.databases.at(path) = **pending;
        pending->reset();
    }
    void RollbackTrans() override { pending->reset(); }

  private:
    void CountClosed() {
        if (state != ConnectionState::Open) return;
        --database.openConnections;
        --database.openByPath[path];
    }

    FakeDatabase& database;
    std::string path;
    ConnectionState state = ConnectionState::Closed;
    std::shared_ptr<Pending> pending = std::make_shared<Pending>();
};

}  // namespace

std::unique_ptr<Connection> FakeDatabase::CreateConnection() {
    return std::make_unique<FakeConnection>(*this);
}

void FakeDatabase::CreateBlankPartDatabase(std::string_view path) { databases[FoldLower(path)] = {}; }

void FakeDatabase::Note(std::string_view statement) {
    statements.emplace_back(statement);
    for (const auto& [text, failure] : failures)
        if (statement.find(text) != std::string_view::npos) throw failure;
}

int FakeDatabase::CountStatements(std::string_view text) const {
    int count = 0;
    for (const std::string& statement : statements)
        if (statement.find(text) != std::string::npos) ++count;
    return count;
}

FieldValue FakeDatabase::Cell(std::string_view path, int row, std::string_view column) const {
    return databases.at(FoldLower(path))
        .at(static_cast<std::size_t>(row))
        .at(static_cast<std::size_t>(ColumnPlace(column)));
}

std::string FakeDatabase::Text(std::string_view path, int row, std::string_view column) const {
    return std::get<std::string>(Cell(path, row, column));
}

double FakeDatabase::Number(std::string_view path, int row, std::string_view column) const {
    return std::get<double>(Cell(path, row, column));
}

}  // namespace brenvik::fakes
