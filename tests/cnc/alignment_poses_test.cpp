// Where parts lie when they have been laid flat, from any place and angle and with every order of letters.
#include <map>

#include "cnc/alignment_fixture.h"

namespace brenvik {
namespace {

constexpr auto orders = std::to_array<std::string_view>({"LWT", "LTW", "WLT", "TLW", "WTL", "TWL"});

/// The sizes that the letters put on X, Y and Z; `sizes` are sorted, the largest first.
std::array<double, 3> OnAxes(std::string_view letters, std::array<double, 3> sizes) {
    std::map<char, double> named;
    for (std::size_t i = 0; i < 3; ++i) named[letters[i]] = sizes[i];
    return {named['L'], named['W'], named['T']};
}

struct PartKind {
    const char* name;
    std::array<double, 3> sizes;
    double largestArea;
};

class LaidFlat : public AlignmentTest {
  protected:
    Acad3DSolid& Make(std::string_view name) {
        if (name == "mitred rail") return MitredRail();
        if (name == "bevelled rail") return BevelledRail();
        if (name == "cube") return Board(100, 100, 100).Solid();
        app::Workpiece board = Board(600, 300, 18);
        if (name == "pocket") board.Cut({100, 50, 10}, {200, 150, 18});
        if (name == "notched") {
            board.Cut({0, 0, 0}, {40, 10, 18});
            board.Drill({300, 200, 18}, app::Axis::Z, -12, 35);
        }
        return board.Solid();
    }

    void ExpectLies(const PartKind& kind, std::string_view letters) {
        const Box3 box = PartBox();
        const std::array<double, 3> wanted = OnAxes(letters, kind.sizes);
        ExpectPoint(box.min, {0, 0, 0});
        ExpectPoint(box.max, {wanted[0], wanted[1], wanted[2]});
        EXPECT_EQ(run.part.DimL, NumberToText(wanted[0]));
        EXPECT_EQ(run.part.DimW, NumberToText(wanted[1]));
        EXPECT_EQ(run.part.DimT, NumberToText(wanted[2]));
        const AcadRegion& largest = RegionOn(layers::RegionCopy);
        EXPECT_NEAR(largest.Area(), kind.largestArea, 1e-4);
        const Box3 face = largest.GetBoundingBox();
        EXPECT_NEAR(face.min.z, 0, 1e-7);
        if (letters.back() == 'T' && kind.name != std::string_view("cube")) {
            EXPECT_NEAR(face.max.z, 0, 1e-7);
        }
    }
};

TEST_F(LaidFlat, LengthWidthAndThicknessLieOnXYAndZByTheLettersAndTheLargestFaceDown) {
    const PartKind kinds[] = {
        {"panel", {600, 300, 18}, 600 * 300},
        {"pocket", {600, 300, 18}, 600 * 300},
        {"notched", {600, 300, 18}, 600 * 300 - 400},
        {"cube", {100, 100, 100}, 100 * 100},
        {"mitred rail", {600, 70, 20}, (600 + 460) / 2.0 * 70},
        {"bevelled rail", {600, 100, 20}, 600 * 100},
    };
    for (const PartKind& kind : kinds) {
        for (const std::string_view letters : orders) {
            for (const Pose& pose : poses) {
                SCOPED_TRACE(std::string(kind.name) + " " + std::string(letters) + " turned by " +
                             NumberToText(pose.aboutX) + ", " + NumberToText(pose.aboutY) + ", " +
                             NumberToText(pose.aboutZ));
                Acad3DSolid& solid = Make(kind.name);
                mAutoCAD::SetPartData(&solid, "ORIE", letters);
                ASSERT_EQ(AlignAt(solid, pose), PassOutcome::GoOn);
                ExpectLies(kind, letters);
                run.part.drawing->Close(false);
                host.Activate(document);
                TheSession().AcadDoc = &document;
                solid.Delete();
            }
        }
    }
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(LaidFlat, APartThatLooksAlikeFromNowhereComesOutTheSameFromEveryPose) {
    std::vector<Point3> centroids;
    for (const Pose& pose : poses) {
        app::Workpiece board = Board(600, 300, 18);
        board.Cut({20, 30, 11}, {120, 80, 18});
        board.Drill({550, 20, 18}, app::Axis::Z, -12, 35);
        ASSERT_EQ(AlignAt(board.Solid(), pose), PassOutcome::GoOn);
        centroids.push_back(LastSolid(*run.part.drawing).Centroid());
        run.part.drawing->Close(false);
        TheSession().AcadDoc = &document;
        board.Solid().Delete();
    }
    for (const Point3& centroid : centroids) ExpectPoint(centroid, centroids.front());
}

TEST_F(LaidFlat, ASizeHalfWayBetweenTwoFifthDecimalsMakesNoTurnTooMany) {
    for (const Pose& pose : poses) {
        const double thickness = 47.0 / 64 * 25.4;
        app::Workpiece board = Board(600, 300, thickness);
        ASSERT_EQ(AlignAt(board.Solid(), pose), PassOutcome::GoOn);
        ExpectPoint(PartBox().max, {600, 300, thickness});
        run.part.drawing->Close(false);
        TheSession().AcadDoc = &document;
        board.Solid().Delete();
    }
}

TEST_F(LaidFlat, APocketComesUp) {
    app::Workpiece board = Board(600, 300, 18);
    board.Cut({100, 50, 0}, {200, 150, 8});
    ASSERT_EQ(Align(board.Solid()), PassOutcome::GoOn);
    // The material that is missing is missing above the middle.
    EXPECT_LT(LastSolid(*run.part.drawing).Centroid().z, 9);
    bool floorFound = false;
    for (const AcadLine* line : All<AcadLine>(*run.part.drawing))
        floorFound |= NearlyEqual(line->StartPoint().z, 10) && NearlyEqual(line->EndPoint().z, 10);
    EXPECT_TRUE(floorFound);
}

}  // namespace
}  // namespace brenvik
