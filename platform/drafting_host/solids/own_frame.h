// The frame that a part's extents are taken along: a board's own directions, or the smallest box where
// it has no flat face to go by.
#pragma once

#include <TopoDS_Shape.hxx>
#include <array>
#include <gp_XYZ.hxx>
#include <vector>

#include "drafting_host/solids/flat_face.h"
#include "drafting_host/solids/support.h"

namespace brenvik::solids {

/// Three unit directions at right angles, the part's sizes along them in drawing units.
struct MeasuredFrame {
    std::array<gp_XYZ, 3> axes;
    std::array<double, 3> sizes;

    double BoxVolume() const { return sizes[0] * sizes[1] * sizes[2]; }
    /// True when every direction lies along a world axis.
    bool AlongWorld() const;
};

/// The world's own frame.
MeasuredFrame WorldFrame(const Support& support);

/// The frame of the largest flat face and its longest straight run, or of the smallest rectangle in its
/// plane. `flats` must not be empty.
MeasuredFrame FlatFrame(const Support& support, const std::vector<FlatFace>& flats);

/// Directions of the axes that the turned faces of the shape run about: cylinders, cones, tori, turned
/// profiles.
std::vector<gp_XYZ> TurningAxes(const TopoDS_Shape& shape);

/// The smallest box of a part without flat faces: about the axis of its largest turned face, or at any
/// angle.
MeasuredFrame RoundFrame(const Support& support, const TopoDS_Shape& shape);

}  // namespace brenvik::solids
