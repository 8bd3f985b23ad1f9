// Every journal, played once on the forms' models and once by pressing what the windows show: both have to
// come to the same end and print the same.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "checkout_paths.h"
#include "files_on_disk.h"
#include "virtual_display.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

const fs::path source = BRENVIK_SOURCE_DIR, programs = fs::path(BRENVIK_BINARY_DIR) / "bin";

std::vector<std::string> JournalNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(source / "tests/journals"))
        if (entry.path().extension() == ".journal") names.push_back(entry.path().stem().string());
    std::ranges::sort(names);
    return names;
}

class JournalOnWindows : public ::testing::TestWithParam<std::string> {
  protected:
    JournalOnWindows() {
        std::string pattern = (fs::temp_directory_path() / "brenvik-desktop-XXXXXX").string();
        folder = ::mkdtemp(pattern.data());
    }
    ~JournalOnWindows() override { fs::remove_all(folder); }

    struct Outcome {
        int status = -1;
        std::string output, errors;
    };
    /// In a folder of its own, on a copy of the sample.
    Outcome Play(const std::string& where, const std::string& environment, const std::string& command) const {
        const fs::path place = folder / where;
        fs::create_directory(place);
        fs::copy_file(source / "samples/base-cabinet.dxf", place / "cabinet.dxf");
        const std::string line =
            "cd " + place.string() + " && env " + environment + " " + (programs / "brenvik").string() +
            " --home home " + command + " cabinet.dxf --journal " +
            (source / "tests/journals" / (GetParam() + ".journal")).string() + " >out.txt 2>err.txt";
        const int ended = std::system(line.c_str());
        return {WEXITSTATUS(ended), desktop::Content(place / "out.txt"), desktop::Content(place / "err.txt")};
    }

    fs::path folder;
};

TEST_P(JournalOnWindows, EndsAsItDoesOnTheModels) {
    const VirtualDisplay display;
    if (display.Name().empty()) GTEST_SKIP() << "no virtual display here (Xvfb)";
    const Outcome models = Play("models", "", "run");
    const Outcome windows = Play("windows", "DISPLAY=" + display.Name() + " QT_QPA_PLATFORM=xcb", "desktop");
    EXPECT_EQ(windows.status, models.status) << windows.errors;
    EXPECT_EQ(windows.output, models.output);
    EXPECT_EQ(windows.errors.find(".journal: line "), std::string::npos) << windows.errors;
}

std::string NameOf(const ::testing::TestParamInfo<std::string>& journal) { return journal.param; }

INSTANTIATE_TEST_SUITE_P(All, JournalOnWindows, ::testing::ValuesIn(JournalNames()), NameOf);

}  // namespace
}  // namespace brenvik
