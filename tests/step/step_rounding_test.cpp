// Planes that stand beside the corners of their faces, by what rounding has taken off their numbers.
#include <BRep_Tool.hxx>
#include <Geom_Plane.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <algorithm>
#include <gp_Pln.hxx>
#include <regex>
#include <string>

#include "drafting_host/solids/exact_box.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

class StepRounding : public StepInput {
  protected:
    /// The point that a placement lies at, by the number of its statement.
    static std::smatch PointOf(const std::string& content, const std::string& placement) {
        std::smatch axes, point;
        std::regex_search(content, axes,
                          std::regex("\\n" + placement + " = AXIS2_PLACEMENT_3D\\('',(#\\d+),"));
        std::regex_search(
            content, point,
            std::regex("\\n" + axes.str(1) + " = CARTESIAN_POINT\\('',\\(([^,]*),([^,]*),([^)]*)\\)"));
        return point;
    }

    /// The content with all planes shifted along all axes.
    static std::string Shifted(std::string content, double distance) {
        const std::regex plane("= PLANE\\('',(#\\d+)\\)");
        const std::string good = content;
        for (std::sregex_iterator at(good.begin(), good.end(), plane), end; at != end; ++at) {
            const std::smatch point = PointOf(content, at->str(1));
            std::string moved = point.str(0).substr(0, point.str(0).rfind('(') + 1);
            for (const int axis : {1, 2, 3}) {
                std::ostringstream number;
                number.precision(15);
                number << std::uppercase << std::showpoint << std::stod(point.str(axis)) + distance;
                moved += number.str() + (axis < 3 ? "," : ")");
            }
            content.replace(static_cast<std::size_t>(point.position(0)), point.str(0).size(), moved);
        }
        EXPECT_NE(content, good);
        return content;
    }

    /// How far a corner lies off a plane of its faces, at most.
    static double FarthestOff(const TopoDS_Shape& shape) {
        double most = 0;
        for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) {
            const auto surface =
                Handle(Geom_Plane)::DownCast(BRep_Tool::Surface(TopoDS::Face(face.Current())));
            for (TopExp_Explorer corner(face.Current(), TopAbs_VERTEX); corner.More(); corner.Next())
                most =
                    std::max(most, surface->Pln().Distance(BRep_Tool::Pnt(TopoDS::Vertex(corner.Current()))));
        }
        return most;
    }
};

TEST_F(StepRounding, PlanesBesideTheirCornersByRoundingComeToLieOnThem) {
    const StepDocument document = Read(Shifted(Good(), 1e-5));
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(NotesOf(document), "");
    EXPECT_LT(FarthestOff(document.solids[0].shape), 1e-12);
    const solids::Box box = solids::ExactBox(document.solids[0].shape);
    EXPECT_NEAR(box.max.X() - box.min.X(), 600, 1e-12);
}

TEST_F(StepRounding, PlanesStayThatLieBesideTheirCornersByMoreOrByTheNoiseOfNumbers) {
    for (const double distance : {1e-3, 1e-10}) {
        const StepDocument document = Read(Shifted(Good(), distance));
        ASSERT_EQ(document.solids.size(), 1U);
        EXPECT_NEAR(FarthestOff(document.solids[0].shape), distance, distance / 100);
    }
}

}  // namespace
}  // namespace brenvik::step
