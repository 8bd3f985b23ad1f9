// The program's window: the picture of the drawing, its parts as a tree, what is known of the selected ones,
// the host's command line, and the system's commands as menus.
#pragma once

#include <QMainWindow>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cnc/output/run_outcome.h"
#include "cnc/picture/part_picture.h"
#include "drafting_host/document/drawing_state.h"
#include "drawing_view/drawing_view.h"
#include "form_windows/form_desk.h"
#include "home/workplace.h"
#include "part_pictures/part_lines.h"
#include "recovery/recovery_store.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace brenvik::desktop {

class OutcomeWindow;
class WorkKeeper;
struct GroupedCommand;

class MainWindow : public QMainWindow {
  public:
    /// Both outlive the window.
    MainWindow(app::Workplace& workplace, FormDesk& desk);
    ~MainWindow() override;

    /// Opens a drawing of any kind that can be read; false if it can't, after a message.
    bool OpenFile(const std::string& name);
    /// Shows the host's drawing as it is now.
    void ShowDrawing();
    /// As its menu entry does. False for a method that has none.
    bool Run(std::string_view method);
    /// After each act, for a person: a line in the history for what no box has shown, and a box for losses. A
    /// journal reports these itself.
    void TellLossesOfActs() { mTellsLosses = true; }
    /// A line of the command history.
    void Tell(const std::string& line);
    void ShowSelection();
    /// The window on the last CNC run, made at the first call.
    QWidget& ShowOutcome();
    /// Whether a CNC run has ended since the last call.
    bool TakeOutcomeNews() { return mOutcomes.TakeNews(); }
    /// Null for a window whose unsaved work nobody keeps. The keeper outlives the window, or is taken away.
    void KeepWorkBy(WorkKeeper* keeper) { mKeeper = keeper; }
    /// Asks about each piece of work that a crash has left, and opens what is wanted.
    void OfferRecovery(FoundWork found);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void TellLosses();
    void MakeFileMenu();
    void MakeEditMenu();
    void MakeCommandMenus();
    void MakeViewMenu();
    void MakeView();
    void MakePartsDock();
    void MakePropertiesDock();
    void MakeCommandDock();
    void AddRecent(const std::string& name);
    void ShowRecent();
    void RunCommand(const GroupedCommand& command);
    void SelectAllWhenNothingIs();
    void TypeCommand();
    /// As if it were typed; what the line still asks is cancelled first.
    void TypeAlone(const std::string& command);
    void ShowHistorySteps();
    void FindCommandByWords();
    void ShowTree();
    void ShowProperties();
    void TakeTreeSelection();
    void TakeTick(QTreeWidgetItem& item);
    void SelectHandles(const std::vector<std::string>& handles);
    std::vector<std::string> SelectedHandles() const;
    bool MayLeave();
    bool Save();
    bool SaveUnder(const std::string& name);
    bool SaveAsAsked();
    bool SavesAsTyped(const std::string& typed);
    void NoteWritten(const std::filesystem::path& file);
    void TakeSaving();
    /// Opens a drawing in the place of the one before; null if it can't be read, after a message.
    HostDocument* Read(const std::string& name);
    void NoteOpening(const std::string& name);
    void MarkChanged();
    void AskKeepingInterval();
    HostDocument* Document() const { return mWorkplace.host.Active(); }
    void LoseView(const std::string& reason);

    PartPicture ReadPartPicture(const std::string& path);
    bool Recover(AbandonedWork& work);

    app::Workplace& mWorkplace;
    FormDesk& mDesk;
    RunOutcomes mOutcomes;
    /// Part files are looked at in a host of their own, so that the user's drawing stays the active one.
    HostApplication mPartFiles;
    OutcomeWindow* mOutcomeWindow = nullptr;
    std::unique_ptr<DrawingView> mView;
    WorkKeeper* mKeeper = nullptr;
    QMenu* mRecent = nullptr;
    QAction* mUndo = nullptr;
    QAction* mRedo = nullptr;
    QTreeWidget* mTree = nullptr;
    QTreeWidget* mProperties = nullptr;
    QComboBox* mOrder = nullptr;
    QLineEdit* mSearch = nullptr;
    QPlainTextEdit* mHistory = nullptr;
    QLabel* mPrompt = nullptr;
    QLineEdit* mCommand = nullptr;
    /// The drawing when its file was written, since the last look.
    std::optional<DrawingState> mWritten;
    bool mShowing = false, mAnyOpened = false;
    bool mTellsLosses = false;
};

}  // namespace brenvik::desktop
