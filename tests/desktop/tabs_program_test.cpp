// The program with two drawings, as a process of its own: a robot at its windows, its journal, a crash; and
// the pictures of two drawings under a display drawn into memory.
#include <gtest/gtest.h>

#include <QOpenGLWidget>
#include <QProcess>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <fstream>
#include <optional>

#include "checkout_paths.h"
#include "desktop_program.h"
#include "files_on_disk.h"
#include "form_windows/desktop_dialogs.h"
#include "home/workplace.h"
#include "recovery/recovery_store.h"
#include "robot.h"
#include "virtual_display.h"
#include "windows/main_window.h"

namespace brenvik::desktop {
namespace {

namespace fs = std::filesystem;

constexpr int Patience = 120000;

int KeptIn(const fs::path& home) {
    std::error_code error;
    int count = 0;
    for (const auto& entry : fs::directory_iterator(RecoveryFolder(home), error))
        count += fs::exists(entry.path() / "work.txt");
    return count;
}

Act TurnTo(int tab) {
    return {[] { return !IsBusy(); },
            [tab] { Program()->findChild<QTabBar*>("drawings")->setCurrentIndex(tab); }};
}

Act ChooseAction(const char* name) {
    return {[] { return !IsBusy(); }, [name] { Program()->findChild<QAction*>(name)->trigger(); }};
}

std::vector<Act> ActsOf(const std::string& role) {
    if (role == "record")
        return {TypeCommand("erase last  "),  TurnTo(0),
                TypeCommand("erase last  "),  TypeCommand("erase last  "),
                ChooseInMenu("&Save"),        ChooseAction("nextDrawing"),
                ChooseInMenu("&Save"),        TypeCommand("erase all  "),
                ChooseAction("closeDrawing"), PressInBox("Discard"),
                TypeCommand("erase last  "),  ChooseInMenu("&Save"),
                ChooseAction("closeDrawing"), QuitProgram()};
    // Until it is killed.
    if (role == "work on both") return {TypeCommand("erase last  "), TurnTo(0), TypeCommand("erase last  ")};
    if (role == "recover both")
        return {PressInBox("Recover"), PressInBox("Recover"), QuitProgram(), PressInBox("Save all")};
    std::abort();
}

/// Not a test: what the process of the tests below runs.
TEST(ProgramWithTabs, DISABLED_Runs) {
    const fs::path place = qEnvironmentVariable("BRENVIK_TEST_PLACE").toStdString();
    const std::string role = qEnvironmentVariable("BRENVIK_TEST_ROLE").toStdString();
    DesktopOptions options;
    options.home = (place / "home").string();
    options.drawing = (place / "first.dxf").string();
    // One of the two pieces of work finds its drawing open.
    if (role != "recover both") options.furtherDrawings = {(place / "second.dxf").string()};
    if (role == "record") options.record = (place / "day.journal").string();
    const Robot robot(ActsOf(role));
    EXPECT_EQ(RunForAPerson(options), app::ExitStatus::Done);
}

class TwoDrawings : public ::testing::Test {
  protected:
    TwoDrawings()
        : place(folder.path().toStdString()), first(place / "first.dxf"), second(place / "second.dxf") {
        Begin();
        solids = SolidsIn(first);
    }
    ~TwoDrawings() override {
        program.kill();
        program.waitForFinished();
    }
    void Begin() const {
        for (const fs::path& drawing : {first, second})
            fs::copy_file(fs::path(BRENVIK_SOURCE_DIR) / "samples/base-cabinet.dxf", drawing,
                          fs::copy_options::overwrite_existing);
    }
    void Start(const char* role, const char* test = "ProgramWithTabs.*", const std::string& display = {}) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("BRENVIK_TEST_ROLE", role);
        environment.insert("BRENVIK_TEST_PLACE", QString::fromStdString(place.string()));
        environment.insert("BRENVIK_KEEP_SECONDS", "60");
        environment.insert("XDG_CONFIG_HOME", folder.path());
        if (!display.empty()) {
            environment.insert("DISPLAY", QString::fromStdString(display));
            environment.insert("QT_QPA_PLATFORM", "xcb");
            // Where pictures are taken, windows are shown.
            environment.insert("BRENVIK_PICTURES", folder.path());
        }
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QCoreApplication::applicationFilePath(),
                      {"--gtest_also_run_disabled_tests", QString("--gtest_filter=") + test});
    }
    void AwaitEnd() {
        ASSERT_TRUE(program.waitForFinished(Patience)) << program.readAll().toStdString();
        ASSERT_EQ(program.exitStatus(), QProcess::NormalExit) << program.readAll().toStdString();
        ASSERT_EQ(program.exitCode(), 0) << program.readAll().toStdString();
    }

    QTemporaryDir folder;
    const fs::path place, first, second;
    int solids = 0;
    QProcess program;
};

TEST_F(TwoDrawings, AJournalTurnsFromOneToTheOther) {
    Start("record");
    AwaitEnd();
    const std::string journal = Content(place / "day.journal");
    EXPECT_EQ(SolidsIn(first), solids - 3) << journal;
    EXPECT_EQ(SolidsIn(second), solids - 1) << journal;
    const std::size_t closed = journal.find("\nclose drawing\n");
    EXPECT_NE(closed, std::string::npos) << journal;
    EXPECT_NE(closed, journal.rfind("\nclose drawing\n")) << "both of them\n" << journal;
    const std::string firstSaved = Content(first), secondSaved = Content(second);
    Begin();
    QProcess player;
    player.setProcessChannelMode(QProcess::MergedChannels);
    player.start(QString::fromStdString((fs::path(BRENVIK_BINARY_DIR) / "bin/brenvik").string()),
                 {"--home", folder.filePath("home"), "run", QString::fromStdString(first.string()),
                  "--journal", folder.filePath("day.journal")});
    ASSERT_TRUE(player.waitForFinished(Patience));
    const std::string words = player.readAll().toStdString();
    EXPECT_EQ(player.exitCode(), 0) << words << journal;
    EXPECT_NE(words.find("was changed and closed without being saved"), std::string::npos) << words;
    EXPECT_EQ(Content(first), firstSaved) << words << journal;
    EXPECT_EQ(Content(second), secondSaved) << journal;
}

TEST_F(TwoDrawings, AJournalPlaysOnOne) {
    std::ofstream(place / "a.journal") << "select none\n";
    QProcess player;
    player.start(QString::fromStdString((fs::path(BRENVIK_BINARY_DIR) / "bin/brenvik").string()),
                 {"--home", folder.filePath("home"), "desktop", "--journal", folder.filePath("a.journal"),
                  QString::fromStdString(first.string()), QString::fromStdString(second.string())});
    ASSERT_TRUE(player.waitForFinished(Patience));
    EXPECT_EQ(player.exitCode(), 2);
    // The toolkit may have said something of its own before.
    EXPECT_TRUE(player.readAllStandardError().endsWith(
        "brenvik: --journal plays on one drawing, in which it may open others: expected one DRAWING\n"));
}

TEST_F(TwoDrawings, ComeBackBothAfterACrash) {
    Start("work on both");
    ASSERT_TRUE(QTest::qWaitFor([this] { return KeptIn(place / "home") == 2; }, Patience));
    program.kill();
    ASSERT_TRUE(program.waitForFinished(Patience));
    EXPECT_EQ(SolidsIn(first), solids);
    Start("recover both");
    AwaitEnd();
    EXPECT_EQ(SolidsIn(first), solids - 1);
    EXPECT_EQ(SolidsIn(second), solids - 1);
    EXPECT_FALSE(fs::exists(RecoveryFolder(place / "home")));
}

/// The picture when everything has been prepared.
QImage PictureOf(QOpenGLWidget& view) {
    QImage last;
    for (int same = 0; same < 4;) {
        QTest::qWait(150);
        const QImage picture = view.grabFramebuffer();
        same = picture == last ? same + 1 : 0;
        last = picture;
    }
    return last;
}

/// Of the pixels, those that look different: a camera that comes back is off by some last bit.
double Difference(const QImage& one, const QImage& other) {
    if (one.size() != other.size() || one.isNull()) return 1;
    int different = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y), b = other.pixelColor(x, y);
            different += std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
                             std::abs(a.blue() - b.blue()) >
                         60;
        }
    return static_cast<double>(different) / (one.width() * one.height());
}

constexpr double Same = 0.005, Clear = 0.02;

/// Not a test, as above.
TEST(PicturesOfTabs, DISABLED_Runs) {
    QSurfaceFormat format;
    format.setDepthBufferSize(24);
    format.setStencilBufferSize(8);
    QSurfaceFormat::setDefaultFormat(format);
    const fs::path place = qEnvironmentVariable("BRENVIK_TEST_PLACE").toStdString();
    FormDesk desk;
    DesktopDialogs dialogs(desk);
    app::Workplace workplace((place / "home").string(), dialogs);
    MainWindow window(workplace, desk);
    window.show();
    ASSERT_TRUE(window.OpenFile((place / "first.dxf").string()));
    auto* const view = window.findChild<QOpenGLWidget*>();
    ASSERT_NE(view, nullptr);
    ASSERT_TRUE(window.OpenFile((place / "second.dxf").string()));
    auto& bar = *window.findChild<QTabBar*>("drawings");
    bar.setCurrentIndex(0);
    const QImage wholeCabinet = PictureOf(*view);
    bar.setCurrentIndex(1);
    EXPECT_LT(Difference(PictureOf(*view), wholeCabinet), Same) << "the same drawing in all but its name";
    // All but one part, seen from the top.
    auto* const line = window.findChild<QLineEdit*>("command");
    line->setText("erase all remove last  ");
    QTest::keyClick(line, Qt::Key_Return);
    for (QAction* action : window.findChildren<QAction*>())
        if (action->text() == "&Top") action->trigger();
    const QImage onePart = PictureOf(*view);
    EXPECT_GT(Difference(onePart, wholeCabinet), Clear);
    bar.setCurrentIndex(0);
    EXPECT_LT(Difference(PictureOf(*view), wholeCabinet), Same) << "seen as before, with all its parts";
    bar.setCurrentIndex(1);
    EXPECT_LT(Difference(PictureOf(*view), onePart), Same);
    // A click means a part of the drawing in front, whose neighbour has a part of the same handle.
    QTest::mouseClick(view, Qt::LeftButton, {}, view->rect().center());
    HostDocument& front = *workplace.host.Active();
    ASSERT_TRUE(QTest::qWaitFor([&] { return front.PreviousSelection().size() == 1; }));
    EXPECT_EQ(&front.PreviousSelection().front()->Document(), &front);
    EXPECT_TRUE(workplace.host.OpenDocuments().front()->PreviousSelection().empty());
    bar.setCurrentIndex(0);
    EXPECT_LT(Difference(PictureOf(*view), wholeCabinet), Same);
    // A closed drawing takes its picture along; the one behind it comes as it was.
    QTest::mouseClick(&bar, Qt::MiddleButton, {}, bar.tabRect(0).center());
    EXPECT_EQ(workplace.host.OpenDocuments().size(), 1U);
    EXPECT_GT(Difference(PictureOf(*view), wholeCabinet), Clear);
    ASSERT_TRUE(window.OpenFile((place / "first.dxf").string()));
    EXPECT_TRUE(front.PreviousSelection().size() == 1);
}

TEST_F(TwoDrawings, EachIsSeenAsItWasLeft) {
    const VirtualDisplay display;
    if (display.Name().empty()) GTEST_SKIP() << "no virtual display here (Xvfb)";
    Start("", "PicturesOfTabs.*", display.Name());
    AwaitEnd();
}

}  // namespace
}  // namespace brenvik::desktop
