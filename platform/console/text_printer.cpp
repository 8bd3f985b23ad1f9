// Lining up the cells, and writing the sheet.
#include "console/text_printer.h"

#include <algorithm>
#include <fstream>
#include <system_error>
#include <vector>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "forms/grid_control.h"

namespace brenvik {

namespace {

struct TextColumn {
    std::vector<std::string> cells;  ///< The caption first, if captions are printed.
    std::size_t width = 0;           ///< In characters.
    bool numbers = true;
};

std::string OneLine(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20) c = ' ';
    return text;
}

TextColumn ColumnAsText(const GridControl& grid, int column, bool withCaption) {
    TextColumn text;
    bool anyNumber = false;
    for (int row = withCaption ? 0 : 1; row <= grid.MaxRows(); ++row) {
        const std::string cell = OneLine(grid.CellText(column, row));
        text.width = std::max(text.width, CharacterCount(cell));
        if (row > 0 && !IsBlank(cell)) {
            text.numbers = text.numbers && IsNumeric(cell);
            anyNumber = true;
        }
        text.cells.push_back(cell);
    }
    text.numbers = text.numbers && anyNumber;
    return text;
}

std::string LinedUp(const TextColumn& column, std::size_t place) {
    const std::string& cell = column.cells[place];
    const std::string gap(column.width - CharacterCount(cell), ' ');
    return column.numbers ? gap + cell : cell + gap;
}

std::string LineOf(const std::vector<TextColumn>& columns, std::size_t place, std::string_view between) {
    std::string line;
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (column > 0) line += between;
        line += LinedUp(columns[column], place);
    }
    return TrimRight(line) + "\n";
}

std::string RuleOf(const std::vector<TextColumn>& columns, std::string_view between) {
    std::string line;
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (column > 0) line += between;
        line += std::string(columns[column].width, '-');
    }
    return line + "\n";
}

/// As printers have it that are out of paper or out of reach.
Failure PrinterError() { return Failure(482, std::string(OwnSource), "Printer error"); }

}  // namespace

std::string GridAsText(const GridControl& grid, const PrintJob& job) {
    std::vector<TextColumn> columns;
    if (job.rowHeaders) {
        TextColumn numbers;
        if (job.columnHeaders) numbers.cells.emplace_back();
        for (int row = 1; row <= grid.MaxRows(); ++row) numbers.cells.push_back(std::to_string(row));
        numbers.width = std::to_string(grid.MaxRows()).size();
        columns.push_back(std::move(numbers));
    }
    for (int column = 1; column <= grid.MaxCols(); ++column)
        if (!grid.Column(column).hidden) columns.push_back(ColumnAsText(grid, column, job.columnHeaders));

    std::string text;
    if (!job.header.empty()) text += OneLine(job.header) + "\n\n";
    const std::size_t lines = columns.empty() ? 0 : columns.front().cells.size();
    for (std::size_t line = 0; line < lines; ++line) {
        text += LineOf(columns, line, job.gridLines ? " | " : "  ");
        if (line == 0 && job.columnHeaders) text += RuleOf(columns, job.gridLines ? "-+-" : "  ");
    }
    if (!job.footer.empty()) text += "\n" + OneLine(job.footer) + "\n";
    return text;
}

void TextPrinter::PrintGrid(const GridControl& grid, const PrintJob& job) {
    const std::string text = GridAsText(grid, job);
    if (mOutput != nullptr) {
        *mOutput << text << std::flush;
        if (!*mOutput) throw PrinterError();
        return;
    }
    // Beside the file first, so that a full disk doesn't cost the list that was printed before.
    std::filesystem::path beside = mFile;
    beside += ".part";
    std::error_code error;
    {
        std::ofstream stream(beside, std::ios::binary | std::ios::trunc);
        stream << text;
        stream.close();
        if (!stream) error = std::make_error_code(std::errc::io_error);
    }
    if (!error) std::filesystem::rename(beside, mFile, error);
    if (!error) return;
    std::error_code ignored;
    std::filesystem::remove(beside, ignored);
    throw PathAccess(mFile.string());
}

}  // namespace brenvik
