// A robot at the windows of a program: what it does, each as soon as it can be done.
#pragma once

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

namespace brenvik::desktop {

struct Act {
    std::function<bool()> can;
    std::function<void()> act;
};

class Robot {
  public:
    explicit Robot(std::vector<Act> acts) : mActs(std::move(acts)) {
        mSince.start();
        LookLater();
    }

  private:
    /// Each look has a timer of its own: an act may open a window and come back only when that is closed.
    void LookLater() {
        QTimer::singleShot(20, &mLooks, [this] { Look(); });
    }
    void Look() {
        LookLater();
        if (mNext == mActs.size()) return;
        if (mActs[mNext].can()) {
            mSince.start();
            return mActs[mNext++].act();
        }
        if (mSince.elapsed() < Patience) return;
        std::cerr << "the robot waits to do its act " << mNext << " (from 0)";
        if (const QWidget* const top = QApplication::activeModalWidget())
            std::cerr << "; on top is " << top->objectName().toStdString() << " \""
                      << top->windowTitle().toStdString() << '"';
        if (const auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            std::cerr << ": " << box->text().toStdString();
        std::cerr << '\n';
        std::_Exit(1);
    }
    static constexpr int Patience = 20000;
    QElapsedTimer mSince;
    std::vector<Act> mActs;
    std::size_t mNext = 0;
    QObject mLooks;
};

template <class T>
T* TopWindow(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && (*name == '\0' || widget->objectName() == name))
            if (auto* found = qobject_cast<T*>(widget)) return found;
    return nullptr;
}

inline QMainWindow* Program() { return TopWindow<QMainWindow>("mainWindow"); }

inline Act TypeCommand(const char* text) {
    return {[] { return Program() != nullptr && QApplication::activeModalWidget() == nullptr; },
            [text] {
                auto* const line = Program()->findChild<QLineEdit*>("command");
                line->setText(text);
                QTest::keyClick(line, Qt::Key_Return);
            }};
}

inline Act PressInBox(const char* caption) {
    const auto button = [caption]() -> QAbstractButton* {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) return nullptr;
        for (QAbstractButton* one : box->buttons())
            if (one->text().remove('&') == caption) return one;
        return nullptr;
    };
    return {[button] { return button() != nullptr; }, [button] { button()->click(); }};
}

inline Act ChooseInMenu(const char* caption) {
    return {[] { return QApplication::activeModalWidget() == nullptr; },
            [caption] {
                for (QAction* action : Program()->findChildren<QAction*>())
                    if (action->text() == caption) return action->trigger();
                std::abort();
            }};
}

inline bool IsBusy() { return QApplication::activeModalWidget() != nullptr; }

/// The method's entry in the menus.
inline Act CallCommand(const char* method) {
    return {[] { return !IsBusy(); }, [method] { Program()->findChild<QAction*>(method)->trigger(); }};
}

/// Something that is done in the window of a form, once that is the one on top.
inline Act InForm(const char* form, std::function<void(QWidget&)> act) {
    return {[form] { return IsBusy() && QApplication::activeModalWidget()->objectName() == form; },
            [act = std::move(act)] { act(*QApplication::activeModalWidget()); }};
}

inline Act PressIn(const char* form, const char* button) {
    return InForm(form, [button](QWidget& window) { window.findChild<QAbstractButton*>(button)->click(); });
}

inline Act PressKeyIn(const char* form, const char* key) {
    return InForm(form, [key](QWidget& window) { window.findChild<QAction*>(key)->trigger(); });
}

inline Act CloseForm(const char* form) {
    return InForm(form, [](QWidget& window) { window.close(); });
}

/// Keys at an edit field, whose text they replace.
inline Act TypeIn(const char* form, const char* control, std::string text) {
    return InForm(form, [control, text = std::move(text)](QWidget& window) {
        auto* edit = window.findChild<QLineEdit*>(control);
        if (auto* const combo = window.findChild<QComboBox*>(control)) edit = combo->lineEdit();
        edit->selectAll();
        QTest::keyClicks(edit, QString::fromStdString(text));
    });
}

inline Act PickIn(const char* form, const char* combo, const char* item) {
    return InForm(form, [combo, item](QWidget& window) {
        auto& box = *window.findChild<QComboBox*>(combo);
        box.setCurrentIndex(box.findText(item));
        emit box.activated(box.currentIndex());
    });
}

inline QPoint PlaceOf(QListWidget& list, const char* item) {
    QListWidgetItem* const found = list.findItems(item, Qt::MatchExactly).front();
    list.scrollToItem(found);
    return list.visualItemRect(found).center();
}

inline Act ClickIn(const char* form, const char* list, const char* item) {
    return InForm(form, [list, item](QWidget& window) {
        auto& items = *window.findChild<QListWidget*>(list);
        QTest::mouseClick(items.viewport(), Qt::LeftButton, {}, PlaceOf(items, item));
    });
}

inline Act DoubleClickIn(const char* form, const char* list, const char* item) {
    return InForm(form, [list, item](QWidget& window) {
        auto& items = *window.findChild<QListWidget*>(list);
        const QPoint place = PlaceOf(items, item);
        QTest::mouseClick(items.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(items.viewport(), Qt::LeftButton, {}, place);
    });
}

/// The cell by place from 1, as the mouse finds it.
inline void ClickCell(QAbstractItemView& grid, int row, int column) {
    const QModelIndex cell = grid.model()->index(row - 1, column - 1);
    grid.scrollTo(cell);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(cell).center());
}

inline Act TypeInCell(const char* form, const char* grid, int row, int column, const char* text) {
    return InForm(form, [=](QWidget& window) {
        auto& view = *window.findChild<QAbstractItemView*>(grid);
        ClickCell(view, row, column);
        for (const QChar key : QString(text)) {
            auto* const editor = view.findChild<QLineEdit*>();
            QTest::keyClick(editor != nullptr ? static_cast<QWidget*>(editor) : &view, key.toLatin1());
        }
        if (auto* const editor = view.findChild<QLineEdit*>()) QTest::keyClick(editor, Qt::Key_Return);
    });
}

inline Act PasteAtCell(const char* form, const char* grid, int row, int column, const char* text) {
    return InForm(form, [=](QWidget& window) {
        auto& view = *window.findChild<QAbstractItemView*>(grid);
        QApplication::clipboard()->setText(text);
        ClickCell(view, row, column);
        QTest::keyClick(&view, Qt::Key_V, Qt::ControlModifier);
    });
}

inline Act CancelFileDialog() {
    return {[] { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()) != nullptr; },
            [] { qobject_cast<QFileDialog*>(QApplication::activeModalWidget())->reject(); }};
}

/// What the host asks; null cancels.
inline Act AnswerPrompt(const char* answer) {
    return {[] { return qobject_cast<QInputDialog*>(QApplication::activeModalWidget()) != nullptr; },
            [answer] {
                auto* const dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
                if (answer == nullptr) return dialog->reject();
                dialog->setTextValue(answer);
                dialog->accept();
            }};
}

inline Act QuitProgram() {
    return {[] { return !IsBusy(); }, [] { Program()->close(); }};
}

}  // namespace brenvik::desktop
