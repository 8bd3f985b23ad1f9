// The list on paper, as a PDF file.
#include "form_windows/grid_printer.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QPrinter>
#include <QTemporaryDir>
#include <memory>

#include "forms/grid_control.h"
#include "grid/grid_print.h"

namespace brenvik::desktop {
namespace {

class ListOnPaper : public ::testing::Test {
  protected:
    /// How many sheets the grid takes.
    int Print(const GridControl& grid, const PrintJob& job) {
        const QString name = folder.filePath("list.pdf");
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(name);
        SetUpPrinter(printer, job);
        landscape = printer.pageLayout().orientation() == QPageLayout::Landscape;
        EXPECT_TRUE(PaintSheets(printer, grid, job, "kitchen.dxf"));
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly)) return -1;
        const QByteArray content = file.readAll();
        EXPECT_TRUE(content.startsWith("%PDF"));
        return static_cast<int>(content.count("/Type /Page\n"));
    }
    static std::unique_ptr<GridControl> Grid(int columns, int rows, const std::string& text) {
        std::vector<GridColumn> design;
        for (int column = 0; column < columns; ++column)
            design.push_back({"f" + std::to_string(column), "Column " + std::to_string(column), 10});
        auto grid = std::make_unique<GridControl>("list", design);
        grid->SetMaxRows(rows);
        for (int row = 1; row <= rows; ++row)
            for (int column = 1; column <= columns; ++column) grid->SetCellText(column, row, text);
        return grid;
    }

    QTemporaryDir folder;
    bool landscape = false;
};

TEST_F(ListOnPaper, LiesOnItsSideAndTakesTheSheetsItNeeds) {
    const PrintJob job = GridPrintJob();
    EXPECT_EQ(Print(*Grid(5, 10, "Side"), job), 1);
    EXPECT_TRUE(landscape);
    const int sheets = Print(*Grid(5, 200, "Side"), job);
    EXPECT_GE(sheets, 4);
    EXPECT_LE(sheets, 8);
    EXPECT_EQ(Print(*Grid(5, 0, ""), job), 1) << "the captions alone";
}

TEST_F(ListOnPaper, AFileThatCantBeWrittenIsARefusal) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.filePath("missing/list.pdf"));
    EXPECT_FALSE(PaintSheets(printer, *Grid(2, 3, "Side"), GridPrintJob(), "kitchen.dxf"));
}

TEST_F(ListOnPaper, LongTextsBreakAndNeedMoreSheets) {
    const PrintJob job = GridPrintJob();
    const int plain = Print(*Grid(20, 60, "Side"), job);
    const int broken =
        Print(*Grid(20, 60, "A note of a length that no column of twenty has room for on one line"), job);
    EXPECT_GT(broken, 2 * plain);
}

}  // namespace
}  // namespace brenvik::desktop
