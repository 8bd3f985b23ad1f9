// The editor of the material library: a grid with a row for each material and a column for each value, in the
// order of the file.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "forms/form.h"
#include "forms/grid_control.h"
#include "settings/materials.h"

namespace brenvik {

class AcadApplication;

class frmMaterials : public Form {
  public:
    frmMaterials();

    /// Ctrl-C: keeps the cells of the current row, parted by tabs. Does nothing on the header.
    void CopyRow();
    /// Ctrl-V: writes what was copied over the current row. Text from elsewhere may hold several lines: each
    /// fills a row, and the grid grows as it must.
    void PasteRow();

    GridControl& fpMaterials;
    /// What CopyRow took and PasteRow writes; a dialog platform may pass the system's clipboard through it.
    std::string copiedRow;

  protected:
    /// Reads the library. A message box reports a failure to read it, and damaged records.
    void OnLoad() override;

  private:
    void AddButton(ControlKind kind, const char* name, const char* buttonCaption,
                   void (frmMaterials::*handler)());
    void LoadMaterials();
    void TellDamages() const;
    std::vector<MaterialTexts> CompleteRows() const;
    MaterialTexts TextsOfRow(int row) const;
    void NoteRowsLeftOut() const;
    void SaveAndClose();

    Control* mBtnSave = nullptr;
    std::vector<MaterialTexts> mOpened;
    /// The library's text as it was opened; null if there was none.
    std::optional<std::string> mContent;
    std::vector<MaterialDamage> mDamages;
    std::string mLineEnd;
};

/// A material that a saving has left out of the library, since it isn't filled in. The editor's label says
/// that it does so, and no box names the material.
struct LibraryNote {
    std::string text;
    /// Nobody has touched it since the library was opened.
    bool isLoss = false;
};

/// Those since the last call.
std::vector<LibraryNote> TakeLibraryNotes();

namespace commands {

/// The editor as a modal dialog.
void BVMaterial(AcadApplication& app);

}  // namespace commands

}  // namespace brenvik
