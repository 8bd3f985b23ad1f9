// The drawings that stand open, a tab for each: opened, turned to, closed.
#include <QAction>
#include <QApplication>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>
#include <algorithm>

#include "drafting_host/document/drawing_history.h"
#include "drawings/grid_session.h"
#include "file_roots/places.h"
#include "journal/journal_parser.h"
#include "recovery/work_keeper.h"
#include "toolkit/qt_text.h"
#include "windows/drawing_filters.h"
#include "windows/drawing_tabs.h"
#include "windows/main_window.h"

namespace brenvik::desktop {

namespace {

constexpr int MostRecent = 8;
constexpr const char* RecentKey = "recent";

}  // namespace

void MainWindow::MakeFileMenu() {
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open..."), QKeySequence::Open, this, [this] {
        std::vector<std::string> names;
        for (const QString& name :
             QFileDialog::getOpenFileNames(this, tr("Open drawings"), {}, FilterForOpening()))
            names.push_back(FromQt(name));
        OpenFiles(names);
    });
    mRecent = file->addMenu(tr("Open &recent"));
    ShowRecent();
    file->addSeparator();
    file->addAction(tr("&Save"), QKeySequence::Save, this, [this] { Save(); });
    file->addAction(tr("Save &as..."), QKeySequence(tr("Ctrl+Shift+S")), this, [this] { SaveAsAsked(); });
    file->addAction(tr("&Keep unsaved work..."), this, [this] { AskKeepingInterval(); });
    file->addSeparator();
    file->addAction(tr("&Next drawing"), QKeySequence(tr("Ctrl+Tab")), this, [this] { TurnBy(1); })
        ->setObjectName("nextDrawing");
    QAction* const previous = file->addAction(tr("&Previous drawing"), this, [this] { TurnBy(-1); });
    previous->setObjectName("previousDrawing");
    // With Shift the tabulator is another key to some keyboards.
    previous->setShortcuts({QKeySequence(tr("Ctrl+Shift+Tab")), QKeySequence(tr("Ctrl+Shift+Backtab"))});
    file->addAction(tr("&Close"), QKeySequence(tr("Ctrl+W")), this,
                    [this] {
                        if (Document() != nullptr && MayTurn()) CloseDrawing(*Document());
                    })
        ->setObjectName("closeDrawing");
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence(tr("Ctrl+Q")), this, [this] { close(); });
}

QWidget* MainWindow::MakeTabs() {
    mTabs = new DrawingTabs([this] { return MayTurn(); });
    const auto drawingOf = [this](int tab) { return mDrawings.All().at(static_cast<std::size_t>(tab)); };
    mTabs->onChosen = [this, drawingOf](int tab) { TurnTo(*drawingOf(tab)); };
    mTabs->onCloseWished = [this, drawingOf](int tab) { CloseDrawing(*drawingOf(tab)); };
    return mTabs;
}

bool MainWindow::MayTurn() {
    if (mDesk.AtRest() && mDesk.Top() == this) return true;
    statusBar()->showMessage(tr("Finish the open command or form first."));
    return false;
}

void MainWindow::ShowTabs() {
    std::vector<DrawingTabs::Tab> tabs;
    int front = -1;
    for (HostDocument* const document : mDrawings.All()) {
        if (document == Document()) front = static_cast<int>(tabs.size());
        const QString mark = mDrawings.IsChanged(*document) ? QStringLiteral(" *") : QString();
        tabs.push_back({ToQt(mDrawings.NameOf(*document)) + mark, ToQt(TextFromPath(FileOf(*document)))});
    }
    mTabs->Show(tabs, front);
}

/// Commands open and close drawings too, as that which writes copies of a drawing and goes on in the first.
void MainWindow::TakeDrawings() {
    const OpenDrawings::News news = mDrawings.Look();
    for (const HostDocument* closed : news.closed) LetGoOf(*closed);
    for (HostDocument* opened : news.opened) {
        if (HistoryOf(*opened) == nullptr) KeepHistory(*opened);
        if (mKeeper != nullptr) mKeeper->Follow(*opened);
    }
}

void MainWindow::LetGoOf(const HostDocument& document) {
    if (mKeeper != nullptr) mKeeper->Forget(document);
    if (mView) mView->Forget(document);
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
        mRecent->addAction(name, this, [this, name] { OpenFile(FromQt(name)); });
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
        // Close the half-read drawing.
        if (Document() != nullptr && Document() != before) mWorkplace.host.CloseDocument(*Document());
        return nullptr;
    }
    QApplication::restoreOverrideCursor();
    for (const ReadNote& note : Document()->Notes()) Tell(name + ": " + note.text);
    return Document();
}

bool MainWindow::OpenFile(const std::string& name) {
    if (!MayTurn()) return false;
    if (HostDocument* const open = mDrawings.OfFile(Settled(PathFromText(name)))) {
        AddRecent(name);
        TurnTo(*open);
        return true;
    }
    if (Read(name) == nullptr) return false;
    AddRecent(name);
    NoteOpening(name);
    ShowDrawing();
    return true;
}

void MainWindow::OpenFiles(const std::vector<std::string>& names) {
    for (const std::string& name : names) OpenFile(name);
}

/// The first drawing is the one that the journal will be played on, with every part of it selected.
void MainWindow::NoteOpening(const std::string& name) {
    const std::string path = FromQt(QFileInfo(ToQt(name)).absoluteFilePath());
    mDesk.Note((mAnyOpened ? "open " : "# The drawing: ") + JournalText(path));
    if (!mAnyOpened) mDesk.Note("select none");
    mAnyOpened = true;
}

/// A journal turns by the word that opens.
void MainWindow::NoteTurn() {
    if (Document() == nullptr) return;
    const std::filesystem::path file = FileOf(*Document());
    if (file.empty()) return mDesk.Note("# The drawing without a name, which a journal can't turn to.");
    mDesk.Note("open " + JournalText(TextFromPath(file)), "open ");
}

void MainWindow::TurnTo(HostDocument& document) {
    if (&document == Document()) return;
    mWorkplace.host.Activate(document);
    NoteTurn();
    ShowDrawing();
}

void MainWindow::TurnBy(int step) {
    const std::vector<HostDocument*> all = mDrawings.All();
    if (all.size() < 2 || !MayTurn()) return;
    const auto present = std::ranges::find(all, Document()) - all.begin();
    const auto count = static_cast<std::ptrdiff_t>(all.size());
    TurnTo(*all.at(static_cast<std::size_t>((present + step + count) % count)));
}

bool MainWindow::CloseDrawing(HostDocument& document) {
    if (!MayLose(document)) return false;
    const bool wasInFront = &document == Document();
    NoteClosing(document);
    LetGoOf(document);
    mWorkplace.host.CloseDocument(document);
    if (wasInFront) NoteTurn();
    ShowDrawing();
    return true;
}

/// A journal closes the drawing in front, and goes on in the one that was in front before.
void MainWindow::NoteClosing(const HostDocument& document) {
    const std::filesystem::path file = FileOf(document);
    if (&document != Document()) {
        if (file.empty())
            return mDesk.Note("# Closed a drawing without a name, which a journal can't turn to.");
        mDesk.Note("open " + JournalText(TextFromPath(file)));
    }
    mDesk.Note("close drawing");
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    std::vector<std::string> names;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) names.push_back(FromQt(url.toLocalFile()));
    event->acceptProposedAction();
    // Whoever is dragging waits for the end of this.
    QTimer::singleShot(0, this, [this, names] { OpenFiles(names); });
}

}  // namespace brenvik::desktop
