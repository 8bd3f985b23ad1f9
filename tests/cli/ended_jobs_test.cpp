// Processes of a run that die before it ends: one of several, and the one that has made the others.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "boards.h"
#include "checkout_paths.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

namespace fs = std::filesystem;

/// What the system tells of a process behind its name: a letter for its state, its maker and more. Blank for
/// one that is gone.
std::string StateOf(const fs::path& process) {
    std::ifstream file(process / "stat");
    std::string text;
    std::getline(file, text);
    const std::size_t name = text.rfind(") ");
    return name == std::string::npos ? std::string() : text.substr(name + 2);
}

pid_t MakerOf(const fs::path& process) {
    const std::string state = StateOf(process);
    return state.empty() ? 0 : std::atoi(state.c_str() + 1);
}

bool Lives(pid_t process) {
    const std::string state = StateOf("/proc/" + std::to_string(process));
    return !state.empty() && state.front() != 'Z';
}

std::vector<pid_t> ProcessesMadeBy(pid_t maker) {
    std::vector<pid_t> made;
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end; entry.increment(error))
        if (const pid_t process = std::atoi(entry->path().filename().c_str());
            process > 0 && MakerOf(entry->path()) == maker)
            made.push_back(process);
    return made;
}

class EndedJobs : public ProgramTest {
  protected:
    static constexpr int parts = 24;

    EndedJobs() {
        Boards boards{{}, "White Melamine", true};
        for (int board = 0; board < parts; ++board) boards.names.push_back("Board " + std::to_string(board));
        WriteBoardsTo(folder / "job.dxf", boards);
        EXPECT_EQ(Run({"init"}).status, 0);
    }

    Outcome RunWhole() const {
        return Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cut", "--jobs", "2"});
    }

    /// Starts the run with two processes and calls `watch` again and again until the run has ended.
    int RunWhile(const std::function<void(pid_t run, const std::vector<pid_t>& workers)>& watch) const {
        const std::string program = BRENVIK_BINARY_DIR "/bin/brenvik", home = Path("home"),
                          job = Path("job.dxf"), out = Path("cut"), errors = Path("stderr");
        const char* words[] = {program.c_str(), "--home", home.c_str(), "cnc",    job.c_str(), "--target",
                               "C2C",           "--out",  out.c_str(),  "--jobs", "2",         nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0600);
        // A shell lets what it starts in the background ignore an interruption, and so would the run.
        posix_spawnattr_t attributes;
        posix_spawnattr_init(&attributes);
        sigset_t interruption;
        sigemptyset(&interruption);
        sigaddset(&interruption, SIGINT);
        posix_spawnattr_setsigdefault(&attributes, &interruption);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
        pid_t run = 0;
        const int error =
            posix_spawn(&run, program.c_str(), &actions, &attributes, const_cast<char**>(words), environ);
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
        if (error != 0) return -1;
        int status = 0;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(2);
        while (waitpid(run, &status, WNOHANG) == 0) {
            if (std::chrono::steady_clock::now() > deadline) kill(run, SIGKILL);
            watch(run, ProcessesMadeBy(run));
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return status;
    }

    /// The part files that wait in the workers' folders for the run to take them, the oldest first.
    std::vector<fs::path> FilesOfWorkers() const {
        std::vector<fs::path> files;
        std::error_code error;
        for (fs::recursive_directory_iterator entry(folder / "cut", error), end; !error && entry != end;
             entry.increment(error)) {
            const fs::path& file = entry->path();
            if (file.extension() == ".dxf" && file.string().find(".brenvik-work-part-") != std::string::npos)
                files.push_back(file);
        }
        std::ranges::sort(files, {}, [](const fs::path& file) {
            std::error_code gone;
            return fs::last_write_time(file, gone);
        });
        return files;
    }

    bool HasWritten(const std::string& file) const { return fs::exists(folder / "cut" / file); }
};

TEST_F(EndedJobs, OfAPartCostThatPartAlone) {
    ASSERT_EQ(RunWhole().status, 0);
    const Files whole = FilesBelow("cut");
    std::optional<std::string> told;
    for (int attempt = 0; attempt < 10 && !told; ++attempt) {
        bool killed = false;
        const int status = RunWhile([&](pid_t, const std::vector<pid_t>& workers) {
            if (killed || workers.size() < 2 || !HasWritten("Part_3_Board 3_7.dxf")) return;
            killed = kill(workers.front(), SIGKILL) == 0;
        });
        ASSERT_TRUE(WIFEXITED(status));
        const std::string errors = Read("stderr");
        // One that has just come to the end of its work costs nothing.
        if (!killed || WEXITSTATUS(status) == 0) continue;
        EXPECT_EQ(WEXITSTATUS(status), 1);
        told = errors;
    }
    ASSERT_TRUE(told.has_value());
    const std::string head = "The part \"Board ";
    const std::size_t at = told->find(head);
    ASSERT_NE(at, std::string::npos) << *told;
    EXPECT_EQ(told->find(head, at + 1), std::string::npos) << *told;
    EXPECT_NE(told->find(" was skipped: the process that worked on it was ended by signal 9."),
              std::string::npos)
        << *told;
    const std::string number =
        told->substr(at + head.size(), told->find('"', at + head.size()) - at - head.size());
    Files left = FilesBelow("cut");
    const std::string file = "Part_" + number + "_Board " + number + "_7.dxf";
    EXPECT_FALSE(left.contains(file));
    EXPECT_EQ(left["WORKLIST.TXT"].find(file), std::string::npos);
    EXPECT_EQ(left.size(), whole.size() - 2);
    for (const auto& [name, content] : left)
        if (name.find("WORKLIST") == std::string::npos) {
            EXPECT_EQ(content, whole.at(name)) << name;
        }
}

TEST_F(EndedJobs, AreDoneAgainByTheRunWhereSomebodyHasTakenTheirFilesAway) {
    ASSERT_EQ(RunWhole().status, 0);
    const Files whole = FilesBelow("cut");
    bool taken = false;
    for (int attempt = 0; attempt < 10 && !taken; ++attempt) {
        const int status = RunWhile([&](pid_t run, const std::vector<pid_t>& workers) {
            if (taken || workers.size() < 2 || !HasWritten("Part_2_Board 2_7.dxf")) return;
            // The run waits while its workers go on. Of six files, two for each part, the oldest one's part
            // is done.
            kill(run, SIGSTOP);
            std::vector<fs::path> waiting;
            for (int look = 0; look < 100 && waiting.size() < 6; ++look) {
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
                waiting = FilesOfWorkers();
            }
            // Without the file of its second side, that of the first is in its place by then.
            const auto second = std::ranges::find_if(
                waiting, [](const fs::path& file) { return file.parent_path().filename() == "2-sided"; });
            if (waiting.size() >= 6 && second != waiting.end()) taken = fs::remove(*second);
            kill(run, SIGCONT);
        });
        ASSERT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 0) << Read("stderr");
        EXPECT_EQ(FilesBelow("cut"), whole);
    }
    EXPECT_TRUE(taken);
}

TEST_F(EndedJobs, OfAKilledRunGoWithItAndLeaveNothingBehindTheNext) {
    ASSERT_EQ(RunWhole().status, 0);
    const Files whole = FilesBelow("cut");
    for (const int signal : {SIGKILL, SIGTERM, SIGINT}) {
        SCOPED_TRACE(signal);
        std::vector<pid_t> workers;
        int status = 0;
        // On a busy machine the run may be over before anybody looks.
        for (int attempt = 0; attempt < 10 && !WIFSIGNALED(status); ++attempt) {
            workers.clear();
            status = RunWhile([&](pid_t run, const std::vector<pid_t>& made) {
                if (!workers.empty() || made.size() < 2 || !HasWritten("Part_2_Board 2_7.dxf")) return;
                workers = made;
                kill(run, signal);
            });
        }
        ASSERT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(WTERMSIG(status), signal);
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (std::ranges::any_of(workers, Lives) && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        EXPECT_FALSE(std::ranges::any_of(workers, Lives));
        EXPECT_FALSE(HasWritten("WORKLIST.TXT"));
        EXPECT_EQ(RunWhole().status, 0);
        EXPECT_EQ(FilesBelow("cut"), whole);
        EXPECT_EQ(std::distance(fs::directory_iterator(folder / "cut"), fs::directory_iterator()),
                  std::ranges::count_if(whole, [](const auto& file) {
                      return file.first.find('/') == std::string::npos;
                  }) + 1);
    }
}

}  // namespace
}  // namespace brenvik::cli_test
