// SOLPROF: the profile of a part from above, with the coordinates that the part has.
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>

#include "command_fixture.h"
#include "drafting_host/document/geometry/profile_curves.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/exact_box.h"

namespace brenvik {
namespace {

class Profiles : public CommandTest {
  protected:
    void Project() {
        for (const char* text :
             {"tilemode ", "0 ", "mview ", "fit ", "mspace ", "-view ", "top ", "hi ", "solprof ", "all "})
            Type(text);
        for (int i = 0; i < 4; ++i) Type(" ");
        for (const char* text : {"tilemode ", "1 ", "-v ", "t "}) Type(text);
        ExpectIdle();
    }

    void Cut(HostSolid& part, Acad3DSolid& tool) { part.Boolean(BooleanKind::Subtraction, tool); }
    /// A blind or through hole from above or below.
    void Drill(HostSolid& part, double x, double y, double radius, double low, double high) {
        Cut(part, *Model().AddCylinder({x, y, (low + high) / 2}, radius, high - low));
    }

    template <class Kind>
    std::vector<Kind*> In(std::string_view prefix) {
        std::vector<Kind*> found;
        for (HostEntity* entity : Entities()) {
            auto* reference = dynamic_cast<HostBlockReference*>(entity);
            if (reference == nullptr || !reference->Layer().starts_with(prefix)) continue;
            for (HostEntity* part : document.FindBlock(reference->Name())->Entities()) {
                EXPECT_EQ(part->Layer(), reference->Layer());
                EXPECT_EQ(part->Color(), 256);
                if (auto* kind = dynamic_cast<Kind*>(part)) found.push_back(kind);
            }
        }
        return found;
    }
};

TEST_F(Profiles, ABoxSeenFromAboveIsFourLinesOnceEach) {
    BoxAt({0, 0, 0}, {600, 300, 18});
    Project();
    EXPECT_EQ(document.ActiveSpace(), ActiveSpaceKind::ModelSpace);
    const std::vector<HostLine*> lines = In<HostLine>("PV-");
    ASSERT_EQ(lines.size(), 4u);
    for (const HostLine* line : lines) {
        EXPECT_EQ(line->StartPoint().z, 0);
        EXPECT_EQ(line->EndPoint().z, 0);
        ExpectExact(line->Normal(), {0, 0, 1});
        EXPECT_TRUE(line->Length() == 600 || line->Length() == 300);
    }
    EXPECT_TRUE(In<HostEntity>("PH-").empty());
}

TEST_F(Profiles, LieOnLayersNamedForTheViewport) {
    BoxAt({0, 0, 0}, {6, 3, 1});
    BoxAt({1, 1, -3}, {2, 2, -2});
    Project();
    const std::string handle = dynamic_cast<HostEntity&>(*document.PaperSpace().Item(0)).Handle();
    EXPECT_NE(document.LayerTable().Find("PV-" + handle), nullptr);
    EXPECT_NE(document.LayerTable().Find("PH-" + handle), nullptr);
    EXPECT_EQ(In<HostLine>("PV-" + handle).size(), 4u);
    EXPECT_EQ(In<HostLine>("PH-" + handle).size(), 4u);
    EXPECT_EQ(document.Model().Count(), 4);
}

TEST_F(Profiles, HolesAreCirclesWithTheirOwnNumbers) {
    HostSolid& part = BoxAt({0, 0, 0}, {600, 300, 18});
    Drill(part, 37.123456789, 64.1, 2.5, 6, 18);
    Drill(part, 100, 64.1, 4, 0, 18);
    Drill(part, 200, 64.1, 3, 0, 9);
    Project();
    const std::vector<HostCircle*> seen = In<HostCircle>("PV-"), hidden = In<HostCircle>("PH-");
    ASSERT_EQ(seen.size(), 2u);
    ASSERT_EQ(hidden.size(), 1u);
    for (const HostCircle* circle : seen) {
        EXPECT_EQ(circle->Center().z, 0);
        ExpectExact(circle->Normal(), {0, 0, 1});
    }
    const bool inOrder = seen[0]->Radius() == 2.5;
    ExpectNear(seen[inOrder ? 0 : 1]->Center(), {37.123456789, 64.1, 0}, 1e-12);
    ExpectExact(hidden[0]->Center(), {200, 64.1, 0});
    EXPECT_EQ(hidden[0]->Radius(), 3);
}

TEST_F(Profiles, RoundedCornersAreArcsThatMeetTheirLines) {
    HostSolid& part = BoxAt({0, 0, 0}, {600, 300, 18});
    BRepFilletAPI_MakeFillet fillet(part.Shape());
    for (TopExp_Explorer edges(part.Shape(), TopAbs_EDGE); edges.More(); edges.Next()) {
        const auto box = solids::ExactBox(edges.Current());
        if (box.SizeZ() > 1) fillet.Add(25, TopoDS::Edge(edges.Current()));
    }
    part.SetShape(fillet.Shape());
    Project();
    const std::vector<HostArc*> arcs = In<HostArc>("PV-");
    const std::vector<HostLine*> lines = In<HostLine>("PV-");
    ASSERT_EQ(arcs.size(), 4u);
    ASSERT_EQ(lines.size(), 4u);
    for (const HostArc* arc : arcs) {
        EXPECT_NEAR(arc->Radius(), 25, 1e-12);
        EXPECT_EQ(arc->Center().z, 0);
        ExpectExact(arc->Normal(), {0, 0, 1});
        for (const Point3& end : {arc->StartPoint(), arc->EndPoint()}) {
            const bool met = std::ranges::any_of(lines, [&](const HostLine* line) {
                return vectors::Distance(line->StartPoint(), end) < 1e-9 ||
                       vectors::Distance(line->EndPoint(), end) < 1e-9;
            });
            EXPECT_TRUE(met);
        }
    }
}

TEST_F(Profiles, SmoothPassagesGoUnlessAskedFor) {
    HostSolid& part = BoxAt({0, 0, 0}, {100, 50, 20});
    BRepFilletAPI_MakeFillet fillet(part.Shape());
    for (TopExp_Explorer edges(part.Shape(), TopAbs_EDGE); edges.More(); edges.Next()) {
        const auto box = solids::ExactBox(edges.Current());
        if (box.min.Z() > 19 && box.SizeX() > 99 && box.min.Y() < 1)
            fillet.Add(5, TopoDS::Edge(edges.Current()));
    }
    part.SetShape(fillet.Shape());
    Type("tilemode 0 mview fit mspace solprof all     ");
    const std::size_t without = In<HostLine>("PV-").size();
    // The side that rounds over into the top still shows its outer line.
    EXPECT_TRUE(std::ranges::any_of(In<HostLine>("PV-"), [](const HostLine* line) {
        return std::abs(line->StartPoint().y) < 1e-12 && std::abs(line->EndPoint().y) < 1e-12;
    }));
    Type("solprof all  y y n ");
    EXPECT_EQ(In<HostLine>("PV-").size(), 2 * without + 1);
}

TEST_F(Profiles, TheAnswersMayKeepEdgesInSpaceAndTogether) {
    BoxAt({0, 0, 0}, {6, 3, 1});
    BoxAt({10, 0, 0}, {16, 3, 1});
    Type("tilemode 0 mview fit mspace solprof all  n n n ");
    ExpectIdle();
    EXPECT_TRUE(In<HostEntity>("PH-").empty());
    const std::vector<HostLine*> lines = In<HostLine>("PV-");
    EXPECT_EQ(lines.size(), 16u);
    EXPECT_TRUE(std::ranges::any_of(lines, [](const HostLine* line) { return line->StartPoint().z == 1; }));
    EXPECT_EQ(document.Model().Count(), 4);
}

TEST_F(Profiles, ThePlaneGoesThroughTheUserOriginSquareToTheView) {
    BoxAt({0, 0, 0}, {6, 3, 1});
    Type("ucsortho 0 ucs o 0,7,5 tilemode 0 mview fit mspace -v top solprof all     ");
    for (const HostLine* line : In<HostLine>("PV-")) EXPECT_EQ(line->StartPoint().z, 5);
    Type("erase all  ");
    BoxAt({0, 0, 0}, {6, 3, 1});
    Type("-v front solprof all     ");
    const std::vector<HostLine*> lines = In<HostLine>("PV-");
    ASSERT_EQ(lines.size(), 4u);
    for (const HostLine* line : lines) {
        EXPECT_EQ(line->StartPoint().y, 7);
        ExpectExact(line->Normal(), {0, -1, 0});
    }
}

TEST_F(Profiles, OnlySolidsWithinReachCount) {
    HostSolid& locked = BoxAt({0, 0, 0}, {6, 3, 1});
    HostLayer& layer = NewLayer("SolidHold");
    locked.SetLayer("SolidHold");
    layer.SetLock(true);
    Model().AddLine({0, 0, 0}, {1, 1, 1});
    Type("tilemode 0 mview fit mspace solprof all  ");
    ExpectIdle();
    EXPECT_TRUE(Told("No solids selected."));
    EXPECT_EQ(document.Model().Count(), 2);
    Type("tilemode 1 solprof ");
    ExpectIdle();
    EXPECT_TRUE(Told("SOLPROF works in model space seen through a viewport"));
}

TEST_F(Profiles, ExplodingTheBlockLeavesTheCurvesOnTheirLayer) {
    BoxAt({0, 0, 0}, {6, 3, 1});
    Project();
    for (HostEntity* entity : Entities()) {
        auto* reference = dynamic_cast<HostBlockReference*>(entity);
        if (reference == nullptr) continue;
        for (AcadEntity* part : reference->Explode()) EXPECT_EQ(part->Layer(), reference->Layer());
    }
}

/// The visible and hidden curves of a shape from above, whatever they are.
struct Counted {
    std::size_t lines = 0, rounds = 0, ovals = 0;
};

Counted Count(const TopoDS_Shape& shape, const Point3& eye = {0, 0, 1}) {
    const ProfileCurves curves = ProfileOf({&shape, 1}, {{}, eye}, {});
    Counted counted;
    for (const auto* list : {&curves.visible, &curves.hidden}) {
        for (const HostGeometry& curve : *list) {
            counted.lines += std::holds_alternative<LineData>(curve);
            counted.rounds +=
                std::holds_alternative<ArcData>(curve) || std::holds_alternative<CircleData>(curve);
            counted.ovals += std::holds_alternative<EllipseData>(curve);
        }
    }
    return counted;
}

TEST(Outlines, OfRoundBodiesAreDrawnFromTheirFormulas) {
    const gp_Ax2 level(gp_Pnt(0, 0, 10), gp_Dir(1, 0, 0));
    const TopoDS_Shape lying = BRepPrimAPI_MakeCylinder(level, 5, 40).Shape();
    EXPECT_EQ(Count(lying).lines, 4u);
    const TopoDS_Shape ball = BRepPrimAPI_MakeSphere(7).Shape();
    EXPECT_EQ(Count(ball).rounds, 1u);
    const TopoDS_Shape ring = BRepPrimAPI_MakeTorus(20, 3).Shape();
    EXPECT_EQ(Count(ring).rounds, 2u);
    const TopoDS_Shape cone = BRepPrimAPI_MakeCone(level, 5, 2, 40).Shape();
    EXPECT_EQ(Count(cone).lines, 4u);
    const gp_Ax2 slanted(gp_Pnt(0, 0, 0), gp_Dir(1, 0, 1));
    const TopoDS_Shape leaning = BRepPrimAPI_MakeCylinder(slanted, 5, 40).Shape();
    EXPECT_EQ(Count(leaning).lines, 2u);
    EXPECT_EQ(Count(leaning).ovals, 2u);
    EXPECT_EQ(Count(leaning, vectors::Unit({1, 0, 1})).rounds, 1u);
}

TEST(Outlines, OfALyingCylinderRunAlongItsSides) {
    const TopoDS_Shape lying =
        BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(0, 0, 10), gp_Dir(1, 0, 0)), 5, 40).Shape();
    const ProfileCurves curves = ProfileOf({&lying, 1}, {{}, {0, 0, 1}}, {});
    int sides = 0;
    for (const HostGeometry& curve : curves.visible) {
        const auto& line = std::get<LineData>(curve);
        if (std::abs(line.start.x - line.end.x) < 1) continue;
        ++sides;
        EXPECT_NEAR(std::abs(line.start.y), 5, 1e-12);
        EXPECT_EQ(line.start.z, 0);
        EXPECT_NEAR(std::abs(line.end.x - line.start.x), 40, 1e-12);
    }
    EXPECT_EQ(sides, 2);
}

struct FlatCase {
    HostGeometry curve, image;

    friend void PrintTo(const FlatCase& each, std::ostream* out) {
        *out << "geometry of kind " << each.curve.index();
    }
};

class FlatCurves : public ::testing::TestWithParam<FlatCase> {};

TEST_P(FlatCurves, AreTheImagesSeenFromAbove) {
    const std::optional<HostGeometry> image = Flattened(GetParam().curve, {{0, 0, 0}, {0, 0, 1}});
    ASSERT_TRUE(image.has_value());
    ASSERT_EQ(image->index(), GetParam().image.index());
    if (const auto* line = std::get_if<LineData>(&*image)) {
        const auto& wanted = std::get<LineData>(GetParam().image);
        ExpectNear(line->start, wanted.start);
        ExpectNear(line->end, wanted.end);
    } else if (const auto* arc = std::get_if<ArcData>(&*image)) {
        const auto& wanted = std::get<ArcData>(GetParam().image);
        ExpectNear(arc->center, wanted.center);
        EXPECT_NEAR(arc->startAngle, wanted.startAngle, 1e-12);
        EXPECT_NEAR(arc->endAngle, wanted.endAngle, 1e-12);
        ExpectExact(arc->normal, {0, 0, 1});
    } else if (const auto* ellipse = std::get_if<EllipseData>(&*image)) {
        const auto& wanted = std::get<EllipseData>(GetParam().image);
        EXPECT_NEAR(ellipse->ratio, wanted.ratio, 1e-12);
        EXPECT_NEAR(vectors::Length(ellipse->majorAxis), vectors::Length(wanted.majorAxis), 1e-12);
    }
}

constexpr double pi = std::numbers::pi;

INSTANTIATE_TEST_SUITE_P(
    Kinds, FlatCurves,
    ::testing::Values(
        FlatCase{LineData{{1, 2, 3}, {4, 5, 6}}, LineData{{1, 2, 0}, {4, 5, 0}}},
        FlatCase{ArcData{{1, 2, 9}, 5, 0, pi / 2, 0, {0, 0, 1}}, ArcData{{1, 2, 0}, 5, 0, pi / 2}},
        // From behind: the quarter from -X to +Y of the lower side.
        FlatCase{ArcData{{1, 2, 9}, 5, 0, pi / 2, 0, {0, 0, -1}}, ArcData{{1, 2, 0}, 5, pi / 2, pi}},
        // From its edge: the upper half of a circle across X.
        FlatCase{ArcData{{0, 0, 0}, 5, 0, pi, 0, {0, -1, 0}}, LineData{{-5, 0, 0}, {5, 0, 0}}},
        FlatCase{ArcData{{0, 0, 0}, 5, 0, pi / 3, 0, {0, -1, 0}}, LineData{{2.5, 0, 0}, {5, 0, 0}}},
        FlatCase{CircleData{{3, 0, 4}, 5, 0, {0, -1, 0}}, LineData{{-2, 0, 0}, {8, 0, 0}}},
        FlatCase{CircleData{{0, 0, 0}, 5, 0, {0, 0.8, 0.6}}, EllipseData{{}, {5, 0, 0}, {0, 0, 1}, 0.6}},
        FlatCase{EllipseData{{0, 0, 3}, {8, 0, 0}, {0, 0, 1}, 0.5},
                 EllipseData{{}, {8, 0, 0}, {0, 0, 1}, 0.5}}));

TEST(FlatCurves, ALineAlongTheSightIsNothing) {
    EXPECT_FALSE(Flattened(HostGeometry(LineData{{1, 2, 3}, {1, 2, 6}}), {{}, {0, 0, 1}}).has_value());
}

}  // namespace
}  // namespace brenvik
