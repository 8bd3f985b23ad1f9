// STEP comes in a library of its own beside the program: without it everything else goes on.
#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "boards.h"
#include "checkout_paths.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

namespace fs = std::filesystem;

class ProgramWithoutStep : public ProgramTest {
  protected:
    ProgramWithoutStep() {
        fs::create_directory(folder / "alone");
        fs::copy_file(BRENVIK_BINARY_DIR "/bin/brenvik", folder / "alone/brenvik");
        WriteBoardsTo(folder / "job.dxf", {{"Side", "Shelf"}, "White Melamine", false});
        // A new home would be told.
        Run({"init"});
        // STEP has no place for the boards' part data, which is told.
        Run({"convert", "job.dxf", "job.step"});
        EXPECT_TRUE(Exists("job.step"));
    }

    /// The exit status; what it tells goes to the file "told".
    int RunAlone(const std::string& words) const {
        const std::string command =
            "cd '" + folder.string() + "' && alone/brenvik --home home " + words + " > /dev/null 2> told";
        return WEXITSTATUS(std::system(command.c_str()));
    }
};

TEST_F(ProgramWithoutStep, TellsThatItCantReadOrWriteIt) {
    const std::string message =
        "STEP files can't be read or written: the library brenvik_step.so was expected beside the program";
    EXPECT_EQ(RunAlone("list job.step"), 3);
    EXPECT_NE(Read("told").find(message), std::string::npos) << Read("told");
    EXPECT_EQ(RunAlone("convert job.dxf new.step"), 1);
    EXPECT_NE(Read("told").find(message), std::string::npos) << Read("told");
    EXPECT_FALSE(Exists("new.step"));
}

TEST_F(ProgramWithoutStep, ReadsOtherDrawings) {
    EXPECT_EQ(RunAlone("list job.dxf"), 0);
    EXPECT_EQ(Read("told"), "");
}

TEST_F(ProgramWithoutStep, TellsThatTheLibraryBesideItIsOfAnotherBuild) {
    std::string library = ReadFile(BRENVIK_BINARY_DIR "/bin/brenvik_step.so");
    const std::size_t at = library.find("step build ");
    ASSERT_NE(at, std::string::npos);
    library[at + 11] = 'x';
    Write("alone/brenvik_step.so", library);
    const std::string message =
        "STEP files can't be read or written: the library brenvik_step.so beside the program is of another "
        "build (expected step build ";
    EXPECT_EQ(RunAlone("list job.step"), 3);
    EXPECT_NE(Read("told").find(message), std::string::npos) << Read("told");
    EXPECT_EQ(RunAlone("convert job.dxf new.step"), 1);
    EXPECT_NE(Read("told").find(message), std::string::npos) << Read("told");
    EXPECT_FALSE(Exists("new.step"));
}

TEST_F(ProgramWithoutStep, ReadsStepAgainWithTheLibraryBesideIt) {
    fs::copy_file(BRENVIK_BINARY_DIR "/bin/brenvik_step.so", folder / "alone/brenvik_step.so");
    EXPECT_EQ(RunAlone("list job.step"), 0);
}

}  // namespace
}  // namespace brenvik::cli_test
