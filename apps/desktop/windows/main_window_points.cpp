// Points and objects that commands ask for, pointed at in the view.
#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QStatusBar>
#include <QToolButton>
#include <QTreeWidget>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/text.h"
#include "drafting_host/command/session/view_frame.h"
#include "journal/journal_parser.h"
#include "toolkit/exact_text.h"
#include "toolkit/qt_text.h"
#include "windows/main_window.h"

namespace brenvik::desktop {

namespace {

constexpr const char* SnapsKey = "snaps";
constexpr const char* ViewMenu = "viewMenu";

bool IsNear(const Point3& one, const Point3& other) {
    constexpr double noise = 1e-9;
    return std::abs(one.x - other.x) < noise && std::abs(one.y - other.y) < noise &&
           std::abs(one.z - other.z) < noise;
}

bool IsSameView(const HostView& one, const HostView& other) {
    return IsNear(one.towardsEye, other.towardsEye) && IsNear(one.up, other.up);
}

double TwistInDegrees(const HostView& view) {
    const double turned = TwistOf(view.towardsEye, view.up) * 180 / std::numbers::pi;
    return turned > 180 ? turned - 360 : turned;
}

bool IsTwisted(const HostView& view) { return std::abs(TwistInDegrees(view)) > 1e-7; }

}  // namespace

struct MainWindow::PointAsked {
    std::string prompt;
    std::optional<Point3> answer;
    QEventLoop loop;
};

void MainWindow::MakeSnapSwitch(QMenu& menu) {
    menu.setObjectName(ViewMenu);
    mSnaps = menu.addAction(tr("S&naps"));
    mSnaps->setObjectName("snaps");
    mSnaps->setCheckable(true);
    mSnaps->setShortcut(QKeySequence(tr("F3")));
    mSnaps->setStatusTip(
        tr("Points that are asked for: ends, middles, centres, intersections and feet of "
           "perpendiculars near the mouse"));
    mSnaps->setToolTip(tr("Snaps to ends, middles, centres, intersections, perpendiculars (F3)"));
    mSnaps->setChecked(QSettings().value(SnapsKey, true).toBool());
    connect(mSnaps, &QAction::toggled, this, [this](bool on) {
        QSettings().setValue(SnapsKey, on);
        ShowQuestion();
    });
    auto* const button = new QToolButton;
    button->setDefaultAction(mSnaps);
    statusBar()->addPermanentWidget(button);
}

bool MainWindow::CanAskForPoint() const { return mView && mDesk.Top() == this && mAsked == nullptr; }

std::optional<Point3> MainWindow::AskForPoint(std::string_view prompt) {
    PointAsked asked;
    asked.prompt = Trim(prompt);
    mAsked = &asked;
    LockForQuestion(true);
    if (mView) mView->Show(Document());
    ShowQuestion();
    mCommand->setFocus();
    asked.loop.exec();
    mAsked = nullptr;
    LockForQuestion(false);
    ShowQuestion();
    if (asked.answer) mLastAsked = asked.answer;
    return asked.answer;
}

/// The command is in the middle of its work: what could take the drawing away from under it has to wait.
void MainWindow::LockForQuestion(bool locked) {
    for (QAction* menu : menuBar()->actions())
        if (menu->menu() != nullptr && menu->menu()->objectName() != ViewMenu) menu->setEnabled(!locked);
    for (const char* dock : {"partsDock", "propertiesDock"})
        if (auto* const panel = findChild<QWidget*>(dock)) panel->setEnabled(!locked);
    setAcceptDrops(!locked);
}

/// Shows what is asked, and lets the view take what can be pointed at.
void MainWindow::ShowQuestion() {
    HostDocument* const document = Document();
    if (document == nullptr) {
        mPrompt->setText(tr("Command:"));
        if (mView) mView->AskForPoint(nullptr);
        return;
    }
    HostCommandLine& line = mWorkplace.typedCommands.Line();
    mPrompt->setText(ToQt(mAsked != nullptr ? mAsked->prompt : line.Prompt(*document)));
    const PointedAt wanted = mAsked != nullptr ? PointedAt::Point : line.ByPointing(*document);
    if (wanted != PointedAt::Objects) mPointed.clear();
    // The view shows the model, and a sheet is measured by its own axes.
    const bool onSheet = mAsked == nullptr && document->ActiveSpace() == ActiveSpaceKind::PaperSpace &&
                         document->CurrentViewport() == nullptr;
    const bool wantsPoint = wanted == PointedAt::Point && !onSheet;
    if (wantsPoint) statusBar()->showMessage(tr("Click on the drawing, or type x,y,z. Esc gives up."));
    if (!mView) return;
    PointWish wish;
    wish.base = mAsked != nullptr ? mLastAsked : line.BasePoint(*document);
    wish.snapping = mSnaps == nullptr || mSnaps->isChecked();
    mView->AskForPoint(wantsPoint ? &wish : nullptr);
}

void MainWindow::TakePoint(const Snap& snap) {
    if (mAsked != nullptr) {
        mAsked->answer = snap.point;
        mAsked->loop.quit();
        return;
    }
    if (Document() == nullptr) return;
    if (mWorkplace.typedCommands.Line().ByPointing(*Document()) != PointedAt::Point) return;
    mDesk.Do([&] {
        TurnHostsView();
        // In world coordinates, whatever the user system.
        SendTurning("*" + ExactText(snap.point) + "\n");
    });
}

void MainWindow::TakeTypedPoint(const std::string& typed) {
    double coordinates[3];
    if (Trim(typed).empty()) return Escape();
    if (!ParseJournalPoint(typed, coordinates))
        return Tell("\"" + typed + "\" is no point: x,y or x,y,z is expected.");
    mAsked->answer = Point3{coordinates[0], coordinates[1], coordinates[2]};
    mAsked->loop.quit();
}

void MainWindow::TakePicked(const std::vector<std::string>& handles) {
    if (mAsked != nullptr) return;
    const bool isAnswer = Document() != nullptr &&
                          mWorkplace.typedCommands.Line().ByPointing(*Document()) == PointedAt::Objects;
    if (!isAnswer) return mDesk.Do([&] { SelectHandles(handles); });
    mDesk.Do([&] {
        for (const std::string& handle : handles) {
            if (std::ranges::find(mPointed, handle) != mPointed.end()) continue;
            mPointed.push_back(handle);
            SendToHost("(handent \"" + handle + "\")\n");
        }
    });
}

void MainWindow::Escape() {
    mCommand->setText({});
    if (mAsked != nullptr) return mAsked->loop.quit();
    if (Document() == nullptr) return;
    mDesk.Do([this] {
        mDesk.Note("escape");
        mWorkplace.typedCommands.Line().Send(*Document(), "\x1b");
    });
}

/// What goes by the view, a window or a plane to move in, means the view on the screen.
void MainWindow::TurnHostsView() {
    HostCommandLine& line = mWorkplace.typedCommands.Line();
    HostDocument& document = *Document();
    if (!mView || document.ActiveSpace() != ActiveSpaceKind::ModelSpace) return;
    const HostView seen{mView->TowardsEye(), mView->Up()}, hosts = line.ViewOf(document);
    if (IsSameView(seen, hosts) || !line.NotEntered(document).empty()) return;
    std::string text = line.Busy(document) ? "'dview" : "dview";
    text += "\n\npo\n*0,0,0\n*" + ExactText(seen.towardsEye) + "\n";
    if (IsTwisted(seen) || IsTwisted(hosts)) text += "tw\n" + ExactText(TwistInDegrees(seen)) + "\n";
    // Nobody has typed this, and its questions would stand in between those that people answer.
    mWorkplace.host.SetTranscript({});
    SendToHost(text + "\n");
    mWorkplace.host.SetTranscript([this](std::string_view told) { Tell(std::string(told)); });
}

/// A person has only one view: where the host's turns, so does that on the screen.
void MainWindow::SendTurning(const std::string& text) {
    HostCommandLine& line = mWorkplace.typedCommands.Line();
    HostDocument* const document = Document();
    const HostView before = line.ViewOf(*document);
    SendToHost(text);
    if (!mView || Document() != document || document->ActiveSpace() != ActiveSpaceKind::ModelSpace) return;
    const HostView after = line.ViewOf(*document);
    if (!IsSameView(before, after)) mView->LookAlong(after.towardsEye, after.up);
}

/// Keys at the view belong to the command line.
bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !mView || watched != &mView->Widget())
        return QMainWindow::eventFilter(watched, event);
    auto& key = static_cast<QKeyEvent&>(*event);
    if (key.key() == Qt::Key_Escape) return Escape(), true;
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    const bool isText = !key.text().isEmpty() && key.text().front().isPrint() &&
                        !(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (!isEnter && !isText) return false;
    mCommand->setFocus();
    QApplication::sendEvent(mCommand, event);
    return true;
}

}  // namespace brenvik::desktop
