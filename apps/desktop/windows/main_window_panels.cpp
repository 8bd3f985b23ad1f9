// The panels around the picture: tree, properties and command line, and the one selection that all of them
// show.
#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSettings>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <map>

#include "drawings/drawing_io.h"
#include "journal/journal_parser.h"
#include "toolkit/qt_text.h"
#include "windows/command_groups.h"
#include "windows/main_window.h"

namespace brenvik::desktop {

namespace {

constexpr int HandleRole = Qt::UserRole;
constexpr int MostHistory = 5000;
constexpr const char* FrameKey = "mainWindowFrame";
constexpr const char* PanelsKey = "mainWindowPanels";

QDockWidget* MakeDock(QMainWindow& window, const QString& title, const char* name, Qt::DockWidgetArea area,
                      QWidget* content) {
    auto* const dock = new QDockWidget(title, &window);
    dock->setObjectName(name);
    dock->setWidget(content);
    window.addDockWidget(area, dock);
    return dock;
}

/// The line that commands are typed into. Where none of its own text can be taken back or done again, these
/// keys are the drawing's.
class CommandEdit : public QLineEdit {
  protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
            const auto& key = static_cast<const QKeyEvent&>(*event);
            if ((key.matches(QKeySequence::Undo) && !isUndoAvailable()) ||
                (key.matches(QKeySequence::Redo) && !isRedoAvailable())) {
                event->ignore();
                return false;
            }
        }
        return QLineEdit::event(event);
    }
};

}  // namespace

void MainWindow::MakePartsDock() {
    auto* const panel = new QWidget;
    auto* const layout = new QVBoxLayout(panel);
    mOrder = new QComboBox;
    mOrder->addItems({tr("By sub assembly"), tr("By material"), tr("By layer")});
    mSearch = new QLineEdit;
    mSearch->setObjectName("search");
    mSearch->setPlaceholderText(tr("Search parts"));
    mSearch->setClearButtonEnabled(true);
    mTree = new QTreeWidget;
    mTree->setObjectName("parts");
    mTree->setHeaderHidden(true);
    mTree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    layout->addWidget(mOrder);
    layout->addWidget(mSearch);
    layout->addWidget(mTree);
    MakeDock(*this, tr("Parts"), "partsDock", Qt::LeftDockWidgetArea, panel);
    connect(mOrder, &QComboBox::currentIndexChanged, this, [this] { ShowTree(); });
    connect(mSearch, &QLineEdit::textChanged, this, [this] { ShowTree(); });
    connect(mTree, &QTreeWidget::itemSelectionChanged, this, [this] { TakeTreeSelection(); });
    connect(mTree, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) { TakeTick(*item); });
}

void MainWindow::MakePropertiesDock() {
    mProperties = new QTreeWidget;
    mProperties->setObjectName("properties");
    mProperties->setHeaderLabels({tr("Property"), tr("Value")});
    mProperties->setRootIsDecorated(false);
    mProperties->setAlternatingRowColors(true);
    MakeDock(*this, tr("Properties"), "propertiesDock", Qt::RightDockWidgetArea, mProperties);
}

void MainWindow::MakeCommandDock() {
    auto* const panel = new QWidget;
    auto* const layout = new QVBoxLayout(panel);
    mHistory = new QPlainTextEdit;
    mHistory->setObjectName("history");
    mHistory->setReadOnly(true);
    mHistory->setMaximumBlockCount(MostHistory);
    auto* const line = new QHBoxLayout;
    mPrompt = new QLabel(tr("Command:"));
    mPrompt->setObjectName("prompt");
    mCommand = new CommandEdit;
    mCommand->setObjectName("command");
    line->addWidget(mPrompt);
    line->addWidget(mCommand, 1);
    layout->addWidget(mHistory);
    layout->addLayout(line);
    QDockWidget* const dock =
        MakeDock(*this, tr("Command line"), "commandDock", Qt::BottomDockWidgetArea, panel);
    resizeDocks({dock}, {150}, Qt::Vertical);
    connect(mCommand, &QLineEdit::returnPressed, this, [this] { TypeCommand(); });
    auto* const escape = new QShortcut(Qt::Key_Escape, mCommand, nullptr, nullptr, Qt::WidgetShortcut);
    connect(escape, &QShortcut::activated, this, [this] { Escape(); });
}

void MainWindow::KeepLayout() {
    mKeepsLayout = true;
    const QSettings settings;
    restoreGeometry(settings.value(FrameKey).toByteArray());
    restoreState(settings.value(PanelsKey).toByteArray());
}

void MainWindow::SaveLayout() {
    if (!mKeepsLayout) return;
    QSettings settings;
    settings.setValue(FrameKey, saveGeometry());
    settings.setValue(PanelsKey, saveState());
}

void MainWindow::Tell(const std::string& line) { mHistory->appendPlainText(ToQt(line)); }

void MainWindow::TypeCommand() {
    if (Document() == nullptr) {
        statusBar()->showMessage(tr("Open a drawing first."));
        return;
    }
    const std::string typed = FromQt(mCommand->text());
    mCommand->setText({});  // with it the keys that led to it
    if (mAsked != nullptr) return TakeTypedPoint(typed);
    if (SavesAsTyped(typed)) return;
    mDesk.Do([&] {
        mLastAsked.reset();
        const bool isAnswer = mWorkplace.typedCommands.Line().Busy(*Document());
        if (isAnswer || LooksAlongView(typed)) TurnHostsView();
        SendTurning(typed + "\n");
    });
}

void MainWindow::SendToHost(const std::string& text) {
    HostDocument& document = *Document();
    mDesk.Note("host " + JournalText(text));
    mWorkplace.typedCommands.Line().Send(document, text);
    MarkChanged(document);
}

void MainWindow::TypeAlone(const std::string& command) {
    if (Document() == nullptr) return;
    mDesk.Do([&, &document = *Document()] {
        HostCommandLine& line = mWorkplace.typedCommands.Line();
        if (line.Busy(document)) {
            mDesk.Note("escape");
            line.Send(document, "\x1b");
        }
        SendToHost(command + "\n");
    });
}

void MainWindow::ShowDrawing() {
    if (mShowing) return;
    TakeDrawings();
    ShowHistorySteps();
    HostDocument* const document = Document();
    ShowTabs();
    setWindowModified(document != nullptr && mDrawings.IsChanged(*document));
    const QString name = document == nullptr ? QString() : QFileInfo(ToQt(document->FullName())).fileName();
    setWindowTitle(name.isEmpty() ? tr("Brenvik[*]") : name + tr("[*] - Brenvik"));
    const std::size_t parts = document == nullptr ? 0 : PartLinesOf(*document).size();
    statusBar()->showMessage(document == nullptr ? tr("Open a drawing to begin: Ctrl+O.")
                             : parts == 1        ? tr("1 part. Ctrl+L opens the cut list.")
                                                 : tr("%1 parts. Ctrl+L opens the cut list.").arg(parts));
    ShowQuestion();
    if (mView) mView->Show(document);
    ShowTree();
}

void MainWindow::ShowTree() {
    mShowing = true;
    mTree->clear();
    if (Document() != nullptr) {
        const auto order = static_cast<PartOrder>(mOrder->currentIndex());
        const std::string words = FromQt(mSearch->text());
        std::map<std::string, QTreeWidgetItem*> headings;
        QList<QTreeWidgetItem*> tops;
        for (const PartLine& part : PartLinesOf(*Document())) {
            if (!Matches(part, words)) continue;
            QTreeWidgetItem*& heading = headings[HeadingOf(part, order)];
            if (heading == nullptr) {
                heading = new QTreeWidgetItem({ToQt(HeadingOf(part, order))});
                tops << heading;
            }
            auto* const item = new QTreeWidgetItem(heading, {ToQt(part.name)});
            item->setData(0, HandleRole, ToQt(part.handle));
            item->setCheckState(0, part.visible ? Qt::Checked : Qt::Unchecked);
        }
        mTree->addTopLevelItems(tops);
        for (QTreeWidgetItem* top : tops)
            top->setText(0, QString("%1 (%2)").arg(top->text(0)).arg(top->childCount()));
        mTree->sortItems(0, Qt::AscendingOrder);
        mTree->expandAll();
    }
    mShowing = false;
    ShowSelection();
}

void MainWindow::ShowSelection() {
    mShowing = true;
    const std::vector<std::string> handles = SelectedHandles();
    for (int at = 0; at < mTree->topLevelItemCount(); ++at) {
        QTreeWidgetItem& top = *mTree->topLevelItem(at);
        for (int child = 0; child < top.childCount(); ++child) {
            const std::string handle = FromQt(top.child(child)->data(0, HandleRole).toString());
            top.child(child)->setSelected(std::find(handles.begin(), handles.end(), handle) != handles.end());
        }
    }
    if (mView) mView->Mark(mPointed.empty() ? handles : mPointed);
    mShowing = false;
    ShowProperties();
}

void MainWindow::ShowProperties() {
    mProperties->clear();
    const std::vector<std::string> handles = SelectedHandles();
    if (handles.size() > 1)
        mProperties->addTopLevelItem(new QTreeWidgetItem({tr("Selected"), QString::number(handles.size())}));
    if (handles.size() != 1) return;
    auto* const entity = dynamic_cast<HostEntity*>(Document()->HandleToObject(handles.front()));
    if (entity == nullptr) return;
    for (const auto& [caption, value] : PropertiesOf(*entity))
        mProperties->addTopLevelItem(new QTreeWidgetItem({ToQt(caption), ToQt(value)}));
    mProperties->resizeColumnToContents(0);
}

std::vector<std::string> MainWindow::SelectedHandles() const {
    std::vector<std::string> handles;
    if (Document() != nullptr)
        for (const HostEntity* entity : Document()->PreviousSelection()) handles.push_back(entity->Handle());
    return handles;
}

void MainWindow::SelectHandles(const std::vector<std::string>& handles) {
    if (Document() == nullptr) return;
    std::string step = "select";
    for (const std::string& handle : handles) step += " " + handle;
    mDesk.Note(handles.empty() ? "select none" : step, "select ");
    app::SelectHandles(*Document(), handles);
}

void MainWindow::TakeTreeSelection() {
    if (mShowing) return;
    std::vector<std::string> handles;
    for (const QTreeWidgetItem* item : mTree->selectedItems()) {
        if (item->parent() != nullptr) handles.push_back(FromQt(item->data(0, HandleRole).toString()));
        // A heading includes everything below it.
        for (int child = 0; child < item->childCount(); ++child)
            handles.push_back(FromQt(item->child(child)->data(0, HandleRole).toString()));
    }
    SelectHandles(handles);
    if (mView) mView->Mark(SelectedHandles());
    ShowProperties();
}

void MainWindow::TakeTick(QTreeWidgetItem& item) {
    const std::string handle = FromQt(item.data(0, HandleRole).toString());
    if (mShowing || handle.empty() || Document() == nullptr) return;
    const bool shown = item.checkState(0) == Qt::Checked;
    // The tree is filled anew by it, which its own signal would not outlive.
    QTimer::singleShot(0, this, [this, handle, shown, ticked = Document()] {
        // The part of this handle in another drawing is not meant.
        if (Document() == nullptr || Document() != ticked) return;
        mDesk.Do([this, handle, shown] {
            mDesk.Note((shown ? "show entity " : "hide entity ") + handle);
            app::ShowEntity(*Document(), handle, shown);
            MarkChanged(*Document());
        });
    });
}

}  // namespace brenvik::desktop
