// Tools are solids of their own that the host subtracts from the board. They stand out of the board by an
// allowance, since a tool that ends exactly in the board's face leaves it to rounding whether a skin stays.
#include "sample/workpiece.h"

#include <array>
#include <cmath>
#include <numbers>

namespace brenvik::app {

namespace {

constexpr double Allowance = 1;

Acad3DSolid* AddBoxByCorners(AcadBlock& space, const Point3& min, const Point3& max) {
    const Point3 center{(min.x + max.x) / 2, (min.y + max.y) / 2, (min.z + max.z) / 2};
    return space.AddBox(center, max.x - min.x, max.y - min.y, max.z - min.z);
}

double& Along(Point3& point, Axis axis) {
    switch (axis) {
        case Axis::X:
            return point.x;
        case Axis::Y:
            return point.y;
        case Axis::Z:
            return point.z;
    }
    return point.x;
}

}  // namespace

Workpiece::Workpiece(AcadBlock& modelSpace, const Point3& min, const Point3& max, std::string_view layer)
    : mSpace(modelSpace), mSolid(AddBoxByCorners(modelSpace, min, max)) {
    mSolid->SetLayer(layer);
}

void Workpiece::Cut(const Point3& min, const Point3& max) {
    mSolid->Boolean(BooleanKind::Subtraction, *AddBoxByCorners(mSpace, min, max));
}

void Workpiece::Drill(const Point3& mouth, Axis axis, double depth, double diameter) {
    const double outside = depth > 0 ? -Allowance : Allowance;
    const double length = std::abs(depth) + Allowance;
    Point3 center = mouth;
    Along(center, axis) += (depth + outside) / 2;
    Acad3DSolid* bit = mSpace.AddCylinder(center, diameter / 2, length);
    if (axis != Axis::Z) {
        // A cylinder is made upright; a quarter turn about the other level axis lays it down.
        Point3 second = center;
        Along(second, axis == Axis::X ? Axis::Y : Axis::X) += 1;
        bit->Rotate3D(center, second, std::numbers::pi / 2);
    }
    mSolid->Boolean(BooleanKind::Subtraction, *bit);
}

void Workpiece::CutRoundedWindow(const Point3& min, const Point3& max, double r) {
    const double bottom = min.z, top = max.z;
    // The rectangle is drawn level, X as X and Z as Y, counter-clockwise, and then set upright.
    const std::array<double, 16> corners{min.x + r, bottom,  max.x - r, bottom,    max.x,     bottom + r,
                                         max.x,     top - r, max.x - r, top,       min.x + r, top,
                                         min.x,     top - r, min.x,     bottom + r};
    AcadLWPolyline* outline = mSpace.AddLightWeightPolyline(corners);
    outline->SetClosed(true);
    // A quarter circle has the bulge tan(90 / 4 degrees).
    const double quarter = std::tan(std::numbers::pi / 8);
    for (const int corner : {1, 3, 5, 7}) outline->SetBulge(corner, quarter);
    AcadEntity* curve = outline;
    const std::vector<AcadRegion*> regions = mSpace.AddRegion(std::span(&curve, 1));
    Acad3DSolid* tool = mSpace.AddExtrudedSolid(*regions.at(0), max.y - min.y + 2 * Allowance, 0);
    regions[0]->Delete();
    outline->Delete();
    tool->Rotate3D({0, 0, 0}, {1, 0, 0}, std::numbers::pi / 2);
    // Upright, the extrusion runs towards smaller Y from 0.
    tool->Move({0, 0, 0}, {0, max.y + Allowance, 0});
    mSolid->Boolean(BooleanKind::Subtraction, *tool);
}

void Workpiece::TurnUpright(const Point3& base, double degrees) {
    mSolid->Rotate(base, degrees * std::numbers::pi / 180);
}

}  // namespace brenvik::app
