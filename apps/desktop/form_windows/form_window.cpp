// From the layout's places to layouts of the toolkit.
#include "form_windows/form_window.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <algorithm>

#include "base/invariant.h"
#include "form_windows/control_binding.h"
#include "form_windows/form_desk.h"
#include "form_windows/form_steps.h"
#include "toolkit/qt_text.h"
#include "toolkit/screen_room.h"

namespace brenvik::desktop {

namespace {

/// The forms' own units, at the screen that they were made for.
constexpr double TwipsPerPixel = 15;

int Pixels(double twips) { return static_cast<int>(twips / TwipsPerPixel); }

/// Only seen where the screen is smaller than what it holds.
class Scroller : public QScrollArea {
  public:
    explicit Scroller(QWidget& content) {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        setWidget(&content);
        // The content and what lies around it are one.
        content.setAutoFillBackground(false);
        viewport()->setAutoFillBackground(false);
    }
};

}  // namespace

FormWindow::FormWindow(Form& form, FormDesk& desk, QWidget* parent)
    : QDialog(parent), mForm(form), mDesk(desk) {
    setObjectName(ToQt(form.Name()));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    const FormLayout& layout = LayoutOf(form.Name());
    auto* const outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    if (!layout.menus.empty()) outer->setMenuBar(mMenus = MakeMenus(layout.menus));
    mContent = new QWidget;
    outer->addWidget(new Scroller(*mContent));
    Add(*new QVBoxLayout(mContent), {Place::Kind::Column, {}, {}, layout.content.inside, 0, 1});
    TakeKeys(layout);
}

FormWindow::~FormWindow() = default;

QWidget* FormWindow::MakeControl(const Place& place) {
    Control* const control = mForm.Find(place.name);
    Invariant(control != nullptr, "a layout places controls of its form");
    mBindings.push_back(BindControl(*control, mDesk, this));
    return &mBindings.back()->Widget();
}

namespace {

class FrameBinding : public ControlBinding {
  public:
    FrameBinding(Control& control, QGroupBox& box, std::string_view caption)
        : ControlBinding(control, box), mBox(box), mCaption(caption) {}
    void Show() override {
        ControlBinding::Show();
        const std::string text = Model().Text();
        mBox.setTitle(ToQt(text.empty() ? std::string_view(mCaption) : std::string_view(text)));
        mBox.setFlat(mBox.title().isEmpty());
    }

  private:
    QGroupBox& mBox;
    std::string mCaption;
};

}  // namespace

QWidget* FormWindow::MakeBox(const Place& place) {
    auto* const box = new QGroupBox(ToQt(place.caption), this);
    auto* const layout = new QVBoxLayout(box);
    Fill(*layout, place.inside);
    if (place.kind == Place::Kind::Heading) return box;
    Control* const frame = mForm.Find(place.name);
    Invariant(frame != nullptr, "a layout places frames of its form");
    box->setObjectName(ToQt(frame->Name()));
    mBindings.push_back(std::make_unique<FrameBinding>(*frame, *box, place.caption));
    return box;
}

void FormWindow::Fill(QBoxLayout& layout, const std::vector<Place>& places) {
    for (const Place& place : places) Add(layout, place);
}

void FormWindow::Add(QBoxLayout& layout, const Place& place) {
    switch (place.kind) {
        case Place::Kind::Control:
            return layout.addWidget(MakeControl(place), place.share);
        case Place::Kind::Row:
        case Place::Kind::Column: {
            QBoxLayout* inner = nullptr;
            if (place.kind == Place::Kind::Row)
                inner = new QHBoxLayout;
            else
                inner = new QVBoxLayout;
            layout.addLayout(inner, place.share);
            return Fill(*inner, place.inside);
        }
        case Place::Kind::Table:
            return AddTable(layout, place);
        case Place::Kind::Box:
        case Place::Kind::Heading:
            return layout.addWidget(MakeBox(place), place.share);
        case Place::Kind::Space:
            return layout.addStretch(1);
    }
}

void FormWindow::AddTable(QBoxLayout& layout, const Place& place) {
    auto* const table = new QGridLayout;
    layout.addLayout(table, place.share);
    int at = 0;
    for (const Place& cell : place.inside) {
        table->addWidget(MakeControl(cell), at / place.columns, at % place.columns);
        if (cell.share > 0) table->setColumnStretch(at % place.columns, cell.share);
        ++at;
    }
}

QMenuBar* FormWindow::MakeMenus(const std::vector<MenuPlace>& menus) {
    auto* const bar = new QMenuBar(this);
    for (const MenuPlace& place : menus) {
        const Control* const top = mForm.Find(place.name);
        QMenu* const menu = bar->addMenu(ToQt(top == nullptr ? std::string(place.caption) : top->Text()));
        for (const std::string_view entry : place.entries) {
            Control* const control = mForm.Find(entry);
            Invariant(control != nullptr, "a layout's menus have entries of its form");
            mBindings.push_back(BindControl(*control, mDesk, menu));
        }
    }
    return bar;
}

void FormWindow::TakeKeys(const FormLayout& layout) {
    // A cell that Enter ends must not press the form's button too.
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
        if (!layout.enter.empty() && button->objectName() == ToQt(layout.enter)) button->setDefault(true);
    }
}

void FormWindow::ShowModel() {
    setWindowTitle(ToQt(mForm.caption));
    for (const std::unique_ptr<ControlBinding>& binding : mBindings) binding->Show();
    setMinimumSize(minimumSizeHint());
    if (mForm.mousePointer == MousePointer::Hourglass)
        setCursor(Qt::WaitCursor);
    else
        unsetCursor();
}

ControlBinding* FormWindow::BindingOf(const Control& control) const {
    for (const std::unique_ptr<ControlBinding>& binding : mBindings)
        if (&binding->Model() == &control) return binding.get();
    return nullptr;
}

QSize FormWindow::minimumSizeHint() const {
    // Asked for by the toolkit while the window is being made, too.
    if (mContent == nullptr || mContent->layout() == nullptr) return QDialog::minimumSizeHint();
    QSize wanted = mContent->minimumSizeHint();
    if (mContent->layout()->hasHeightForWidth())
        wanted.setHeight(std::max(wanted.height(), mContent->heightForWidth(wanted.width())));
    if (mMenus != nullptr) wanted.rheight() += mMenus->sizeHint().height();
    const QSize room = RoomFor(*this).size();
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    if (wanted.height() > room.height()) wanted.rwidth() += bar;
    return wanted.boundedTo(room);
}

void FormWindow::PlaceAsForm() {
    const QRect room = RoomFor(*this);
    const QSize wished(Pixels(mForm.width), Pixels(mForm.height));
    resize(wished.expandedTo(minimumSizeHint()).boundedTo(room.size()));
    QPoint place(Pixels(mForm.left), Pixels(mForm.top));
    if (mForm.left == 0 && mForm.top == 0) place = room.center() - rect().center();
    // The screen of the last time may have been a larger one.
    move(std::max(std::min(place.x(), room.right() + 1 - width()), room.left()),
         std::max(std::min(place.y(), room.bottom() + 1 - height()), room.top()));
    mAsPlaced = geometry();
    mPlaced = true;
}

// The form keeps its place and size in the settings, as the user leaves them.
void FormWindow::TellPlace() {
    if (!mPlaced || !isVisible() || geometry() == mAsPlaced) return;
    mForm.left = x() * TwipsPerPixel;
    mForm.top = y() * TwipsPerPixel;
    mForm.width = width() * TwipsPerPixel;
    mForm.height = height() * TwipsPerPixel;
    mForm.minimized = isMinimized();
    mForm.OnResize();
}

void FormWindow::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    TellPlace();
}

void FormWindow::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    TellPlace();
}

void FormWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    mDesk.Do([this] {
        mDesk.Note("close");
        mForm.RequestClose();
    });
}

// Escape.
void FormWindow::reject() {
    const std::string_view escape = LayoutOf(mForm.Name()).escape;
    mDesk.Do([this, escape] {
        Control* const button = escape.empty() ? nullptr : mForm.Find(escape);
        mDesk.Note(button != nullptr ? PressStep(*button) : "close");
        if (button != nullptr)
            button->Press();
        else
            mForm.RequestClose();
    });
}

}  // namespace brenvik::desktop
