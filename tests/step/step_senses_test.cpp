// A sound file in which one sign is turned: the edge's, the loop's, the face's, the direction of an axis. The
// part comes out as it was, or it is told.
#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <GC_MakeArcOfCircle.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <cmath>
#include <gp_Elips.hxx>
#include <regex>

#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/mass.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

/// The axes that a shape's representation names for itself turn the whole of it, so where it lies is left
/// out.
struct Size {
    double x = 0, y = 0, z = 0, volume = 0;

    bool Is(const Size& other) const {
        return std::abs(x - other.x) < 0.01 && std::abs(y - other.y) < 0.01 && std::abs(z - other.z) < 0.01 &&
               std::abs(volume - other.volume) < 1e-3 * std::abs(other.volume);
    }
};

class StepSenses : public StepInput {
  protected:
    static TopoDS_Shape Solid(const TopoDS_Shape& shape) {
        return TopExp_Explorer(shape, TopAbs_SOLID).Current();
    }

    static TopoDS_Shape Without(const TopoDS_Shape& body, const TopoDS_Shape& tool) {
        return Solid(BRepAlgoAPI_Cut(body, tool).Shape());
    }

    /// A board with one round end.
    static TopoDS_Shape RoundEnd() {
        BRepBuilderAPI_MakeWire wire;
        wire.Add(BRepBuilderAPI_MakeEdge(gp_Pnt(0, -50, 0), gp_Pnt(200, -50, 0)));
        wire.Add(BRepBuilderAPI_MakeEdge(
            GC_MakeArcOfCircle(gp_Pnt(200, -50, 0), gp_Pnt(250, 0, 0), gp_Pnt(200, 50, 0)).Value()));
        wire.Add(BRepBuilderAPI_MakeEdge(gp_Pnt(200, 50, 0), gp_Pnt(0, 50, 0)));
        wire.Add(BRepBuilderAPI_MakeEdge(gp_Pnt(0, 50, 0), gp_Pnt(0, -50, 0)));
        return BRepPrimAPI_MakePrism(BRepBuilderAPI_MakeFace(wire.Wire()).Face(), gp_Vec(0, 0, 18)).Shape();
    }

    static std::vector<TopoDS_Shape> Bodies() {
        const TopoDS_Shape board = BRepPrimAPI_MakeBox(60., 40., 18.).Shape();
        const TopoDS_Shape rod = BRepPrimAPI_MakeCylinder(20, 100).Shape();
        return {RoundEnd(),
                rod,
                BRepPrimAPI_MakeCone(20, 10, 60).Shape(),
                BRepPrimAPI_MakeTorus(40, 8).Shape(),
                BRepPrimAPI_MakeTorus(40, 8, std::acos(0.)).Shape(),
                Without(rod, BRepPrimAPI_MakeBox(gp_Pnt(8, -50, -1), gp_Pnt(50, 50, 101)).Shape()),
                Without(board, BRepPrimAPI_MakeSphere(gp_Pnt(20, 20, 30), 20).Shape()),
                Without(board, BRepPrimAPI_MakeSphere(gp_Pnt(0, 0, 18), 12).Shape())};
    }

    /// Nothing where the reader has told of a loss, or refused.
    std::optional<Size> SizeOf(const std::string& content) const {
        Put(content);
        try {
            const StepDocument document = ReadStep(mPath);
            for (const StepNote& note : document.notes)
                if (note.lost) return std::nullopt;
            if (document.solids.size() != 1) return Size{};
            const TopoDS_Shape& shape = document.solids[0].shape;
            const solids::Box box = solids::ExactBox(shape);
            return Size{box.SizeX(), box.SizeY(), box.SizeZ(), solids::Volume(shape)};
        } catch (const Failure&) {
            return std::nullopt;
        }
    }

    /// Every way of turning one sign of the shapes' statements.
    static std::vector<std::string> Turned(const std::string& content) {
        std::vector<std::string> all;
        static const std::regex flag(
            R"((?:ORIENTED_EDGE|EDGE_CURVE|FACE_BOUND|FACE_OUTER_BOUND|ADVANCED_FACE)\([^;]*\.([TF])\.\);)");
        for (std::sregex_iterator it(content.begin(), content.end(), flag), end; it != end; ++it) {
            std::string one = content;
            char& letter = one[static_cast<std::size_t>(it->position(1))];
            letter = letter == 'T' ? 'F' : 'T';
            all.push_back(one);
        }
        static const std::regex direction(R"(DIRECTION\('',\(([^,()]*),([^,()]*),([^,()]*)\)\);)");
        for (std::sregex_iterator it(content.begin(), content.end(), direction), end; it != end; ++it) {
            std::string turned;
            for (std::size_t axis = 1; axis <= 3; ++axis) {
                const std::string number = (*it)[axis].str();
                turned += (axis > 1 ? "," : "") + (number.starts_with('-') ? number.substr(1) : "-" + number);
            }
            std::string one = content;
            one.replace(static_cast<std::size_t>(it->position(1)),
                        static_cast<std::size_t>(it->position(3) + it->length(3) - it->position(1)), turned);
            all.push_back(one);
        }
        return all;
    }
};

TEST_F(StepSenses, ATurnedSignIsToldOrChangesNothing) {
    int body = 0;
    for (const TopoDS_Shape& shape : Bodies()) {
        ++body;
        WriteStep(mPath, std::vector<StepSolid>{{shape, "Part", "", "", std::nullopt}});
        std::string content = Content();
        // Statements that run over several lines are hard to search.
        content = std::regex_replace(content, std::regex("\n {2,}"), "");
        const std::optional<Size> whole = SizeOf(content);
        ASSERT_TRUE(whole) << "body " << body << " is told as it is";
        const std::vector<std::string> turned = Turned(content);
        EXPECT_GE(turned.size(), 10U);
        for (std::size_t i = 0; i < turned.size(); ++i) {
            const std::optional<Size> size = SizeOf(turned[i]);
            EXPECT_TRUE(!size || size->Is(*whole)) << "body " << body << ", sign " << i;
        }
    }
}

TEST_F(StepSenses, AnArcThatTakesTheLongWayIsToldWithItsFace) {
    WriteStep(mPath, std::vector<StepSolid>{{RoundEnd(), "Top", "", "", std::nullopt}});
    const std::string good = Content();
    int told = 0;
    for (const std::string& content : Turned(good)) {
        Put(content);
        const StepDocument document = ReadStep(mPath);
        if (NotesOf(document).find("do not come back around its surface") == std::string::npos) continue;
        ++told;
        ExpectMentions(NotesOf(document), "part \"Top\": the face #");
    }
    EXPECT_EQ(told, 4) << "the two arcs' senses and the axes of their circles";
}

TEST_F(StepSenses, ExtrudedEllipsesAreSoundHoweverTheyStand) {
    const gp_Vec straight(0, 0, 30), slanted(10, 5, 30);
    for (const gp_Vec& along : {straight, slanted})
        for (const double turn : {0., 0.7, 3.}) {
            gp_Ax2 place(gp_Pnt(225, 200, 0), gp::DZ());
            place.Rotate(gp_Ax1(gp::Origin(), gp::DY()), turn / 3);
            place.Rotate(gp_Ax1(gp::Origin(), gp::DZ()), turn);
            const TopoDS_Edge whole = BRepBuilderAPI_MakeEdge(gp_Elips(place, 50, 15));
            const TopoDS_Face face = BRepBuilderAPI_MakeFace(BRepBuilderAPI_MakeWire(whole).Wire());
            const TopoDS_Shape post = BRepPrimAPI_MakePrism(face, along).Shape();
            WriteStep(mPath, std::vector<StepSolid>{{post, "Post", "", "", std::nullopt}});
            const StepDocument document = ReadStep(mPath);
            ASSERT_EQ(document.solids.size(), 1U);
            EXPECT_EQ(NotesOf(document), "") << turn;
            EXPECT_NEAR(solids::Volume(document.solids[0].shape), solids::Volume(post), 1e-3);
        }
}

TEST_F(StepSenses, AnEdgeBesideAnExtrudedEllipseIsTold) {
    const TopoDS_Edge whole =
        BRepBuilderAPI_MakeEdge(gp_Elips(gp_Ax2(gp_Pnt(225, 200, 0), gp::DZ()), 50, 15));
    const TopoDS_Face face = BRepBuilderAPI_MakeFace(BRepBuilderAPI_MakeWire(whole).Wire());
    WriteStep(mPath, std::vector<StepSolid>{{BRepPrimAPI_MakePrism(face, gp_Vec(0, 0, 30)).Shape(), "Post",
                                             "", "", std::nullopt}});
    std::string content = Content();
    // The curve that is extruded gets another width than the edges around it.
    const std::string mark = "SURFACE_OF_LINEAR_EXTRUSION('',";
    const std::size_t at = content.find(mark);
    ASSERT_NE(at, std::string::npos);
    const std::size_t start = at + mark.size(), end = content.find(',', start);
    const std::string curve = content.substr(start, end - start);
    const std::size_t ellipse = content.find(curve + " = ELLIPSE(");
    ASSERT_NE(ellipse, std::string::npos);
    const std::string values = content.substr(ellipse, content.find(';', ellipse) - ellipse);
    const std::size_t narrow = values.rfind(",15.");
    ASSERT_NE(narrow, std::string::npos);
    std::string other = values;
    other.replace(narrow, 4, ",16.");
    other.replace(0, curve.size(), "#900001");
    content.replace(start, curve.size(), "#900001");
    ExpectMentions(NotesOf(Read(WithData(content, other + ";\n"))), "does not lie on its surface");
}

}  // namespace
}  // namespace brenvik::step
