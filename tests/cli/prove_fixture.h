// A job of two boards and the files of its run, for the tests of brenvik prove.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "boards.h"
#include "program.h"

namespace brenvik::cli_test {

class Prove : public ProgramTest {
  protected:
    /// Two boards with a hole from above and a pocket from below, and their files.
    void MakeFiles(const std::string& target = "C2C") const {
        WriteBoardsTo(folder / "job.dxf", {{"Side", "Shelf"}, "White Melamine", true});
        const Outcome outcome = Run({"cnc", "job.dxf", "--target", target, "--out", "cut", "--quiet"});
        ASSERT_EQ(outcome.status, 0) << outcome.errors;
    }
    Outcome ProveJob(std::vector<std::string> more = {}) const {
        std::vector<std::string> words{"prove", "job.dxf", "cut"};
        words.insert(words.end(), more.begin(), more.end());
        return Run(words);
    }
    std::size_t FilesInCut() const {
        std::size_t files = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / "cut"))
            files += entry.is_regular_file() ? 1 : 0;
        return files;
    }
    void ExpectTold(const Outcome& outcome, const std::string& text, const std::string& output) const {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.errors.find(text), std::string::npos) << outcome.errors;
        // A text without its line's end is how the line begins.
        const bool whole = output.ends_with('\n');
        EXPECT_EQ(whole ? outcome.output : outcome.output.substr(0, output.size()), output);
    }
};

inline const std::string bothRight = "2 of 2 parts come out of cut as they are drawn\n";
inline const std::string onlyStray =
    "2 of 2 parts come out of cut as they are drawn, but its lists and files are not as the run has left "
    "them: ";
inline const std::string oneRightAndStrays =
    "1 of 2 parts come out of cut as they are drawn, but its lists and files are not as the run has left "
    "them: ";
inline const std::string oneRight = "1 of 2 parts come out of cut as they are drawn\n";

}  // namespace brenvik::cli_test
