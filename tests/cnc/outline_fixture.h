// A part that lies as the sorting of edges leaves it: the solid on `SolidHold`, the kept face's boundary on
// `RegionCopy`, looking down, and the arcs of the projection on `ArcPV`.
#pragma once

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "cnc/cnc_fixture.h"
#include "cnc/part/run_state.h"

namespace brenvik {

/// A corner of a plane shape and the bulge of the side that begins there.
struct Corner {
    double x = 0, y = 0, bulge = 0;
};

/// A quarter and a half of a full turn.
inline const double Quarter = std::tan(std::numbers::pi / 8), Half = 1;

inline std::vector<Corner> Rectangle(double left, double front, double right, double back) {
    return {{left, front}, {right, front}, {right, back}, {left, back}};
}

inline std::vector<Corner> RoundedRectangle(double left, double front, double right, double back, double r) {
    return {{left + r, front}, {right - r, front, Quarter}, {right, front + r}, {right, back - r, Quarter},
            {right - r, back}, {left + r, back, Quarter},   {left, back - r},   {left, front + r, Quarter}};
}

class OutlineTest : public CncTest {
  protected:
    AcadBlock& Model() { return document.ModelSpace(); }

    /// A body with upright walls between two heights.
    Acad3DSolid& Body(const std::vector<Corner>& shape, double bottom, double top) {
        std::vector<double> flat;
        for (const Corner& corner : shape) flat.insert(flat.end(), {corner.x, corner.y});
        AcadLWPolyline* polyline = Model().AddLightWeightPolyline(flat);
        polyline->SetClosed(true);
        for (std::size_t i = 0; i < shape.size(); ++i)
            polyline->SetBulge(static_cast<int>(i), shape[i].bulge);
        polyline->SetElevation(bottom);
        const std::array<AcadEntity*, 1> curves{polyline};
        AcadRegion* region = Model().AddRegion(curves).front();
        const double height = region->Normal().z < 0 ? bottom - top : top - bottom;
        Acad3DSolid* solid = Model().AddExtrudedSolid(*region, height, 0);
        region->Delete();
        polyline->Delete();
        return *solid;
    }
    /// A body that is the same all along X: its outline in Y and Z.
    Acad3DSolid& AlongX(const std::vector<std::pair<double, double>>& outline, double length) {
        std::vector<AcadEntity*> curves;
        for (std::size_t i = 0; i < outline.size(); ++i) {
            const auto& [y, z] = outline[i];
            const auto& [nextY, nextZ] = outline[(i + 1) % outline.size()];
            curves.push_back(Model().AddLine({0, y, z}, {0, nextY, nextZ}));
        }
        AcadRegion* region = Model().AddRegion(curves).front();
        Acad3DSolid* solid = Model().AddExtrudedSolid(*region, region->Normal().x < 0 ? -length : length, 0);
        region->Delete();
        for (AcadEntity* curve : curves) curve->Delete();
        return *solid;
    }
    static void Take(Acad3DSolid& part, Acad3DSolid& tool) { part.Boolean(BooleanKind::Subtraction, tool); }
    static void Unite(Acad3DSolid& part, Acad3DSolid& other) { part.Boolean(BooleanKind::Union, other); }

    /// The state of a run whose part is this solid, up to the outline.
    RunState Sorted(Acad3DSolid& solid, Target target = Target::C2C) {
        RunState run = RunOn(document, target);
        const Box3 box = solid.GetBoundingBox();
        run.part.PartThickness = box.max.z;
        run.part.PartVolume = solid.Volume();
        run.part.DimT = NumberToText(run.part.PartThickness);
        run.part.MaterialName = "OAK";
        run.part.MaterialKeyText = MaterialKey(run.part.PartThickness, "OAK", run.part.ExportScaleSetting);
        LookupMaterial(run.part.MaterialKeyText, run.part.Material);
        for (const std::string_view layer :
             {layers::RegionCopy, layers::CircleHold, layers::ArcPv, layers::SolidHold, layers::Border,
              layers::RoutingLayer1, layers::RoutingLayer2, layers::ThroughRouteCirclePv})
            AddLayer(document, layer);
        DrawKeptFaceOf(solid);
        solid.SetLayer(layers::SolidHold);
        return run;
    }
    /// The face at the bottom, as exploding it leaves it, and its arcs as the projection shows them.
    void DrawKeptFaceOf(Acad3DSolid& solid) {
        AcadRegion* face = solid.SectionSolid({0, 0, 0}, {0, 1, 0}, {1, 0, 0});
        ASSERT_EQ(face->Normal().z, -1);
        std::vector<AcadEntity*> pieces = face->Explode();
        face->Delete();
        for (AcadEntity* piece : pieces) {
            piece->SetLayer(layers::RegionCopy);
            if (const auto* arc = dynamic_cast<const AcadArc*>(piece))
                Project(arc->Center(), arc->Radius(), arc->EndPoint(), arc->StartPoint());
        }
    }
    /// An arc of the projection, counter-clockwise from one end to the other.
    void Project(const Point3& center, double radius, const Point3& from, const Point3& to) {
        AcadArc* arc =
            Model().AddArc({center.x, center.y, 0}, radius, std::atan2(from.y - center.y, from.x - center.x),
                           std::atan2(to.y - center.y, to.x - center.x));
        arc->SetLayer(layers::ArcPv);
    }
    /// The arcs of a shape as the projection shows them.
    void Project(const std::vector<Corner>& shape) {
        for (std::size_t i = 0; i < shape.size(); ++i) {
            const Corner &from = shape[i], &to = shape[(i + 1) % shape.size()];
            if (from.bulge == 0) continue;
            const double dx = to.x - from.x, dy = to.y - from.y;
            const double off = (1 - from.bulge * from.bulge) / (4 * from.bulge);
            const Point3 center{(from.x + to.x) / 2 - dy * off, (from.y + to.y) / 2 + dx * off, 0};
            Project(center, std::hypot(from.x - center.x, from.y - center.y), {from.x, from.y, 0},
                    {to.x, to.y, 0});
        }
    }
    std::vector<Drawn> On(std::string_view prefix) { return OnLayers(DrawnIn(document), prefix); }
    /// The outside profile, which every part here has exactly one of.
    Drawn Profile() {
        const std::vector<Drawn> found = On("OT_");
        EXPECT_EQ(found.size(), 1U);
        return found.empty() ? Drawn{} : found.front();
    }
};

/// Twice the signed area of the chords: positive for a path that runs counter-clockwise.
inline double Turning(const Drawn& path) {
    double sum = 0;
    for (std::size_t i = 0; i < path.points.size(); ++i) {
        const Point3 &a = path.points[i], &b = path.points[(i + 1) % path.points.size()];
        sum += a.x * b.y - b.x * a.y;
    }
    return sum;
}

/// The corners as a set, each rounded to thousandths.
inline std::set<std::pair<double, double>> CornersOf(const Drawn& path) {
    std::set<std::pair<double, double>> corners;
    for (const Point3& point : path.points)
        corners.emplace(std::round(point.x * 1000) / 1000, std::round(point.y * 1000) / 1000);
    return corners;
}

inline std::set<std::pair<double, double>> CornersOf(const std::vector<Corner>& shape) {
    std::set<std::pair<double, double>> corners;
    for (const Corner& corner : shape) corners.emplace(corner.x, corner.y);
    return corners;
}

inline std::size_t BulgesOf(const Drawn& path) {
    return static_cast<std::size_t>(
        std::ranges::count_if(path.bulges, [](double bulge) { return bulge != 0; }));
}

}  // namespace brenvik
