// What the program says about itself, and how it takes wrong words.
#include <sys/wait.h>

#include <cstdlib>

#include "checkout_paths.h"
#include "program.h"
#include "session/library/command_table.h"

namespace brenvik::cli_test {
namespace {

class Help : public ProgramTest {};

TEST_F(Help, NamesEveryCommandAndTheExitStatuses) {
    const Outcome outcome = Run({"--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    for (const char* word :
         {"init", "list", "export", "cnc", "prove", "run", "convert", "sample", "settings", "materials",
          "picture", "desktop", "--home", "BRENVIK_HOME", "Exit status: 0 done"})
        EXPECT_NE(outcome.output.find(word), std::string::npos) << word;
}

TEST_F(Help, ListsTheMethodsOfTheSystemWithALineEach) {
    const std::string help = Run({"--help"}).output;
    for (const CommandEntry& entry : CommandTable()) {
        const std::string head = "\n  " + std::string(entry.method) + " ";
        const std::size_t at = help.find(head);
        ASSERT_NE(at, std::string::npos) << entry.method;
        const std::string line = help.substr(at + 1, help.find('\n', at + 1) - at - 1);
        EXPECT_NE(line.find(entry.hostCommands), std::string::npos) << line;
        EXPECT_TRUE(line.ends_with(entry.description)) << line;
    }
}

TEST_F(Help, EveryCommandHasItsOwn) {
    const std::pair<const char*, std::vector<const char*>> commands[] = {
        {"init", {"--units"}},
        {"list",
         {"DRAWING", "MORE", "--format", "--sort", "--group", "--filter", "--select", "--letters",
          "--material", "--save", "--quiet"}},
        {"export",
         {"DRAWING", "OUT", "--profile", "--fractions", "--adjustments", "--sort", "--group", "--filter",
          "--select", "--letters", "--material", "--quiet"}},
        {"cnc",
         {"DRAWING", "--target", "--out", "--from-grid", "--no-proof", "--select", "--letters", "--material",
          "--quiet"}},
        {"prove",
         {"DRAWING", "FOLDER", "--target", "--from-grid", "Looked at are",
          "; not which of the material's bits"}},
        {"run",
         {"DRAWING", "--journal", "--transcript", "--no-proof", "--select", "--letters", "--material",
          "--save", "--quiet"}},
        {"convert", {"IN", "OUT", "MORE", "--to", "--letters", "--material", "--quiet"}},
        {"sample", {"OUT", "--quiet"}},
        {"settings", {"list", "get", "set"}},
        {"materials", {"list", "find", "add"}},
    };
    for (const auto& [command, words] : commands) {
        const Outcome outcome = Run({command, "--help"});
        EXPECT_EQ(outcome.status, 0) << command;
        for (const char* word : words)
            EXPECT_NE(outcome.output.find(word), std::string::npos) << command << " " << word;
    }
}

TEST_F(Help, PrintsTheControlsOfAllFormsAsThePageHasThem) {
    const Outcome outcome = Run({"help", "controls"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    for (const char* row :
         {"\n## frmMain\n", "\n| `tbMain.SORT` | toolbar key | Sort |\n", "\n| `Check1(3)` | tick box |",
          "\n## frmChoicetherm\n", "\n| `mnuApplyDrawing` | menu entry | Apply to Drawing |\n"})
        EXPECT_NE(outcome.output.find(row), std::string::npos) << row << outcome.output;
    EXPECT_EQ(outcome.output, ReadFile(std::filesystem::path(BRENVIK_SOURCE_DIR) / "docs/controls.md"))
        << "docs/controls.md is to be written anew by: brenvik help controls > docs/controls.md";
    EXPECT_FALSE(Exists("home"));
    EXPECT_EQ(Run({"help"}).status, 2);
}

TEST_F(Help, TellsTheVersion) {
    const Outcome outcome = Run({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "brenvik " BRENVIK_VERSION "\n");
}

TEST_F(Help, MakesNoHome) {
    Run({"--help"});
    EXPECT_FALSE(Exists("home"));
}

struct WrongWords {
    std::vector<std::string> words;
    const char* told;
};

TEST_F(Help, WrongWordsEndWithStatus2) {
    const WrongWords cases[] = {
        {{}, "A subcommand is required"},
        {{"lst", "a.dxf"}, "expected a command, found lst"},
        {{"list"}, "DRAWING is required"},
        {{"list", "a.dxf", "--order", "Length"}, "--order"},
        {{"list", "a.dxf", "--format", "xml"}, "--format: xml not in {table,csv,json}"},
        {{"list", "a.dxf", "--format", "1"}, "--format: 1 not in {table,csv,json}"},
        {{"list", "a.dxf", "--letters", "LLT"}, "expected L, W and T in some order, or none; found LLT"},
        {{"parts", "a.dxf", "b.dxf"}, "b.dxf"},
        {{"export", "a.dxf"}, "OUT is required"},
        {{"cnc", "a.dxf"}, "--target is required"},
        {{"cnc", "a.dxf", "--target", "XYZ"},
         "--target: expected one of C2C, ATP, ROV, CNI, ASP, WOP4, WOP5, "
         "THERM, BW, Enroute, ABC, RCIM; found XYZ"},
        {{"cnc", "a.dxf", "--target", "C2C", "--out", ""}, "--out: expected a value, found an empty text"},
        {{"parts", "a.dxf", "--out", ""}, "--out: expected a value, found an empty text"},
        {{"list", "a.dxf", "--save", ""}, "--save: expected a value, found an empty text"},
        {{"run", "a.dxf"}, "--journal is required"},
        {{"convert", "a.dxf"}, "OUT is required"},
        {{"convert", "a.dxf", "b.txt"},
         "b.txt: expected a name that ends in .dxf, .dwg, .step, .stp or .sat"},
        {{"sample", "b"}, "b: expected a name that ends in .dxf, .dwg, .step, .stp or .sat"},
        {{"init", "--units", "furlong"}, "furlong"},
        {{"settings"}, "A subcommand is required"},
        {{"materials"}, "A subcommand is required"},
        {{"materials", "find"}, "KEY is required"},
        {{"materials", "add", "18 Oak"}, "--like is required"},
        {{"list", "a.dxf", "--material", ""}, "--material: expected the name of a material"},
        {{"list", "a.dxf", "--material", " Oak"}, "--material: expected the name of a material"},
        {{"list", "a.dxf", "--material", "Jack's"}, "--material: expected a name without single quotes"},
        {{"settings", "get", "NoSuchName"}, "expected the name of a setting, found NoSuchName"},
        {{"settings", "set", "NoSuchName", "1"}, "expected the name of a setting, found NoSuchName"},
    };
    for (const WrongWords& c : cases) {
        const Outcome outcome = Run(c.words);
        EXPECT_EQ(outcome.status, 2) << c.told;
        EXPECT_EQ(outcome.output, "") << c.told;
        EXPECT_EQ(outcome.errors.rfind("brenvik: ", 0), 0u) << outcome.errors;
        EXPECT_NE(outcome.errors.find(c.told), std::string::npos) << outcome.errors;
    }
}

TEST_F(Help, ABlankHomeIsRefused) {
    const Outcome outcome = RunBare("HOME=" + Path("user"), {"--home", "", "settings", "list"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.errors.find("--home: expected a value, found an empty text"), std::string::npos)
        << outcome.errors;
    EXPECT_FALSE(Exists("user"));
}

TEST_F(Help, ThatADeviceDoesNotTakeIsNotDone) {
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "this system has no device that is always full";
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"--help"}, {"list", "--help"}, {"--version"}, {"settings", "list"}}) {
        const Outcome outcome = RunInto("/dev/full", words);
        EXPECT_EQ(outcome.status, 1) << words.front();
        EXPECT_EQ(outcome.errors, "brenvik: standard output can't be written\n");
    }
}

TEST_F(Help, WithoutTheDesktopProgramTheCommandSaysHowToGetIt) {
    std::filesystem::copy_file(std::filesystem::path(BRENVIK_BINARY_DIR) / "bin/brenvik", folder / "alone");
    const int ended = std::system((Path("alone") + " desktop a.dxf 2> " + Path("told")).c_str());
    EXPECT_EQ(WEXITSTATUS(ended), 1);
    EXPECT_EQ(
        Read("told"),
        "brenvik: the desktop program is not here; the package brenvik-desktop holds it, and in a checkout "
        "scripts/desktop installs what it needs (Qt 6), builds it and starts it\n");
}

TEST_F(Help, TheHomeMayStandBehindTheCommand) {
    EXPECT_EQ(
        RunBare("HOME=" + Path("user"), {"settings", "get", "CircleSize", "--home", Path("home")}).output,
        "35\n");
    EXPECT_TRUE(Exists("home/settings.txt"));
    EXPECT_FALSE(Exists("user"));
    EXPECT_EQ(Run({"settings", "get", "CircleSize", "--hoem", Path("home")}).status, 2);
}

TEST_F(Help, WhatCouldNotBeToldMakesTheCommandIncomplete) {
    ASSERT_EQ(Run({"init"}).status, 0);
    const std::string drawing = ShippedSample().string();
    const auto withErrorsTo = [&](const std::string& place, const std::vector<std::string>& words) {
        std::string command = "BRENVIK_HOME=" + Path("home") + " " BRENVIK_BINARY_DIR "/bin/brenvik";
        for (const std::string& word : words) command += " '" + word + "'";
        return WEXITSTATUS(std::system((command + " >/dev/null 2>" + place).c_str()));
    };
    EXPECT_EQ(withErrorsTo("/dev/full", {"list", drawing, "--sort", "Price"}), 1) << "a remark is lost";
    EXPECT_EQ(withErrorsTo("&-", {"list", drawing, "--sort", "Price"}), 1);
    EXPECT_EQ(withErrorsTo("&-", {"list", drawing}), 0) << "nothing was told";
    EXPECT_EQ(withErrorsTo("/dev/full", {"list", drawing, "--sort", "none"}), 2);
}

}  // namespace
}  // namespace brenvik::cli_test
