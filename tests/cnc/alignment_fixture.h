// Parts for the tests of laying flat, and a way to see where a part lies afterwards.
#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <vector>

#include "cnc/cnc_fixture.h"
#include "cnc/laying/alignment.h"
#include "cnc/laying/orientation.h"
#include "cnc/part/run_state.h"

namespace brenvik {

/// A way to lay a part anywhere: turns about three axes in degrees, then a move.
struct Pose {
    double aboutX = 0, aboutY = 0, aboutZ = 0;
    Point3 to;
};

inline constexpr auto poses = std::to_array<Pose>({
    {0, 0, 0, {0, 0, 0}},
    {0, 0, 0, {-1234.5, 77.125, 900}},
    {90, 0, 0, {10, 20, 30}},
    {180, 0, 90, {0, -500, 0}},
    {0, 90, 0, {0, 0, -7}},
    {37.5, 0, 0, {100, 0, 0}},
    {11, 23, 47, {4000, -3000, 2000}},
    {-71.3, 158.9, -12.7, {-0.3, 0.7, 12345.678}},
});

class AlignmentTest : public CncTest {
  protected:
    AlignmentTest() { files.MakeFolder(OutputFolder); }

    /// A prism: the outline in XY, counter-clockwise, raised along Z.
    Acad3DSolid& Prism(std::span<const double> outline, double height) {
        AcadLWPolyline* polyline = document.ModelSpace().AddLightWeightPolyline(outline);
        polyline->SetClosed(true);
        AcadEntity* curve = polyline;
        AcadRegion* region = document.ModelSpace().AddRegion(std::span(&curve, 1)).front();
        Acad3DSolid* solid = document.ModelSpace().AddExtrudedSolid(*region, height, 0);
        polyline->Delete();
        region->Delete();
        GivePartData(*solid, "Prism");
        return *solid;
    }
    /// A rail of 600 with both ends at 45 degrees, as in a picture frame.
    Acad3DSolid& MitredRail() { return Prism(std::to_array<double>({0, 0, 600, 0, 530, 70, 70, 70}), 20); }
    /// A rail of 600 with one long edge bevelled at 45 degrees, as at the corner of a box.
    Acad3DSolid& BevelledRail() { return Prism(std::to_array<double>({0, 0, 100, 0, 80, 20, 0, 20}), 600); }
    /// A wedge: its slope is the largest face, and nothing lies against it.
    Acad3DSolid& Wedge() { return Prism(std::to_array<double>({0, 0, 300, 0, 0, 100}), 600); }
    /// Two crossing cylinders have what is in both of them: round all over, and not a straight edge.
    Acad3DSolid& NothingFlat(double degrees = 90) {
        AcadBlock& space = document.ModelSpace();
        Acad3DSolid* solid = space.AddCylinder({0, 0, 0}, 50, 300);
        Acad3DSolid* other = space.AddCylinder({0, 0, 0}, 50, 300);
        other->Rotate3D({0, 0, 0}, {1, 0, 0}, degrees * std::numbers::pi / 180);
        solid->Boolean(BooleanKind::Intersection, *other);
        GivePartData(*solid, "Cushion");
        return *solid;
    }
    Acad3DSolid& Disc() {
        Acad3DSolid* solid = document.ModelSpace().AddCylinder({0, 0, 10}, 200, 20);
        GivePartData(*solid, "Disc");
        return *solid;
    }
    /// What two upright cylinders share: two straight edges that no other straight edge meets.
    Acad3DSolid& Lens() {
        AcadBlock& space = document.ModelSpace();
        Acad3DSolid* solid = space.AddCylinder({0, 0, 0}, 100, 300);
        solid->Boolean(BooleanKind::Intersection, *space.AddCylinder({120, 0, 0}, 100, 300));
        GivePartData(*solid, "Lens");
        return *solid;
    }

    /// The drawing of one part, opened as a run opens it.
    HostDocument& OpenAsPart(Acad3DSolid& solid) {
        AcadEntity* entity = &solid;
        AcadSelectionSet& one = FreshSet(document, "EXPORTSET");
        one.AddItems(std::span(&entity, 1));
        document.Wblock("c:\\BV-DXF\\Part_0.dwg", one);
        return dynamic_cast<HostDocument&>(*host.Documents().Open("c:\\BV-DXF\\Part_0.dwg"));
    }
    PassOutcome Align(Acad3DSolid& solid) {
        run = RunOn(OpenAsPart(solid));
        return AlignPart(run);
    }
    PassOutcome AlignAt(Acad3DSolid& solid, const Pose& pose) {
        Lay(solid, pose.aboutX, pose.aboutY, pose.aboutZ, pose.to);
        return Align(solid);
    }
    Box3 PartBox() { return LastSolid(*run.part.drawing).GetBoundingBox(); }
    /// The one region on a layer.
    AcadRegion& RegionOn(std::string_view layer) {
        const std::vector<AcadRegion*> found = AllOn<AcadRegion>(*run.part.drawing, layer);
        if (found.size() != 1) throw Failure(0, "test", "one region was expected on " + std::string(layer));
        return *found.front();
    }

    RunState run;
};

inline void ExpectPoint(const Point3& is, const Point3& wanted, double tolerance = 1e-7) {
    EXPECT_NEAR(is.x, wanted.x, tolerance);
    EXPECT_NEAR(is.y, wanted.y, tolerance);
    EXPECT_NEAR(is.z, wanted.z, tolerance);
}

}  // namespace brenvik
