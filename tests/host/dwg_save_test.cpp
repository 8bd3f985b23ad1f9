// A binary drawing is saved as DXF text beside itself, once and told, and never over something else.
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "host/host_fixture.h"
#include "support/sample_files.h"

namespace brenvik {
namespace {

class DwgSave : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
        folder = std::filesystem::temp_directory_path() / ("dwg-save-" + std::to_string(::getpid()));
        std::filesystem::create_directories(folder);
        original = folder / "job.dwg";
        std::filesystem::copy_file(test::SampleFolder() / "dwg" / "ACadSharp__sample_AC1018.dwg", original);
        bytes = test::FileBytes(original);
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::filesystem::path folder, original;
    std::string bytes;
    HostApplication host{WriteWholeFile, WriteScratchFile};
};

TEST_F(DwgSave, GoesBesideTheOriginalUnderTheEndingOfDxf) {
    HostDocument& document = host.OpenDrawing(original);
    document.Save();
    EXPECT_EQ(test::FileBytes(original), bytes);
    EXPECT_EQ(document.FullName(), (folder / "job.dxf").string());
    EXPECT_NE(test::FileBytes(folder / "job.dxf").find("AC1018"), std::string::npos);
    EXPECT_NE(document.Tables().notes.back().text.find("job.dxf"), std::string::npos);
    const std::size_t notes = document.Tables().notes.size();
    document.Save();
    for (std::size_t i = notes; i < document.Tables().notes.size(); ++i)
        EXPECT_EQ(document.Tables().notes[i].text.find("saved as"), std::string::npos) << "told once";
}

TEST_F(DwgSave, WritesOverNothing) {
    std::ofstream(folder / "job.dxf") << "mine";
    HostDocument& document = host.OpenDrawing(original);
    EXPECT_THROW(document.Save(), Failure);
    EXPECT_EQ(test::FileBytes(folder / "job.dxf"), "mine");
    EXPECT_THROW(document.SaveAs(original.string(), SaveAsKind::Native), Failure);
    EXPECT_EQ(test::FileBytes(original), bytes);
    document.SaveAs((folder / "other.dxf").string(), SaveAsKind::Dxf2000);
    document.Save();
    EXPECT_TRUE(std::filesystem::exists(folder / "other.dxf"));
}

}  // namespace
}  // namespace brenvik
