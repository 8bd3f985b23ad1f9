// A busy two-sided part for each of the twelve targets: the same operations in the same places, in the words
// of each.
#include <map>
#include <set>
#include <tuple>

#include "base/numbers.h"
#include "cnc/recognition_fixture.h"
#include "cnc/targets/target_table.h"

namespace brenvik {
namespace {

/// An operation without its name: sort, place and width, rounded so that they compare.
using Operation = std::tuple<char, double, double, double, double>;

double Rounded4(double value) { return RoundHalfEven(value, 4) + 0.0; }

/// The rectangle of an edge bore seen from above, as the second family draws it.
Operation RectangleOf(const Drawn& bore) {
    const Point3& mouth = bore.points.front();
    const double radius = bore.diameter / 2, depth = -bore.thickness;
    const double x = mouth.x - bore.normal.x * depth, y = mouth.y - bore.normal.y * depth;
    const double acrossX = std::abs(bore.normal.y) * radius, acrossY = std::abs(bore.normal.x) * radius;
    return {'h', Rounded4(std::min(mouth.x, x) - acrossX), Rounded4(std::min(mouth.y, y) - acrossY),
            Rounded4(std::max(mouth.x, x) + acrossX), Rounded4(std::max(mouth.y, y) + acrossY)};
}

Operation PathOf(char sort, const Drawn& path) {
    double left = 1e9, front = 1e9, right = -1e9, back = -1e9;
    for (const Point3& corner : path.points) {
        left = std::min(left, corner.x);
        front = std::min(front, corner.y);
        right = std::max(right, corner.x);
        back = std::max(back, corner.y);
    }
    return {sort, Rounded4(left), Rounded4(front), Rounded4(right), Rounded4(back)};
}

std::multiset<Operation> OperationsOf(const std::vector<Drawn>& file) {
    std::multiset<Operation> found;
    for (const Drawn& drawn : file) {
        const bool circle = drawn.kind == "AcDbCircle";
        if (circle && std::abs(drawn.normal.z) < 0.5)
            found.insert(RectangleOf(drawn));
        else if (circle)
            found.insert({drawn.color == 4 ? 'v' : 'c', Rounded4(drawn.points[0].x),
                          Rounded4(drawn.points[0].y), Rounded4(drawn.diameter), 0});
        else if (drawn.kind == "AcDbPolyline")
            found.insert(PathOf(drawn.color == 15 ? 'h' : drawn.color == 2 ? 'o' : 'p', drawn));
    }
    return found;
}

/// Names of a through hole and a blind one, 18 and 12 deep with a spoil of 1, 8 and 5 wide.
struct Words {
    Target target;
    std::string_view through, blind;
    /// Of an edge bore 8 wide, 34 deep at half the thickness: front, back, left, right.
    std::array<std::string_view, 4> bore;
    std::string_view sheet;
    /// The thickness of the through hole: spoil and all, the plain depth, or none.
    double throughThickness = 0;
};

constexpr auto Dialects = std::to_array<Words>({
    {Target::C2C, "VD_Z19_T_D8", "VD_Z12_T_D5", {"HF_T", "HB_T", "HL_T", "HR_T"}, "PL_18", -19},
    {Target::ATP,
     "VD_Z19_T_D8",
     "VD_Z12_T_D5",
     {"HF_T8_D34", "HB_T8_D34", "HL_T8_D34", "HR_T8_D34"},
     "PL_18",
     -19},
    {Target::ABC, "VD_Z_T_D8", "VD_Z_T_D5", {"HF_T8_D34", "HB_T8_D34", "HL_T8_D34", "HR_T8_D34"}, "", -19},
    {Target::Enroute,
     "VD_Z_T_D8",
     "VD_Z_T_D5",
     {"HF_T8_D34", "HB_T8_D34", "HL_T8_D34", "HR_T8_D34"},
     "PL_18",
     -18},
    {Target::RCIM,
     "VD_Z_T_D8",
     "VD_Z_T_D5",
     {"HF_T8_D34", "HB_T8_D34", "HL_T8_D34", "HR_T8_D34"},
     "PL_18",
     -18},
    {Target::THERM,
     "drill z18",
     "drill z12",
     {"hbore 8 34", "hbore 8 34", "hbore 8 34", "hbore 8 34"},
     "",
     -18},
    {Target::ASP, "0", "0", {"FRONT9", "BACK9", "LEFT9", "RIGHT9"}, "PANEL18", -18},
    {Target::CNI, "VERTICAL19", "VERTICAL12", {"FRONT9", "BACK9", "LEFT9", "RIGHT9"}, "PANEL18", 0},
    {Target::ROV,
     "VERT19",
     "VERT12",
     {"SIDEB0_9_8_34", "SIDED0_9_8_34", "SIDEA0_9_8_34", "SIDEC0_9_8_34"},
     "PANEL18",
     0},
    {Target::WOP4, "ZD19", "ZF12", {"HO9", "HO9", "HO9", "HO9"}, "S_18", 0},
    {Target::WOP5,
     "V_DrillSFS",
     "V_DrillSF_12",
     {"H_Drill_9", "H_Drill_9", "H_Drill_9", "H_Drill_9"},
     "ProcPart_18",
     0},
    {Target::BW,
     "TCHB2W0D1900",
     "TCHB2W0D1200",
     {"TCHB2W2D3400", "TCHB2W4D3400", "TCHB2W1D3400", "TCHB2W3D3400"},
     "TCHB8W0D180000",
     0},
});

class TargetsTest : public WholePartTest {
  protected:
    void PutDownBusyPart() {
        MadePart part = Made();
        part.Board(600, 400, 18);
        part.Hole(50, 60, 8);
        part.Hole(80, 60, 5, 12);
        part.HoleBelow(110, 60, 6, 7);
        part.Hole(300, 60, 60);
        part.Hole(500, 60, 50, 8);
        part.Pocket(Rectangle(220, -1, 232, 401), 10);
        part.Window(Rounded(60, 150, 200, 250, 20));
        part.Pocket(Rectangle(250, 150, 400, 350), 8);
        part.Window(Rectangle(290, 200, 360, 300));
        part.PocketBelow(Rounded(430, 120, 560, 300, 25), 6);
        part.Drill({0, 200, 9}, {1, 0, 0}, 34, 8);
        part.Drill({100, 400, 9}, {0, -1, 0}, 34, 8);
        PutDown(part);
    }
    static void ExpectDressed(const Drawn& drawn, const Words& words) {
        const bool path = drawn.kind == "AcDbPolyline" && drawn.color != 15;
        const bool hole = drawn.kind == "AcDbCircle" && drawn.color == 4;
        if (drawn.kind == "AcDb3dPolyline") {
            EXPECT_EQ(drawn.layer, words.sheet);
        } else if (hole && std::abs(drawn.diameter - 8) < 1e-6) {
            EXPECT_NEAR(drawn.thickness, words.throughThickness, 1e-6);
        } else if (path) {
            // Depths of paths travel in the thickness whatever the name tells.
            EXPECT_LT(drawn.thickness, 0);
        }
    }
    static std::string NameOf(const std::vector<Drawn>& file, double diameter) {
        for (const Drawn& drawn : file)
            if (drawn.kind == "AcDbCircle" && std::abs(drawn.diameter - diameter) < 1e-6 && drawn.color == 4)
                return drawn.layer;
        return "no hole";
    }
};

TEST_F(TargetsTest, CutTheSameAndNameItInTheirOwnWords) {
    PutDownBusyPart();
    RunAll(Target::C2C);
    ASSERT_TRUE(FirstSide() && SecondSide());
    const std::vector<Drawn> first = *FirstSide(), second = *SecondSide();
    ASSERT_EQ(OperationsOf(first).size(), 11U);
    std::set<std::size_t> boredEdges;
    constexpr std::array<std::string_view, 4> edges{"HF_T", "HB_T", "HL_T", "HR_T"};
    for (std::size_t edge = 0; edge < edges.size(); ++edge)
        if (Count(first, edges[edge]) > 0) boredEdges.insert(edge);
    ASSERT_EQ(boredEdges.size(), 2U);

    for (const Words& words : Dialects) {
        SCOPED_TRACE(TraitsOf(words.target).name);
        dialogs.messages.clear();
        RunAll(words.target);
        ExpectQuiet();
        ASSERT_TRUE(FirstSide() && SecondSide());
        const std::vector<Drawn> file = *FirstSide();
        EXPECT_EQ(OperationsOf(file), OperationsOf(first));
        EXPECT_EQ(OperationsOf(*SecondSide()), OperationsOf(second));
        EXPECT_EQ(NameOf(file, 8), words.through);
        EXPECT_EQ(NameOf(file, 5), words.blind);
        for (const std::size_t edge : boredEdges) EXPECT_GE(Count(file, words.bore[edge]), 1U);
        for (const Drawn& drawn : file) ExpectDressed(drawn, words);
        EXPECT_EQ(
            std::ranges::count_if(file, [](const Drawn& drawn) { return drawn.kind == "AcDb3dPolyline"; }),
            words.sheet.empty() ? 0 : 1);
    }
}

}  // namespace
}  // namespace brenvik
