// Whole runs for each of the twelve targets, both sides and both forms: the files, and the lists byte for
// byte.
#include <algorithm>

#include "cnc/cnc_fixture.h"
#include "cnc/targets/target_table.h"
#include "session/library/cnc_commands.h"

namespace brenvik {
namespace {

using Texts = std::vector<std::string>;

/// What a target writes for a board "Türseite", 600 by 400 by 18, six times; with {} for the name of the file
/// and {B} for "B" on the second side and "F" on the first.
struct ListCase {
    Target target;
    const char* list;
    const char* line;
    const char* head = "";

    friend void PrintTo(const ListCase& each, std::ostream* out) { *out << each.list; }
};

constexpr const char* commonLine = "{folder}{},18 OAK,1,6,Türseite,Base,7,oben,,,links";

class RunOfTarget : public CncTest, public ::testing::WithParamInterface<ListCase> {
  protected:
    RunOfTarget() {
        WriteMaterials({"18"}, {12, 6, 3}, "cc", "1");
        Set("CNCMultiplier", "2");
        Set("BWPriority", "240001");
    }
    /// A board with a hole from above and a pocket from below.
    Acad3DSolid& BoardOfTwoSides(std::string_view quantity) {
        app::Workpiece board = Board(600, 400, 18, "Türseite");
        board.Drill({100, 60, 18}, app::Axis::Z, -12, 8);
        board.Cut({200, 100, -1}, {300, 250, 6});
        Acad3DSolid& solid = board.Solid();
        mAutoCAD::SetPartData(&solid, "Quantity", quantity);
        mAutoCAD::SetPartData(&solid, "EB1", "oben");
        mAutoCAD::SetPartData(&solid, "EB4", "links");
        Lay(solid, 31, -17, 123, {1234.5, -678.25, 91});
        return solid;
    }
    std::string NameOfFile() const {
        return GetParam().target == Target::THERM ? "Part_0_Türseite_7_Base.dxf" : "Part_0_Türseite_7.dxf";
    }
    std::string Expected(bool secondSide) const {
        const std::string name = (secondSide ? "B" : "") + NameOfFile();
        const std::string folder(secondSide ? SecondSideFolder : OutputFolder);
        std::string line = ReplaceAll(GetParam().line, "{folder}", folder);
        line = ReplaceAll(line, "{Folder}", ReplaceAll(folder, "c:", "C:"));
        line = ReplaceAll(line, "{B}", secondSide ? "B" : "F");
        line = ReplaceAll(line, "{}", name);
        return ReplaceAll(GetParam().head + line + "\n", "\n", files.LineEnd());
    }
    static std::ptrdiff_t CountOperations(const std::vector<Drawn>& drawn) {
        return std::count_if(drawn.begin(), drawn.end(),
                             [](const Drawn& one) { return one.kind != "AcDb3dPolyline" && one.color != 2; });
    }
    void ExpectFilesAndLists() {
        EXPECT_EQ(Messages().size(), 2U) << Messages().at(1);
        Texts names{NameOfFile(), GetParam().list};
        std::ranges::sort(names, LessIgnoreCase());
        EXPECT_EQ(FilesIn(OutputFolder), names);
        names = {"B" + NameOfFile(), GetParam().list};
        std::ranges::sort(names, LessIgnoreCase());
        EXPECT_EQ(FilesIn(SecondSideFolder), names);
        for (const bool secondSide : {false, true}) {
            const std::string folder(secondSide ? SecondSideFolder : OutputFolder);
            EXPECT_EQ(files.ReadFile(folder + GetParam().list), Expected(secondSide));
            const std::vector<Drawn> drawn = Read(folder + (secondSide ? "B" : "") + NameOfFile());
            EXPECT_EQ(CountOperations(drawn), 1) << folder;
        }
        EXPECT_EQ(host.Active(), &document);
        EXPECT_EQ(host.Documents().Count(), 1);
        EXPECT_EQ(TheSession().AcadDoc, &document);
    }
};

TEST_P(RunOfTarget, OnTheSelectionWritesFilesAndListsOfBothSides) {
    const Acad3DSolid& solid = BoardOfTwoSides("3");
    ChooseAllSolids();
    RunOnSelection(host, GetParam().target, GridBeforeRuns());
    ExpectFilesAndLists();
    EXPECT_EQ(mAutoCAD::GetPartData(solid.Handle(), "Quantity"), "3") << "not lent, so not given back";
}

TEST_P(RunOfTarget, FromTheGridTakesItsQuantities) {
    const Acad3DSolid& solid = BoardOfTwoSides("1");
    files.WriteFile(TheSession().InstallFolder + "CNCExportList2.txt", solid.Handle() + ",3\n");
    RunFromGrid(host, GetParam().target, GridBeforeRuns());
    ExpectFilesAndLists();
    EXPECT_EQ(mAutoCAD::GetPartData(solid.Handle(), "Quantity"), "1");
}

INSTANTIATE_TEST_SUITE_P(
    All, RunOfTarget,
    ::testing::Values(
        ListCase{Target::C2C, "WORKLIST.TXT", commonLine}, ListCase{Target::ATP, "WORKLIST.TXT", commonLine},
        ListCase{Target::ROV, "WORKLIST.TXT", commonLine}, ListCase{Target::CNI, "WORKLIST.TXT", commonLine},
        ListCase{Target::ASP, "WORKLIST.TXT", commonLine}, ListCase{Target::WOP4, "WORKLIST.TXT", commonLine},
        ListCase{Target::WOP5, "WORKLIST.TXT", commonLine},
        ListCase{Target::THERM, "Sheet1.csv", "6,{},18 OAK,48,96, 18,no"},
        ListCase{Target::BW, "WorkList.txt", "Piece\t{folder}{}\t600\t400\t6\t100\t90\t0",
                 "PIECE SECTION\n\nDiscr\tPiece path\tLength\tWidth\tQ. min\tPrior\tRot\tOffset\n\n"},
        ListCase{Target::Enroute, "CNCList.txt", "{},Türseite, 400, 600, 18,18 OAK,Base,6,1,0,{B}"},
        ListCase{Target::ABC, "CNCList.csv",
                 "6,TÜRSEITE,BASE,OAK, 600, 400, 18,LWT,,,7,,OBEN,,,LINKS,,{B},18 OAK,18 OAK,{Folder}{}"},
        ListCase{Target::RCIM, "CNCList.txt", "{},Türseite,400,600,18,18 OAK,1,6,1,{B},0,"}),
    [](const auto& one) { return std::string(TraitsOf(one.param.target).name); });

class RunOfTwins : public CncTest {};

TEST_F(RunOfTwins, OfTwoPartsOfOneNameHasALineAndAFileForEach) {
    for (int part = 0; part < 2; ++part) Board(600, 400 + 10 * part, 18, "Side");
    ChooseAllSolids();
    RunOnSelection(host, Target::BW, GridBeforeRuns());
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0_Side_7.dxf", "Part_1_Side_7.dxf", "WorkList.txt"}));
    const std::string list = files.ReadFile(std::string(OutputFolder) + "WorkList.txt");
    EXPECT_EQ(list.find("PIECE SECTION"), list.rfind("PIECE SECTION")) << "the header stands once";
    EXPECT_NE(list.find("Part_0_Side_7.dxf\t600\t400\t1\t"), std::string::npos) << list;
    EXPECT_NE(list.find("Part_1_Side_7.dxf\t600\t410\t1\t"), std::string::npos) << list;
}

}  // namespace
}  // namespace brenvik
