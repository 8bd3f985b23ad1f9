// Shares of a run over "job.dxf", and what joining them comes to.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "boards.h"
#include "program.h"

namespace brenvik::cli_test {

using Words = std::vector<std::string>;

class Shares : public ProgramTest {
  protected:
    Shares() { EXPECT_EQ(Run({"init"}).status, 0); }

    Outcome Share(const std::string& share, const std::string& out, const Words& words) const {
        Words all{"cnc", "job.dxf", "--out", out, "--shard", share};
        all.insert(all.end(), words.begin(), words.end());
        return Run(all);
    }

    /// Makes the shares, each in a folder "s1", "s2" and so on, and gives their names.
    Words MakeShares(int count, const Words& words) const {
        Words folders;
        for (int share = 1; share <= count; ++share) {
            folders.push_back("s" + std::to_string(share));
            std::filesystem::remove_all(folder / folders.back());
            const Outcome made =
                Share(std::to_string(share) + "/" + std::to_string(count), folders.back(), words);
            EXPECT_LE(made.status, 1) << made.errors;
            EXPECT_TRUE(Exists(folders.back() + "/share.txt")) << made.errors;
            EXPECT_FALSE(Exists(folders.back() + "/WORKLIST.TXT"));
        }
        return folders;
    }

    Outcome Join(const Words& folders, const std::string& out = "joined") const {
        Words all{"join", "--out", out};
        all.insert(all.end(), folders.begin(), folders.end());
        return Run(all);
    }

    /// What one call comes to.
    Outcome ExpectOneOutcome(int count, const Words& words) const {
        for (const char* name : {"one", "joined"}) std::filesystem::remove_all(folder / name);
        Words all{"cnc", "job.dxf", "--out", "one"};
        all.insert(all.end(), words.begin(), words.end());
        const Outcome one = Run(all);
        const Outcome joined = Join(MakeShares(count, words));
        EXPECT_EQ(joined.status, one.status);
        EXPECT_EQ(joined.errors, one.errors);
        EXPECT_EQ(joined.output, one.output);
        EXPECT_TRUE(FilesBelow("joined") == FilesBelow("one"));
        EXPECT_GE(FilesBelow("one").size(), 2U);
        return one;
    }

    void ExpectRefused(const Words& folders, int status, const std::string& why) const {
        const Outcome refused = Join(folders, "refused");
        EXPECT_EQ(refused.status, status) << refused.errors;
        EXPECT_NE(refused.errors.find(why), std::string::npos) << refused.errors;
        EXPECT_FALSE(Exists("refused"));
    }

    void WriteBoards(int count, bool twoSides) const {
        Boards boards;
        for (int board = 0; board < count; ++board)
            boards.names.push_back("Board " + std::to_string(board % 4));
        boards.pocketBelow = twoSides;
        WriteBoardsTo(folder / "job.dxf", boards);
    }
};

}  // namespace brenvik::cli_test
