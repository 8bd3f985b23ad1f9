// A session of mouse and keys is recorded, and played it leads to the same drawing and the same files.
#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QProcess>
#include <QShortcut>
#include <QTableView>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <map>

#include "checkout_paths.h"
#include "desktop_program.h"
#include "files_on_disk.h"
#include "journal/journal_parser.h"
#include "recording/journal_recorder.h"
#include "robot.h"

namespace brenvik::desktop {
namespace {

namespace fs = std::filesystem;

constexpr int Patience = 120000;

QTreeWidgetItem* PartNamed(const char* name) {
    const auto found = Program()->findChild<QTreeWidget*>("parts")->findItems(
        name, Qt::MatchStartsWith | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.front();
}

Act UntickPart(const char* name) {
    return {[] { return !IsBusy(); }, [name] { PartNamed(name)->setCheckState(0, Qt::Unchecked); }};
}

Act SelectPart(const char* name) {
    return {[] { return !IsBusy(); },
            [name] {
                auto& tree = *Program()->findChild<QTreeWidget*>("parts");
                tree.scrollToItem(PartNamed(name));
                QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                                  tree.visualItemRect(PartNamed(name)).center());
            }};
}

Act EscapeInForm(const char* form) {
    return InForm(form, [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); });
}

Act EscapeAtTheCommandLine() {
    // Without a display no window is the active one, and keys of a line go nowhere.
    return {[] { return !IsBusy(); },
            [] { emit Program()->findChild<QLineEdit*>("command")->findChild<QShortcut*>()->activated(); }};
}

/// A day at the desk: the list, its sort and its filter, an export, a CNC run, sections, host commands.
std::vector<Act> DayAtTheDesk(const fs::path& place) {
    const std::string list = (place / "out \"list\" 1.csv").string();
    return {
        CallCommand("Show"),
        TypeInCell("frmMain", "fpSpread1", 1, 3, "Side \"left\""),
        PasteAtCell("frmMain", "fpSpread1", 2, 3, "Top\tBox\nBottom\t\"two\nlines\"\n"),
        InForm("frmMain",
               [](QWidget& window) {
                   auto& header = *window.findChild<QTableView*>("fpSpread1")->horizontalHeader();
                   for (const int width : {140, 150, 163}) header.resizeSection(2, width);
               }),
        PressKeyIn("frmMain", "SORT"),
        ClickIn("frmNewSort", "List1", "Width"),
        PressIn("frmNewSort", "btnAddOne"),
        DoubleClickIn("frmNewSort", "List1", "Length"),
        DoubleClickIn("frmNewSort", "List2", "Length  [Asc]"),
        PressIn("frmNewSort", "btnOK"),
        TypeInCell("frmMain", "fpSpread1", 3, 3, "Third by width"),
        PressKeyIn("frmMain", "APPLY_DRAWING"),
        PressKeyIn("frmMain", "FILTER"),
        PickIn("frmFilter", "cboCol(0)", "Length"),
        PickIn("frmFilter", "cboCrit(0)", "> Greater Than"),
        TypeIn("frmFilter", "cboCritData(0)", "long"),
        PressIn("frmFilter", "btnOK"),
        PressInBox("OK"),
        TypeIn("frmFilter", "cboCritData(0)", "500"),
        PressIn("frmFilter", "btnOK"),
        PressKeyIn("frmMain", "EXPORT"),
        PressIn("frmExport", "cmdCSVBrowse"),
        CancelFileDialog(),
        TypeIn("frmExport", "txtSaveCSVFile", list),
        PressIn("frmExport", "chkChooseCSV"),
        ClickIn("frmExport", "cboCSVCaptionFrom", "Material"),
        ClickIn("frmExport", "cboCSVCaptionFrom", "Length"),
        ClickIn("frmExport", "cboCSVCaptionFrom", "Material"),
        PressIn("frmExport", "btnInsert"),
        PressIn("frmExport", "cmdGo"),
        PressInBox("OK"),
        CloseForm("frmMain"),
        UntickPart("Adjustable Shelf"),
        SelectPart("Drawer Side Left"),
        CallCommand("BVC2C"),
        PressInBox("OK"),
        PressInBox("OK"),
        TypeCommand("move"),
        EscapeAtTheCommandLine(),
        CallCommand("BVSection1"),
        AnswerPrompt("p"),
        AnswerPrompt("down"),
        AnswerPrompt(nullptr),
        CallCommand("BVSection1"),
        AnswerPrompt("p"),
        AnswerPrompt("down"),
        AnswerPrompt("100,200.5,300"),
        TypeCommand("erase last  "),
        TypeCommand("erase last  "),
        TypeCommand("move"),
        ChooseInMenu("&Undo ERASE"),
        CallCommand("Show"),
        EscapeInForm("frmMain"),
        ChooseInMenu("&Save"),
        QuitProgram(),
    };
}

/// Not a test: what the process of the tests below runs.
TEST(RecordedProgram, DISABLED_Runs) {
    DesktopOptions options;
    const fs::path place = qEnvironmentVariable("BRENVIK_TEST_PLACE").toStdString();
    options.home = (place / "home").string();
    options.drawing = (place / "cabinet.dxf").string();
    options.record = (place / "day.journal").string();
    const Robot robot(DayAtTheDesk(place));
    EXPECT_EQ(RunForAPerson(options), app::ExitStatus::Done);
}

class Recording : public ::testing::Test {
  protected:
    Recording() : place(fs::path(folder.path().toStdString()) / "kitchen \"A\" 1") {
        fs::create_directories(place);
        Begin();
    }
    void Begin() const {
        fs::copy_file(fs::path(BRENVIK_SOURCE_DIR) / "samples/base-cabinet.dxf", place / "cabinet.dxf",
                      fs::copy_options::overwrite_existing);
    }
    /// The drawing, lists and part files, by their names; and everything but the journal and the settings is
    /// made away with.
    std::map<std::string, std::string> TakeFiles() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(place)) {
            const std::string name = entry.path().lexically_relative(place).string();
            const bool isOutcome = !name.starts_with("home/") || name.starts_with("home/drive_c/");
            if (entry.is_regular_file() && isOutcome && entry.path().extension() != ".journal")
                files[name] = Content(entry.path());
        }
        fs::remove_all(place / "home");
        for (const auto& [name, content] : files) fs::remove(place / name);
        Begin();
        return files;
    }
    /// The words that the program prints.
    std::string Run(const QString& program, const QStringList& words, int* status = nullptr) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("BRENVIK_TEST_PLACE", QString::fromStdString(place.string()));
        environment.insert("XDG_CONFIG_HOME", folder.path());
        environment.insert("BRENVIK_KEEP_SECONDS", "0");
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, words);
        if (!process.waitForFinished(Patience)) process.kill();
        process.waitForFinished();
        if (status != nullptr)
            *status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        return process.readAll().toStdString();
    }

    QTemporaryDir folder;
    const fs::path place;
};

TEST_F(Recording, PlayedLeadsToTheSameDrawingAndFiles) {
    int status = -1;
    const std::string told =
        Run(QCoreApplication::applicationFilePath(),
            {"--gtest_also_run_disabled_tests", "--gtest_filter=RecordedProgram.*"}, &status);
    const std::string journal = Content(place / "day.journal");
    ASSERT_EQ(status, 0) << told << journal;
    const std::size_t width = journal.find("\nwidth fpSpread1 ");
    EXPECT_NE(width, std::string::npos) << journal;
    EXPECT_EQ(width, journal.rfind("\nwidth ")) << "a drag is one step\n" << journal;
    const std::map<std::string, std::string> recorded = TakeFiles();
    ASSERT_TRUE(recorded.contains("out \"list\" 1.csv")) << journal;
    ASSERT_NE(recorded.at("cabinet.dxf"), Content(place / "cabinet.dxf")) << "the day has changed something";
    for (const char* way : {"run", "desktop"}) {
        const std::string words =
            Run(QString::fromStdString((fs::path(BRENVIK_BINARY_DIR) / "bin/brenvik").string()),
                {"--home", QString::fromStdString((place / "home").string()), way,
                 QString::fromStdString((place / "cabinet.dxf").string()), "--journal",
                 QString::fromStdString((place / "day.journal").string())});
        EXPECT_EQ(words.find(".journal: line "), std::string::npos) << way << '\n' << words << journal;
        const std::map<std::string, std::string> played = TakeFiles();
        for (const auto& [name, content] : recorded)
            EXPECT_TRUE(played.contains(name) && played.at(name) == content)
                << way << ": " << name << (played.contains(name) ? " differs" : " is missing") << '\n'
                << words << journal;
        EXPECT_EQ(played.size(), recorded.size()) << way;
    }
}

class RecordedFile : public ::testing::Test {
  protected:
    QTemporaryDir folder{};
    fs::path file = fs::path(folder.path().toStdString()) / "a.journal";
    /// Without the heading.
    std::string Steps() const {
        const std::string content = Content(file);
        return content.substr(content.find('\n') + 1);
    }
    std::vector<std::string> told;
    JournalRecorder recorder{file, [this](const std::string& line) { told.push_back(line); }};
};

TEST_F(RecordedFile, QueuesAnswersAheadOfTheStepThatTheyWereGivenIn) {
    recorder.Step("press btnGo");
    recorder.Answer("file cancel");
    recorder.Remark("[Done] two\nlines");
    recorder.Answer("answer yes");
    recorder.Step("close");
    EXPECT_EQ(Steps(), "file cancel\nanswer yes\npress btnGo\n# [Done] two\\nlines\nclose\n");
}

TEST_F(RecordedFile, TypedLettersAreOneText) {
    recorder.Step("type Text1 \"a\"", "type Text1 ");
    recorder.Step("type Text1 \"ab\"", "type Text1 ");
    recorder.Answer("answer yes");
    recorder.Step("type Text1 \"abc\"", "type Text1 ");
    recorder.Step("type Text2 \"x\"", "type Text2 ");
    EXPECT_EQ(Steps(), "answer yes\ntype Text1 \"ab\"\ntype Text1 \"abc\"\ntype Text2 \"x\"\n");
}

TEST_F(RecordedFile, TellsOnceThatItCantBeWritten) {
    fs::remove(file);
    fs::create_directory(file);
    recorder.Step("close");
    recorder.Step("close");
    EXPECT_EQ(told.size(), 1U);
}

}  // namespace
}  // namespace brenvik::desktop
