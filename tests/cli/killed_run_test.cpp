// A run that is killed at any moment never looks like a whole one, and what it left behind is gone after the
// next.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "boards.h"
#include "checkout_paths.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

namespace fs = std::filesystem;

class KilledRun : public ProgramTest {
  protected:
    KilledRun() {
        WriteBoardsTo(folder / "job.dxf",
                      {{"Side", "Shelf", "Top", "Back", "Door", "Rail"}, "White Melamine", true});
        EXPECT_EQ(Run({"init"}).status, 0);
    }

    Outcome RunWhole() const { return Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cut"}); }

    /// Starts the run and kills it as soon as `moment` holds, or after a minute in which it never did. False
    /// when it had come to its end before.
    template <typename Moment>
    bool KillWhen(Moment moment) const {
        const std::string program = BRENVIK_BINARY_DIR "/bin/brenvik", home = Path("home"),
                          job = Path("job.dxf"), out = Path("cut");
        const char* words[] = {program.c_str(), "--home", home.c_str(), "cnc",     job.c_str(), "--target",
                               "C2C",           "--out",  out.c_str(),  "--quiet", nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
            posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_WRONLY, 0);
        pid_t child = 0;
        const int error =
            posix_spawn(&child, program.c_str(), &actions, nullptr, const_cast<char**>(words), environ);
        posix_spawn_file_actions_destroy(&actions);
        if (error != 0) return false;
        int status = 0;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        while (waitpid(child, &status, WNOHANG) == 0) {
            const bool late = std::chrono::steady_clock::now() > deadline;
            if (late || moment()) kill(child, SIGKILL);
            std::this_thread::yield();
        }
        return WIFSIGNALED(status);
    }
};

TEST_F(KilledRun, HasNoListUnderItsNameAndIsClearedByTheNext) {
    EXPECT_EQ(RunWhole().status, 0);
    const Files whole = FilesBelow("cut");
    ASSERT_TRUE(whole.contains("WORKLIST.TXT"));
    ASSERT_TRUE(whole.contains("2-sided/WORKLIST.TXT"));
    int killed = 0;
    for (const std::string moment :
         {"Part_0.dwg", "2-sided/BPart_5.dwg", "Part_0_Side_7.dxf", "WORKLIST.TXT.unfinished",
          "2-sided/WORKLIST.TXT.unfinished", "Part_3_Back_7.dxf", "2-sided/BPart_5_Rail_7.dxf"}) {
        SCOPED_TRACE(moment);
        // A folder that holds an earlier job must not pass for that one either.
        fs::remove_all(folder / "cut" / moment);
        if (!KillWhen([&] { return fs::exists(folder / "cut" / moment); })) continue;
        ++killed;
        const Files left = FilesBelow("cut");
        EXPECT_TRUE(left == whole || !left.contains("WORKLIST.TXT"));
        EXPECT_EQ(RunWhole().status, 0);
        EXPECT_EQ(FilesBelow("cut"), whole);
    }
    EXPECT_GE(killed, 1) << "how many moments are met depends on how the machine shares its time";
}

/// The files that a list names, as paths in the output folder.
std::vector<std::string> NamedIn(const std::string& list) {
    std::vector<std::string> names;
    std::istringstream lines(list);
    constexpr std::string_view root = "c:\\BV-DXF\\";
    for (std::string line; std::getline(lines, line);) {
        std::string name = line.substr(root.size(), line.find(',') - root.size());
        std::ranges::replace(name, '\\', '/');
        names.push_back(std::move(name));
    }
    return names;
}

TEST_F(KilledRun, HasEachFileWholeThatAListNames) {
    std::size_t named = 0;
    for (const std::string moment :
         {"WORKLIST.TXT.unfinished", "Part_2_Top_7.dxf", "2-sided/BPart_1_Shelf_7.dxf", "Part_4_Door_7.dxf",
          "Part_5_Rail_7.dxf", "WORKLIST.TXT"}) {
        SCOPED_TRACE(moment);
        fs::remove_all(folder / "cut");
        KillWhen([&] { return fs::exists(folder / "cut" / moment); });
        for (const auto& [place, content] : FilesBelow("cut")) {
            if (place.find("WORKLIST.TXT") == std::string::npos) continue;
            for (const std::string& file : NamedIn(content)) {
                ++named;
                ASSERT_TRUE(Exists("cut/" + file)) << file;
                EXPECT_TRUE(Read("cut/" + file).ends_with("EOF\r\n")) << file;
            }
        }
    }
    EXPECT_GE(named, 1U) << "how many moments are met depends on how the machine shares its time";
}

TEST_F(KilledRun, LeavesNoFilesOfItsOwnBehindTheNextOne) {
    EXPECT_EQ(RunWhole().status, 0);
    const Files whole = FilesBelow("cut"), home = FilesBelow("home");
    for (const char* name :
         {"cut/.brenvik-work-1-1", "cut/2-sided/.brenvik-work-1-2", "cut/Part_9.dwg", "cut/wblock2.dwg",
          "cut/WORKLIST.TXT.unfinished", "cut/2-sided/BPart_9.dwg", "home/_db/.brenvik-work-1-3"})
        Write(name, "half");
    fs::create_directory(folder / "home/_db/work-dead");
    Write("home/_db/work-dead/bv04.mdb", "rows");
    EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--from-grid", "--out", "cut"}).status, 0);
    EXPECT_EQ(FilesBelow("cut").size(), whole.size());
    EXPECT_FALSE(FilesBelow("cut").contains(".brenvik-work-1-1"));
    EXPECT_FALSE(FilesBelow("cut/2-sided").contains(".brenvik-work-1-2"));
    EXPECT_FALSE(Exists("home/_db/work-dead"));
    EXPECT_FALSE(Exists("home/_db/.brenvik-work-1-3"));
}

TEST_F(KilledRun, OfAnotherTargetLeavesNoListOfTheJobBefore) {
    EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "THERM", "--out", "cut"}).status, 0);
    EXPECT_TRUE(Exists("cut/Sheet1.csv"));
    EXPECT_TRUE(KillWhen([&] { return !fs::exists(folder / "cut/Part_0_Side_7_.dxf"); }));
    EXPECT_FALSE(Exists("cut/Sheet1.csv"));
    EXPECT_FALSE(Exists("cut/2-sided/Sheet1.csv"));
}

}  // namespace
}  // namespace brenvik::cli_test
