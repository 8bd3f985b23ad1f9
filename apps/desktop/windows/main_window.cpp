// How the window is put together, and what its own menus do.
#include "windows/main_window.h"

#include <QDesktopServices>
#include <QDockWidget>
#include <QInputDialog>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QUrl>
#include <QVBoxLayout>

#include "base/letter_case.h"
#include "cnc/part/run_state.h"
#include "drafting_host/document/drawing_history.h"
#include "drawings/part_file.h"
#include "file_roots/places.h"
#include "part_pictures/outcome_window.h"
#include "toolkit/qt_text.h"
#include "toolkit/screen_room.h"
#include "windows/command_groups.h"
#include "windows/told_losses.h"

namespace brenvik::desktop {

namespace {

/// A command of the system as its menu says it, one of the host by its name.
std::string WordsOfCommand(const std::string& command) {
    for (const CommandEntry& entry : CommandTable())
        if (EqualsIgnoreCase(entry.method, command)) return "\"" + std::string(entry.description) + "\"";
    return command;
}

}  // namespace

MainWindow::MainWindow(app::Workplace& workplace, FormDesk& desk)
    : mWorkplace(workplace), mDesk(desk), mDrawings(workplace.host) {
    setObjectName("mainWindow");
    setAcceptDrops(true);
    resize(QSize(1280, 800).boundedTo(RoomFor(*this).size()));
    MakeView();
    MakePartsDock();
    MakePropertiesDock();
    MakeCommandDock();
    MakeFileMenu();
    MakeEditMenu();
    MakeCommandMenus();
    MakeViewMenu();
    desk.owner = this;
    // While a form stands open over the window nobody looks at what lies below.
    desk.onDone = [this] {
        if (mTellsLosses) TellLosses();
        if (mDesk.Top() != this) return;
        TakeSaving();
        ShowDrawing();
        if (TakeOutcomeNews()) ShowOutcome();
    };
    desk.onRowEntered = [this](const std::string& handle) {
        if (mView) mView->Mark({handle});
    };
    workplace.drawingWritten = [this](const std::filesystem::path& file) { NoteWritten(file); };
    workplace.host.SetTranscript([this](std::string_view line) { Tell(std::string(line)); });
    ShowDrawing();
}

MainWindow::~MainWindow() {
    mDesk.owner = nullptr;
    mDesk.onDone = nullptr;
    mDesk.onRowEntered = nullptr;
    mWorkplace.host.SetTranscript({});
    mWorkplace.drawingWritten = {};
    // Ahead of the window that lends it its place on the screen.
    mView.reset();
}

void MainWindow::TellLosses() {
    const ToldLosses told = TakeToldLosses();
    for (const std::string& line : told.lines) Tell(line);
    ShowLosses(told.losses);
}

void MainWindow::MakeView() {
    auto* const middle = new QWidget(this);
    auto* const layout = new QVBoxLayout(middle);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(MakeTabs());
    setCentralWidget(middle);
    std::string reason;
    mView = MakeModellerView(reason);
    if (!mView) return LoseView(reason);
    layout->addWidget(&mView->Widget(), 1);
    mView->Widget().installEventFilter(this);
    mView->onPicked = [this](const std::vector<std::string>& handles) { TakePicked(handles); };
    mView->onPoint = [this](const Snap& snap) { TakePoint(snap); };
    mView->onDead = [this](const std::string& why) { LoseView(why + " Everything else works."); };
}

void MainWindow::LoseView(const std::string& reason) {
    auto* const label = new QLabel(ToQt(reason), this);
    label->setObjectName("noView");
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setMargin(24);
    // It may be the view itself that calls: it is deleted when the events are through.
    if (DrawingView* const lost = mView.release()) {
        lost->Widget().hide();
        lost->Widget().deleteLater();
    }
    static_cast<QVBoxLayout*>(centralWidget()->layout())->addWidget(label, 1);
}

void MainWindow::MakeEditMenu() {
    QMenu* const edit = menuBar()->addMenu(tr("&Edit"));
    mUndo = edit->addAction(tr("&Undo"), QKeySequence::Undo, this, [this] { TypeAlone("U"); });
    mUndo->setObjectName("undo");
    mRedo = edit->addAction(tr("&Redo"), QKeySequence(tr("Ctrl+Y")), this, [this] { TypeAlone("REDO"); });
    mRedo->setObjectName("redo");
}

void MainWindow::ShowHistorySteps() {
    const DrawingHistory* const history = Document() == nullptr ? nullptr : HistoryOf(*Document());
    const auto show = [](QAction& action, const QString& caption, const std::string* command) {
        action.setEnabled(command != nullptr);
        action.setText(command == nullptr ? caption : caption + " " + ToQt(WordsOfCommand(*command)));
    };
    show(*mUndo, tr("&Undo"), history == nullptr ? nullptr : history->NextUndo());
    show(*mRedo, tr("&Redo"), history == nullptr ? nullptr : history->NextRedo());
}

void MainWindow::MakeCommandMenus() {
    for (const CommandGroup& group : CommandGroups()) {
        QMenu* const menu = menuBar()->addMenu(ToQt(group.caption));
        for (const GroupedCommand& command : group.commands) {
            const CommandEntry& entry = CommandEntryOf(command.command);
            QAction* const action = menu->addAction(ToQt(entry.description));
            action->setObjectName(ToQt(entry.method));
            action->setStatusTip(ToQt("Typed at the command line: " + std::string(entry.hostCommands)));
            if (!command.key.empty()) action->setShortcut(QKeySequence(ToQt(command.key)));
            connect(action, &QAction::triggered, this, [this, &command] { RunCommand(command); });
        }
        if (!group.endsWithOutcome) continue;
        menu->addSeparator();
        menu->addAction(tr("&Outcome of the last run..."), QKeySequence(tr("Ctrl+R")), this,
                        [this] { ShowOutcome(); });
    }
}

void MainWindow::MakeViewMenu() {
    QMenu* const menu = menuBar()->addMenu(tr("&View"));
    menu->addAction(tr("&Find a command..."), QKeySequence(tr("Ctrl+K")), this,
                    [this] { FindCommandByWords(); });
    menu->addSeparator();
    menu->addAction(tr("Show &everything"), QKeySequence(tr("F6")), this, [this] {
        if (mView) mView->Fit();
    });
    const std::pair<const char*, ViewSide> sides[] = {
        {"&Isometric", ViewSide::Isometric}, {"&Top", ViewSide::Top},   {"&Bottom", ViewSide::Bottom},
        {"F&ront", ViewSide::Front},         {"B&ack", ViewSide::Back}, {"&Left", ViewSide::Left},
        {"Ri&ght", ViewSide::Right}};
    for (const auto& [caption, side] : sides)
        menu->addAction(tr(caption), this, [this, side = side] {
            if (mView) mView->LookFrom(side);
        });
    menu->addSeparator();
    QAction* const wires = menu->addAction(tr("&Wireframe"), this, [this](bool on) {
        if (mView) mView->SetLook(on ? ViewLook::Wireframe : ViewLook::Shaded);
    });
    wires->setCheckable(true);
    wires->setShortcut(QKeySequence(tr("Ctrl+Shift+W")));
    MakeSnapSwitch(*menu);
    menu->addSeparator();
    // A panel that was closed stays so at the next start.
    for (const QDockWidget* panel : findChildren<QDockWidget*>()) menu->addAction(panel->toggleViewAction());
}

PartPicture MainWindow::ReadPartPicture(const std::string& path) {
    std::vector<std::string> remarks;
    return app::ReadPartFile(mPartFiles, TextFromPath(mWorkplace.files.Resolve(path)), remarks);
}

/// The run has come back to the drawing that it was called on.
bool MainWindow::TakeOutcomeNews() {
    if (!mOutcomes.TakeNews()) return false;
    mOutcomeDrawing = Document() == nullptr ? std::string() : mDrawings.NameOf(*Document());
    return true;
}

QWidget& MainWindow::ShowOutcome() {
    if (mOutcomeWindow == nullptr) {
        mOutcomeWindow =
            new OutcomeWindow([this](const std::string& path) { return ReadPartPicture(path); }, this);
        mOutcomeWindow->SetFolderOpener([this] {
            const std::string folder = TextFromPath(mWorkplace.files.Resolve(OutputFolder));
            QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(folder)));
        });
    }
    mOutcomeWindow->Show(mOutcomes.Last(), mOutcomeDrawing);
    mOutcomeWindow->show();
    mOutcomeWindow->raise();
    return *mOutcomeWindow;
}

void MainWindow::FindCommandByWords() {
    if (mAsked != nullptr) return;
    QStringList names;
    for (const CommandGroup& group : CommandGroups())
        for (const GroupedCommand& command : group.commands)
            names << ToQt(CommandEntryOf(command.command).description);
    QInputDialog dialog(this);
    dialog.setWindowTitle(tr("Find a command"));
    dialog.setLabelText(tr("Command"));
    dialog.setComboBoxItems(names);
    dialog.setComboBoxEditable(false);
    dialog.setOption(QInputDialog::UseListViewForComboBoxItems);
    if (dialog.exec() != QDialog::Accepted) return;
    for (const CommandGroup& group : CommandGroups())
        for (const GroupedCommand& command : group.commands)
            if (ToQt(CommandEntryOf(command.command).description) == dialog.textValue())
                return RunCommand(command);
}

void MainWindow::RunCommand(const GroupedCommand& command) {
    if (mAsked != nullptr) return;
    const bool needsDrawing = command.wantsParts || command.changesDrawing;
    if (needsDrawing && Document() == nullptr) {
        statusBar()->showMessage(tr("Open a drawing first."));
        return;
    }
    mDesk.Do([this, &command, document = Document()] {
        if (command.wantsParts) SelectAllWhenNothingIs();
        mLastAsked.reset();
        if (command.looksAlongView) TurnHostsView();
        const std::string method(CommandEntryOf(command.command).method);
        mDesk.Note("command " + method);
        mWorkplace.typedCommands.Call(method);
        if (command.changesDrawing) MarkChanged(*document);
    });
}

/// An empty list helps nobody: without a selection every part is meant.
void MainWindow::SelectAllWhenNothingIs() {
    if (!SelectedHandles().empty()) return;
    std::vector<std::string> handles;
    for (const PartLine& part : PartLinesOf(*Document()))
        if (part.visible) handles.push_back(part.handle);
    SelectHandles(handles);
}

}  // namespace brenvik::desktop
