// Binary drawings from a shell: they are listed and converted like any other, and never written over.
#include <filesystem>

#include "program.h"
#include "support/sample_files.h"

namespace brenvik::cli_test {
namespace {

class Dwg : public ProgramTest {
  protected:
    void SetUp() override {
        if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    }
    /// A copy of a sample in the test's folder.
    std::string Sample(const std::string& release) const {
        std::filesystem::copy_file(test::SampleFolder() / "dwg" / ("ACadSharp__sample_AC" + release + ".dwg"),
                                   folder / "job.dwg", std::filesystem::copy_options::overwrite_existing);
        return "job.dwg";
    }
};

TEST_F(Dwg, SolidsOfEachReleaseAreListedWithTheSameSizes) {
    std::string first;
    for (const char* release : {"1014", "1015", "1018", "1021", "1024", "1027", "1032"}) {
        const Outcome outcome = Run({"list", Sample(release), "--unit", "mm", "--format", "csv"});
        EXPECT_EQ(outcome.errors.find("3DSOLID"), std::string::npos) << release << outcome.errors;
        if (first.empty()) first = outcome.output;
        EXPECT_EQ(outcome.output, first) << release;
    }
    EXPECT_NE(first.find('5'), std::string::npos) << first;
}

TEST_F(Dwg, AConvertedOneTellsWhatDrawingsDoNotHold) {
    const Outcome outcome = Run({"convert", Sample("1032"), "job.dxf"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("11 of kind \"DIMENSION\""), std::string::npos) << outcome.errors;
    const Outcome again = Run({"list", "job.dxf", "--quiet"});
    EXPECT_EQ(again.status, 0) << again.errors;
}

TEST_F(Dwg, ObjectsThatDoNotArriveAreCountedByKindInOneLine) {
    const Outcome outcome = Run({"convert", Sample("1032"), "job.dxf"});
    const std::string mark = "objects of the binary drawing that aren't taken along: ";
    const std::size_t at = outcome.errors.find(mark);
    ASSERT_NE(at, std::string::npos) << outcome.errors;
    const std::string line = outcome.errors.substr(at, outcome.errors.find('\n', at) - at);
    for (const char* kind : {" MATERIAL", " DICTIONARY", " VISUALSTYLE", " DIMSTYLE"})
        EXPECT_NE(line.find(kind), std::string::npos) << kind << line;
    EXPECT_EQ(outcome.errors.find(mark, at + 1), std::string::npos);
}

TEST_F(Dwg, TrueColoursAndFlagsOfLayersArrive) {
    Run({"convert", Sample("1032"), "job.dxf", "--quiet"});
    std::string file = Read("job.dxf");
    std::erase(file, '\r');
    const auto layer = [&](const std::string& name) {
        const std::size_t at = file.find("AcDbLayerTableRecord\n  2\n" + name + "\n");
        return at == std::string::npos ? "" : file.substr(at, file.find("\n  0\n", at) - at);
    };
    EXPECT_NE(layer("Layer_true_color").find("\n420\n1151726"), std::string::npos)
        << layer("Layer_true_color");
    EXPECT_NE(layer("Layer_vp_freeze").find("\n 70\n2\n"), std::string::npos) << layer("Layer_vp_freeze");
}

TEST_F(Dwg, TheOriginalIsNeverWrittenOver) {
    const std::string name = Sample("1018");
    const std::string before = Read(name);
    const Outcome outcome = Run({"convert", name, name});
    EXPECT_NE(outcome.status, 0);
    EXPECT_NE(outcome.errors.find("only read"), std::string::npos) << outcome.errors;
    EXPECT_EQ(Read(name), before);
}

TEST_F(Dwg, ADamagedOneIsRefusedByNameAndPlace) {
    Sample("1018");
    Write("cut.dwg", Read("job.dwg").substr(0, 5000));
    const Outcome outcome = Run({"list", "cut.dwg"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.errors.find("cut.dwg"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("byte"), std::string::npos) << outcome.errors;
    Write("empty.dwg", "");
    const Outcome empty = Run({"list", "empty.dwg"});
    EXPECT_EQ(empty.status, 3);
    EXPECT_NE(empty.errors.find("a DXF or DWG drawing"), std::string::npos) << empty.errors;
    Write("old.dwg", "AC1009" + std::string(500, '\0'));
    const Outcome old = Run({"list", "old.dwg"});
    EXPECT_EQ(old.status, 3);
    EXPECT_NE(old.errors.find("saved as DXF"), std::string::npos) << old.errors;
}

}  // namespace
}  // namespace brenvik::cli_test
