// Each form as a window: everything a user is to see has a place, and keys do what they do in a spreadsheet.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <memory>
#include <set>

#include "export/frm_adjustments.h"
#include "export/frm_export.h"
#include "export/frm_login.h"
#include "form_windows/form_desk.h"
#include "form_windows/form_window.h"
#include "grid/frm_main.h"
#include "query/frm_filter.h"
#include "query/frm_new_sort.h"
#include "settings/frm_choice.h"
#include "settings/frm_choicetherm.h"
#include "settings/frm_materials.h"
#include "settings/frm_settings.h"
#include "windows/command_groups.h"
#include "windows/main_window.h"

namespace brenvik::desktop {
namespace {

std::vector<std::unique_ptr<Form>> AllForms() {
    std::vector<std::unique_ptr<Form>> forms;
    forms.push_back(std::make_unique<frmMain>());
    forms.push_back(std::make_unique<frmNewSort>());
    forms.push_back(std::make_unique<frmFilter>());
    forms.push_back(std::make_unique<frmExport>());
    forms.push_back(std::make_unique<frmAdjustments>());
    forms.push_back(std::make_unique<frmLogin>());
    forms.push_back(std::make_unique<frmSettings>());
    forms.push_back(std::make_unique<frmMaterials>());
    forms.push_back(std::make_unique<frmChoice>());
    forms.push_back(std::make_unique<frmChoicetherm>());
    return forms;
}

/// Names of controls that a user is to see and that the layout has no place for.
std::vector<std::string> Unplaced(const FormWindow& window) {
    const Form& form = window.Shown();
    const FormLayout& layout = LayoutOf(form.Name());
    std::vector<std::string> names;
    for (const std::unique_ptr<Control>& control : form.Controls()) {
        const bool isTop =
            std::ranges::find(layout.menus, control->Name(), &MenuPlace::name) != layout.menus.end();
        const bool isShown = control->visible && control->Kind() != ControlKind::DataControl && !isTop;
        if (isShown && window.BindingOf(*control) == nullptr) names.push_back(control->Name());
    }
    return names;
}

TEST(FormWindows, EveryControlThatAUserIsToSeeHasAPlace) {
    FormDesk desk;
    ASSERT_EQ(AllForms().size(), FormLayouts().size());
    for (const std::unique_ptr<Form>& form : AllForms()) {
        const FormWindow window(*form, desk, nullptr);
        EXPECT_EQ(Unplaced(window), std::vector<std::string>()) << form->Name();
    }
}

TEST(FormWindows, NothingIsClippedAtTheSmallestSize) {
    FormDesk desk;
    for (const std::unique_ptr<Form>& form : AllForms()) {
        FormWindow window(*form, desk, nullptr);
        window.ShowModel();
        window.resize(window.minimumSizeHint());
        window.show();
        QApplication::processEvents();
        for (const QWidget* widget : window.findChildren<QWidget*>()) {
            if (widget->objectName().isEmpty() || !widget->isVisible() || widget->isWindow()) continue;
            EXPECT_GE(widget->width(), std::min(widget->minimumSizeHint().width(), 80))
                << form->Name() << ' ' << widget->objectName().toStdString();
            if (const auto* const label = qobject_cast<const QLabel*>(widget)) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width()))
                    << form->Name() << ' ' << label->objectName().toStdString();
            }
        }
    }
}

TEST(FormWindows, EachFitsOnAScreenOf1280By800) {
    FormDesk desk;
    for (const std::unique_ptr<Form>& form : AllForms()) {
        FormWindow window(*form, desk, nullptr);
        window.ShowModel();
        EXPECT_LE(window.minimumSizeHint().width(), 1280) << form->Name();
        EXPECT_LE(window.minimumSizeHint().height(), 800) << form->Name();
    }
}

TEST(FormWindows, OneThatIsLargerThanTheScreenScrolls) {
    FormDesk desk;
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPixelSize(40);
    QApplication::setFont(large);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    int scrolling = 0;
    for (const std::unique_ptr<Form>& form : AllForms()) {
        FormWindow window(*form, desk, nullptr);
        window.ShowModel();
        window.PlaceAsForm();
        window.show();
        QApplication::processEvents();
        EXPECT_LE(window.width(), screen.width()) << form->Name();
        EXPECT_LE(window.height(), screen.height()) << form->Name();
        EXPECT_GE(window.pos().x(), screen.left()) << form->Name();
        EXPECT_GE(window.pos().y(), screen.top()) << form->Name();
        auto& scroller = *window.findChild<QScrollArea*>();
        const QWidget& content = *scroller.widget();
        EXPECT_GE(content.width(), content.minimumSizeHint().width()) << form->Name();
        EXPECT_GE(content.height(), content.minimumSizeHint().height()) << form->Name();
        if (content.width() > scroller.viewport()->width() ||
            content.height() > scroller.viewport()->height()) {
            ++scrolling;
            EXPECT_TRUE(scroller.horizontalScrollBar()->isVisible() ||
                        scroller.verticalScrollBar()->isVisible())
                << form->Name();
        }
    }
    QApplication::setFont(usual);
    EXPECT_GT(scrolling, 0) << "the letters weren't large enough for this test";
}

TEST(CommandGroups, HoldEachCommandOnce) {
    std::multiset<std::string_view> grouped;
    for (const CommandGroup& group : CommandGroups())
        for (const GroupedCommand& command : group.commands)
            grouped.insert(CommandEntryOf(command.command).method);
    for (const CommandEntry& entry : CommandTable())
        EXPECT_EQ(grouped.count(entry.method), 1u) << entry.method;
    EXPECT_EQ(grouped.size(), CommandTable().size());
}

/// The material library's grid, which stands on no table, in its window.
class GridKeys : public ::testing::Test {
  protected:
    GridKeys() : grid(form.Get<GridControl>("fpMaterials")), window(form, desk, nullptr) {
        grid.SetMaxRows(4);
        window.ShowModel();
        window.show();
        view = window.findChild<QTableView*>("fpMaterials");
        GoTo(1, 1);
    }
    void GoTo(int column, int row) const { view->setCurrentIndex(view->model()->index(row - 1, column - 1)); }
    /// The first key opens the cell, and the others go into it.
    void Keys(const char* text) const {
        for (const QChar key : QString(text)) QTest::keyClick(Receiver(), key.toLatin1());
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(Receiver(), key, modifiers);
        // The end of an edit waits for the events, and its editor goes with the last of them.
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QWidget* Receiver() const {
        auto* const editor = view->findChild<QLineEdit*>();
        return editor != nullptr ? static_cast<QWidget*>(editor) : view;
    }

    FormDesk desk;
    frmMaterials form;
    GridControl& grid;
    FormWindow window;
    QTableView* view = nullptr;
};

TEST_F(GridKeys, TypingOverACellReplacesItAndEnterGoesDown) {
    grid.SetCellText(1, 1, "18 oak");
    Keys("19 ash");
    Key(Qt::Key_Return);
    EXPECT_EQ(grid.CellText(1, 1), "19 ash");
    EXPECT_EQ(grid.ActiveRow(), 2);
}

TEST_F(GridKeys, EscapeLeavesTheCellAsItWas) {
    grid.SetCellText(1, 1, "18 oak");
    Keys("x");
    Key(Qt::Key_Escape);
    EXPECT_EQ(grid.CellText(1, 1), "18 oak");
}

TEST_F(GridKeys, AKeyThatTheGridRefusesDoesNotEnter) {
    grid.onKey = [](int, int, std::string_view key) { return key == "L" || key == "W" || key == "T"; };
    Key(Qt::Key_F2);
    Keys("LxWzT");
    Key(Qt::Key_Return);
    EXPECT_EQ(grid.CellText(1, 1), "LWT");
}

TEST_F(GridKeys, BlocksGoToAndFromTheClipboard) {
    QApplication::clipboard()->setText("18 oak\t0\tcc\n19 ash\t1\tc\n");
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(grid.CellText(1, 2), "19 ash");
    EXPECT_EQ(grid.CellText(3, 2), "c");
    view->selectionModel()->select(QItemSelection(view->model()->index(0, 0), view->model()->index(1, 1)),
                                   QItemSelectionModel::ClearAndSelect);
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QString("18 oak\t0\n19 ash\t1\n"));
}

TEST_F(GridKeys, WhatABlockHasNoCellForIsSaid) {
    GoTo(1, grid.MaxRows());
    QApplication::clipboard()->setText("a\t1\nb\t2\nc\t3\n");
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(grid.CellText(1, grid.MaxRows()), "a");
    const auto* const box = view->findChild<QMessageBox*>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text().toStdString(),
              "4 of 6 cells were not pasted: they lie beyond the rows and columns of the list.");
}

TEST_F(GridKeys, CtrlZTakesBackAndCtrlYDoesAgainStepByStep) {
    grid.SetCellText(1, 1, "18 oak");
    Keys("19 ash");
    Key(Qt::Key_Return);
    GoTo(1, 2);
    QApplication::clipboard()->setText("a\t1\nb\t2\n");
    Key(Qt::Key_V, Qt::ControlModifier);
    const auto texts = [this] {
        return std::vector<std::string>{grid.CellText(1, 1), grid.CellText(1, 2), grid.CellText(2, 2),
                                        grid.CellText(1, 3), grid.CellText(2, 3)};
    };
    using Texts = std::vector<std::string>;
    ASSERT_EQ(texts(), (Texts{"19 ash", "a", "1", "b", "2"}));
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texts(), (Texts{"19 ash", "", "", "", ""})) << "a paste is one step";
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texts(), (Texts{"18 oak", "", "", "", ""}));
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texts(), (Texts{"18 oak", "", "", "", ""}));
    Key(Qt::Key_Y, Qt::ControlModifier);
    Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(texts(), (Texts{"19 ash", "a", "1", "b", "2"}));
    Key(Qt::Key_Z, Qt::ControlModifier);
    GoTo(1, 1);
    Keys("new");
    Key(Qt::Key_Return);
    Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(texts(), (Texts{"new", "", "", "", ""})) << "a new step leaves nothing to do again";
}

TEST_F(GridKeys, FillsAndClearedBlocksAreTakenBack) {
    for (int row = 1; row <= 3; ++row) grid.SetCellText(1, row, std::to_string(row));
    const auto mark = [this] {
        view->selectionModel()->select(QItemSelection(view->model()->index(0, 0), view->model()->index(2, 0)),
                                       QItemSelectionModel::ClearAndSelect);
    };
    mark();
    Key(Qt::Key_D, Qt::ControlModifier);
    ASSERT_EQ(grid.CellText(1, 3), "1");
    mark();
    Key(Qt::Key_Delete);
    ASSERT_EQ(grid.CellText(1, 1), "");
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(grid.CellText(1, 1), "1");
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(grid.CellText(1, 2), "2");
    EXPECT_EQ(grid.CellText(1, 3), "3");
}

TEST_F(GridKeys, WhatIsTakenBackPassesLocksAndTheRulesOfTyping) {
    grid.SetCellText(1, 1, "18 oak");
    Keys("x");
    Key(Qt::Key_Return);
    grid.SetBlockLocked(1, 1, 1, true);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(grid.CellText(1, 1), "x") << "locked";
    grid.SetBlockLocked(1, 1, 1, false);
    grid.onKey = [](int, int, std::string_view key) { return key != "o"; };
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(grid.CellText(1, 1), "x") << "a key that doesn't pass";
    grid.onKey = {};
    grid.SetCellText(1, 1, "by code");
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(grid.CellText(1, 1), "by code") << "changed since";
    grid.SetCellText(1, 1, "x");
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(grid.CellText(1, 1), "18 oak");
}

TEST_F(GridKeys, ALockedCellTakesNothing) {
    grid.SetCellText(1, 1, "18 oak");
    grid.SetBlockLocked(1, 1, 1, true);
    Keys("x");
    Key(Qt::Key_Delete);
    EXPECT_EQ(grid.CellText(1, 1), "18 oak");
}

}  // namespace
}  // namespace brenvik::desktop
