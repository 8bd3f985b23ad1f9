// What vertical drilling and horizontal boring share: how lengths compare, and how a hole that got no
// operation is told to the operator.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// The same at 6 decimals. Two values that straddle the edge of a rounding step by no more than the
/// modeller's noise count as the same too, so that a part laid at an odd angle gives what a square one does.
bool SameLength(double a, double b);
/// Less, and not the same.
bool Less(double a, double b);
/// A value that is a short decimal but for the modeller's noise becomes that decimal; any other stays as it
/// stands.
double WithoutNoise(double value);

/// Marks the part as one whose other side has to be worked on as well.
void NeedOtherSide(RunState& run);

/// A place of the second pass as the first pass saw it: the part has been turned over about X in between.
Point3 OnFirstSide(const RunState& run, const Box3& part, const Point3& place);

/// Notes a hole that no operation was made for. `kind` is the operator's word for it. A hole that was noted
/// before, from either side, isn't noted again.
void NoteUnexplained(RunState& run, const Box3& part, std::string_view kind, double diameter,
                     const Point3& place);

}  // namespace brenvik
