// A part under the hands of a test: a board or an upright body, with holes, recesses and windows of any
// shape, in the unit that the test thinks in.
#pragma once

#include <cmath>
#include <numbers>
#include <span>
#include <utility>
#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

/// A corner of a plane shape; `bulge` bends the side that begins there.
struct ShapeCorner {
    double x = 0, y = 0, bulge = 0;
};
using Shape = std::vector<ShapeCorner>;

inline Shape Rectangle(double left, double front, double right, double back) {
    return {{left, front}, {right, front}, {right, back}, {left, back}};
}
/// A rectangle with quarter rounds, counter-clockwise.
inline Shape Rounded(double left, double front, double right, double back, double r) {
    const double quarter = std::tan(std::numbers::pi / 8);
    return {{left + r, front}, {right - r, front, quarter}, {right, front + r}, {right, back - r, quarter},
            {right - r, back}, {left + r, back, quarter},   {left, back - r},   {left, front + r, quarter}};
}

class MadePart {
  public:
    explicit MadePart(AcadBlock& space) : mSpace(space) {}

    /// Stands with its corner at the origin.
    void Board(double length, double width, double thickness) {
        mThickness = thickness;
        mSolid = mSpace.AddBox({length / 2, width / 2, thickness / 2}, length, width, thickness);
    }
    void Upright(const Shape& shape, double thickness) {
        mThickness = thickness;
        mSolid = Body(shape, 0, thickness);
    }
    /// The same all along X: a section in Y and Z.
    void AlongX(const std::vector<std::pair<double, double>>& section, double length) {
        std::vector<AcadEntity*> sides;
        for (std::size_t i = 0; i < section.size(); ++i) {
            const auto& [y, z] = section[i];
            const auto& [nextY, nextZ] = section[(i + 1) % section.size()];
            sides.push_back(mSpace.AddLine({0, y, z}, {0, nextY, nextZ}));
            mThickness = std::max(mThickness, z);
        }
        AcadRegion* region = mSpace.AddRegion(sides).at(0);
        mSolid = mSpace.AddExtrudedSolid(*region, region->Normal().x < 0 ? -length : length, 0);
        region->Delete();
        for (AcadEntity* side : sides) side->Delete();
    }

    /// An upright recess or window between two heights; it may reach beyond the part.
    void Cut(const Shape& shape, double from, double to) { Subtract(*Body(shape, from, to)); }
    /// From the top down to a floor.
    void Pocket(const Shape& shape, double floor) { Cut(shape, floor, mThickness + Allowance); }
    /// From the underside up to a ceiling.
    void PocketBelow(const Shape& shape, double ceiling) { Cut(shape, -Allowance, ceiling); }
    void Window(const Shape& shape) { Cut(shape, -Allowance, mThickness + Allowance); }
    /// From the top down, `depth` deep; all through without one.
    void Hole(double x, double y, double diameter, double depth = 0) {
        const double length = depth > 0 ? depth : mThickness;
        Drill({x, y, mThickness}, {0, 0, -1}, length, diameter);
        if (depth <= 0) Drill({x, y, 0}, {0, 0, 1}, mThickness / 2, diameter);
    }
    void HoleBelow(double x, double y, double diameter, double depth) {
        Drill({x, y, 0}, {0, 0, 1}, depth, diameter);
    }
    /// From a mouth on the surface along any direction, which needn't be of length 1.
    void Drill(const Point3& mouth, const Point3& along, double depth, double diameter) {
        const double size = std::hypot(along.x, along.y, along.z);
        const Point3 way{along.x / size, along.y / size, along.z / size};
        // Slanted tools have to clear the whole rim.
        const double before = Allowance + (way.x != 0 && way.z != 0 ? diameter : 0);
        const double middle = (depth - before) / 2;
        const Point3 center{mouth.x + way.x * middle, mouth.y + way.y * middle, mouth.z + way.z * middle};
        Acad3DSolid* tool = mSpace.AddCylinder(center, diameter / 2, depth + before);
        // Made upright; turned about the level axis that stands across its way.
        const double across = std::hypot(way.x, way.y);
        if (across > 1e-12)
            tool->Rotate3D(center, {center.x - way.y / across, center.y + way.x / across, center.z},
                           std::atan2(across, way.z));
        Subtract(*tool);
    }
    void Subtract(Acad3DSolid& tool) { mSolid->Boolean(BooleanKind::Subtraction, tool); }
    void Unite(Acad3DSolid& other) { mSolid->Boolean(BooleanKind::Union, other); }

    Acad3DSolid* Body(const Shape& shape, double from, double to) {
        std::vector<double> flat;
        for (const ShapeCorner& corner : shape) flat.insert(flat.end(), {corner.x, corner.y});
        AcadLWPolyline* outline = mSpace.AddLightWeightPolyline(flat);
        outline->SetClosed(true);
        for (std::size_t i = 0; i < shape.size(); ++i) outline->SetBulge(static_cast<int>(i), shape[i].bulge);
        AcadEntity* curve = outline;
        AcadRegion* region = mSpace.AddRegion(std::span(&curve, 1)).at(0);
        const double up = region->Normal().z < 0 ? -1 : 1;
        Acad3DSolid* body = mSpace.AddExtrudedSolid(*region, up * (to - from), 0);
        body->Move({0, 0, 0}, {0, 0, from});
        region->Delete();
        outline->Delete();
        return body;
    }

    Acad3DSolid& Solid() { return *mSolid; }

  private:
    static constexpr double Allowance = 1;

    AcadBlock& mSpace;
    Acad3DSolid* mSolid = nullptr;
    double mThickness = 0;
};

}  // namespace brenvik
