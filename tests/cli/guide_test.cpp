// The guide: every line of it that is typed in a shell is played as it stands there, chapter by chapter.
#include <algorithm>

#include "checkout_paths.h"
#include "program.h"
#include "support/shell_command.h"

namespace brenvik::cli_test {
namespace {

const std::filesystem::path guide = std::filesystem::path(BRENVIK_SOURCE_DIR) / "docs/guide";

std::vector<std::string> Chapters() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(guide))
        if (entry.path().extension() == ".md") names.push_back(entry.path().stem().string());
    std::ranges::sort(names);
    return names;
}

/// The lines of all blocks that are marked as shell.
std::vector<std::string> ShellLines(const std::string& chapter) {
    std::vector<std::string> lines;
    bool inside = false;
    for (std::size_t at = 0; at < chapter.size();) {
        const std::size_t end = std::min(chapter.find('\n', at), chapter.size());
        const std::string line = chapter.substr(at, end - at);
        at = end + 1;
        if (line.starts_with("```"))
            inside = line == "```sh";
        else if (inside)
            lines.push_back(line);
    }
    return lines;
}

class GuideTest : public ProgramTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(GuideTest, ItsShellLinesEndAsItSays) {
    std::filesystem::create_directory_symlink(std::filesystem::path(BRENVIK_SOURCE_DIR) / "samples",
                                              folder / "samples");
    std::filesystem::create_directory_symlink(guide / "journals", folder / "journals");
    const std::vector<std::string> lines = ShellLines(ReadFile(guide / (GetParam() + ".md")));
    ASSERT_FALSE(lines.empty());
    for (const std::string& line : lines) {
        const int status = line.find("# ends with 1") == std::string::npos ? 0 : 1;
        const test::CommandResult result =
            test::RunCommand("cd '" + folder.string() +
                             "' && export PATH='" BRENVIK_BINARY_DIR "/bin':\"$PATH\" BRENVIK_HOME='" +
                             Path("home") + "' && { " + line + "\n}");
        EXPECT_EQ(result.status, status) << line << '\n' << result.output;
    }
}

std::string NameOf(const ::testing::TestParamInfo<std::string>& chapter) {
    std::string name = chapter.param;
    std::ranges::replace(name, '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, GuideTest, ::testing::ValuesIn(Chapters()), NameOf);

TEST(Guide, EveryJournalIsPlayedByAChapter) {
    std::string text;
    for (const std::string& chapter : Chapters()) text += ReadFile(guide / (chapter + ".md"));
    int journals = 0;
    for (const auto& entry : std::filesystem::directory_iterator(guide / "journals")) {
        const std::string name = entry.path().filename().string();
        EXPECT_NE(text.find("--journal journals/" + name), std::string::npos) << name;
        ++journals;
    }
    EXPECT_GE(journals, 10);
}

TEST(Guide, ShowsEachPictureAndNoneTwice) {
    constexpr std::uintmax_t largest = 60'000;
    std::string text;
    for (const std::string& chapter : Chapters()) text += ReadFile(guide / (chapter + ".md"));
    std::map<std::string, std::string> contents;
    for (const auto& entry : std::filesystem::directory_iterator(guide / "pictures")) {
        const std::string name = entry.path().filename().string();
        EXPECT_NE(text.find("](pictures/" + name + ")"), std::string::npos) << name;
        EXPECT_LT(entry.file_size(), largest) << name;
        const auto [same, isNew] = contents.emplace(ReadFile(entry.path()), name);
        EXPECT_TRUE(isNew) << name << " is " << same->second;
    }
    EXPECT_GE(contents.size(), 10u);
}

TEST(Guide, TheJournalThatItPrintsGoesToItsEnd) {
    const std::string text = ReadFile(guide / "journals.md");
    const std::size_t begin = text.find("```\n# The list of the drawer") + 4;
    const test::CommandResult result = test::RunCommand(
        "cd \"$(mktemp -d)\" && cat >drawer.journal <<'END'\n" +
        text.substr(begin, text.find("```", begin) - begin) +
        "END\n"
        "'" BRENVIK_BINARY_DIR "/bin/brenvik' --home home run '" BRENVIK_SOURCE_DIR
        "/samples/base-cabinet.dxf' --journal drawer.journal && grep -c Drawer drawer.csv; rm -rf \"$PWD\"");
    EXPECT_NE(result.output.find("4\n"), std::string::npos) << result.output;
}

}  // namespace
}  // namespace brenvik::cli_test
