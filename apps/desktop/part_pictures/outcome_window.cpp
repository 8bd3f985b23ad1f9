// The parts at the left, the chosen one's sides at the right, the reports on it below.
#include "part_pictures/outcome_window.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "base/failure.h"
#include "cnc/picture/picture_legend.h"
#include "part_pictures/part_file_view.h"
#include "part_pictures/part_painter.h"
#include "toolkit/qt_text.h"
#include "toolkit/screen_room.h"

namespace brenvik::desktop {

namespace {

constexpr int PartRole = Qt::UserRole;
/// The row of the reports on the run as a whole.
constexpr int WholeRun = -1;
constexpr QSize SwatchSize(26, 16);

QIcon SwatchOf(PictureKind kind) {
    QPixmap pixmap(SwatchSize);
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    PaintSwatch(painter, QRectF(2, 2, SwatchSize.width() - 4, SwatchSize.height() - 4), kind);
    return pixmap;
}

QString Counted(std::size_t count, const char* one, const char* many) {
    return QString("%1 %2").arg(count).arg(QString::fromLatin1(count == 1 ? one : many));
}

QString SummaryOf(const RunOutcome& outcome) {
    QString summary = Counted(outcome.parts.size(), "part", "parts") + ", " +
                      Counted(outcome.FileCount(), "part file", "part files") + ". ";
    if (!outcome.complete) summary += "The run did not go to its end. ";
    if (const std::size_t told = outcome.PartsToldOf(); told > 0)
        summary += Counted(told, "part", "parts") + (told == 1 ? " needs a look." : " need a look.");
    else if (outcome.complete && outcome.messages.empty())
        summary += "No part of the run was left out.";
    return summary;
}

QString FilesOf(const OutcomePart& part) {
    if (part.firstSide.empty() && part.secondSide.empty()) return "no file";
    return part.secondSide.empty() ? "one side" : "both sides";
}

QListWidget* MakeList(const char* name, QListView::ResizeMode mode) {
    auto* const list = new QListWidget;
    list->setObjectName(name);
    list->setWordWrap(true);
    list->setResizeMode(mode);
    list->setSelectionMode(QAbstractItemView::NoSelection);
    list->setFocusPolicy(Qt::NoFocus);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return list;
}

}  // namespace

OutcomeWindow::OutcomeWindow(FileReader reader, QWidget* parent)
    : QDialog(parent), mReader(std::move(reader)) {
    setObjectName("outcome");
    setWindowTitle(tr("Outcome of the CNC run"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize(QSize(1100, 760).boundedTo(RoomFor(*this).size()));
    auto* const layout = new QVBoxLayout(this);
    mSummary = new QLabel;
    mSummary->setObjectName("summary");
    mSummary->setWordWrap(true);
    layout->addWidget(mSummary);
    auto* const split = new QSplitter;
    split->addWidget(MakeParts());
    split->addWidget(MakePictures());
    split->setStretchFactor(1, 1);
    split->setSizes({380, 720});
    layout->addWidget(split, 1);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    mFolder = buttons->addButton(tr("Open the folder"), QDialogButtonBox::ActionRole);
    mFolder->setAutoDefault(false);
    mFolder->hide();
    layout->addWidget(buttons);
}

void OutcomeWindow::SetFolderOpener(std::function<void()> open) {
    connect(mFolder, &QPushButton::clicked, this, [open = std::move(open)] { open(); });
    mFolder->show();
}

QWidget* OutcomeWindow::MakeParts() {
    mParts = new QTreeWidget;
    mParts->setObjectName("outcomeParts");
    mParts->setHeaderLabels({tr("Part"), tr("Files"), tr("Messages")});
    mParts->setRootIsDecorated(false);
    mParts->setUniformRowHeights(true);
    mParts->setStyleSheet("QTreeView::item { padding: 3px 2px; }");
    mParts->setAlternatingRowColors(true);
    mParts->header()->setStretchLastSection(false);
    mParts->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    mParts->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    mParts->header()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    connect(mParts, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item != nullptr) ShowPart(item->data(0, PartRole).toInt());
    });
    return mParts;
}

QWidget* OutcomeWindow::MakePictures() {
    mSides = new QTabWidget;
    mSides->setObjectName("sides");
    mPointed = new QLabel;
    mPointed->setObjectName("pointed");
    mLegend = MakeList("legend", QListView::Adjust);
    mLegend->setIconSize(SwatchSize);
    mMessages = MakeList("messages", QListView::Adjust);
    connect(mSides, &QTabWidget::currentChanged, this, [this](int side) {
        const auto* const view = dynamic_cast<PartFileView*>(mSides->widget(side));
        if (view != nullptr) ShowLegend(*view);
    });
    auto* const pictured = new QWidget;
    auto* const above = new QVBoxLayout(pictured);
    above->setContentsMargins(0, 0, 0, 0);
    above->addWidget(mSides, 1);
    above->addWidget(mPointed);
    auto* const split = new QSplitter(Qt::Vertical);
    split->addWidget(pictured);
    split->addWidget(mLegend);
    split->addWidget(mMessages);
    split->setStretchFactor(0, 1);
    split->setSizes({430, 120, 110});
    split->setChildrenCollapsible(false);
    return split;
}

void OutcomeWindow::Show(const RunOutcome& outcome, const std::string& drawing) {
    mOutcome = outcome;
    const QString name = ToQt(drawing);
    // Of several drawings in tabs, the one in front by now may be another.
    setWindowTitle(name.isEmpty() ? tr("Outcome of the CNC run")
                                  : tr("Outcome of the CNC run - %1").arg(name));
    mSummary->setTextFormat(Qt::PlainText);
    mSummary->setText(name.isEmpty() ? SummaryOf(mOutcome) : name + ": " + SummaryOf(mOutcome));
    FillParts();
}

void OutcomeWindow::FillParts() {
    mParts->clear();
    QTreeWidgetItem* chosen = nullptr;
    const std::size_t ofRun = mOutcome.messages.size() + mOutcome.unknownMaterials.size();
    const auto add = [&](const QString& name, const QString& files, std::size_t told, int part) {
        auto* const item =
            new QTreeWidgetItem(mParts, {name, files, told == 0 ? QString() : QString::number(told)});
        item->setData(0, PartRole, part);
        item->setToolTip(0, name);
        item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        if (told == 0) return;
        QFont bold = item->font(0);
        bold.setBold(true);
        for (int column = 0; column < 3; ++column) item->setFont(column, bold);
        if (chosen == nullptr) chosen = item;
    };
    if (ofRun > 0) add(tr("The run as a whole"), {}, ofRun, WholeRun);
    for (std::size_t at = 0; at < mOutcome.parts.size(); ++at) {
        const OutcomePart& part = mOutcome.parts[at];
        add(ToQt(part.label), FilesOf(part), part.messages.size(), static_cast<int>(at));
    }
    if (chosen == nullptr) chosen = mParts->topLevelItem(0);
    if (chosen == nullptr) return ShowPart(WholeRun);
    mParts->setCurrentItem(chosen);
}

void OutcomeWindow::ShowPart(int part) {
    while (mSides->count() > 0) {
        QWidget* const old = mSides->widget(0);
        mSides->removeTab(0);
        delete old;
    }
    // The whole run has no operations to point at.
    mPointed->setVisible(part != WholeRun);
    mLegend->setVisible(part != WholeRun);
    mLegend->clear();
    if (part == WholeRun) {
        std::vector<std::string> messages = mOutcome.messages;
        for (const std::string& key : mOutcome.unknownMaterials)
            messages.push_back("The material library has no record \"" + key +
                               "\". Add one under Materials (Ctrl+M), then run again.");
        auto* const none = new PartFileView;
        none->ShowNone(mOutcome.parts.empty() ? tr("The run has made no parts.")
                                              : tr("Choose a part to see its files."));
        mSides->addTab(none, tr("The run"));
        return ShowMessages(messages);
    }
    const OutcomePart& shown = mOutcome.parts[static_cast<std::size_t>(part)];
    if (!shown.firstSide.empty()) ShowSide(shown.firstSide, tr("First side"));
    if (!shown.secondSide.empty()) ShowSide(shown.secondSide, tr("Second side, turned over"));
    if (mSides->count() == 0) {
        auto* const none = new PartFileView;
        none->ShowNone(tr("This part has no file: it was skipped."));
        mSides->addTab(none, tr("No file"));
    }
    ShowMessages(shown.messages);
}

void OutcomeWindow::ShowSide(const std::string& path, const QString& caption) {
    auto* const view = new PartFileView;
    view->onPointed = [this](const QString& words) { mPointed->setText(words.isEmpty() ? mHint : words); };
    try {
        view->Show(mReader(path));
    } catch (const Failure& failure) {
        view->ShowNone(ToQt(failure.detail().empty() ? failure.description() : failure.detail()));
    } catch (const std::exception& failure) {
        view->ShowNone(ToQt(failure.what()));
    }
    mSides->addTab(view, caption);
    mSides->setTabToolTip(mSides->count() - 1, ToQt(path));
}

void OutcomeWindow::ShowLegend(const PartFileView& view) {
    mLegend->clear();
    const PartPicture& picture = view.Picture();
    mHint = picture.shapes.empty() ? QString()
                                   : ToQt(TitleOf(picture, {})).trimmed() +
                                         tr(". Point at an operation to read what it is; the wheel zooms.");
    mPointed->setText(mHint);
    for (const LegendEntry& entry : LegendOf(picture))
        new QListWidgetItem(SwatchOf(entry.kind), QString("%1 x %2").arg(entry.count).arg(ToQt(entry.words)),
                            mLegend);
    for (const std::string& fault : picture.faults) new QListWidgetItem(ToQt(fault), mLegend);
}

void OutcomeWindow::ShowMessages(const std::vector<std::string>& messages) {
    mMessages->clear();
    for (const std::string& text : messages) mMessages->addItem(ToQt(text));
    if (messages.empty()) mMessages->addItem(tr("No messages about this part."));
}

}  // namespace brenvik::desktop
