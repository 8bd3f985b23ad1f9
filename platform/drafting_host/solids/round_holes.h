// Plain round holes in solids and round openings in flat faces, taken out before dear work on a shape and put
// back in by formula: what the modeller never sees it needs no time for.
#pragma once

#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <TopoDS_Wire.hxx>
#include <functional>
#include <gp_Circ.hxx>
#include <gp_Dir.hxx>
#include <gp_Pnt.hxx>
#include <span>
#include <vector>

namespace brenvik::solids {

/// A round hole between two flat faces square to it. An end that isn't open is a flat floor.
struct RoundHole {
    gp_Pnt from, to;  ///< On the axis, at the two ends.
    double radius = 0;
    bool openFrom = false, openTo = false;

    gp_Dir Axis() const { return {gp_Vec(from, to)}; }
};

struct PluggedSolid {
    TopoDS_Shape shape;  ///< The solid as it came where no hole was filled.
    std::vector<RoundHole> holes;
};

/// The solid with those of its plain holes filled that are `wanted`. Holes that meet anything else than the
/// faces at their ends stay, as do all those of a shape of several bodies.
PluggedSolid PlugRoundHoles(const TopoDS_Shape& solid, const std::function<bool(const RoundHole&)>& wanted);

struct RoundOpening {
    gp_Pnt center;
    double radius = 0;
};

/// Whether a wire of one circle is an opening of its face, and not its outside. False for the only wire.
bool IsOpening(const TopoDS_Wire& wire, const TopoDS_Face& face, const gp_Circ& circle);

/// The faces, all in one plane, with these openings; each has to lie wholly inside one of them. Throws
/// Failure where one doesn't.
TopoDS_Shape WithOpenings(const TopoDS_Shape& faces, std::span<const RoundOpening> openings);

/// Two level regions that are about to be united, without the round openings whose lot is plain.
struct ClosedRegions {
    TopoDS_Shape shape, tool;
    std::vector<RoundOpening> kept;  ///< The openings that the union has.
};

/// Takes out the openings that both regions have, and those that the other region covers or doesn't reach.
ClosedRegions CloseRoundOpenings(const TopoDS_Shape& shape, const TopoDS_Shape& tool);

}  // namespace brenvik::solids
