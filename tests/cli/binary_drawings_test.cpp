// Binary drawings and drawings with binary bodies do what their ASCII twins do.
#include "program.h"
#include "support/binary_dxf.h"
#include "support/sample_files.h"

namespace brenvik::cli_test {
namespace {

class BinaryDrawings : public ProgramTest {
  protected:
    /// The sample job as ASCII text in job.dxf, and its twins.
    void WriteTwins() const {
        WriteSample("job.dxf");
        const std::string text = Read("job.dxf");
        Write("binary.dxf", test::BinaryDxf(text));
        Write("bodies.dxf", test::WithBinaryBodies(text));
        Write("both.dxf", test::BinaryDxf(test::WithBinaryBodies(text)));
    }
    std::vector<std::string> twins{"binary.dxf", "bodies.dxf", "both.dxf"};
};

TEST_F(BinaryDrawings, AreListedAsTheirTwins) {
    WriteTwins();
    const Outcome expected = Run({"list", "job.dxf", "--format", "json"});
    EXPECT_EQ(expected.status, 0) << expected.errors;
    for (const std::string& twin : twins) {
        const Outcome outcome = Run({"list", twin, "--format", "json"});
        EXPECT_EQ(outcome.status, 0) << twin;
        EXPECT_EQ(outcome.errors, expected.errors) << twin;
        EXPECT_EQ(outcome.output, expected.output) << twin;
    }
}

TEST_F(BinaryDrawings, AreConvertedAsTheirTwins) {
    WriteTwins();
    EXPECT_EQ(Run({"convert", "job.dxf", "job_out.dxf"}).status, 0);
    const Outcome expected = Run({"list", "job_out.dxf", "--format", "json"});
    for (const std::string& twin : twins) {
        const Outcome outcome = Run({"convert", twin, "twin_out.dxf"});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        // Letter by letter they differ: what goes through unread keeps the digits of its file.
        EXPECT_EQ(Run({"list", "twin_out.dxf", "--format", "json"}).output, expected.output) << twin;
    }
}

TEST_F(BinaryDrawings, AreCutAsTheirTwins) {
    WriteTwins();
    const auto cut = [this](const std::string& drawing) {
        const Outcome outcome = Run({"cnc", drawing, "--target", "C2C", "--out", "cut"});
        EXPECT_EQ(outcome.status, 1) << "two parts of the sample have no material: " << drawing
                                     << outcome.errors;
        return FilesBelow("cut");
    };
    const Files expected = cut("job.dxf");
    EXPECT_GT(expected.size(), 10U);
    for (const std::string& twin : twins) EXPECT_TRUE(cut(twin) == expected) << twin;
}

TEST_F(BinaryDrawings, OfOtherProgramsAreListedWithTheirSolids) {
    if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    const auto list = [this](const std::string& name) {
        std::filesystem::copy_file(test::SampleFolder() / "dxf" / name, folder / "drawing.dxf",
                                   std::filesystem::copy_options::overwrite_existing);
        return Run({"list", "drawing.dxf", "--format", "csv"}).output;
    };
    const std::string expected = list("ACadSharp__sample_AC1015_ascii.dxf");
    EXPECT_NE(expected, "");
    for (const char* twin : {"AC1015_binary", "AC1027_ascii", "AC1032_ascii"})
        EXPECT_EQ(list(std::string("ACadSharp__sample_") + twin + ".dxf"), expected) << twin;
}

TEST_F(BinaryDrawings, ThatBreakOffSayWhereAndWhatIsMissing) {
    WriteTwins();
    const std::string binary = Read("both.dxf");
    Write("cut.dxf", binary.substr(0, binary.size() - 2000));
    const Outcome outcome = Run({"list", "cut.dxf"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("cut.dxf: byte "), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("the file breaks off"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("left out: its binary body"), std::string::npos) << outcome.errors;
}

}  // namespace
}  // namespace brenvik::cli_test
