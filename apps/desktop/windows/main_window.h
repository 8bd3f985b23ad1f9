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
#include "drawing_view/drawing_view.h"
#include "form_windows/form_desk.h"
#include "home/workplace.h"
#include "part_pictures/part_lines.h"
#include "recovery/recovery_store.h"
#include "windows/open_drawings.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace brenvik::desktop {

class DrawingTabs;
class OutcomeWindow;
class WorkKeeper;
struct GroupedCommand;

class MainWindow : public QMainWindow {
  public:
    /// Both outlive the window.
    MainWindow(app::Workplace& workplace, FormDesk& desk);
    ~MainWindow() override;

    /// Opens a drawing of any kind that can be read in a tab of its own; one that is open is turned to. False
    /// if it can't be read, after a message, or if a command or a form is at work.
    bool OpenFile(const std::string& name);
    void OpenFiles(const std::vector<std::string>& names);
    /// Shows the host's active drawing as it is now, and a tab for each that is open.
    void ShowDrawing();
    /// After each act, for a person: a line in the history for what no box has shown, and a box for losses. A
    /// journal reports these itself.
    void TellLossesOfActs() { mTellsLosses = true; }
    /// Place, size and panels as the user left them at the last start, and for the next one. A journal's
    /// windows are always the same.
    void KeepLayout();
    /// A line of the command history.
    void Tell(const std::string& line);
    void ShowSelection();
    /// The window on the last CNC run, made at the first call.
    QWidget& ShowOutcome();
    /// Whether a CNC run has ended since the last call.
    bool TakeOutcomeNews();
    /// Null for a window whose unsaved work nobody keeps. The keeper outlives the window, or is taken away.
    void KeepWorkBy(WorkKeeper* keeper) { mKeeper = keeper; }
    /// Whether points can be asked for in the view: it is there, and no form stands before it.
    bool CanAskForPoint() const;
    /// A point of the drawing, pointed at or typed; null if the user gives up. Meanwhile nothing can be done
    /// but looking.
    std::optional<Point3> AskForPoint(std::string_view prompt);
    /// Null where the drawing can't be shown.
    DrawingView* View() const { return mView.get(); }
    /// Asks about each piece of work that a crash has left, and opens what is wanted.
    void OfferRecovery(FoundWork found);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void TellLosses();
    void SaveLayout();
    void MakeFileMenu();
    void MakeEditMenu();
    void MakeCommandMenus();
    void MakeViewMenu();
    void MakeSnapSwitch(QMenu& menu);
    void MakeView();
    void MakePartsDock();
    void MakePropertiesDock();
    void MakeCommandDock();
    QWidget* MakeTabs();
    /// Whether another drawing may become the active one: nothing is at work on the present one, and no form
    /// waits. Says so where not.
    bool MayTurn();
    void TurnTo(HostDocument& document);
    /// By places to the right, around the end.
    void TurnBy(int step);
    /// Asks about changes first; false where the drawing stays.
    bool CloseDrawing(HostDocument& document);
    void TakeDrawings();
    void LetGoOf(const HostDocument& document);
    void ShowTabs();
    void NoteTurn();
    void NoteClosing(const HostDocument& document);
    void AddRecent(const std::string& name);
    void ShowRecent();
    void RunCommand(const GroupedCommand& command);
    void SelectAllWhenNothingIs();
    void TypeCommand();
    void SendToHost(const std::string& text);
    void SendTurning(const std::string& text);
    void Escape();
    void ShowQuestion();
    void TakePoint(const Snap& snap);
    void TakePicked(const std::vector<std::string>& handles);
    void TakeTypedPoint(const std::string& typed);
    void LockForQuestion(bool locked);
    void TurnHostsView();
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
    /// Asks about the changes of one drawing, and of all of them; false where they are to stay.
    bool MayLose(HostDocument& document);
    bool MayLeave();
    std::optional<std::string> OtherTabAt(const std::string& name) const;
    bool Save();
    bool SaveUnder(const std::string& name);
    bool SaveAsAsked();
    bool SavesAsTyped(const std::string& typed);
    void NoteWritten(const std::filesystem::path& file);
    void TakeSaving();
    /// Opens a drawing; null if it can't be read, after a message.
    HostDocument* Read(const std::string& name);
    void NoteOpening(const std::string& name);
    void MarkChanged(const HostDocument& document);
    void MarkSaved(const HostDocument& document);
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
    /// The drawing of the last run, as its tab was called then.
    std::string mOutcomeDrawing;
    OpenDrawings mDrawings;
    DrawingTabs* mTabs = nullptr;
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
    /// A command's question for a point, while it waits.
    struct PointAsked;
    PointAsked* mAsked = nullptr;
    /// The point that the present command was given last.
    std::optional<Point3> mLastAsked;
    /// What has been pointed at since the host asked for objects.
    std::vector<std::string> mPointed;
    QAction* mSnaps = nullptr;
    bool mShowing = false, mAnyOpened = false;
    bool mTellsLosses = false, mKeepsLayout = false;
};

}  // namespace brenvik::desktop
