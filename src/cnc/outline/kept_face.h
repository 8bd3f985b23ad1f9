// The boundary of the face that a part rests on, brought together on `Border` for the join.
#pragma once

namespace brenvik {

struct RunState;

/// Draws the boundary of the kept face on `Border`: its lines themselves, and for each of its arcs the
/// projected one on `arcPV` that is its twin, or a new one where the projection has none. Other arcs of the
/// projection belong to features that stop inside the part or to other faces, and stay where they are: they
/// would close rings of their own, or lead a chain astray. Notes curves that are neither straight nor round.
///
/// Deletes what the recognisers have left behind in between: circles about the vertical on `RegionCopy`,
/// `circleHold` and `circlePV`, and all arcs that look down.
void DrawKeptFace(RunState& run);

}  // namespace brenvik
