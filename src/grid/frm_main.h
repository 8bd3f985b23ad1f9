// The main dialog: the cut list in an editable grid, bound through a data control to the part table, with
// toolbar, menu, status bar and the tick boxes that say which columns take part in Quick Copy.
#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "forms/form.h"
#include "forms/grid_control.h"

namespace brenvik {

/// What the first panel of the status bar says.
inline constexpr std::string_view ProductTitle = "Brenvik 4.9 by Orvane, Inc.";

/// A tick box of the frame `fraCheckBoxes`, with the lower-case header of the column that it stands for.
struct ColumnTickBox {
    std::string_view name, caption, header;
};

/// The tick boxes that stand for a column, in the order of Quick Copy.
std::span<const ColumnTickBox> ColumnTickBoxes();

/// What happens to the failures of single rows while rows are written to the drawing.
enum class FailureTelling { Shown, Ignored };

class frmMain : public Form {
  public:
    frmMain();

    /// The load of the form: a fresh database, headers, settings, place, and the scan of the previous
    /// selection. A form that isn't loaded counts as loaded afterwards, without being shown. Fails as the
    /// files do when there is no blank database, and as the scan does for its switches.
    void Form_Load();

    /// Scans the previous selection into the grid.
    void ScanSelection();

    /// Writes each row's part data to its solid; the present extents become the old ones. If a solid is gone,
    /// its row is skipped; a value that the host refuses is left out. Both are reported, and the work
    /// continues. Refused with a message while grouping is active. Fails with 91 when there is no document.
    void Apply();
    /// The same, then unloads the form, unless grouping is active.
    void applyClose(FailureTelling telling = FailureTelling::Shown);
    /// Like `Apply`, without quantities; highlights all of model space for each row.
    void Highlight();

    /// Spreads the current row's values under the ticked boxes over all rows that the filter lets through,
    /// blank cells alone if that is ticked. The first statement that the table refuses ends it with its
    /// failure.
    void QCopy();
    /// Numbers the rows in the order shown, in the column of part numbers; a hidden or locked one stays.
    /// Refused with a message while grouping is active.
    void AutoPN();

    /// Whether a typed key may enter a cell that allows these characters, three at most: they are capital
    /// letters, and their small ones pass as well. Control keys always pass.
    static bool checkEntry(std::string_view key, std::string_view allowed);
    /// The user moved to a cell; without a column (below 1) it is no real move. Ticks the column's box and
    /// clears all others.
    void CurrentCellMoved(int column, int row);
    /// The letters of a row were edited: refuses what names no sizes, and gives the row the sizes that the
    /// letters name.
    void OrieEdited(int row);

    /// Size rule of the grid: it follows a form that is large enough and keeps its size otherwise.
    void OnResize() override;

    DataControl& Adodc1;
    GridControl& fpSpread1;
    ToolbarControl& tbMain;
    StatusBarControl& sbMain;

    /// Up while the form is starting: events that arrive then do nothing.
    bool Loading = false;
    /// The grid on the form, in twips, by the given size rule. Windows lay their widgets out themselves.
    double gridTop = 0, gridWidth = 0, gridHeight = 0;

  protected:
    void OnLoad() override;
    /// Refused while rows are being written to the drawing.
    bool OnQueryClose() override;
    void OnUnload() override;

  private:
    void AddMenu();
    void AddTickBoxes();
    void ConnectGrid();
    enum class QuantityKey { Written, Highlights };
    void WriteRows(QuantityKey quantity, FailureTelling telling);
    void SetSizesFromLetters(int row);
    void LoadInOrder();
    void SetColumnHeaders();
    void PlaceForm();
};

/// What stands behind the form's toolbar keys and menu entries. Most of it opens dialogs that know the form,
/// so the library hands it in.
struct GridCommands {
    std::function<void(frmMain&, std::string_view key)> toolbarKey;
    std::function<void(frmMain&, std::string_view name)> menuEntry;
};
void SetGridCommands(GridCommands commands);

/// The session's one grid form, made at first use.
frmMain& GridFormInstance();

}  // namespace brenvik
