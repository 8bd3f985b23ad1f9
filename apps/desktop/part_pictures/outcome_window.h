// What a CNC run has made: its parts with their messages, and each side of a part as a picture.
#pragma once

#include <QDialog>
#include <functional>
#include <string>

#include "cnc/output/run_outcome.h"
#include "cnc/picture/part_picture.h"

class QLabel;
class QListWidget;
class QPushButton;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace brenvik::desktop {

class PartFileView;

class OutcomeWindow : public QDialog {
  public:
    /// Reads a part file by the path that the system gave it; a failure says why that can't be.
    using FileReader = std::function<PartPicture(const std::string& path)>;

    OutcomeWindow(FileReader reader, QWidget* parent);

    /// The first part with a message is chosen, else the first one. The drawing is that of the run, blank
    /// where there was none yet.
    void Show(const RunOutcome& outcome, const std::string& drawing = {});
    /// What the button for the folder does; without it there is no button.
    void SetFolderOpener(std::function<void()> open);

  private:
    QWidget* MakeParts();
    QWidget* MakePictures();
    void FillParts();
    void ShowPart(int part);
    void ShowSide(const std::string& path, const QString& caption);
    void ShowLegend(const PartFileView& view);
    void ShowMessages(const std::vector<std::string>& messages);

    FileReader mReader;
    RunOutcome mOutcome;
    QLabel* mSummary = nullptr;
    QTreeWidget* mParts = nullptr;
    QTabWidget* mSides = nullptr;
    QListWidget* mLegend = nullptr;
    QListWidget* mMessages = nullptr;
    QLabel* mPointed = nullptr;
    /// Shown while the pointer is over no operation.
    QString mHint;
    QPushButton* mFolder = nullptr;
};

}  // namespace brenvik::desktop
