// The main dialog: the cut list in an editable grid, bound through a data control to the part table, with
// toolbar, menu, status bar and the tick boxes that say which columns take part in Quick Copy.
#pragma once

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

class frmMain : public Form {
  public:
    frmMain();

    /// The load of the form: a fresh database, headers, settings, place, and the scan of the previous
    /// selection. A form that isn't loaded counts as loaded afterwards, without being shown. Fails as the
    /// files do when there is no blank database, and as the scan does for its switches.
    void Form_Load();

    /// Size rule of the grid: it follows a form that is large enough and keeps its size otherwise.
    void OnResize() override;

    DataControl& Adodc1;
    GridControl& fpSpread1;
    ToolbarControl& tbMain;
    StatusBarControl& sbMain;

    /// Up while the form is starting: events that arrive then do nothing.
    bool Loading = false;
    /// Place and size of the grid on the form, in twips.
    double gridTop = 0, gridWidth = 0, gridHeight = 0;

  protected:
    void OnLoad() override;
    /// Refused while rows are being written to the drawing.
    bool OnQueryClose() override;
    void OnUnload() override;

  private:
    void AddMenu();
    void AddTickBoxes();
    void LoadInOrder();
    void SetColumnHeaders();
    void PlaceForm();
};

/// The session's one grid form, made at first use.
frmMain& GridFormInstance();

}  // namespace brenvik
