// Exported files as they stand, to the byte, for the four targets that differ most: a part, a second side and
// a list. What changed on purpose is looked at and then taken over with scripts/accept-files.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "checkout_paths.h"
#include "program.h"
#include "support/golden.h"

namespace brenvik::cli_test {
namespace {

namespace fs = std::filesystem;

class WholeFiles : public ProgramTest, public ::testing::WithParamInterface<const char*> {
  protected:
    fs::path Expected() const { return fs::path(BRENVIK_SOURCE_DIR) / "tests/cli/golden" / GetParam(); }
};

TEST_P(WholeFiles, StandAsTheyWereLookedAt) {
    const Outcome outcome =
        Run({"cnc", ShippedSample().string(), "--target", GetParam(), "--out", "out", "--quiet"});
    EXPECT_EQ(outcome.status, 1) << "two parts of the sample have no material in the library";
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(Expected())) files.push_back(entry.path());
    ASSERT_EQ(files.size(), 3U);
    for (const fs::path& file : files) {
        const std::string name = file.filename().string();
        const fs::path written = folder / "out" / (name.starts_with("BPart") ? "2-sided" : "") / name;
        ASSERT_TRUE(fs::exists(written)) << name;
        test::ExpectGolden(std::string("cli/golden/") + GetParam() + "/" + name, ReadFile(written));
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, WholeFiles, ::testing::Values("C2C", "ROV", "WOP4", "BW"),
                         [](const auto& target) { return target.param; });

}  // namespace
}  // namespace brenvik::cli_test
