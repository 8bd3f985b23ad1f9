// A binding for each kind of control. Widgets are blocked while they are brought up to date, so that only
// what the user does reaches the controls.
#include "form_windows/control_binding.h"

#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QToolBar>
#include <QTreeWidget>
#include <algorithm>

#include "base/invariant.h"
#include "base/letter_case.h"
#include "form_windows/form_desk.h"
#include "form_windows/form_layouts.h"
#include "form_windows/form_steps.h"
#include "form_windows/grid_view.h"
#include "journal/journal_parser.h"
#include "recording/journal_recorder.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {

void ControlBinding::Show() {
    mWidget.setEnabled(mControl.enabled);
    mWidget.setVisible(mControl.visible);
}

namespace {

/// A text of more than one line's length wraps.
constexpr qsizetype LongLabel = 60;
/// Room for the numbers that the dialogs ask for, in pixels.
constexpr int LeastEditWidth = 80;

/// Tick boxes don't wrap by themselves: broken at blanks into lines of about that length.
QString InLines(const QString& text) {
    if (text.size() <= LongLabel + LongLabel / 2) return text;
    QString lines, line;
    for (const QString& word : text.split(' ')) {
        if (!line.isEmpty() && line.size() + word.size() >= LongLabel) {
            lines += line + '\n';
            line.clear();
        }
        line += line.isEmpty() ? word : ' ' + word;
    }
    return lines + line;
}

/// A text that was typed, letter after letter; one that nobody is to read stays out of a journal.
void NoteTyping(FormDesk& desk, const Control& control, const std::string& text) {
    const std::string head = "type " + control.Name() + " ";
    if (!IsSecret(control.Name())) return desk.Note(head + JournalText(text), head);
    desk.Note("# " + head + "... is not recorded", "# " + head);
}

/// A press, ahead of which the journal hears of it.
void PressNoted(FormDesk& desk, Control& control) {
    desk.Do([&] {
        desk.Note(PressStep(control));
        control.Press();
    });
}

/// A label whose lines break keeps the height that they take at its width: layouts inside frames take less.
class WrappedLabel : public QLabel {
  public:
    using QLabel::QLabel;
    /// Lines of a few words are no reading.
    QSize minimumSizeHint() const override {
        const QSize hint = QLabel::minimumSizeHint();
        return wordWrap()
                   ? QSize(std::max(hint.width(), 30 * fontMetrics().averageCharWidth()), hint.height())
                   : hint;
    }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        if (wordWrap()) setMinimumHeight(heightForWidth(width()));
    }
};

class LabelBinding : public ControlBinding {
  public:
    LabelBinding(Control& control, QLabel& label) : ControlBinding(control, label), mLabel(label) {
        mLabel.setTextFormat(Qt::PlainText);
    }
    void Show() override {
        ControlBinding::Show();
        const QString text = ToQt(Model().Text());
        mLabel.setWordWrap(text.size() > LongLabel);
        mLabel.setText(text);
        if (mLabel.isVisible() && mLabel.wordWrap())
            mLabel.setMinimumHeight(mLabel.heightForWidth(mLabel.width()));
    }

  private:
    QLabel& mLabel;
};

/// Push buttons, tick boxes and option buttons.
class ButtonBinding : public ControlBinding {
  public:
    ButtonBinding(Control& control, QAbstractButton& button, FormDesk& desk)
        : ControlBinding(control, button), mButton(button) {
        QObject::connect(&button, &QAbstractButton::clicked, &button,
                         [&control, &desk] { PressNoted(desk, control); });
    }
    void Show() override {
        ControlBinding::Show();
        mButton.setText(InLines(ToQt(Model().Text())));
        if (const auto* tick = dynamic_cast<const CheckControl*>(&Model()))
            mButton.setChecked(tick->Value() == 1);
    }
    void Press() override { mButton.click(); }

  private:
    QAbstractButton& mButton;
};

class TextBinding : public ControlBinding {
  public:
    TextBinding(Control& control, QLineEdit& edit, FormDesk& desk)
        : ControlBinding(control, edit), mEdit(edit) {
        edit.setMinimumWidth(LeastEditWidth);
        if (IsSecret(control.Name())) edit.setEchoMode(QLineEdit::Password);
        QObject::connect(&edit, &QLineEdit::textEdited, &edit, [&control, &desk](const QString& text) {
            desk.Do([&] {
                NoteTyping(desk, control, FromQt(text));
                control.SetText(FromQt(text));
            });
        });
    }
    void Show() override {
        ControlBinding::Show();
        const QString text = ToQt(Model().Text());
        if (mEdit.text() != text) mEdit.setText(text);
    }
    void Type(std::string_view text) override { TypeInto(mEdit, text); }

    static void TypeInto(QLineEdit& edit, std::string_view text) {
        edit.setFocus();
        edit.selectAll();
        if (text.empty()) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
            QApplication::sendEvent(&edit, &press);
            return;
        }
        // The whole text at once, as from the clipboard: a user's list is not to be asked for each letter.
        edit.insert(ToQt(text));
        emit edit.textEdited(edit.text());
    }

  private:
    QLineEdit& mEdit;
};

class ComboBinding : public ControlBinding {
  public:
    ComboBinding(ListControl& control, QComboBox& combo, FormDesk& desk)
        : ControlBinding(control, combo), mList(control), mCombo(combo), mDesk(desk) {
        combo.setInsertPolicy(QComboBox::NoInsert);
        combo.setEditable(TakesFreeText(control.Name()));
        combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo.setMinimumContentsLength(12);
        QObject::connect(&combo, &QComboBox::activated, &combo, [this](int index) { Choose(index); });
        if (QLineEdit* const edit = combo.lineEdit()) {
            combo.setCompleter(nullptr);
            QObject::connect(edit, &QLineEdit::textEdited, edit, [this](const QString& text) {
                mDesk.Do([this, &text] {
                    NoteTyping(mDesk, mList, FromQt(text));
                    mList.SetText(FromQt(text));
                });
            });
        }
    }
    void Show() override {
        ControlBinding::Show();
        const QSignalBlocker quiet(&mCombo);
        QStringList items;
        for (const std::string& item : mList.Items()) items << ToQt(item);
        QStringList shown;
        for (int i = 0; i < mCombo.count(); ++i) shown << mCombo.itemText(i);
        if (items != shown) {
            mCombo.clear();
            mCombo.addItems(items);
        }
        if (mCombo.currentIndex() != mList.ListIndex()) mCombo.setCurrentIndex(mList.ListIndex());
        if (mCombo.isEditable() && mCombo.currentText() != ToQt(mList.Text()))
            mCombo.setEditText(ToQt(mList.Text()));
    }
    void Type(std::string_view text) override {
        if (QLineEdit* const edit = mCombo.lineEdit()) return TextBinding::TypeInto(*edit, text);
        const int index = mCombo.findText(ToQt(text), Qt::MatchFixedString | Qt::MatchCaseSensitive);
        if (index >= 0) return Pick(index);
        // A list without a field to type into takes what its model takes from a program.
        mDesk.Do([this, text] { mList.SetText(text); });
    }
    void Pick(int item) override {
        mCombo.setCurrentIndex(item);
        emit mCombo.activated(item);
    }

  private:
    void Choose(int index) {
        mDesk.Do([this, index] {
            mDesk.Note(ItemStep("pick", mList, index));
            mList.SetListIndex(index);
        });
    }

    ListControl& mList;
    QComboBox& mCombo;
    FormDesk& mDesk;
};

class ListBinding : public ControlBinding {
  public:
    ListBinding(ListControl& control, QListWidget& widget, FormDesk& desk)
        : ControlBinding(control, widget), mList(control), mWidget(widget), mDesk(desk) {
        mWidget.setSelectionMode(control.MultiSelect() ? QAbstractItemView::MultiSelection
                                                       : QAbstractItemView::SingleSelection);
        QObject::connect(&widget, &QListWidget::itemSelectionChanged, &widget, [this] { TakeSelection(); });
        QObject::connect(&widget, &QListWidget::itemDoubleClicked, &widget, [this] {
            mDesk.Do([this] {
                if (!mList.onDoubleClick) return;
                NoteDoubleClick();
                mList.onDoubleClick();
            });
        });
    }
    void Show() override {
        ControlBinding::Show();
        const QSignalBlocker quiet(&mWidget);
        bool same = mWidget.count() == mList.ListCount();
        for (int i = 0; same && i < mWidget.count(); ++i)
            same = mWidget.item(i)->text() == ToQt(mList.Items()[static_cast<std::size_t>(i)]);
        if (!same) {
            mWidget.clear();
            for (const std::string& item : mList.Items()) mWidget.addItem(ToQt(item));
        }
        for (int i = 0; i < mWidget.count(); ++i) mWidget.item(i)->setSelected(mList.Selected(i));
        if (mList.ListIndex() >= 0) mWidget.setCurrentRow(mList.ListIndex(), QItemSelectionModel::NoUpdate);
    }
    void Pick(int item) override {
        // Picked again, an item of a list is clicked again.
        if (!mList.MultiSelect() && mWidget.item(item)->isSelected())
            return mDesk.Do([this, item] { mList.SetListIndex(item); });
        mWidget.item(item)->setSelected(true);
    }
    void Unpick(int item) override { mWidget.item(item)->setSelected(false); }
    void DoubleClick() override {
        if (QListWidgetItem* const item = mWidget.currentItem()) emit mWidget.itemDoubleClicked(item);
    }

  private:
    /// The click that began it has picked the item, which the step does too.
    void NoteDoubleClick() {
        if (const int item = mWidget.currentRow(); item >= 0 && item < mList.ListCount())
            mDesk.Note(ItemStep("doubleclick", mList, item), ItemStep("pick", mList, item) + "\n");
    }
    void TakeSelection() {
        mDesk.Do([this] {
            for (int i = 0; i < mWidget.count() && i < mList.ListCount(); ++i) {
                const bool on = mWidget.item(i)->isSelected();
                if (on == mList.Selected(i)) continue;
                if (!mList.MultiSelect() && !on) continue;
                mDesk.Note(ItemStep(on ? "pick" : "unpick", mList, i));
                if (!mList.MultiSelect()) return mList.SetListIndex(i);
                mList.SetSelected(i, on);
            }
        });
    }

    ListControl& mList;
    QListWidget& mWidget;
    FormDesk& mDesk;
};

class ListViewBinding : public ControlBinding {
  public:
    ListViewBinding(ListViewControl& control, QTreeWidget& widget, FormDesk& desk)
        : ControlBinding(control, widget), mView(control), mWidget(widget), mDesk(desk) {
        QStringList headers;
        for (const std::string& header : control.columnHeaders) headers << ToQt(header);
        mWidget.setHeaderLabels(headers);
        mWidget.setRootIsDecorated(false);
        QObject::connect(&widget, &QTreeWidget::itemSelectionChanged, &widget, [this] {
            const QList<QTreeWidgetItem*> chosen = mWidget.selectedItems();
            if (chosen.isEmpty()) return;
            Choose(mWidget.indexOfTopLevelItem(chosen.front()));
        });
    }
    void Show() override {
        ControlBinding::Show();
        const QSignalBlocker quiet(&mWidget);
        mWidget.clear();
        for (const ListViewControl::Row& row : mView.rows) {
            QStringList texts{ToQt(row.text)};
            for (const std::string& item : row.subItems) texts << ToQt(item);
            mWidget.addTopLevelItem(new QTreeWidgetItem(texts));
        }
        if (QTreeWidgetItem* const item = mWidget.topLevelItem(mView.selectedRow)) item->setSelected(true);
    }
    void Pick(int row) override {
        if (row == mView.selectedRow) return Choose(row);
        mWidget.clearSelection();
        mWidget.topLevelItem(row)->setSelected(true);
    }
    void DoubleClick() override {
        mDesk.Do([this] {
            if (mView.onDoubleClick) mView.onDoubleClick();
        });
    }

  private:
    void Choose(int row) {
        mDesk.Do([this, row] {
            mDesk.Note(PickStep(mView, row));
            mView.selectedRow = row;
            if (mView.onClick) mView.onClick();
        });
    }

    ListViewControl& mView;
    QTreeWidget& mWidget;
    FormDesk& mDesk;
};

class TabBinding : public ControlBinding {
  public:
    TabBinding(TabStripControl& control, QTabBar& bar, FormDesk& desk)
        : ControlBinding(control, bar), mTabs(control), mBar(bar), mDesk(desk) {
        bar.setExpanding(false);
        for (const std::string& caption : control.captions) bar.addTab(ToQt(caption));
        QObject::connect(&bar, &QTabBar::currentChanged, &bar, [this](int tab) { Choose(tab); });
    }
    void Show() override {
        ControlBinding::Show();
        const QSignalBlocker quiet(&mBar);
        mBar.setCurrentIndex(mTabs.SelectedTab());
    }
    void Pick(int tab) override {
        if (tab == mBar.currentIndex()) return Choose(tab);
        mBar.setCurrentIndex(tab);
    }

  private:
    void Choose(int tab) {
        mDesk.Do([this, tab] {
            mDesk.Note(PickStep(mTabs, tab));
            mTabs.SetSelectedTab(tab);
        });
    }

    TabStripControl& mTabs;
    QTabBar& mBar;
    FormDesk& mDesk;
};

class ToolbarBinding : public ControlBinding {
  public:
    ToolbarBinding(ToolbarControl& control, QToolBar& bar, FormDesk& desk)
        : ControlBinding(control, bar), mBar(bar) {
        for (const ToolbarControl::Key& key : control.keys) {
            if (key.separatorBefore) bar.addSeparator();
            QAction* const action = bar.addAction(ToQt(key.caption));
            action->setObjectName(ToQt(key.key));
            QObject::connect(action, &QAction::triggered, &bar, [&control, &desk, pressed = key.key] {
                desk.Do([&] {
                    desk.Note("press " + control.Name() + "." + pressed);
                    control.PressKey(pressed);
                });
            });
        }
    }
    void PressKey(std::string_view key) override {
        for (QAction* action : mBar.actions())
            if (EqualsIgnoreCase(FromQt(action->objectName()), key)) return action->trigger();
    }

  private:
    QToolBar& mBar;
};

class StatusBinding : public ControlBinding {
  public:
    StatusBinding(StatusBarControl& control, QLabel& label)
        : ControlBinding(control, label), mBar(control), mLabel(label) {}
    void Show() override {
        ControlBinding::Show();
        QStringList texts;
        for (const std::string& panel : mBar.panels) texts << ToQt(panel);
        mLabel.setText(texts.join("    "));
    }

  private:
    StatusBarControl& mBar;
    QLabel& mLabel;
};

/// An entry of a menu; its widget is the menu.
class MenuBinding : public ControlBinding {
  public:
    MenuBinding(Control& control, QMenu& menu, FormDesk& desk)
        : ControlBinding(control, menu), mAction(*menu.addAction(ToQt(control.Text()))) {
        mAction.setSeparator(control.Text() == "-");
        QObject::connect(&mAction, &QAction::triggered, &menu,
                         [&control, &desk] { PressNoted(desk, control); });
    }
    void Show() override {
        mAction.setEnabled(Model().enabled);
        mAction.setVisible(Model().visible);
    }
    void Press() override { mAction.trigger(); }

  private:
    QAction& mAction;
};

template <class T>
T& As(Control& control) {
    return dynamic_cast<T&>(control);
}

template <class T>
T& Named(const Control& control, T* widget) {
    widget->setObjectName(ToQt(control.Name()));
    return *widget;
}

}  // namespace

std::unique_ptr<ControlBinding> BindControl(Control& control, FormDesk& desk, QWidget* parent) {
    switch (control.Kind()) {
        case ControlKind::Label:
            return std::make_unique<LabelBinding>(control, Named(control, new WrappedLabel(parent)));
        case ControlKind::Button:
            return std::make_unique<ButtonBinding>(control, Named(control, new QPushButton(parent)), desk);
        case ControlKind::CheckBox:
            return std::make_unique<ButtonBinding>(control, Named(control, new QCheckBox(parent)), desk);
        case ControlKind::OptionButton: {
            // The form sees to it that one of a group is on.
            QRadioButton& button = Named(control, new QRadioButton(parent));
            button.setAutoExclusive(false);
            return std::make_unique<ButtonBinding>(control, button, desk);
        }
        case ControlKind::TextBox:
            return std::make_unique<TextBinding>(control, Named(control, new QLineEdit(parent)), desk);
        case ControlKind::ComboBox:
            return std::make_unique<ComboBinding>(As<ListControl>(control),
                                                  Named(control, new QComboBox(parent)), desk);
        case ControlKind::ListBox:
            return std::make_unique<ListBinding>(As<ListControl>(control),
                                                 Named(control, new QListWidget(parent)), desk);
        case ControlKind::ListView:
            return std::make_unique<ListViewBinding>(As<ListViewControl>(control),
                                                     Named(control, new QTreeWidget(parent)), desk);
        case ControlKind::TabStrip:
            return std::make_unique<TabBinding>(As<TabStripControl>(control),
                                                Named(control, new QTabBar(parent)), desk);
        case ControlKind::Toolbar:
            return std::make_unique<ToolbarBinding>(As<ToolbarControl>(control),
                                                    Named(control, new QToolBar(parent)), desk);
        case ControlKind::StatusBar:
            return std::make_unique<StatusBinding>(As<StatusBarControl>(control),
                                                   Named(control, new QLabel(parent)));
        case ControlKind::MenuEntry:
            return std::make_unique<MenuBinding>(control, dynamic_cast<QMenu&>(*parent), desk);
        case ControlKind::Grid:
            return BindGrid(As<GridControl>(control), desk, parent);
        case ControlKind::Frame:
        case ControlKind::DataControl:
            break;
    }
    Invariant(false, "a control of this kind has no widget of its own");
    return nullptr;
}

}  // namespace brenvik::desktop
