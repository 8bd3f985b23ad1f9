// Unsaved work after a crash. The program runs as a process of its own, with a robot at its windows, so that
// it can be killed for good.
#include <gtest/gtest.h>

#include <QApplication>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <fstream>
#include <sstream>

#include "checkout_paths.h"
#include "console/console_dialogs.h"
#include "desktop_program.h"
#include "files_on_disk.h"
#include "home/workplace.h"
#include "recovery/recovery_store.h"
#include "recovery/work_keeper.h"
#include "robot.h"

namespace brenvik::desktop {
namespace {

namespace fs = std::filesystem;

constexpr int Patience = 60000;

/// The first work that lies in the home, whoever is at it.
bool SomethingIsKept(const fs::path& home) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(RecoveryFolder(home), error))
        if (fs::exists(entry.path() / "work.txt")) return true;
    return false;
}

Act WaitForKeeping(const fs::path& home) {
    return {[home] { return SomethingIsKept(home); }, [] {}};
}

std::vector<Act> ActsOf(const std::string& role, const fs::path& home) {
    if (role == "work") return {TypeCommand("erase last  ")};
    if (role == "work and discard")
        return {TypeCommand("erase last  "), WaitForKeeping(home), QuitProgram(), PressInBox("Discard")};
    if (role == "work and save")
        return {TypeCommand("erase last  "), WaitForKeeping(home), ChooseInMenu("&Save"), QuitProgram()};
    if (role == "recover and save") return {PressInBox("Recover"), ChooseInMenu("&Save"), QuitProgram()};
    if (role == "delete") return {PressInBox("Delete"), QuitProgram()};
    if (role == "later") return {PressInBox("Ask again later"), QuitProgram()};
    std::abort();
}

/// Not a test: what the process of the tests below runs.
TEST(ProgramWithARobot, DISABLED_Runs) {
    const std::string role = qEnvironmentVariable("BRENVIK_TEST_ROLE").toStdString();
    ASSERT_NE(role, "");
    DesktopOptions options;
    options.home = qEnvironmentVariable("BRENVIK_HOME").toStdString();
    options.drawing = qEnvironmentVariable("BRENVIK_TEST_DRAWING").toStdString();
    const Robot robot(ActsOf(role, options.home));
    EXPECT_EQ(RunForAPerson(options), app::ExitStatus::Done);
}

class Recovery : public ::testing::Test {
  protected:
    Recovery() : place(folder.path().toStdString()), home(place / "home"), drawing(place / "cabinet.dxf") {
        fs::copy_file(fs::path(BRENVIK_SOURCE_DIR) / "samples/base-cabinet.dxf", drawing);
        solids = SolidsIn(drawing);
    }
    ~Recovery() override {
        program.kill();
        program.waitForFinished();
    }
    void Start(const char* role, bool withDrawing) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("BRENVIK_TEST_ROLE", role);
        environment.insert("BRENVIK_HOME", QString::fromStdString(home.string()));
        environment.insert("BRENVIK_TEST_DRAWING",
                           withDrawing ? QString::fromStdString(drawing.string()) : QString());
        environment.insert("BRENVIK_KEEP_SECONDS", "60");
        environment.insert("XDG_CONFIG_HOME", folder.path());
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QCoreApplication::applicationFilePath(),
                      {"--gtest_also_run_disabled_tests", "--gtest_filter=ProgramWithARobot.*"});
    }
    void RunToItsEnd(const char* role, bool withDrawing) {
        Start(role, withDrawing);
        ASSERT_TRUE(program.waitForFinished(Patience));
        EXPECT_EQ(program.exitCode(), 0) << program.readAll().toStdString();
    }
    void WorkAndBeKilled() {
        Start("work", true);
        ASSERT_TRUE(QTest::qWaitFor([this] { return SomethingIsKept(home); }, Patience));
        program.kill();
        ASSERT_TRUE(program.waitForFinished(Patience));
        ASSERT_EQ(program.exitStatus(), QProcess::CrashExit);
        ASSERT_EQ(SolidsIn(drawing), solids) << "the user's file is as it was";
    }

    QTemporaryDir folder;
    const fs::path place, home, drawing;
    int solids = 0;
    QProcess program;
};

TEST_F(Recovery, BringsBackWhatAKilledProgramHadNotSaved) {
    WorkAndBeKilled();
    RunToItsEnd("recover and save", false);
    EXPECT_EQ(SolidsIn(drawing), solids - 1);
    EXPECT_FALSE(fs::exists(RecoveryFolder(home))) << "what is saved is kept no longer";
}

TEST_F(Recovery, GivesWorkOnAFileThatWasChangedSinceANameOfItsOwn) {
    WorkAndBeKilled();
    std::ofstream(drawing, std::ios::app) << "\r\n";
    const std::string changed = Content(drawing);
    RunToItsEnd("recover and save", false);
    EXPECT_EQ(Content(drawing), changed);
    EXPECT_EQ(SolidsIn(place / "cabinet (recovered).dxf"), solids - 1);
}

TEST_F(Recovery, AsksAgainUntilTheWorkIsTakenOrDeleted) {
    WorkAndBeKilled();
    RunToItsEnd("later", false);
    EXPECT_TRUE(SomethingIsKept(home));
    RunToItsEnd("delete", false);
    EXPECT_FALSE(fs::exists(RecoveryFolder(home)));
}

TEST_F(Recovery, LeavesNothingBehindAQuietEnd) {
    RunToItsEnd("work and discard", true);
    EXPECT_FALSE(fs::exists(RecoveryFolder(home)));
    RunToItsEnd("work and save", true);
    EXPECT_FALSE(fs::exists(RecoveryFolder(home)));
    EXPECT_EQ(SolidsIn(drawing), solids - 1);
}

TEST_F(Recovery, IsNotOfferedWhileItsProgramLivesNorTwice) {
    Start("work", true);
    ASSERT_TRUE(QTest::qWaitFor([this] { return SomethingIsKept(home); }, Patience));
    EXPECT_TRUE(FindAbandonedWork(RecoveryFolder(home)).works.empty());
    program.kill();
    ASSERT_TRUE(program.waitForFinished(Patience));
    const std::vector<AbandonedWork> works = FindAbandonedWork(RecoveryFolder(home)).works;
    ASSERT_EQ(works.size(), 1U);
    EXPECT_EQ(works.front().Note().file, drawing.string());
    EXPECT_FALSE(works.front().SourceChanged());
    EXPECT_TRUE(FindAbandonedWork(RecoveryFolder(home)).works.empty())
        << "another program is asking about it";
}

TEST(WorkPlaces, KeepTheLatestWholeAndPassOverHalfWrittenOnes) {
    const QTemporaryDir folder;
    const fs::path root = fs::path(folder.path().toStdString()) / "recovery";
    const WorkNote note{"/job/kit\nchen.dxf", "2026-03-01 10:00:00", FileStamp{3, 7}};
    {
        WorkPlace place(root);
        place.Keep("first", note);
        place.Keep("second", note);
        int files = 0;
        for (const auto& entry : fs::recursive_directory_iterator(root)) files += entry.is_regular_file();
        EXPECT_EQ(files, 2) << "the drawing and its note";
        WorkPlace saved(root);
        saved.Keep("third", note);
        saved.Clear();
    }
    // A program that died between making its folder and its first keeping.
    fs::create_directory(root / "work-0");
    std::vector<AbandonedWork> works = FindAbandonedWork(root).works;
    ASSERT_EQ(works.size(), 1U);
    EXPECT_EQ(Content(works.front().Drawing()), "second");
    EXPECT_EQ(works.front().Note().file, note.file);
    EXPECT_EQ(works.front().Note().time, note.time);
    EXPECT_EQ(works.front().Note().source, note.source);
    EXPECT_FALSE(fs::exists(root / "work-0"));
    works.front().Remove();
    EXPECT_FALSE(fs::exists(root));
}

TEST(WorkPlaces, SetAsideWorkWhoseNoteIsDamaged) {
    const QTemporaryDir folder;
    const fs::path root = fs::path(folder.path().toStdString()) / "recovery";
    for (const char* note :
         {"", "1.dxf\n", "elsewhere/1.dxf\ntime\nnone\nkitchen.dxf", "2.dxf\ntime\nnone\nkitchen.dxf"}) {
        fs::create_directories(root / "work-1");
        std::ofstream(root / "work-1/1.dxf") << "the work";
        std::ofstream(root / "work-1/work.txt") << note;
        const FoundWork found = FindAbandonedWork(root);
        EXPECT_TRUE(found.works.empty());
        ASSERT_EQ(found.damaged, std::vector<fs::path>{root / "damaged-1"}) << note;
        EXPECT_EQ(Content(root / "damaged-1/1.dxf"), "the work");
        EXPECT_TRUE(FindAbandonedWork(root).damaged.empty()) << "it is told once";
        fs::remove_all(root / "damaged-1");
    }
}

TEST(WorkKeeping, TellsOnceThatItCantKeepAndGoesOn) {
    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    const fs::path home = fs::path(folder.path().toStdString()) / "home";
    std::ostringstream stream;
    ConsoleDialogs dialogs(stream);
    app::Workplace workplace(home.string(), dialogs);
    // No folder can be made where a file stands.
    std::ofstream(RecoveryFolder(home)) << "in the way";
    HostDocument& document =
        workplace.host.OpenDrawing(fs::path(BRENVIK_SOURCE_DIR) / "samples/base-cabinet.dxf");
    std::vector<std::string> told;
    WorkKeeper keeper(home,
                      {[] { return true; }, [&told](const std::string& line) { told.push_back(line); }});
    keeper.Follow(document);
    EXPECT_TRUE(keeper.KeepNow()) << "nothing has changed";
    keeper.NoteChange(document);
    EXPECT_FALSE(keeper.KeepNow());
    EXPECT_FALSE(keeper.KeepNow());
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told.front().find("can't be kept"), std::string::npos) << told.front();
    fs::remove(RecoveryFolder(home));
    EXPECT_TRUE(keeper.KeepNow());
    EXPECT_TRUE(SomethingIsKept(home));
    keeper.Forget(document);
    EXPECT_FALSE(SomethingIsKept(home));
}

}  // namespace
}  // namespace brenvik::desktop
