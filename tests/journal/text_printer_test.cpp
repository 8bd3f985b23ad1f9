// The grid as text: what stands where, and where it goes.
#include "console/text_printer.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "base/failure.h"
#include "forms/grid_control.h"

namespace brenvik {
namespace {

class PrintedGrid : public testing::Test {
  protected:
    PrintedGrid()
        : grid("fpSpread1", {{"id", "bv_ID", 10, true, false},
                             {"name", "Part Name", 10, false, false},
                             {"length", "Length", 10, false, false},
                             {"notes", "Notes", 10, false, false}}) {
        job.header = "Cut list";
    }
    void AddRow(const char* name, const char* length, const char* notes) {
        grid.SetMaxRows(grid.MaxRows() + 1);
        grid.SetCellText(1, grid.MaxRows(), "hidden");
        grid.SetCellText(2, grid.MaxRows(), name);
        grid.SetCellText(3, grid.MaxRows(), length);
        grid.SetCellText(4, grid.MaxRows(), notes);
    }
    static std::string Content(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    GridControl grid;
    PrintJob job;
};

TEST_F(PrintedGrid, LinesItsCellsUp) {
    AddRow("Türseite", "600", "left\r\nand right");
    AddRow("Top", "1200.5", "");
    job.footer = "end";
    EXPECT_EQ(GridAsText(grid, job),
              "Cut list\n"
              "\n"
              "Part Name | Length | Notes\n"
              "----------+--------+----------------\n"
              "Türseite  |    600 | left  and right\n"
              "Top       | 1200.5 |\n"
              "\n"
              "end\n");
}

TEST_F(PrintedGrid, LeavesOutWhatTheJobLeavesOut) {
    AddRow("Top", "1200.5", "n");
    job.header.clear();
    job.gridLines = false;
    EXPECT_EQ(GridAsText(grid, job),
              "Part Name  Length  Notes\n"
              "---------  ------  -----\n"
              "Top        1200.5  n\n");
    job.columnHeaders = false;
    job.rowHeaders = true;
    EXPECT_EQ(GridAsText(grid, job), "1  Top  1200.5  n\n");
}

TEST_F(PrintedGrid, OfNoRowsHasItsCaptions) {
    EXPECT_EQ(GridAsText(grid, job),
              "Cut list\n"
              "\n"
              "Part Name | Length | Notes\n"
              "----------+--------+------\n");
}

TEST_F(PrintedGrid, GoesToAStream) {
    AddRow("Top", "1", "");
    std::ostringstream stream;
    TextPrinter(stream).PrintGrid(grid, job);
    EXPECT_EQ(stream.str(), GridAsText(grid, job));
}

TEST_F(PrintedGrid, FailsOnAStreamThatTakesNoMore) {
    std::ostringstream stream;
    stream.setstate(std::ios::badbit);
    try {
        TextPrinter(stream).PrintGrid(grid, job);
        FAIL() << "nothing was printed";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), 482);
        EXPECT_EQ(failure.description(), "Printer error");
    }
}

TEST_F(PrintedGrid, GoesIntoAFileInPlaceOfTheJobBefore) {
    const std::filesystem::path file = std::filesystem::path(testing::TempDir()) / "printed_grid_test.txt";
    TextPrinter printer(file);
    AddRow("Top", "1", "");
    printer.PrintGrid(grid, job);
    AddRow("Side", "2", "");
    printer.PrintGrid(grid, job);
    EXPECT_EQ(Content(file), GridAsText(grid, job));
    std::filesystem::remove(file);
}

TEST_F(PrintedGrid, FailsForAFileThatCannotBeWritten) {
    TextPrinter printer(std::filesystem::path(testing::TempDir()) / "no such folder" / "list.txt");
    try {
        printer.PrintGrid(grid, job);
        FAIL() << "there is no such folder";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), failure_number::PathAccess);
        EXPECT_NE(failure.detail().find("no such folder"), std::string::npos);
    }
}

}  // namespace
}  // namespace brenvik
