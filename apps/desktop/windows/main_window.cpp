// How the window is put together, and what its own menus do.
#include "windows/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QUrl>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/text.h"
#include "cnc/part/run_state.h"
#include "drafting_host/document/drawing_history.h"
#include "drafting_host/document/files/drawing_units.h"
#include "drawings/drawing_io.h"
#include "drawings/drawing_unit.h"
#include "drawings/grid_session.h"
#include "drawings/part_file.h"
#include "file_roots/places.h"
#include "journal/journal_parser.h"
#include "part_pictures/outcome_window.h"
#include "recovery/work_keeper.h"
#include "toolkit/qt_text.h"
#include "windows/command_groups.h"
#include "windows/told_losses.h"

namespace brenvik::desktop {

namespace {

constexpr int MostRecent = 8;
constexpr const char* RecentKey = "recent";
constexpr const char* OpenFilter =
    "Drawings (*.dxf *.dwg *.step *.stp *.sat *.sab *.DXF *.DWG *.STEP *.STP *.SAT *.SAB);;All files (*)";
constexpr const char* SaveFilter = "DXF drawing (*.dxf);;STEP (*.step *.stp);;ACIS text (*.sat)";

std::string TextOf(const Failure& failure) {
    return failure.detail().empty() ? failure.description() : failure.detail();
}

/// A command of the system as its menu says it, one of the host by its name.
std::string WordsOfCommand(const std::string& command) {
    for (const CommandEntry& entry : CommandTable())
        if (EqualsIgnoreCase(entry.method, command)) return "\"" + std::string(entry.description) + "\"";
    return command;
}

}  // namespace

MainWindow::MainWindow(app::Workplace& workplace, FormDesk& desk) : mWorkplace(workplace), mDesk(desk) {
    setObjectName("mainWindow");
    setAcceptDrops(true);
    resize(1280, 800);
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
    std::string reason;
    mView = MakeModellerView(reason);
    if (!mView) return LoseView(reason);
    setCentralWidget(&mView->Widget());
    mView->onPicked = [this](const std::vector<std::string>& handles) {
        mDesk.Do([&] { SelectHandles(handles); });
    };
    mView->onDead = [this](const std::string& why) { LoseView(why + " Everything else works."); };
}

void MainWindow::LoseView(const std::string& reason) {
    auto* const label = new QLabel(ToQt(reason), this);
    label->setObjectName("noView");
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setMargin(24);
    // It may be the view itself that calls: the window deletes its old middle when the events are through.
    static_cast<void>(mView.release());
    setCentralWidget(label);
}

void MainWindow::MakeFileMenu() {
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open..."), QKeySequence::Open, this, [this] {
        if (!MayLeave()) return;
        const QString name = QFileDialog::getOpenFileName(this, tr("Open a drawing"), {}, OpenFilter);
        if (!name.isEmpty()) OpenFile(FromQt(name));
    });
    mRecent = file->addMenu(tr("Open &recent"));
    ShowRecent();
    file->addSeparator();
    file->addAction(tr("&Save"), QKeySequence::Save, this, [this] { Save(); });
    file->addAction(tr("Save &as..."), QKeySequence(tr("Ctrl+Shift+S")), this, [this] { SaveAsAsked(); });
    file->addAction(tr("&Keep unsaved work..."), this, [this] { AskKeepingInterval(); });
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence(tr("Ctrl+Q")), this, [this] { close(); });
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
    wires->setShortcut(QKeySequence(tr("Ctrl+W")));
}

PartPicture MainWindow::ReadPartPicture(const std::string& path) {
    std::vector<std::string> remarks;
    return app::ReadPartFile(mPartFiles, TextFromPath(mWorkplace.files.Resolve(path)), remarks);
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
    mOutcomeWindow->Show(mOutcomes.Last());
    mOutcomeWindow->show();
    mOutcomeWindow->raise();
    return *mOutcomeWindow;
}

void MainWindow::AddRecent(const std::string& name) {
    QSettings settings;
    QStringList recent = settings.value(RecentKey).toStringList();
    const QString path = QFileInfo(ToQt(name)).absoluteFilePath();
    recent.removeAll(path);
    recent.prepend(path);
    settings.setValue(RecentKey, recent.mid(0, MostRecent));
    ShowRecent();
}

void MainWindow::ShowRecent() {
    mRecent->clear();
    for (const QString& name : QSettings().value(RecentKey).toStringList())
        mRecent->addAction(name, this, [this, name] {
            if (MayLeave()) OpenFile(FromQt(name));
        });
    mRecent->setEnabled(!mRecent->isEmpty());
}

HostDocument* MainWindow::Read(const std::string& name) {
    HostDocument* const before = Document();
    bool opened = false;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        app::DrawingOptions options;
        options.drawing = name;
        app::Teller teller(true);
        app::OpenInHome(mWorkplace, options, {}, teller);
        opened = true;
    } catch (const std::exception& failure) {
        QApplication::restoreOverrideCursor();
        QMessageBox::warning(this, tr("Open"), ToQt(failure.what()));
    }
    if (!opened) {
        // Close the half-read drawing and keep the previous one.
        if (Document() != nullptr && Document() != before) mWorkplace.host.CloseDocument(*Document());
        return nullptr;
    }
    QApplication::restoreOverrideCursor();
    if (before != nullptr) {
        if (mKeeper != nullptr) mKeeper->Forget(*before);
        mWorkplace.host.CloseDocument(*before);
    }
    for (const ReadNote& note : Document()->Notes()) Tell(name + ": " + note.text);
    return Document();
}

bool MainWindow::OpenFile(const std::string& name) {
    HostDocument* const document = Read(name);
    if (document == nullptr) return false;
    AddRecent(name);
    NoteOpening(name);
    setWindowModified(false);
    KeepHistory(*document);
    if (mKeeper != nullptr) mKeeper->Follow(*document);
    ShowDrawing();
    return true;
}

/// The first drawing is the one that the journal will be played on.
void MainWindow::NoteOpening(const std::string& name) {
    const std::string path = FromQt(QFileInfo(ToQt(name)).absoluteFilePath());
    mDesk.Note((mAnyOpened ? "open " : "# The drawing: ") + JournalText(path));
    // What plays a journal selects every part at its beginning.
    if (!mAnyOpened) mDesk.Note("select none");
    mAnyOpened = true;
}

bool MainWindow::SaveUnder(const std::string& name) {
    const auto fail = [this](const std::string& reason) {
        mDesk.NoteFailure();
        QMessageBox::warning(this, tr("Save"), ToQt(reason));
        return false;
    };
    mDesk.Note("save " + JournalText(name));
    try {
        if (app::IsDxfName(name)) {
            Document()->SaveAs(name, SaveAsKind::Dxf2000);
        } else {
            app::RequireWritableFormat(name);
            QStringList losses;
            for (const std::string& loss :
                 SaveDrawingInUnit(*Document(), PathFromText(name), app::DrawingUnitOfHome()))
                losses << ToQt(loss);
            if (!losses.isEmpty())
                QMessageBox::warning(this, tr("Save"), ToQt(name) + ":\n" + losses.join("\n"));
        }
    } catch (const Failure& failure) {
        return fail(TextOf(failure));
    } catch (const std::exception& failure) {
        return fail(failure.what());
    }
    AddRecent(name);
    setWindowModified(false);
    if (mKeeper != nullptr) mKeeper->Follow(*Document());
    ShowDrawing();
    statusBar()->showMessage(tr("Saved as %1.").arg(ToQt(name)));
    return true;
}

/// A command has saved the drawing: what it does to it later in the same breath is not in the file.
void MainWindow::NoteWritten(const std::filesystem::path& file) {
    HostDocument* const document = Document();
    if (document != nullptr && file == mWorkplace.host.Resolve(document->FullName()))
        mWritten.emplace(*document);
}

void MainWindow::TakeSaving() {
    const std::optional<DrawingState> written = std::exchange(mWritten, std::nullopt);
    if (!written || Document() == nullptr || !(*written == DrawingState(*Document()))) return;
    setWindowModified(false);
    if (mKeeper != nullptr) mKeeper->Follow(*Document());
}

/// The host's words for saving, which a user types from habit; a name may follow the latter two. False for
/// anything else, and for an answer to what the line asks.
bool MainWindow::SavesAsTyped(const std::string& typed) {
    if (mWorkplace.typedCommands.Line().Busy(*Document())) return false;
    const HeadAndTail words = SplitAtFirst(Trim(typed), ' ');
    const std::string& word = words.head;
    std::string name = Trim(words.tail);
    if (name.size() > 1 && name.front() == '"' && name.back() == '"') name = name.substr(1, name.size() - 2);
    if (EqualsIgnoreCase(word, "QSAVE") && name.empty()) return Save(), true;
    if (!EqualsIgnoreCase(word, "SAVE") && !EqualsIgnoreCase(word, "SAVEAS")) return false;
    if (name.empty()) return SaveAsAsked(), true;
    if (!app::IsWritableFormat(name)) name += ".dxf";
    return SaveUnder(name), true;
}

bool MainWindow::Save() {
    if (Document() == nullptr) return false;
    const std::string name = Document()->FullName();
    // What came from another system keeps its file; the drawing to keep is a DXF.
    if (name.empty() || FoldLower(name).rfind(".dxf") != name.size() - 4) return SaveAsAsked();
    return SaveUnder(name);
}

bool MainWindow::SaveAsAsked() {
    if (Document() == nullptr) return false;
    const QFileInfo present(ToQt(Document()->FullName()));
    const QString proposed = present.path() + "/" + present.completeBaseName() + ".dxf";
    QString name = QFileDialog::getSaveFileName(this, tr("Save the drawing"), proposed, SaveFilter);
    if (name.isEmpty()) return false;
    if (QFileInfo(name).suffix().isEmpty()) name += ".dxf";
    return SaveUnder(FromQt(name));
}

bool MainWindow::MayLeave() {
    if (!isWindowModified() || Document() == nullptr) return true;
    const auto answer =
        QMessageBox::question(this, tr("Brenvik"), tr("The drawing has been changed. Save it?"),
                              QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    if (answer == QMessageBox::Save) return Save();
    return answer == QMessageBox::Discard;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!MayLeave()) return event->ignore();
    // What isn't saved by now isn't wanted.
    if (mKeeper != nullptr && Document() != nullptr) mKeeper->Forget(*Document());
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && MayLeave()) OpenFile(FromQt(urls.front().toLocalFile()));
}

void MainWindow::FindCommandByWords() {
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

bool MainWindow::Run(std::string_view method) {
    for (const CommandGroup& group : CommandGroups())
        for (const GroupedCommand& command : group.commands)
            if (EqualsIgnoreCase(CommandEntryOf(command.command).method, method)) {
                RunCommand(command);
                return true;
            }
    return false;
}

void MainWindow::RunCommand(const GroupedCommand& command) {
    const bool needsDrawing = command.wantsParts || command.changesDrawing;
    if (needsDrawing && Document() == nullptr) {
        statusBar()->showMessage(tr("Open a drawing first."));
        return;
    }
    mDesk.Do([this, &command] {
        if (command.wantsParts) SelectAllWhenNothingIs();
        const std::string method(CommandEntryOf(command.command).method);
        mDesk.Note("command " + method);
        mWorkplace.typedCommands.Call(method);
        if (command.changesDrawing) MarkChanged();
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
