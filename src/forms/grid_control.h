// The grid of the main dialog and the data control that it is bound to. The grid shows the record set of
// the data control: columns by place from 1, rows from 1, headers in row 0. Cells are text; a changed cell
// is marked, and the marked cells are saved to the table in one go.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "forms/control.h"
#include "session/ports/database_port.h"

namespace brenvik {

/// Holds a connection string and a record source, and the record set that a refresh makes of them.
class DataControl : public Control {
  public:
    DataControl(std::string name, std::function<std::unique_ptr<Connection>()> createConnection);
    std::string connectionString;
    std::string recordSource;
    /// Runs the work in one transaction of the connection, so that many writes cost little more than one.
    /// What the work throws takes back what it wrote. Fails with 91 before the first refresh.
    void InOneTransaction(const std::function<void()>& work);
    /// Opens the record source anew. A statement that the engine refuses throws, and the old record set
    /// stays, so that a bound grid keeps what it shows.
    void Refresh();
    /// Closes record set and connection.
    void Close();
    /// Null before the first refresh.
    Recordset* Records() const { return mRecords.get(); }
    /// Runs after each refresh and after closing; a grid bound to the data control sets it.
    std::function<void()> onRefreshed;
    void KeepDesign() override;
    /// Closes as well.
    void RestoreDesign() override;

  private:
    std::function<std::unique_ptr<Connection>()> mCreateConnection;
    std::unique_ptr<Connection> mConnection;
    std::unique_ptr<Recordset> mRecords;
    std::string mDesignConnectionString, mDesignRecordSource;
};

struct GridColumn {
    std::string fieldName;  ///< Field of the record set; found by name, so that a statement may leave it out.
    std::string header;
    double width = 0;  ///< In the grid's own units, a character being 1.
    bool hidden = false;
    bool locked = false;
    bool numeric = false;  ///< Takes numbers alone. So does a cell that holds a number.
};

class GridControl : public Control {
  public:
    GridControl(std::string name, std::vector<GridColumn> designColumns);

    int MaxCols() const { return static_cast<int>(mColumns.size()); }
    int MaxRows() const { return mMaxRows; }
    /// Rows beyond the record set are blank. Marks and locks of rows that go are lost.
    void SetMaxRows(int rows);
    GridColumn& Column(int column);  ///< From 1; fails outside with 9.
    const GridColumn& Column(int column) const;

    /// Binds the grid to a data control; its cells are read from the record set from now on, and each
    /// refresh of the data control reloads the grid. Null unbinds it and leaves it without rows.
    void SetDataSource(DataControl* source);
    /// Text of a cell, row 0 being the header. Fails with 9 outside the grid.
    std::string CellText(int column, int row) const;
    /// Writes a cell by code and marks it as changed. Fails with 9 outside the rows and columns.
    void SetCellText(int column, int row, std::string_view newText);
    /// Text of a cell as the bound table has it, whatever was written over it since; blank outside of it.
    std::string SavedText(int column, int row) const;
    void ClearMarks();
    /// Writes all marked cells to the bound table and clears their marks. A row is written whole or not at
    /// all; one that can't be keeps its marks and doesn't hold up the others, and the first failure is
    /// thrown when all rows have had their turn. A text that is no number, where one belongs, fails with 13;
    /// a record set that can't be updated fails with 3027 before anything is written. A blank text makes a
    /// number null. Where the engine can't keep the rows together, all are taken back and shown anew.
    void SaveChanges();
    /// The same, but a failure is reported through `onSaveFailed`: then no marks are left, and the cells that
    /// were not written show the table's values again. Without a handler the failure reaches the caller.
    void SaveOrTell();
    /// Reads the bound record set anew: as many rows as it has records; marks and unsaved texts are lost.
    void Reload();

    int ActiveColumn() const { return mActiveColumn; }
    int ActiveRow() const { return mActiveRow; }
    /// The user's move; runs `onCellEntered` when row is above 0. Fails with 9 outside the grid.
    void SetActiveCell(int column, int row);
    /// A move by code, without an event. Fails in the same way.
    void PutActiveCell(int column, int row);
    bool reDraw = true;

    std::function<void(int column, int row)> onCellEntered;
    /// The user ended an edit: the new text stands in the cell and is marked.
    std::function<void(int column, int row)> onEditEnded;
    /// Returns whether a typed character may enter the cell.
    std::function<bool(int column, int row, std::string_view character)> onKey;
    /// Of the keys of an edit only `passed` went through `onKey`.
    std::function<void(int column, int row, std::string_view typed, std::string_view passed)> onKeysRefused;
    /// A user's edit could not be saved to the table; the cell shows the table's value again. Without a
    /// handler the failure reaches whoever made the edit.
    std::function<void(const Failure&)> onSaveFailed;

    /// The user's edit of one cell: moves there if need be, types key by key through `onKey`, ends the edit,
    /// and saves what is still marked then to the bound table.
    /// If no key passes, the cell stays as it is. A hidden or locked cell, a cell outside the grid, or a
    /// disabled grid, takes no text and returns false.
    bool UserEdit(int column, int row, std::string_view newText);
    /// Gives up a cell that is being edited, so that its value reaches the table.
    void Flush();
    void SetBlockLocked(int column, int firstRow, int lastRow, bool locked);
    /// Locked by its column or by a block.
    bool CellLocked(int column, int row) const;
    void KeepDesign() override;
    void RestoreDesign() override;

  private:
    /// A cell as row and column, so that walking goes row by row.
    using Cell = std::pair<int, int>;
    int FieldIndex(int column) const;
    FieldValue ValueToSave(int column, int row, const std::string& cellText) const;
    bool Inside(int column, int row) const;
    using EditedCells = std::map<Cell, std::string>;
    void SaveTogether(const std::function<void()>& saveRows);
    void SaveRow(Recordset& records, EditedCells::const_iterator first, EditedCells::const_iterator last);

    std::vector<GridColumn> mColumns, mDesignColumns;
    std::vector<int> mFieldIndexes;  ///< For each column its field in the record set, or -1.
    EditedCells mEdited;             ///< The marked cells with their unsaved texts.
    struct LockedBlock {
        int column, firstRow, lastRow;
    };
    std::vector<LockedBlock> mLockedBlocks;
    DataControl* mSource = nullptr;
    int mMaxRows = 0;
    int mActiveColumn = 1, mActiveRow = 0;
};

}  // namespace brenvik
