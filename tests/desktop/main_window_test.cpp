// The main window at work, without a display: what its menus say and bring.
#include "windows/main_window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>
#include <filesystem>
#include <optional>
#include <sstream>

#include "checkout_paths.h"
#include "console/console_dialogs.h"
#include "export/export_troubles.h"
#include "parts/part_trouble.h"
#include "session/progress.h"
#include "windows/drawing_filters.h"

namespace brenvik::desktop {
namespace {

class MainWindowAtWork : public ::testing::Test {
  protected:
    MainWindowAtWork() {
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
        const std::filesystem::path place = folder.path().toStdString();
        std::filesystem::copy_file(std::filesystem::path(BRENVIK_SOURCE_DIR) / "samples/base-cabinet.dxf",
                                   place / "cabinet.dxf");
        workplace.emplace((place / "home").string(), dialogs);
        window.emplace(*workplace, desk);
        EXPECT_TRUE(window->OpenFile((place / "cabinet.dxf").string()));
    }
    ~MainWindowAtWork() override {
        window.reset();
        workplace.reset();
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

    QTemporaryDir folder;
    std::ostringstream told;
    ConsoleDialogs dialogs{told};
    FormDesk desk;
    std::optional<app::Workplace> workplace;
    std::optional<MainWindow> window;
};

TEST_F(MainWindowAtWork, TakesBackAndDoesAgainByItsMenu) {
    const int parts = Parts();
    EXPECT_FALSE(Action("undo").isEnabled());
    Type("erase all  ");
    EXPECT_EQ(Parts(), 0);
    EXPECT_EQ(Action("undo").text(), "&Undo ERASE");
    Action("undo").trigger();
    EXPECT_EQ(Parts(), parts);
    EXPECT_FALSE(Action("undo").isEnabled());
    EXPECT_EQ(Action("redo").text(), "&Redo ERASE");
    Action("redo").trigger();
    EXPECT_EQ(Parts(), 0);
}

TEST_F(MainWindowAtWork, CtrlZInTheCommandLineTakesTheCommandBack) {
    const int parts = Parts();
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*window));
    auto* const line = window->findChild<QLineEdit*>("command");
    line->setFocus();
    QTest::keyClicks(line, "erase all  ");
    QTest::keyClick(line, Qt::Key_Return);
    ASSERT_EQ(Parts(), 0);
    QTest::keyClicks(line, "move");
    QTest::keySequence(line, QKeySequence::Undo);
    EXPECT_EQ(line->text(), "") << "typing is taken back first";
    EXPECT_EQ(Parts(), 0);
    QTest::keySequence(line, QKeySequence::Undo);
    EXPECT_EQ(Parts(), parts);
    EXPECT_EQ(line->text(), "");
    QTest::keySequence(line, QKeySequence::Undo);
    EXPECT_EQ(line->text(), "");
}

TEST_F(MainWindowAtWork, TellsAPersonWhatAnActHasLost) {
    const auto lose = [this] {
        desk.Do([] {
            NotePartTrouble({"100", "Left Side", "it has no size in the export"});
            NotePartTrouble({"", "", "a default was taken", false, true});
            NotePartTrouble({"120", "Right Side", "ends\r\nhere"});
            for (int line = 1; line <= 20; ++line) NoteExportTrouble("line " + std::to_string(line));
        });
    };
    // A journal tells by itself what its steps lose.
    lose();
    EXPECT_EQ(told.str(), "");
    window->TellLossesOfActs();
    desk.Do([] {});
    EXPECT_NE(
        told.str().find("[Look at this] the part \"Left Side\" (100): it has no size in the export\\r\\n"),
        std::string::npos)
        << told.str();
    EXPECT_NE(told.str().find("and 10 more, which the command line's history shows"), std::string::npos);
    EXPECT_EQ(told.str().find("a default was taken"), std::string::npos);
    const std::string history = window->findChild<QPlainTextEdit*>("history")->toPlainText().toStdString();
    for (const char* line :
         {"a default was taken\n", "the part \"Left Side\" (100): it has no size in the export\n", "line 1\n",
          "line 19\n"})
        EXPECT_NE(history.find(line), std::string::npos) << history;
    told.str("");
    desk.Do([] {});
    EXPECT_EQ(told.str(), "");
}

TEST_F(MainWindowAtWork, CancelsAnOpenCommandToTakeBack) {
    const int parts = Parts();
    Type("erase all  ");
    Type("move");
    Action("undo").trigger();
    EXPECT_EQ(Parts(), parts);
}

TEST_F(MainWindowAtWork, ShowsWhatACncRunHasMade) {
    Action("BVC2C").trigger();
    auto* const outcome = window->findChild<QDialog*>("outcome");
    ASSERT_NE(outcome, nullptr);
    EXPECT_TRUE(outcome->isVisible());
    auto* const parts = outcome->findChild<QTreeWidget*>("outcomeParts");
    const QList<QTreeWidgetItem*> sides = parts->findItems("\"Drawer Side Left\" (162)", Qt::MatchExactly);
    ASSERT_EQ(sides.size(), 1);
    EXPECT_EQ(sides.front()->text(1), "both sides");
    parts->setCurrentItem(sides.front());
    EXPECT_EQ(outcome->findChild<QTabWidget*>("sides")->count(), 2);
    EXPECT_EQ(workplace->host.OpenDocuments().size(), 1U) << "part files are looked at elsewhere";
}

/// Cancels work of one name ahead of its third step.
class ImpatientUser : public ProgressPort {
  public:
    explicit ImpatientUser(std::string what) : mWhat(std::move(what)) {}
    void Begin(const ProgressTask& task) override { mTasks.emplace_back(task.what); }
    bool Step(int step, std::string_view) override { return mTasks.back() != mWhat || step < 3; }
    void End() override { mTasks.pop_back(); }

  private:
    std::string mWhat;
    std::vector<std::string> mTasks;
};

TEST_F(MainWindowAtWork, ACncRunLeavesNoFilesWhereverItIsCancelled) {
    const std::filesystem::path output = folder.filePath("home/drive_c/BV-DXF").toStdString();
    for (const char* what : {"Preparing the parts", "CNC run"}) {
        Action("BVC2C").trigger();
        ASSERT_TRUE(std::filesystem::exists(output / "CNCList.txt") || !std::filesystem::is_empty(output));
        ImpatientUser user(what);
        ShowProgressBy(&user);
        Action("BVC2C").trigger();
        ShowProgressBy(nullptr);
        std::vector<std::string> left;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(output.parent_path()))
            if (entry.is_regular_file()) left.push_back(entry.path().filename().string());
        EXPECT_EQ(left, std::vector<std::string>()) << what;
        auto* const outcome = window->findChild<QDialog*>("outcome");
        EXPECT_TRUE(outcome->findChild<QLabel*>("summary")->text().contains("did not go to its end")) << what;
    }
}

TEST_F(MainWindowAtWork, TheOutcomeNamesTheDrawingOfItsRun) {
    Action("BVC2C").trigger();
    window->ShowOutcome();
    const auto& outcome = *window->findChild<QDialog*>("outcome");
    EXPECT_EQ(outcome.windowTitle(), "Outcome of the CNC run - cabinet.dxf");
    EXPECT_TRUE(outcome.findChild<QLabel*>("summary")->text().startsWith("cabinet.dxf: 16 parts, "));
    const std::filesystem::path place = folder.path().toStdString();
    std::filesystem::copy_file(place / "cabinet.dxf", place / "other.dxf");
    ASSERT_TRUE(window->OpenFile((place / "other.dxf").string()));
    window->ShowOutcome();
    EXPECT_EQ(outcome.windowTitle(), "Outcome of the CNC run - cabinet.dxf")
        << "whichever is in front by now";
}

TEST_F(MainWindowAtWork, TakesTheHostsWordsForSaving) {
    Type("erase last  ");
    EXPECT_TRUE(window->isWindowModified());
    Type("qsave");
    EXPECT_FALSE(window->isWindowModified());
    Type("erase last  ");
    Type(("saveas \"" + folder.filePath("a copy.dxf").toStdString() + "\"").c_str());
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_TRUE(std::filesystem::exists(folder.filePath("a copy.dxf").toStdString()));
    EXPECT_EQ(window->windowTitle(), "a copy.dxf[*] - Brenvik");
}

TEST_F(MainWindowAtWork, ADrawingThatACommandSavesIsSaved) {
    Type("erase last  ");
    workplace->host.Active()->Save();
    Type("regen");
    EXPECT_FALSE(window->isWindowModified());
    Type("erase last  ");
    EXPECT_TRUE(window->isWindowModified());
}

TEST(DrawingFilters, HaveTheEndingsThatAreReadAndTheKindsThatAreWritten) {
    EXPECT_EQ(FilterForOpening(),
              "Drawings (*.dxf *.dwg *.step *.stp *.sat *.sab *.DXF *.DWG *.STEP *.STP *.SAT *.SAB);;All "
              "files (*)");
    EXPECT_EQ(FilterForSaving(), "DXF drawing (*.dxf);;STEP (*.step *.stp);;ACIS text (*.sat)");
}

TEST_F(MainWindowAtWork, ComesUpAsItWasLeft) {
    const QSize asMade = window->size();
    window->KeepLayout();
    EXPECT_EQ(window->size(), asMade) << "at the first start";
    window->show();
    window->resize(900, 640);
    for (QAction* action : window->findChildren<QAction*>())
        if (action->text() == "Properties") action->trigger();
    EXPECT_FALSE(window->findChild<QDockWidget*>("propertiesDock")->isVisible());
    window->close();
    // That of a journal is always the same.
    window.emplace(*workplace, desk);
    window->show();
    EXPECT_EQ(window->size(), asMade);
    EXPECT_TRUE(window->findChild<QDockWidget*>("propertiesDock")->isVisible());
    window->close();
    window.emplace(*workplace, desk);
    window->KeepLayout();
    window->show();
    EXPECT_EQ(window->size(), QSize(900, 640));
    EXPECT_FALSE(window->findChild<QDockWidget*>("propertiesDock")->isVisible());
    EXPECT_TRUE(window->findChild<QDockWidget*>("partsDock")->isVisible());
}

}  // namespace
}  // namespace brenvik::desktop
