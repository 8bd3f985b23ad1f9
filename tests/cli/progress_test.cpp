// Progress is told on a terminal, and nowhere else.
#include <cstdlib>
#include <string>

#include "boards.h"
#include "checkout_paths.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

class ProgressLine : public ProgramTest {
  protected:
    ProgressLine() {
        Boards boards;
        for (int board = 0; board < 9; ++board) boards.names.push_back("Board " + std::to_string(board));
        WriteBoardsTo(folder / "job.dxf", boards);
        EXPECT_EQ(Run({"init"}).status, 0);
    }

    /// What a terminal of 60 columns gets of the call.
    std::string OnTerminal(const std::string& words) const {
        const std::string call = "stty cols 60; " BRENVIK_BINARY_DIR "/bin/brenvik --home home " + words;
        const std::string command =
            "cd '" + folder.string() + "' && script -qec '" + call + "' /dev/null >terminal 2>&1 </dev/null";
        EXPECT_EQ(std::system(command.c_str()), 0);
        return Read("terminal");
    }

    /// Whether the line is told, and the terminal is as if it had never been at the end of each.
    static void ExpectToldAndWiped(const std::string& terminal, const std::string& line) {
        const std::size_t told = terminal.find(line);
        ASSERT_NE(told, std::string::npos) << terminal;
        const std::size_t wiped = terminal.find("\r\033[K", told), next = terminal.find('\n', told);
        EXPECT_LT(wiped, next) << terminal;
    }
};

TEST_F(ProgressLine, OfARunCountsItsParts) {
    for (const std::string jobs : {"1", "2"}) {
        const std::string terminal = OnTerminal("cnc job.dxf --target C2C --out cut --jobs " + jobs);
        ExpectToldAndWiped(terminal, "reading job.dxf ...");
        ExpectToldAndWiped(terminal, "Preparing the parts: 1 of 9 ...");
        ExpectToldAndWiped(terminal, "CNC run: 1 of 9, \"Board 0\" (");
    }
}

TEST_F(ProgressLine, OfAListCountsItsParts) {
    ExpectToldAndWiped(OnTerminal("list job.dxf"), "Reading the parts: 1 of 9");
    ExpectToldAndWiped(OnTerminal("export job.dxf list.csv"), "Export: 1 of 9");
}

TEST_F(ProgressLine, OfAProofCountsItsParts) {
    EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cut"}).status, 0);
    ExpectToldAndWiped(OnTerminal("prove job.dxf cut"), "Comparing the parts: 1 of 9");
}

TEST_F(ProgressLine, IsNoWiderThanTheTerminal) {
    WriteBoardsTo(folder / "job.dxf", {{std::string(90, 'x')}});
    const std::string terminal = OnTerminal("cnc job.dxf --target C2C --out cut --jobs 1");
    ExpectToldAndWiped(terminal, "CNC run: 1 of 1, \"" + std::string(37, 'x') + " ...\r");
}

TEST_F(ProgressLine, IsNotToldWhereNobodyWatchesOrQuietIsWished) {
    EXPECT_EQ(Run({"list", "job.dxf"}).errors, "");
    EXPECT_EQ(OnTerminal("list job.dxf --quiet").find("1 of 9"), std::string::npos);
}

}  // namespace
}  // namespace brenvik::cli_test
