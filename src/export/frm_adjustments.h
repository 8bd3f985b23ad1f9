// The editor of size adjustments: a grid with a row for each adjustment, and the file that it stands in.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "forms/form.h"
#include "forms/grid_control.h"
#include "session/text_files.h"

namespace brenvik {

class AcadApplication;

class frmAdjustments : public Form {
  public:
    frmAdjustments();

    /// Chooses the file: the one of the settings, else the delivered one, which is stored then. Shows a
    /// message where there is none.
    void Populate();
    /// Fills the grid from the file of the settings. If the file can't be read, the grid stays empty and a
    /// message box names its path. Lines that count for exports and can't be shown here are reported too.
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
    /// The grid is written to its file only if that loses nothing, or if the user says so. Returns whether
    /// the file is as it was wanted, or as near as the disk allows.
    bool WriteTo(const std::string& path);
    /// Asks whether a file is kept that has lines which the grid doesn't show, or that could not be read.
    bool KeepsLines(const std::string& path) const;
    static void TellOddValues(const std::string& path, const std::string& text);
    bool KeepsUnread(const std::string& path) const;
    /// The same of a file that is there, may be written, and isn't the one that is edited.
    bool KeepsOther(const std::string& path) const;
    /// Returns whether the file was written: what somebody else has changed since the grid was filled from it
    /// may be kept.
    bool WriteOver(const std::string& path, const std::string& text) const;
    void ReadLoaded(const std::string& path);
    void TellLinesNotShown() const;
    std::string FileText() const;

    /// The file that the grid was filled from, as it was read, and the grid as a file then.
    struct LoadedFile {
        std::string path, content;
        FileLines file;
        std::vector<std::size_t> notKept;
        std::string shownText;
    };
    std::optional<LoadedFile> mLoaded;
    /// The file that could not be read; blank otherwise.
    std::string mUnreadable;
};

/// The editor as a modal dialog.
void ShowAdjustments();

namespace commands {

/// The same by its host command.
void BVAdjustments(AcadApplication& app);

}  // namespace commands

}  // namespace brenvik
