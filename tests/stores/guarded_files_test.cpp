// A file that this program has read is never written over when another program has written to it meanwhile.
#include "file_roots/guarded_files.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <thread>

#include "base/failure.h"
#include "support/failure_of.h"
#include "support/temporary_folder.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

class GuardedFile : public testing::Test {
  protected:
    fs::path File() const { return folder.Path() / "job.dxf"; }
    void Put(const std::string& content) const { std::ofstream(File(), std::ios::binary) << content; }
    std::string Content() const {
        std::ifstream file(File(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    TemporaryFolder folder;
    GuardedFiles files;
};

TEST_F(GuardedFile, IsWrittenAgainAndAgainByTheProgramThatKnowsIt) {
    Put("old");
    files.Know(File());
    files.Write(File(), "mine");
    files.Write(File(), "mine again");
    EXPECT_EQ(Content(), "mine again");
}

TEST_F(GuardedFile, ThatAnotherProgramChangedIsLeftAlone) {
    Put("old");
    files.Know(File());
    // As long, and at once: neither size nor time tells.
    Put("new");
    const Failure failure = FailureOf([&] { files.Write(File(), "mine"); });
    EXPECT_EQ(failure.description(),
              File().string() +
                  " was changed by another program since it was read; "
                  "nothing was written over it: save under another name, or open it anew");
    EXPECT_EQ(Content(), "new");
    // However it is written.
    FailureOf([&] { files.Write(folder.Path() / "." / "job.dxf", "mine"); });
    EXPECT_EQ(Content(), "new");
}

TEST_F(GuardedFile, ThatWasNotThereAndIsNowIsLeftAlone) {
    files.Know(File());
    Put("new");
    FailureOf([&] { files.Write(File(), "mine"); });
    EXPECT_EQ(Content(), "new");
}

TEST_F(GuardedFile, ThatIsGoneIsNotMadeAnew) {
    Put("old");
    files.Know(File());
    fs::remove(File());
    FailureOf([&] { files.Write(File(), "mine"); });
    EXPECT_FALSE(fs::exists(File()));
}

TEST_F(GuardedFile, ThatBecameAFolderIsLeftAlone) {
    Put("old");
    files.Know(File());
    fs::remove(File());
    fs::create_directory(File());
    FailureOf([&] { files.Write(File(), "mine"); });
    EXPECT_TRUE(fs::is_directory(File()));
}

TEST_F(GuardedFile, ThatNobodyAskedForIsWritten) {
    Put("old");
    files.Write(File(), "mine");
    EXPECT_EQ(Content(), "mine");
}

TEST_F(GuardedFile, TakesOneOfTwoSavingsAtOnceAndRefusesTheOther) {
    for (int round = 0; round < 50; ++round) {
        Put("old");
        GuardedFiles one, other;
        one.Know(File());
        other.Know(File());
        std::atomic<int> refused = 0;
        const auto save = [&](GuardedFiles& saver, const std::string& content) {
            try {
                saver.Write(File(), content);
            } catch (const Failure&) {
                ++refused;
            }
        };
        std::thread thread(save, std::ref(one), "one");
        save(other, "other");
        thread.join();
        EXPECT_EQ(refused, 1);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 1) << "work files stay behind";
}

}  // namespace
}  // namespace brenvik
