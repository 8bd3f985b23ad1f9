// The README's first quarter of an hour: every command of it is played as it stands there.
#include <algorithm>

#include "checkout_paths.h"
#include "program.h"
#include "support/ezdxf_audit.h"

namespace brenvik::cli_test {
namespace {

/// A command of the README, and the status that its line says it ends with.
struct ShellLine {
    std::string command;
    int status = 0;
};

std::vector<ShellLine> FirstHour() {
    const std::string readme = ReadFile(std::filesystem::path(BRENVIK_SOURCE_DIR) / "README.md");
    const std::string heading = "\n## The first quarter of an hour\n", fence = "```sh\n";
    const std::size_t begin = readme.find(fence, readme.find(heading)) + fence.size();
    const std::string block = readme.substr(begin, readme.find("```\n", begin) - begin);
    std::vector<ShellLine> lines;
    for (std::size_t at = 0; at < block.size();) {
        const std::size_t end = block.find('\n', at);
        const std::string line = block.substr(at, end - at);
        at = end + 1;
        if (line.empty() || line.starts_with("#")) continue;
        lines.push_back({line, line.find("# ends with 1") == std::string::npos ? 0 : 1});
    }
    return lines;
}

class FirstHourTest : public ProgramTest {
  protected:
    /// As somebody types it who stands in a checkout, the program on the path.
    test::CommandResult Type(const std::string& command) const {
        return test::RunCommand("cd '" + folder.string() +
                                "' && export PATH='" BRENVIK_BINARY_DIR "/bin':\"$PATH\" XDG_DATA_HOME='" +
                                Path("data") + "' && unset BRENVIK_HOME && { " + command + "\n}");
    }
};

TEST_F(FirstHourTest, GoesAsTheReadmeSaysAndEndsWithFilesForTheMachine) {
    for (const char* name : {"samples", "tests"})
        std::filesystem::create_directory_symlink(std::filesystem::path(BRENVIK_SOURCE_DIR) / name,
                                                  folder / name);
    const std::vector<ShellLine> lines = FirstHour();
    ASSERT_GE(lines.size(), 10u);
    std::string told;
    for (const ShellLine& line : lines) {
        const test::CommandResult result = Type(line.command);
        EXPECT_EQ(result.status, line.status) << line.command << '\n' << result.output;
        told += result.output;
    }
    // What the README types is what the run has said to type.
    for (const ShellLine& line : lines)
        if (const std::size_t at = line.command.find("materials add "); at != std::string::npos) {
            const std::string words = line.command.substr(at, line.command.find("  #") - at);
            std::string toldLower = told, wordsLower = words;
            for (std::string* text : {&toldLower, &wordsLower})
                std::ranges::transform(*text, text->begin(), [](unsigned char c) { return std::tolower(c); });
            EXPECT_NE(toldLower.find(wordsLower), std::string::npos) << words;
        }
    EXPECT_TRUE(Exists("machine/WORKLIST.TXT"));
    const std::string list = Read("machine/WORKLIST.TXT");
    EXPECT_EQ(std::ranges::count(list, '\n'), 16) << list;
}

TEST_F(FirstHourTest, TheScriptForADrawingOfOnesOwnEndsWithFilesForTheMachine) {
    WriteSample("kitchen.step");
    const test::CommandResult result =
        Type("'" BRENVIK_SOURCE_DIR "/scripts/machine-files' '" BRENVIK_BINARY_DIR
             "/bin/brenvik' home kitchen.step out");
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_NE(result.output.find("$ brenvik materials add 19\\ BIRCH\\ PLY --like 18\\ birch\\ ply\n"),
              std::string::npos)
        << result.output;
    const std::string list = Read("out/WORKLIST.TXT");
    EXPECT_EQ(std::ranges::count(list, '\n'), 16) << list;
}

}  // namespace
}  // namespace brenvik::cli_test
