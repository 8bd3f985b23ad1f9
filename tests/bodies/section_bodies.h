// Bodies that a section makes: lofted, swept along a path, wound to a thread, turned, pushed out.
#pragma once

#include <TopoDS_Shape.hxx>
#include <gp_Dir.hxx>

#include "made_bodies.h"

namespace brenvik::acis::testing {

/// One body less another.
TopoDS_Shape Without(const TopoDS_Shape& part, const TopoDS_Shape& tool);

/// A direction into the upper half of space, and one that leans off the upright by up to `lean` in X and in
/// Y.
gp_Dir Somewhere(Dice& dice);
gp_Dir Upward(Dice& dice, double lean);

TopoDS_Shape Loft(Dice& dice);
TopoDS_Shape MixedLoft(Dice& dice);
TopoDS_Shape Sweep(Dice& dice);
TopoDS_Shape SweptShell(Dice& dice);
TopoDS_Shape BentBar(Dice& dice);
TopoDS_Shape Thread(Dice& dice);
TopoDS_Shape TurnedLeg(Dice& dice);
TopoDS_Shape TurnedArc(Dice& dice);
TopoDS_Shape TurnedEllipse(Dice& dice);
TopoDS_Shape Moulding(Dice& dice);
TopoDS_Shape RoundExtrusion(Dice& dice);
TopoDS_Shape DrilledMoulding(Dice& dice);

}  // namespace brenvik::acis::testing
