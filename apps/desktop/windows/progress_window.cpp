// The work goes on in the calls between which the window lives, so its events run at the steps.
#include "windows/progress_window.h"

#include <QApplication>
#include <QDialog>
#include <QFontMetrics>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "form_windows/form_desk.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {

namespace {

/// A step may take a thousandth of the time that drawing takes.
constexpr int BetweenLooks = 60;
constexpr int Width = 440;

}  // namespace

class ProgressWindow::Box : public QDialog {
  public:
    explicit Box(QWidget* parent) : QDialog(parent) {
        setObjectName("progress");
        setWindowModality(Qt::ApplicationModal);
        auto* const layout = new QVBoxLayout(this);
        name = new QLabel;
        name->setObjectName("step");
        name->setTextFormat(Qt::PlainText);
        bar = new QProgressBar;
        note = new QLabel;
        note->setObjectName("note");
        cancel = new QPushButton(tr("Cancel"));
        cancel->setObjectName("cancel");
        auto* const below = new QHBoxLayout;
        below->addWidget(note, 1);
        below->addWidget(cancel);
        layout->addWidget(name);
        layout->addWidget(bar);
        layout->addLayout(below);
        setFixedWidth(Width);
        connect(cancel, &QPushButton::clicked, this, [this] { Cancel(); });
    }
    void Cancel() {
        if (!cancel->isEnabled()) return;
        cancelled = true;
        cancel->setEnabled(false);
        note->setText(tr("It ends at the next part."));
    }
    // Escape and the window's cross.
    void reject() override { Cancel(); }

    QLabel* name = nullptr;
    QLabel* note = nullptr;
    QProgressBar* bar = nullptr;
    QPushButton* cancel = nullptr;
    bool cancelled = false;
};

ProgressWindow::ProgressWindow(FormDesk& desk, int patience) : mDesk(desk), mPatience(patience) {}
ProgressWindow::~ProgressWindow() = default;

void ProgressWindow::Begin(const ProgressTask& task) {
    if (mTasks.empty()) mBegun.start();
    mTasks.push_back({std::string(task.what), task.steps, task.canCancel});
    mShown.invalidate();
}

bool ProgressWindow::Step(int step, std::string_view name) {
    Task& task = mTasks.back();
    if (mBegun.elapsed() >= mPatience && (!mShown.isValid() || mShown.elapsed() >= BetweenLooks)) {
        ShowStep(task, step, name);
        QApplication::processEvents();
        mShown.start();
        task.cancelled = task.cancelled || (mBox->cancelled && task.canCancel);
    }
    return !task.cancelled;
}

void ProgressWindow::ShowStep(const Task& task, int step, std::string_view name) {
    if (!mBox) {
        mBox = std::make_unique<Box>(mDesk.Top());
        mBox->show();
    }
    const QString words = QString("%1 of %2").arg(step).arg(task.steps) +
                          (name.empty() ? QString() : QString::fromLatin1(": ") + ToQt(name));
    mBox->setWindowTitle(ToQt(task.what));
    mBox->name->setText(mBox->name->fontMetrics().elidedText(words, Qt::ElideMiddle, Width - 40));
    mBox->bar->setRange(0, task.steps);
    // The step has begun, not ended.
    mBox->bar->setValue(step - 1);
    mBox->cancel->setEnabled(task.canCancel && !mBox->cancelled);
    if (!mBox->cancelled)
        mBox->note->setText(task.canCancel ? QString() : QObject::tr("This can't be cancelled halfway."));
}

void ProgressWindow::End() {
    mTasks.pop_back();
    if (!mTasks.empty()) return;
    mBox.reset();
}

}  // namespace brenvik::desktop
