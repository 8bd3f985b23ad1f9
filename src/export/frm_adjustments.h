// The editor of size adjustments: a grid with a row for each adjustment, and the file that it stands in.
#pragma once

#include <string>

#include "forms/form.h"
#include "forms/grid_control.h"

namespace brenvik {

class AcadApplication;

class frmAdjustments : public Form {
  public:
    frmAdjustments();

    /// Chooses the file: the one of the settings, else the delivered one, which is stored then. Shows a
    /// message where there is none.
    void Populate();
    /// Fills the grid from the file of the settings. A file that can't be read leaves the grid empty and is
    /// told in a message box with its path.
    void LoadAdjustments();

    GridControl& fpAdjustments;
    Control& Text1;
    /// Where "Save / Close" writes.
    std::string EditAdjPath;

  protected:
    void OnLoad() override;

  private:
    void AddButton(const char* name, const char* buttonCaption, void (frmAdjustments::*handler)());
    void Browse();
    void SaveAs();
    void SaveAndClose();
    void WriteTo(const std::string& path) const;
    std::string FileText() const;
};

/// The editor as a modal dialog.
void ShowAdjustments();

namespace commands {

/// The same by its host command.
void BVAdjustments(AcadApplication& app);

}  // namespace commands

}  // namespace brenvik
