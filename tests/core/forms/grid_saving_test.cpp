// What a bound grid writes to its table and in which kind, row by row, and what it says of refusals.
#include "core/forms/bound_grid.h"
#include "core/forms/unsaved.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

using Texts = std::vector<std::string>;

class GridSaving : public BoundGrid {
  protected:
    FieldValue Kept(int row, const char* column) const { return database.Cell(Path, row, column); }
};

TEST_F(GridSaving, ABlankedTextStaysATextAndABlankedNullStaysNull) {
    Bind();
    grid.SetCellText(2, 1, "");
    grid.SetCellText(2, 2, "");
    grid.SaveChanges();
    EXPECT_EQ(Kept(0, "bv_partname"), FieldValue(""));
    EXPECT_EQ(Kept(1, "bv_partname"), FieldValue(std::monostate()));
}

TEST_F(GridSaving, ATextThatLooksLikeANumberStaysATextWhereTextsStand) {
    Bind();
    grid.SetCellText(2, 1, "12");
    grid.SetCellText(2, 2, "7.50");
    grid.SaveChanges();
    EXPECT_EQ(Kept(0, "bv_partname"), FieldValue("12"));
    EXPECT_EQ(Kept(1, "bv_partname"), FieldValue("7.50"));
}

TEST_F(GridSaving, ANumericColumnHoldsNumbersEvenWhereATextStood) {
    grid.Column(2).numeric = true;
    Bind();
    grid.SetCellText(2, 1, "12");
    grid.SaveChanges();
    EXPECT_EQ(Kept(0, "bv_partname"), FieldValue(12.0));
    database.databases[Path][0][2] = "Side";
    data.Refresh();
    grid.SetCellText(2, 1, " ");
    grid.SaveChanges();
    EXPECT_EQ(Kept(0, "bv_partname"), FieldValue(std::monostate()));
}

TEST_F(GridSaving, OneRowNeedsNoTransaction) {
    Bind();
    database.statements.clear();
    grid.SetCellText(2, 2, "Top");
    grid.SetCellText(3, 2, "5");
    grid.SaveChanges();
    EXPECT_EQ(database.statements, (Texts{"UPDATE bv_partname", "UPDATE bv_length"}));
}

TEST_F(GridSaving, CellsWithoutAFieldAndRowsBeyondTheTableAreNotWritten) {
    Bind();
    grid.SetMaxRows(3);
    database.statements.clear();
    grid.SetCellText(4, 1, "nowhere");
    grid.SetCellText(2, 3, "beyond");
    grid.SetCellText(2, 2, "Top");
    grid.SaveChanges();
    EXPECT_EQ(database.statements, (Texts{"BEGIN", "UPDATE bv_partname", "COMMIT"}));
    EXPECT_EQ(Name(1), "Top");
    for (const auto& [column, row] : {std::pair{4, 1}, {2, 3}, {2, 2}})
        EXPECT_FALSE(IsUnsaved(grid, column, row)) << column << ' ' << row;
}

TEST_F(GridSaving, NothingMarkedWritesNothingAndNeedsNoTable) {
    int told = 0;
    grid.onSaveFailed = [&](const Failure&) { ++told; };
    grid.SaveChanges();
    grid.Flush();
    grid.SaveOrTell();
    EXPECT_EQ(told, 0);
    Bind();
    database.statements.clear();
    grid.SaveChanges();
    EXPECT_EQ(database.statements, Texts{});
}

TEST_F(GridSaving, OfSeveralRefusalsTheFirstIsToldAndEachKeepsItsMarks) {
    AddPart("C", "Back", 300);
    Bind();
    grid.SetCellText(2, 1, std::string(256, 'n'));
    grid.SetCellText(3, 2, "long");
    grid.SetCellText(2, 3, "Top");
    EXPECT_EQ(FailureOf([&] { grid.SaveChanges(); }).description(), "The field is too small for the text");
    EXPECT_TRUE(IsUnsaved(grid, 2, 1));
    EXPECT_TRUE(IsUnsaved(grid, 3, 2));
    EXPECT_FALSE(IsUnsaved(grid, 2, 3));
    EXPECT_EQ(Name(2), "Top");
}

TEST_F(GridSaving, ARefusedRowShowsWhatTheTableHoldsOnceItsMarksGo) {
    Bind();
    database.failures.emplace_back("UPDATE bv_length", Failure(-5, "FakeDatabase", "Refused"));
    grid.SetCellText(2, 1, "Door");
    grid.SetCellText(3, 1, "700");
    EXPECT_EQ(FailureOf([&] { grid.SaveChanges(); }).number(), -5);
    grid.ClearMarks();
    EXPECT_EQ(grid.CellText(2, 1), "Side");
    EXPECT_EQ(grid.CellText(3, 1), "600.5");
}

TEST_F(GridSaving, RowsThatCannotBeginTogetherAreAllTakenBack) {
    Bind();
    database.failures.emplace_back("BEGIN", Failure(-5, "FakeDatabase", "Locked"));
    grid.SetCellText(2, 1, "Door");
    grid.SetCellText(2, 2, "Top");
    EXPECT_EQ(FailureOf([&] { grid.SaveChanges(); }).description(), "Locked");
    EXPECT_EQ(database.CountStatements("UPDATE"), 0);
    EXPECT_EQ(grid.CellText(2, 1), "Side");
    EXPECT_FALSE(IsUnsaved(grid, 2, 2));
}

TEST_F(GridSaving, AHandlerIsToldOnceAndWithoutOneTheFailureComesOut) {
    Bind();
    Texts told;
    grid.onSaveFailed = [&](const Failure& failure) { told.push_back(failure.description()); };
    grid.SetCellText(3, 1, "long");
    grid.SetCellText(3, 2, "longer");
    grid.SaveOrTell();
    EXPECT_EQ(told, Texts{"Type mismatch"});
    EXPECT_FALSE(IsUnsaved(grid, 3, 1));
    EXPECT_FALSE(IsUnsaved(grid, 3, 2));
    grid.onSaveFailed = nullptr;
    grid.SetCellText(3, 1, "long");
    EXPECT_EQ(FailureOf([&] { grid.SaveOrTell(); }).number(), failure_number::TypeMismatch);
    EXPECT_FALSE(IsUnsaved(grid, 3, 1));
}

TEST_F(GridSaving, WithoutATableIsAFailureThatNamesTheGrid) {
    grid.SetMaxRows(1);
    grid.SetCellText(2, 1, "Door");
    const Failure failure = FailureOf([&] { grid.SaveChanges(); });
    EXPECT_EQ(failure.number(), failure_number::ObjectNotSet);
    EXPECT_EQ(failure.detail(), "fpSpread1");
    // Bound, but closed: the same.
    grid.SetDataSource(&data);
    grid.SetMaxRows(1);
    grid.SetCellText(2, 1, "Door");
    EXPECT_EQ(FailureOf([&] { grid.SaveChanges(); }).number(), failure_number::ObjectNotSet);
}

}  // namespace
}  // namespace brenvik
