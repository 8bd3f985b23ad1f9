// The bound grid: cells, marks, saving, the user's edit, and locks.
#include "forms/grid_control.h"

#include "core/forms/bound_grid.h"
#include "core/forms/unsaved.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

TEST_F(BoundGrid, HasNoRowsBeforeTheFirstRefresh) {
    grid.SetDataSource(&data);
    EXPECT_EQ(grid.MaxRows(), 0);
    EXPECT_EQ(grid.CellText(2, 0), "Part Name");
}

TEST_F(BoundGrid, ShowsFieldsByTheirNames) {
    Bind();
    ASSERT_EQ(grid.MaxRows(), 2);
    EXPECT_EQ(grid.CellText(1, 1), "A");
    EXPECT_EQ(grid.CellText(2, 1), "Side");
    EXPECT_EQ(grid.CellText(4, 1), "");
}

TEST_F(BoundGrid, ShowsNumbersAsTextAndNullAsBlank) {
    Bind();
    EXPECT_EQ(grid.CellText(3, 1), "600.5");
    EXPECT_EQ(grid.CellText(3, 2), "0.375");
    EXPECT_EQ(grid.CellText(2, 2), "");
}

TEST_F(BoundGrid, FailsOutsideItsCells) {
    Bind();
    for (const auto& [column, row] : {std::pair{0, 1}, {6, 1}, {1, 3}, {1, -1}, {0, 0}}) {
        try {
            grid.CellText(column, row);
            FAIL() << column << ' ' << row;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number(), failure_number::SubscriptOutOfRange);
        }
    }
    EXPECT_THROW(grid.SetCellText(1, 0, "x"), Failure);
    EXPECT_THROW(grid.Column(0), Failure);
    EXPECT_THROW(grid.SetActiveCell(1, 3), Failure);
}

TEST_F(BoundGrid, HasBlankRowsBeyondTheRecordSet) {
    Bind();
    grid.SetMaxRows(4);
    EXPECT_EQ(grid.CellText(2, 4), "");
    grid.SetMaxRows(1);
    EXPECT_THROW(grid.CellText(2, 2), Failure);
    grid.SetMaxRows(-1);
    EXPECT_EQ(grid.MaxRows(), 0);
}

TEST_F(BoundGrid, KeepsWhatItShowsWhenARefreshIsRefused) {
    Bind();
    data.recordSource = "select nonsense";
    EXPECT_THROW(data.Refresh(), Failure);
    EXPECT_EQ(grid.CellText(2, 1), "Side");
    EXPECT_EQ(database.openConnections, 1);
}

TEST_F(BoundGrid, ClosesTheConnectionBeforeAtEachRefresh) {
    Bind();
    data.Refresh();
    EXPECT_EQ(database.openConnections, 1);
    EXPECT_EQ(database.openRecordsets, 1);
    data.Close();
    EXPECT_EQ(database.openConnections, 0);
    EXPECT_EQ(grid.MaxRows(), 0);
}

TEST_F(BoundGrid, MarksACellThatIsWrittenByCode) {
    Bind();
    grid.SetCellText(2, 1, "Door");
    EXPECT_EQ(grid.CellText(2, 1), "Door");
    EXPECT_TRUE(IsUnsaved(grid, 2, 1));
    EXPECT_FALSE(IsUnsaved(grid, 2, 2));
    EXPECT_EQ(Name(0), "Side");
    grid.ClearMarks();
    EXPECT_FALSE(IsUnsaved(grid, 2, 1));
    EXPECT_EQ(grid.CellText(2, 1), "Side");
}

TEST_F(BoundGrid, SavesItsMarkedCellsToTheTable) {
    Bind();
    grid.SetCellText(2, 1, "Door");
    grid.SetCellText(2, 2, "Top");
    grid.SetCellText(3, 1, "700.25");
    grid.SaveChanges();
    EXPECT_EQ(Name(0), "Door");
    EXPECT_EQ(Name(1), "Top");
    EXPECT_EQ(database.Number(Path, 0, "bv_length"), 700.25);
    EXPECT_FALSE(IsUnsaved(grid, 2, 1));
    EXPECT_EQ(grid.CellText(3, 1), "700.25");
    database.statements.clear();
    grid.SaveChanges();
    EXPECT_TRUE(database.statements.empty()) << "no cell is marked any more";
}

TEST_F(BoundGrid, SavesTheLastTextOfACell) {
    Bind();
    grid.SetCellText(2, 1, "Door");
    grid.SetCellText(2, 1, "Top");
    grid.SaveChanges();
    EXPECT_EQ(database.CountStatements("UPDATE"), 1);
    EXPECT_EQ(Name(0), "Top");
}

TEST_F(BoundGrid, MakesANumberNullWhenItsCellIsBlanked) {
    Bind();
    grid.SetCellText(3, 1, "");
    grid.SaveChanges();
    EXPECT_EQ(database.Cell(Path, 0, "bv_length"), FieldValue(std::monostate()));
    EXPECT_EQ(grid.CellText(3, 1), "");
}

TEST_F(BoundGrid, WritesNothingWhenACellHoldsNoNumberWhereOneBelongs) {
    Bind();
    grid.SetCellText(2, 1, "Door");
    grid.SetCellText(3, 1, "long");
    try {
        grid.SaveChanges();
        FAIL() << "\"long\" is no length";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), failure_number::TypeMismatch);
    }
    EXPECT_EQ(Name(0), "Side");
    EXPECT_TRUE(IsUnsaved(grid, 2, 1));
}

TEST_F(BoundGrid, KeepsTheOtherRowsWhenOneCannotBeSaved) {
    AddPart("C", "Back", 300);
    Bind();
    grid.SetCellText(2, 1, "Door");
    grid.SetCellText(2, 2, std::string(256, 'n'));
    grid.SetCellText(2, 3, "Top");
    EXPECT_THROW(grid.SaveChanges(), Failure);
    EXPECT_EQ(Name(0), "Door");
    EXPECT_EQ(database.Cell(Path, 1, "bv_partname"), FieldValue(std::monostate()));
    EXPECT_EQ(Name(2), "Top");
    EXPECT_FALSE(IsUnsaved(grid, 2, 1));
    EXPECT_TRUE(IsUnsaved(grid, 2, 2));
    EXPECT_EQ(grid.CellText(2, 2), std::string(256, 'n'));
}

TEST_F(BoundGrid, WritesARowWholeOrNotAtAll) {
    Bind();
    database.failures.emplace_back("UPDATE bv_length", Failure(-5, "FakeDatabase", "Refused"));
    grid.SetCellText(2, 1, "Door");
    grid.SetCellText(3, 1, "700");
    EXPECT_THROW(grid.SaveChanges(), Failure);
    EXPECT_EQ(Name(0), "Side");
    EXPECT_TRUE(IsUnsaved(grid, 2, 1));
    EXPECT_TRUE(IsUnsaved(grid, 3, 1));
}

TEST_F(BoundGrid, SavesSeveralRowsInOneTransaction) {
    Bind();
    database.statements.clear();
    grid.SetCellText(2, 1, "Door");
    grid.SetCellText(2, 2, "Top");
    grid.SaveChanges();
    EXPECT_EQ(database.statements,
              (std::vector<std::string>{"BEGIN", "UPDATE bv_partname", "UPDATE bv_partname", "COMMIT"}));
}

TEST_F(BoundGrid, ShowsTheTableAnewWhenTheRowsCannotBeKept) {
    Bind();
    database.failures.emplace_back("COMMIT", Failure(-5, "FakeDatabase", "Disk full"));
    grid.SetCellText(3, 1, "700");
    grid.SetCellText(2, 2, "Top");
    EXPECT_THROW(grid.SaveChanges(), Failure);
    EXPECT_EQ(grid.CellText(3, 1), "600.5");
    EXPECT_EQ(grid.CellText(2, 2), "");
    EXPECT_FALSE(IsUnsaved(grid, 2, 2));
    EXPECT_EQ(database.Number(Path, 0, "bv_length"), 600.5);
}

TEST_F(BoundGrid, TellsOfRowsThatCannotBeSavedAndKeepsTheRest) {
    Bind();
    std::string told;
    grid.onSaveFailed = [&](const Failure& failure) { told = failure.description(); };
    grid.SetCellText(3, 1, "long");
    grid.SetCellText(2, 2, "Top");
    grid.SaveOrTell();
    EXPECT_EQ(told, "Type mismatch");
    EXPECT_EQ(grid.CellText(3, 1), "600.5");
    EXPECT_EQ(Name(1), "Top");
}

TEST_F(BoundGrid, TakesNumbersAloneInANumericColumnEvenWhereNothingStands) {
    database.databases[Path][0][5] = std::monostate();
    grid.Column(3).numeric = true;
    Bind();
    grid.SetCellText(3, 1, "long");
    EXPECT_THROW(grid.SaveChanges(), Failure);
    grid.SetCellText(3, 1, "12.5");
    grid.SaveChanges();
    EXPECT_EQ(database.Number(Path, 0, "bv_length"), 12.5);
}

TEST_F(BoundGrid, IsMovedByCodeWithoutAWord) {
    Bind();
    int entered = 0;
    grid.onCellEntered = [&](int, int) { ++entered; };
    grid.PutActiveCell(2, 2);
    EXPECT_EQ(entered, 0);
    EXPECT_EQ(grid.ActiveColumn(), 2);
    EXPECT_EQ(grid.ActiveRow(), 2);
    EXPECT_THROW(grid.PutActiveCell(2, 3), Failure);
}

TEST_F(BoundGrid, TakesBackATransactionThatFails) {
    Bind();
    EXPECT_THROW(data.InOneTransaction([&] {
        data.Records()->Update(0, 2, std::string("Door"));
        throw Failure(1, "Test", "stop");
    }),
                 Failure);
    EXPECT_EQ(Name(0), "Side");
    DataControl unbound("Adodc2", [this] { return database.CreateConnection(); });
    EXPECT_THROW(unbound.InOneTransaction([] {}), Failure);
}

TEST_F(BoundGrid, WritesNothingToARecordSetThatCannotBeUpdated) {
    data.recordSource =
        "Select count(bv_partname) as bv_qty, bv_partname from brenvik_data Group by bv_partname";
    Bind();
    grid.SetCellText(2, 1, "Door");
    EXPECT_EQ(FailureOf([&] { grid.SaveChanges(); }).number(), 3027);
    EXPECT_EQ(database.CountStatements("UPDATE"), 0);
}

TEST_F(BoundGrid, LosesUnsavedTextsAtAReload) {
    Bind();
    grid.SetCellText(2, 1, "Door");
    grid.Reload();
    EXPECT_EQ(grid.CellText(2, 1), "Side");
}

TEST_F(BoundGrid, TakesTheUsersEditKeyByKey) {
    Bind();
    std::vector<std::string> keys;
    grid.onKey = [&](int, int, std::string_view key) {
        keys.emplace_back(key);
        return key != "x";
    };
    std::string atEnd;
    grid.onEditEnded = [&](int column, int row) { atEnd = grid.CellText(column, row); };
    EXPECT_TRUE(grid.UserEdit(2, 1, "Türx"));
    EXPECT_EQ(keys, (std::vector<std::string>{"T", "ü", "r", "x"}));
    EXPECT_EQ(atEnd, "Tür");
    EXPECT_EQ(Name(0), "Tür");
    EXPECT_EQ(grid.ActiveColumn(), 2);
    EXPECT_EQ(grid.ActiveRow(), 1);
}

TEST_F(BoundGrid, EntersTheCellBeforeItIsEdited) {
    Bind();
    std::string order;
    grid.onCellEntered = [&](int, int) { order += "enter "; };
    grid.onKey = [&](int, int, std::string_view) {
        order += "key ";
        return true;
    };
    grid.onEditEnded = [&](int, int) { order += "end "; };
    grid.UserEdit(2, 1, "T");
    EXPECT_EQ(order, "enter key end ");
}

TEST_F(BoundGrid, TakesNoEditInHiddenOrLockedCellsOrWhenDisabled) {
    Bind();
    EXPECT_FALSE(grid.UserEdit(1, 1, "x"));
    EXPECT_FALSE(grid.UserEdit(5, 1, "x"));
    EXPECT_FALSE(grid.UserEdit(2, 3, "x"));
    EXPECT_FALSE(grid.UserEdit(2, 0, "x"));
    grid.Column(3).hidden = true;
    EXPECT_FALSE(grid.UserEdit(3, 1, "5"));
    grid.enabled = false;
    EXPECT_FALSE(grid.UserEdit(2, 1, "x"));
    EXPECT_EQ(database.CountStatements("UPDATE"), 0);
}

TEST_F(BoundGrid, ShowsTheTablesValueAgainWhenAnEditCannotBeSaved) {
    Bind();
    std::string told;
    grid.onSaveFailed = [&](const Failure& failure) { told = failure.description(); };
    EXPECT_TRUE(grid.UserEdit(3, 1, "long"));
    EXPECT_EQ(told, "Type mismatch");
    EXPECT_EQ(grid.CellText(3, 1), "600.5");
    grid.onSaveFailed = nullptr;
    EXPECT_THROW(grid.UserEdit(3, 1, "long"), Failure);
}

TEST_F(BoundGrid, LeavesItToTheEndOfTheEditWhatIsSaved) {
    Bind();
    grid.onEditEnded = [&](int column, int row) { grid.SetCellText(column, row, ""); };
    grid.UserEdit(2, 1, "bad");
    EXPECT_EQ(Name(0), "");
}

TEST_F(BoundGrid, FlushesWhatIsMarked) {
    Bind();
    grid.Flush();
    grid.SetCellText(2, 1, "Door");
    grid.Flush();
    EXPECT_EQ(Name(0), "Door");
}

TEST_F(BoundGrid, LocksAndUnlocksBlocks) {
    Bind();
    grid.SetMaxRows(10);
    grid.SetBlockLocked(2, 1, 10, true);
    EXPECT_TRUE(grid.CellLocked(2, 5));
    EXPECT_FALSE(grid.CellLocked(3, 5));
    EXPECT_FALSE(grid.UserEdit(2, 1, "x"));
    grid.SetBlockLocked(2, 4, 6, false);
    EXPECT_TRUE(grid.CellLocked(2, 3));
    EXPECT_FALSE(grid.CellLocked(2, 4));
    EXPECT_FALSE(grid.CellLocked(2, 6));
    EXPECT_TRUE(grid.CellLocked(2, 7));
    grid.SetBlockLocked(2, 1, 10, false);
    EXPECT_TRUE(grid.UserEdit(2, 1, "x"));
    // A column that is locked by design stays so.
    grid.SetBlockLocked(5, 1, 10, false);
    EXPECT_TRUE(grid.CellLocked(5, 1));
}

TEST_F(BoundGrid, RowsThatGoTakeTheirLocksAlong) {
    Bind();
    grid.SetMaxRows(10);
    grid.SetBlockLocked(2, 1, 10, true);
    grid.SetMaxRows(4);
    grid.SetBlockLocked(2, 1, 4, false);
    grid.SetMaxRows(10);
    for (int row = 1; row <= 10; ++row) EXPECT_FALSE(grid.CellLocked(2, row)) << row;
    grid.SetBlockLocked(2, 1, 10, true);
    grid.SetMaxRows(4);
    grid.SetMaxRows(10);
    EXPECT_TRUE(grid.CellLocked(2, 4));
    EXPECT_FALSE(grid.CellLocked(2, 5));
}

TEST_F(BoundGrid, AnEditOfTheActiveCellIsNoMove) {
    Bind();
    int entered = 0;
    grid.onCellEntered = [&](int, int) { ++entered; };
    grid.UserEdit(2, 1, "Door");
    grid.UserEdit(2, 1, "Gate");
    EXPECT_EQ(entered, 1);
    grid.UserEdit(2, 2, "Door");
    EXPECT_EQ(entered, 2);
    grid.UserEdit(3, 2, "5");
    EXPECT_EQ(entered, 3);
}

TEST_F(BoundGrid, EntersCellsOnlyBelowTheHeaders) {
    Bind();
    int entered = 0;
    grid.onCellEntered = [&](int, int) { ++entered; };
    grid.SetActiveCell(2, 0);
    EXPECT_EQ(entered, 0);
    grid.SetActiveCell(2, 2);
    EXPECT_EQ(entered, 1);
}

TEST_F(BoundGrid, GoesBackToItsDesign) {
    grid.KeepDesign();
    Bind();
    grid.Column(2).width = 50;
    grid.Column(2).hidden = true;
    grid.SetBlockLocked(3, 1, 2, true);
    grid.SetActiveCell(2, 2);
    grid.RestoreDesign();
    EXPECT_EQ(grid.Column(2).width, 20);
    EXPECT_FALSE(grid.Column(2).hidden);
    EXPECT_FALSE(grid.CellLocked(3, 1));
    EXPECT_EQ(grid.MaxRows(), 0);
    EXPECT_EQ(grid.ActiveRow(), 0);
}

TEST_F(BoundGrid, NeedsATableToSaveTo) {
    grid.SetMaxRows(1);
    grid.SetCellText(2, 1, "Door");
    EXPECT_EQ(grid.CellText(2, 1), "Door");
    EXPECT_THROW(grid.SaveChanges(), Failure);
}

TEST_F(BoundGrid, RowsThatGoTakeTheirMarksAndTheActiveCellAlong) {
    Bind();
    grid.SetActiveCell(2, 2);
    grid.SetCellText(5, 1, "stays");
    grid.SetCellText(1, 2, "goes");
    grid.SetMaxRows(1);
    EXPECT_EQ(grid.ActiveRow(), 1);
    EXPECT_TRUE(IsUnsaved(grid, 5, 1));
    grid.SetMaxRows(2);
    EXPECT_FALSE(IsUnsaved(grid, 1, 2));
    EXPECT_EQ(grid.ActiveRow(), 1);
}

TEST_F(BoundGrid, FollowsItsLastDataControlAlone) {
    Bind();
    DataControl other("Adodc2", [this] { return database.CreateConnection(); });
    other.connectionString = data.connectionString;
    other.recordSource = std::string(ScanSelect) + " where bv_id = 'B'";
    grid.SetDataSource(&other);
    EXPECT_EQ(grid.MaxRows(), 0);
    data.Refresh();
    EXPECT_EQ(grid.MaxRows(), 0) << "the data control before is none of the grid's any more";
    other.recordSource = ScanSelect;
    other.Refresh();
    EXPECT_EQ(grid.MaxRows(), 2);
    grid.SetCellText(2, 1, "Door");
    data.Refresh();
    EXPECT_TRUE(IsUnsaved(grid, 2, 1));
    grid.SetDataSource(nullptr);
    EXPECT_EQ(grid.MaxRows(), 0);
    other.Refresh();
    EXPECT_EQ(grid.MaxRows(), 0);
}

TEST_F(BoundGrid, UnbindsWhenItGoesBackToItsDesign) {
    grid.KeepDesign();
    Bind();
    grid.reDraw = false;
    grid.SetActiveCell(2, 2);
    grid.SetBlockLocked(2, 1, 1, true);
    grid.RestoreDesign();
    EXPECT_TRUE(grid.reDraw);
    EXPECT_EQ(grid.ActiveColumn(), 1);
    data.Refresh();
    EXPECT_EQ(grid.MaxRows(), 0);
    grid.SetDataSource(&data);
    EXPECT_EQ(grid.MaxRows(), 2);
    EXPECT_FALSE(grid.CellLocked(2, 1));
}

TEST_F(BoundGrid, MovesToTheHeadersButNeverBesideTheGrid) {
    Bind();
    grid.SetActiveCell(5, 0);
    EXPECT_EQ(grid.ActiveRow(), 0);
    for (const auto& [column, row] : {std::pair{0, 1}, {6, 1}, {1, -1}, {1, 3}})
        EXPECT_EQ(
            FailureOf([&, at = std::pair(column, row)] { grid.SetActiveCell(at.first, at.second); }).number(),
            failure_number::SubscriptOutOfRange)
            << column << ' ' << row;
    EXPECT_EQ(grid.ActiveColumn(), 5);
}

TEST_F(BoundGrid, LocksOfOneColumnLeaveTheOthersAlone) {
    Bind();
    grid.SetMaxRows(10);
    grid.SetBlockLocked(2, 3, 8, true);
    grid.SetBlockLocked(3, 3, 8, true);
    grid.SetBlockLocked(2, 1, 4, false);
    grid.SetBlockLocked(2, 7, 10, false);
    grid.SetBlockLocked(2, 9, 3, true);
    std::string locked;
    for (int row = 1; row <= 10; ++row) locked += grid.CellLocked(2, row) ? 'x' : '.';
    EXPECT_EQ(locked, "....xx....");
    locked.clear();
    for (int row = 1; row <= 10; ++row) locked += grid.CellLocked(3, row) ? 'x' : '.';
    EXPECT_EQ(locked, "..xxxxxx..");
    EXPECT_THROW(grid.CellLocked(6, 1), Failure);
    grid.SetBlockLocked(3, 8, 10, false);
    grid.SetBlockLocked(3, 1, 3, false);
    EXPECT_TRUE(grid.CellLocked(3, 4));
    EXPECT_TRUE(grid.CellLocked(3, 7));
    EXPECT_FALSE(grid.CellLocked(3, 3));
    EXPECT_FALSE(grid.CellLocked(3, 8));
}

TEST_F(BoundGrid, WithoutATableKeepsWhatTheUserTypes) {
    grid.SetMaxRows(2);
    EXPECT_TRUE(grid.UserEdit(2, 1, "Door"));
    EXPECT_EQ(grid.CellText(2, 1), "Door");
    EXPECT_TRUE(IsUnsaved(grid, 2, 1));
}

}  // namespace
}  // namespace brenvik
