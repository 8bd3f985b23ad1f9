// Several drawings in one window, without a display: equal handles in each, and nothing of one gets into
// another.
#include <gtest/gtest.h>

#include <QDropEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QUrl>
#include <map>
#include <optional>

#include "checkout_paths.h"
#include "drafting_host/document/host_solids.h"
#include "files_on_disk.h"
#include "form_windows/desktop_dialogs.h"
#include "home/workplace.h"
#include "parts/mautocad.h"
#include "recovery/recovery_store.h"
#include "recovery/work_keeper.h"
#include "robot.h"
#include "windows/main_window.h"

namespace brenvik::desktop {
namespace {

namespace fs = std::filesystem;

/// By handle.
std::map<std::string, std::string> PartNames(HostDocument& document) {
    std::map<std::string, std::string> names;
    for (HostEntity* entity : document.Model().Entities())
        if (dynamic_cast<HostSolid*>(entity) != nullptr)
            names[entity->Handle()] = mAutoCAD::PartDataOf(*entity, "PartName");
    return names;
}

std::size_t SolidsIn(HostDocument& document) { return PartNames(document).size(); }

int CountOf(const std::map<std::string, std::string>& names, const std::string& name) {
    int count = 0;
    for (const auto& [handle, one] : names) count += one == name;
    return count;
}

class DrawingsInTabs : public ::testing::Test {
  protected:
    DrawingsInTabs()
        : place(folder.path().toStdString()),
          first(place / "first/kitchen.dxf"),
          second(place / "second/kitchen.dxf"),
          third(place / "bath & hall.dxf") {
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
        for (const fs::path& drawing : {first, second, third}) {
            fs::create_directories(drawing.parent_path());
            fs::copy_file(fs::path(BRENVIK_SOURCE_DIR) / "samples/base-cabinet.dxf", drawing);
        }
        untouched = Content(first);
        workplace.emplace((place / "home").string(), dialogs);
        window.emplace(*workplace, desk);
        window->show();
        EXPECT_TRUE(window->OpenFile(first.string()));
        EXPECT_TRUE(window->OpenFile(second.string()));
    }
    ~DrawingsInTabs() override {
        window->KeepWorkBy(nullptr);
        window.reset();
        workplace.reset();
    }
    QTabBar& Bar() { return *window->findChild<QTabBar*>("drawings"); }
    std::vector<std::string> Captions() {
        std::vector<std::string> captions;
        for (int tab = 0; tab < Bar().count(); ++tab) captions.push_back(Bar().tabText(tab).toStdString());
        return captions;
    }
    /// As a click does.
    void TurnTo(int tab) { Bar().setCurrentIndex(tab); }
    void MiddleClick(int tab) {
        QTest::mouseClick(&Bar(), Qt::MiddleButton, {}, Bar().tabRect(tab).center());
    }
    HostDocument& Document() { return *workplace->host.Active(); }
    HostDocument& Document(int tab) {
        return *workplace->host.OpenDocuments().at(static_cast<std::size_t>(tab));
    }
    int Parts() {
        return static_cast<int>(window->findChild<QTreeWidget*>("parts")
                                    ->findItems("*", Qt::MatchWildcard | Qt::MatchRecursive)
                                    .size());
    }
    void Type(const char* text) {
        auto* const line = window->findChild<QLineEdit*>("command");
        line->setText(text);
        QTest::keyClick(line, Qt::Key_Return);
    }
    QAction& Action(const char* name) { return *window->findChild<QAction*>(name); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers) { QTest::keyClick(&*window, key, modifiers); }

    QTemporaryDir folder;
    const fs::path place, first, second, third;
    std::string untouched;
    FormDesk desk;
    DesktopDialogs dialogs{desk};
    std::optional<app::Workplace> workplace;
    std::optional<MainWindow> window;
};

using Names = std::vector<std::string>;

TEST_F(DrawingsInTabs, StandSideBySideByTheirNames) {
    EXPECT_EQ(Captions(), (Names{"kitchen.dxf (first)", "kitchen.dxf (second)"}));
    EXPECT_EQ(Bar().currentIndex(), 1);
    ASSERT_TRUE(window->OpenFile(third.string()));
    EXPECT_EQ(Captions(), (Names{"kitchen.dxf (first)", "kitchen.dxf (second)", "bath && hall.dxf"}));
    EXPECT_EQ(window->windowTitle(), "bath & hall.dxf[*] - Brenvik");
    EXPECT_EQ(Bar().tabToolTip(0).toStdString(), first.string());
}

TEST_F(DrawingsInTabs, ADrawingThatIsOpenIsTurnedTo) {
    Type("erase last  ");
    TurnTo(0);
    const fs::path link = place / "link.dxf";
    fs::create_symlink(second, link);
    ASSERT_TRUE(window->OpenFile(link.string()));
    EXPECT_EQ(Bar().count(), 2);
    EXPECT_EQ(Bar().currentIndex(), 1);
    EXPECT_TRUE(window->isWindowModified()) << "it is the drawing as it was worked on";
}

TEST_F(DrawingsInTabs, ADrawingThatCannotBeReadLeavesTheOthers) {
    const Robot robot({PressInBox("OK")});
    EXPECT_FALSE(window->OpenFile((place / "none.dxf").string()));
    EXPECT_EQ(Bar().count(), 2);
    EXPECT_EQ(&Document(), &Document(1));
}

TEST_F(DrawingsInTabs, EachHasItsOwnUndo) {
    const int parts = Parts();
    Type("erase all  ");
    EXPECT_EQ(Parts(), 0);
    TurnTo(0);
    EXPECT_EQ(Parts(), parts);
    EXPECT_FALSE(Action("undo").isEnabled());
    Type("erase last  ");
    TurnTo(1);
    Action("undo").trigger();
    EXPECT_EQ(Parts(), parts);
    EXPECT_FALSE(Action("undo").isEnabled());
    TurnTo(0);
    EXPECT_LT(Parts(), parts);
    EXPECT_TRUE(Action("undo").isEnabled());
}

TEST_F(DrawingsInTabs, EachHasItsOwnSelectionAndQuestion) {
    auto& tree = *window->findChild<QTreeWidget*>("parts");
    tree.topLevelItem(0)->child(0)->setSelected(true);
    ASSERT_EQ(Document().PreviousSelection().size(), 1U);
    Type("move");
    TurnTo(0);
    EXPECT_TRUE(tree.selectedItems().isEmpty());
    EXPECT_TRUE(Document(0).PreviousSelection().empty());
    EXPECT_FALSE(workplace->typedCommands.Line().Busy(Document(0)));
    Type("erase last  ");
    TurnTo(1);
    EXPECT_EQ(tree.selectedItems().size(), 1);
    EXPECT_TRUE(workplace->typedCommands.Line().Busy(Document(1)));
}

TEST_F(DrawingsInTabs, AListIsThatOfTheDrawingInFront) {
    const std::map<std::string, std::string> asRead = PartNames(Document(0));
    ASSERT_EQ(PartNames(Document(1)), asRead) << "the same handles";
    TurnTo(0);
    {
        // Typed, and closed without an Apply.
        const Robot robot({TypeInCell("frmMain", "fpSpread1", 1, 3, "Left behind"), CloseForm("frmMain")});
        Action("Show").trigger();
    }
    TurnTo(1);
    Type("erase last  ");
    {
        const Robot robot({InForm("frmMain",
                                  [&](QWidget& form) {
                                      const auto& grid = *form.findChild<QAbstractItemView*>("fpSpread1");
                                      EXPECT_EQ(grid.model()->rowCount(),
                                                static_cast<int>(asRead.size()) - 1);
                                  }),
                           TypeInCell("frmMain", "fpSpread1", 2, 3, "Of the second"),
                           PressKeyIn("frmMain", "APPLY_CLOSE")});
        Action("Show").trigger();
    }
    EXPECT_EQ(PartNames(Document(0)), asRead);
    EXPECT_EQ(CountOf(PartNames(Document(1)), "Of the second"), 1);
    EXPECT_EQ(CountOf(PartNames(Document(1)), "Left behind"), 0);
    TurnTo(0);
    {
        const Robot robot(
            {TypeInCell("frmMain", "fpSpread1", 1, 3, "Of the first"), PressKeyIn("frmMain", "APPLY_CLOSE")});
        Action("Show").trigger();
    }
    EXPECT_EQ(CountOf(PartNames(Document(0)), "Of the first"), 1);
    EXPECT_EQ(CountOf(PartNames(Document(0)), "Of the second"), 0);
    EXPECT_EQ(CountOf(PartNames(Document(1)), "Of the first"), 0);
    Action("undo").trigger();
    EXPECT_EQ(PartNames(Document(0)), asRead);
    EXPECT_EQ(CountOf(PartNames(Document(1)), "Of the second"), 1);
}

TEST_F(DrawingsInTabs, AreLockedWhileAFormIsOpen) {
    const Robot robot({InForm("frmMain",
                              [this](QWidget&) {
                                  TurnTo(0);
                                  EXPECT_EQ(Bar().currentIndex(), 1);
                                  Action("nextDrawing").trigger();
                                  Action("closeDrawing").trigger();
                                  MiddleClick(0);
                                  EXPECT_FALSE(window->OpenFile(third.string()));
                                  EXPECT_EQ(&Document(), &Document(1));
                                  EXPECT_EQ(workplace->host.OpenDocuments().size(), 2U);
                              }),
                       CloseForm("frmMain")});
    Action("Show").trigger();
    TurnTo(0);
    EXPECT_EQ(&Document(), &Document(0));
}

TEST_F(DrawingsInTabs, AreTurnedAndClosedByKeys) {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*window));
    ASSERT_TRUE(window->OpenFile(third.string()));
    Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(Bar().currentIndex(), 0) << "around the end";
    Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(Bar().currentIndex(), 1);
    Press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Bar().currentIndex(), 0);
    Press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(Captions(), (Names{"kitchen.dxf", "bath && hall.dxf"}));
    EXPECT_EQ(Bar().currentIndex(), 0) << "the one that was in front before";
    Press(Qt::Key_W, Qt::ControlModifier);
    Press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(Bar().count(), 0);
    EXPECT_EQ(workplace->host.Active(), nullptr);
    EXPECT_EQ(window->windowTitle(), "Brenvik[*]");
    EXPECT_EQ(Parts(), 0);
    Press(Qt::Key_W, Qt::ControlModifier);
    Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(window->isVisible());
    ASSERT_TRUE(window->OpenFile(first.string()));
    EXPECT_GT(Parts(), 0);
}

TEST_F(DrawingsInTabs, TheMiddleButtonCloses) {
    MiddleClick(0);
    EXPECT_EQ(Captions(), Names{"kitchen.dxf"});
    EXPECT_EQ(Bar().tabToolTip(0).toStdString(), second.string());
}

TEST_F(DrawingsInTabs, ClosingAsksAboutTheChangesOfThatOne) {
    Type("erase last  ");
    TurnTo(0);
    EXPECT_EQ(Captions(), (Names{"kitchen.dxf (first)", "kitchen.dxf (second) *"}));
    EXPECT_FALSE(window->isWindowModified());
    {
        const Robot robot({PressInBox("Cancel")});
        MiddleClick(1);
    }
    EXPECT_EQ(Bar().count(), 2);
    EXPECT_EQ(Bar().currentIndex(), 1) << "the one that is asked about is in sight";
    {
        const Robot robot({PressInBox("Save")});
        MiddleClick(1);
    }
    EXPECT_EQ(Bar().count(), 1);
    EXPECT_NE(Content(second), untouched);
    Type("erase last  ");
    {
        const Robot robot({PressInBox("Discard")});
        MiddleClick(0);
    }
    EXPECT_EQ(Bar().count(), 0);
    EXPECT_EQ(Content(first), untouched);
}

TEST_F(DrawingsInTabs, LeavingAsksOnceForAll) {
    Type("erase last  ");
    TurnTo(0);
    Type("erase last  ");
    {
        const Robot robot({PressInBox("Cancel")});
        window->close();
    }
    EXPECT_TRUE(window->isVisible());
    {
        const Robot robot({PressInBox("Discard all")});
        window->close();
    }
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(Content(first), untouched);
    EXPECT_EQ(Content(second), untouched);
    window->show();
    {
        const Robot robot({PressInBox("Save all")});
        window->close();
    }
    EXPECT_FALSE(window->isVisible());
    EXPECT_NE(Content(first), untouched);
    EXPECT_NE(Content(second), untouched);
    EXPECT_EQ(Captions(), (Names{"kitchen.dxf (first)", "kitchen.dxf (second)"}));
}

TEST_F(DrawingsInTabs, OneIsNotSavedOverAnother) {
    Type("erase last  ");
    {
        const Robot robot({PressInBox("OK")});
        Type(("saveas \"" + first.string() + "\"").c_str());
    }
    EXPECT_EQ(Content(first), untouched);
    EXPECT_TRUE(window->isWindowModified());
    Type(("saveas \"" + (place / "second/own.dxf").string() + "\"").c_str());
    EXPECT_EQ(Captions(), (Names{"kitchen.dxf", "own.dxf"}));
}

TEST_F(DrawingsInTabs, ThoseThatACommandWritesAndOpensGetATab) {
    // It saves the drawing, writes two copies, closes it and goes on in the first copy.
    workplace->typedCommands.Call("BVDWG2");
    window->ShowDrawing();
    EXPECT_EQ(Bar().count(), 2);
    EXPECT_EQ(Captions().at(0), "kitchen.dxf");
    EXPECT_EQ(Captions().at(1), "kitchen.dwg");
    EXPECT_EQ(Bar().currentIndex(), 1);
    const int parts = Parts();
    Type("erase last  ");
    Action("undo").trigger();
    EXPECT_EQ(Parts(), parts);
}

TEST_F(DrawingsInTabs, ACommandSavesNoneOverOneThatIsOpen) {
    workplace->typedCommands.Call("BVDWG2");
    window->ShowDrawing();
    ASSERT_EQ(Captions(), (Names{"kitchen.dxf", "kitchen.dwg"}));
    Type("erase last  ");
    const std::string copy = Document().FullName();
    TurnTo(0);
    {
        const Robot robot({PressInBox("OK")});
        Action("BVDWG2").trigger();
    }
    EXPECT_EQ(Captions(), (Names{"kitchen.dxf", "kitchen.dwg *"}));
    EXPECT_EQ(Document(1).FullName(), copy);
    EXPECT_EQ(SolidsIn(Document(1)), SolidsIn(Document(0)) - 1) << "what is unsaved there is as it was";
}

TEST_F(DrawingsInTabs, FoldersOfOneNameAreToldApart) {
    const fs::path other = place / "old/second/kitchen.dxf";
    fs::create_directories(other.parent_path());
    fs::copy_file(third, other);
    ASSERT_TRUE(window->OpenFile(other.string()));
    const std::string above = place.filename().string();
    EXPECT_EQ(Captions(), (Names{"kitchen.dxf (first)", "kitchen.dxf (" + above + "/second)",
                                 "kitchen.dxf (old/second)"}));
}

TEST_F(DrawingsInTabs, FilesThatAreDroppedOpenSideBySide) {
    fs::copy_file(third, place / "fourth.dxf");
    QMimeData dropped;
    dropped.setUrls({QUrl::fromLocalFile(QString::fromStdString(third.string())),
                     QUrl::fromLocalFile(QString::fromStdString((place / "fourth.dxf").string())),
                     QUrl("https://example.com/kitchen.dxf")});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&*window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&*window, &drop);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Bar().count() == 4; }));
    EXPECT_EQ(Captions().at(3), "fourth.dxf");
}

TEST_F(DrawingsInTabs, UnsavedWorkOfEachIsKept) {
    const fs::path kept = RecoveryFolder(place / "home");
    WorkKeeper keeper(place / "home", {[] { return true; }, [](const std::string&) {}});
    window->KeepWorkBy(&keeper);
    const auto count = [&] {
        std::error_code none;
        return std::distance(fs::directory_iterator(kept, none), fs::directory_iterator());
    };
    ASSERT_TRUE(window->OpenFile(third.string()));
    fs::copy_file(third, place / "fourth.dxf");
    ASSERT_TRUE(window->OpenFile((place / "fourth.dxf").string()));
    Type("erase last  ");
    TurnTo(2);
    Type("erase last  ");
    ASSERT_TRUE(keeper.KeepNow());
    EXPECT_EQ(count(), 2);
    {
        const Robot robot({PressInBox("Discard")});
        MiddleClick(3);
    }
    EXPECT_EQ(count(), 1);
    Type("qsave");
    EXPECT_EQ(count(), 0);
}

}  // namespace
}  // namespace brenvik::desktop
