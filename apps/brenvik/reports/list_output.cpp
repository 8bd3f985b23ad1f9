// Table, CSV and JSON of the part table.
#include "reports/list_output.h"

#include <algorithm>

#include "base/hex.h"
#include "base/letter_case.h"
#include "base/noise.h"
#include "base/number_text.h"
#include "base/text.h"
#include "base/utf8.h"
#include "export/record_values.h"
#include "parts/part_table.h"

namespace brenvik::app {

namespace {

/// When a column stands in the table for people.
enum class Shown { Always, WhenFilled, WithoutLetters, Never };

/// By the column's place in the part table: identity, names, sizes and letters come first, then the raw
/// extents; the last three are the extents of the last Apply.
Shown ShownOf(const PartColumn& column) {
    if (column.gridColumn <= 9) return Shown::Always;
    if (column.gridColumn <= 12) return Shown::WithoutLetters;
    return column.gridColumn <= 23 ? Shown::WhenFilled : Shown::Never;
}

bool IsWide(char32_t c) {
    // The blocks that terminals draw two cells wide: Hangul, CJK and their forms, pictographs.
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) || (c >= 0xAC00 && c <= 0xD7A3) ||
           (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE6F) || (c >= 0xFF00 && c <= 0xFF60) ||
           (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F300 && c <= 0x1FAFF) || (c >= 0x20000 && c <= 0x3FFFD);
}

bool IsControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

/// A text fit for one line of a terminal or for JSON, with the cells that it takes there.
struct Cell {
    std::string text;
    std::size_t width = 0;
};

Cell ToCell(std::string_view text) {
    Cell cell;
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character c = Utf8CharacterAt(text, at);
        if (!c.valid || IsControl(c.codePoint))
            cell.text += c.valid ? " " : "\xEF\xBF\xBD";
        else
            cell.text += text.substr(at, c.length);
        cell.width += c.valid && IsWide(c.codePoint) ? 2 : 1;
        at += c.length;
    }
    return cell;
}

bool AnyFilled(const PartList& list, std::size_t column) {
    return std::any_of(list.rows.begin(), list.rows.end(),
                       [column](const auto& row) { return !IsBlank(ValueText(row[column])); });
}

bool AnyWithoutLetters(const PartList& list) {
    for (std::size_t column = 0; column < list.columns.size(); ++column) {
        if (!EqualsIgnoreCase(list.columns[column].name, "bv_lwt")) continue;
        return std::any_of(list.rows.begin(), list.rows.end(),
                           [column](const auto& row) { return IsBlank(ValueText(row[column])); });
    }
    return true;
}

bool StandsInTable(const PartList& list, std::size_t column, bool withoutLetters) {
    const PartColumn* known = FindPartColumn(list.columns[column].name);
    switch (known ? ShownOf(*known) : Shown::Always) {
        case Shown::Always:
            return true;
        case Shown::WhenFilled:
            return AnyFilled(list, column);
        case Shown::WithoutLetters:
            return withoutLetters;
        case Shown::Never:
            return false;
    }
    return true;
}

void WriteTableRow(const std::vector<Cell>& cells, const std::vector<std::size_t>& widths,
                   const std::vector<bool>& rightAligned, std::ostream& out) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::string gap(widths[i] - cells[i].width, ' ');
        if (i > 0) line += "  ";
        line += rightAligned[i] ? gap + cells[i].text : cells[i].text + gap;
    }
    out << TrimRight(line) << '\n';
}

void WriteTable(const PartList& list, std::ostream& out) {
    const bool withoutLetters = AnyWithoutLetters(list);
    std::vector<std::vector<Cell>> lines(list.rows.size() + 1);
    std::vector<std::size_t> widths;
    std::vector<bool> rightAligned;
    for (std::size_t column = 0; column < list.columns.size(); ++column) {
        if (!StandsInTable(list, column, withoutLetters)) continue;
        lines[0].push_back(ToCell(list.columns[column].caption));
        for (std::size_t row = 0; row < list.rows.size(); ++row)
            lines[row + 1].push_back(ToCell(ValueText(list.rows[row][column])));
        std::size_t width = 0;
        for (const auto& line : lines) width = std::max(width, line.back().width);
        widths.push_back(width);
        rightAligned.push_back(list.columns[column].number ||
                               EqualsIgnoreCase(list.columns[column].name, "bv_qty"));
    }
    WriteTableRow(lines[0], widths, rightAligned, out);
    std::vector<Cell> rule;
    for (const std::size_t width : widths) rule.push_back({std::string(width, '-'), width});
    WriteTableRow(rule, widths, rightAligned, out);
    for (std::size_t row = 1; row < lines.size(); ++row) WriteTableRow(lines[row], widths, rightAligned, out);
}

std::string CsvField(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
    return "\"" + ReplaceAll(text, "\"", "\"\"") + "\"";
}

void WriteCsv(const PartList& list, std::ostream& out) {
    std::vector<std::string> fields;
    for (const ListColumn& column : list.columns) fields.push_back(CsvField(column.caption));
    out << Join(fields, ",") << "\r\n";
    for (const auto& row : list.rows) {
        fields.clear();
        for (const FieldValue& value : row) fields.push_back(CsvField(ValueText(value)));
        out << Join(fields, ",") << "\r\n";
    }
}

/// A text as JSON has it, with its quotes.
std::string JsonText(std::string_view text) {
    std::string quoted = "\"";
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character c = Utf8CharacterAt(text, at);
        if (!c.valid)
            quoted += "\\ufffd";
        else if (c.codePoint == '"' || c.codePoint == '\\')
            quoted += {'\\', text[at]};
        else if (c.codePoint < 0x20)
            AppendHex(quoted += "\\u", c.codePoint, 4, SmallHexDigits);
        else
            quoted += text.substr(at, c.length);
        at += c.length;
    }
    return quoted + "\"";
}

std::string JsonValue(const FieldValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return JsonText(*text);
    if (const auto* number = std::get_if<double>(&value)) return NumberToText(NoiseAsZero(*number));
    return "null";
}

void WriteJson(const PartList& list, std::ostream& out) {
    out << '[';
    for (std::size_t row = 0; row < list.rows.size(); ++row) {
        out << (row ? ",\n " : "\n ");
        for (std::size_t column = 0; column < list.columns.size(); ++column)
            out << (column ? ", " : "{") << JsonText(list.columns[column].name) << ": "
                << JsonValue(list.rows[row][column]);
        out << '}';
    }
    out << (list.rows.empty() ? "]\n" : "\n]\n");
}

}  // namespace

void NameDrawing(PartList& list, const std::string& drawing) {
    list.columns.insert(list.columns.begin(), {"drawing", "Drawing", false});
    for (auto& row : list.rows) row.insert(row.begin(), FieldValue(drawing));
}

void JointLists::Add(const std::string& drawing, std::string list) {
    const bool isFirst = !mHasOne;
    if (mFormat == ListFormat::Json) {
        mOut << (isFirst ? "{\n" : ",\n") << JsonText(drawing) << ": "
             << (list.empty() ? "null" : list.substr(0, list.find_last_not_of('\n') + 1));
        mHasOne = true;
        return;
    }
    if (list.empty()) return;
    mHasOne = true;
    constexpr std::string_view lineEnd = "\r\n";
    if (mFormat == ListFormat::Csv)
        mOut << (isFirst ? list : list.substr(list.find(lineEnd) + lineEnd.size()));
    else
        mOut << (isFirst ? "" : "\n") << drawing << '\n' << list;
}

void JointLists::End() {
    if (mFormat == ListFormat::Json) mOut << "\n}\n";
}

PartList EmptyPartList(const std::vector<std::string>& groupedBy) {
    PartList list;
    const auto isListed = [&groupedBy](const PartColumn& column) {
        return groupedBy.empty() || column.column == "bv_qty" ||
               std::find(groupedBy.begin(), groupedBy.end(), column.caption) != groupedBy.end();
    };
    for (const PartColumn& column : PartColumns())
        if (isListed(column))
            list.columns.push_back({std::string(column.column), std::string(column.caption),
                                    column.kind == PartColumnKind::Number});
    return list;
}

PartList ReadPartList(const Recordset& records) {
    PartList list;
    for (int field = 0; field < records.FieldCount(); ++field) {
        std::string name = records.FieldName(field);
        const PartColumn* known = FindPartColumn(name);
        std::string caption = known ? std::string(known->caption) : name;
        list.columns.push_back(
            {std::move(name), std::move(caption), known && known->kind == PartColumnKind::Number});
    }
    for (int record = 0; record < records.RecordCount(); ++record) {
        auto& row = list.rows.emplace_back();
        for (int field = 0; field < records.FieldCount(); ++field)
            row.push_back(records.ValueAt(record, field));
    }
    return list;
}

void WritePartList(const PartList& list, ListFormat format, std::ostream& out) {
    switch (format) {
        case ListFormat::Table:
            return WriteTable(list, out);
        case ListFormat::Csv:
            return WriteCsv(list, out);
        case ListFormat::Json:
            return WriteJson(list, out);
    }
}

}  // namespace brenvik::app
