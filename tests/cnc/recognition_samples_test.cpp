// The parts of the sample cabinet, run as the job they are.
#include <filesystem>

#include "checkout_paths.h"
#include "cnc/recognition_fixture.h"
#include "session/library/cnc_commands.h"

namespace brenvik {
namespace {

class SampleCabinet : public WholePartTest {
  protected:
    /// The cabinet's solids, brought into the fixture's drawing, with material and letters for those that
    /// have none.
    std::vector<Acad3DSolid*> BringIn() {
        HostDocument& cabinet =
            host.OpenDrawing(std::filesystem::path(BRENVIK_SOURCE_DIR) / "samples" / "base-cabinet.dxf", {});
        TheSession().AcadDoc = &cabinet;
        const std::vector<Acad3DSolid*> solids = All<Acad3DSolid>(cabinet);
        for (Acad3DSolid* solid : solids)
            for (const auto& [key, value] : {std::pair("Material", "Oak"), std::pair("ORIE", "LWT")})
                if (IsBlank(mAutoCAD::GetPartData(solid->Handle(), key)))
                    mAutoCAD::SetPartData(solid, key, value);
        std::vector<HostEntity*> members;
        for (Acad3DSolid* solid : solids) members.push_back(&dynamic_cast<HostEntity&>(*solid));
        cabinet.SetPreviousSelection(members);
        return solids;
    }
    /// The cabinet is of the materials that its parts name, in whatever thickness they have.
    void WriteCabinetMaterials(const std::vector<Acad3DSolid*>& solids) {
        std::vector<MaterialTexts> records;
        for (Acad3DSolid* solid : solids) {
            const std::string name = mAutoCAD::GetPartData(solid->Handle(), "Material");
            for (const char* thickness :
                 {"3", "5", "6", "8", "10", "12", "15", "16", "18", "19", "20", "25"}) {
                MaterialTexts texts{std::string(thickness) + " " + name, "0", "cc"};
                constexpr std::array<const char*, 3> bits{"12", "6", "3"};
                for (std::size_t tool = 0; tool < bits.size(); ++tool) {
                    texts[3 + 4 * tool] = std::to_string(tool + 1);
                    texts[4 + 4 * tool] = bits[tool];
                    texts[5 + 4 * tool] = "18000";
                    texts[6 + 4 * tool] = "300";
                }
                records.push_back(texts);
            }
        }
        files.RemoveFile(MaterialsPath());
        files.WriteFile(MaterialsPath(), MaterialsText(records, "\r\n"));
    }
};

TEST_F(SampleCabinet, EveryPartIsCutInAirAndWhole) {
    const std::vector<Acad3DSolid*> solids = BringIn();
    ASSERT_EQ(solids.size(), 16U);
    WriteCabinetMaterials(solids);
    RunOnSelection(host, Target::C2C, GridBeforeRuns());
    EXPECT_EQ(LastRunReport().parts, 16);
    ExpectQuiet();
    for (std::size_t i = 0; i < solids.size(); ++i) {
        SCOPED_TRACE(mAutoCAD::GetPartData(solids[i]->Handle(), "PartName"));
        EXPECT_EQ(Faults(*solids[i], static_cast<int>(i)), std::vector<std::string>{});
    }
}

}  // namespace
}  // namespace brenvik
