// Files are replaced whole or not at all: full disks, protected files, and a program that dies half way.
#include "file_roots/whole_file.h"

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <fstream>
#include <functional>
#include <sstream>

#include "file_roots/claim.h"
#include "support/failure_of.h"
#include "support/temporary_folder.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

class WholeFile : public testing::Test {
  protected:
    WholeFile() { std::ofstream(File(), std::ios::binary) << "old"; }

    fs::path File() const { return folder.Path() / "file.txt"; }

    std::string Content() const {
        std::ostringstream content;
        content << std::ifstream(File(), std::ios::binary).rdbuf();
        return content.str();
    }

    std::ptrdiff_t Entries() const { return std::distance(fs::directory_iterator(folder.Path()), {}); }

    TemporaryFolder folder;
};

// Runs `work` in a process of its own and returns the signal that ended it, or 0.
int SignalThatEnds(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        const rlimit none{0, 0};
        setrlimit(RLIMIT_CORE, &none);
        try {
            work();
        } catch (const Failure&) {
            _exit(1);
        }
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

// From now on the system ends this process when it moves a file.
bool DieWhenAFileIsMoved() {
    const auto call = [](long number) { return static_cast<unsigned>(number); };
    sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call(SYS_renameat2), 3, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call(SYS_renameat), 2, 0),
#ifdef SYS_rename
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call(SYS_rename), 1, 0),
#else
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call(SYS_renameat), 1, 0),
#endif
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
    };
    sock_fprog program{static_cast<unsigned short>(std::size(filter)), filter};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

TEST_F(WholeFile, ReplacesTheOldContent) {
    WriteWholeFile(File(), "new");
    EXPECT_EQ(Content(), "new");
    EXPECT_EQ(Entries(), 1);
}

TEST_F(WholeFile, KeepsThePermissionsOfTheOldFile) {
    ASSERT_EQ(chmod(File().c_str(), 0640), 0);
    WriteWholeFile(File(), "new");
    EXPECT_EQ(fs::status(File()).permissions(), fs::perms(0640));
}

TEST_F(WholeFile, FollowsALinkAndLeavesItOne) {
    const fs::path link = folder.Path() / "link";
    fs::create_symlink("file.txt", link);
    WriteWholeFile(link, "new");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(Content(), "new");
}

TEST_F(WholeFile, FullDiskIsTold) {
    const Failure failure = FailureOf([] { WriteWholeFile("/dev/full", "new"); });
    EXPECT_EQ(failure.number(), failure_number::DiskFull);
    EXPECT_EQ(failure.detail(), "/dev/full");
}

TEST_F(WholeFile, FullDiskLeavesTheOldFileAndNoWorkFile) {
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const Failure failure = FailureOf([&] { WriteWholeFile(File(), std::string(10000, 'x')); });
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(failure.number(), failure_number::DiskFull);
    EXPECT_EQ(Content(), "old");
    EXPECT_EQ(Entries(), 1);
}

TEST_F(WholeFile, ProtectedFileIsNotReplaced) {
    ASSERT_EQ(chmod(File().c_str(), 0444), 0);
    if (access(File().c_str(), W_OK) == 0) GTEST_SKIP() << "the administrator may write protected files";
    EXPECT_EQ(FailureOf([&] { WriteWholeFile(File(), "new"); }).number(), failure_number::PermissionDenied);
    EXPECT_EQ(Content(), "old");
}

TEST_F(WholeFile, FolderThatRefusesNewFilesIsToldAndLeftAlone) {
    // No one may make files under /proc, whoever they are.
    EXPECT_NE(FailureOf([] { WriteWholeFile("/proc/brenvik-file", "new"); }).number(), 0);
}

TEST_F(WholeFile, MissingFolderIsTold) {
    EXPECT_EQ(FailureOf([&] { WriteWholeFile(folder.Path() / "none/x", "new"); }).number(),
              failure_number::PathNotFound);
    EXPECT_EQ(FailureOf([&] { WriteWholeFile(File() / "x", "new"); }).number(), failure_number::PathNotFound);
}

TEST_F(WholeFile, ProgramThatDiesWhileWritingLeavesTheOldFile) {
    const int signal = SignalThatEnds([&] {
        const rlimit small{4096, 4096};
        setrlimit(RLIMIT_FSIZE, &small);
        WriteWholeFile(File(), std::string(10000, 'x'));
    });
    EXPECT_EQ(signal, SIGXFSZ);
    EXPECT_EQ(Content(), "old");
}

TEST_F(WholeFile, ProgramThatDiesBeforeTheMoveLeavesTheOldFile) {
    const int signal = SignalThatEnds([&] {
        if (!DieWhenAFileIsMoved()) std::raise(SIGUSR1);
        WriteWholeFile(File(), "new");
    });
    if (signal == SIGUSR1) GTEST_SKIP() << "the system offers no filter for its calls here";
    EXPECT_EQ(signal, SIGSYS);
    EXPECT_EQ(Content(), "old");
    EXPECT_EQ(Entries(), 2) << "the work file of the dead program should be there";
    WriteWholeFile(File(), "new");
    EXPECT_EQ(Content(), "new");
}

TEST_F(WholeFile, WorkFilesOfADeadProgramWithOurNumberAreInNobodysWay) {
    // They came behind the clearing of the folder.
    WriteWholeFile(File(), "old");
    constexpr int left = 1000;
    for (int counter = 1; counter <= left; ++counter)
        std::ofstream(folder.Path() / (std::string(WorkFilePrefix) + std::to_string(getpid()) + "-" +
                                       std::to_string(counter)))
            << "half";
    WriteWholeFile(File(), "new");
    EXPECT_EQ(Content(), "new");
    EXPECT_EQ(Entries(), 1 + left) << "a folder is cleared once";
}

TEST_F(WholeFile, TheNextWriteClearsWorkFilesOfDeadProgramsAndLeavesThoseOfLivingOnes) {
    const fs::path dead = folder.Path() / ".brenvik-work-1-1", alive = folder.Path() / ".brenvik-work-2-1";
    std::ofstream(dead) << "half";
    std::ofstream(alive) << "half";
    const Claim writing(alive);
    WriteWholeFile(File(), "new");
    EXPECT_FALSE(fs::exists(dead));
    EXPECT_TRUE(fs::exists(alive));
    EXPECT_EQ(Content(), "new");
}

}  // namespace
}  // namespace brenvik
