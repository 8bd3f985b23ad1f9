// Points between the drawing and the modeller.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <gp_Dir.hxx>
#include <gp_Pnt.hxx>
#include <gp_XYZ.hxx>

#include "session/ports/host_interface.h"

namespace brenvik {

inline gp_Pnt ToModeller(const Point3& p) { return {p.x, p.y, p.z}; }

inline Point3 FromModeller(const gp_XYZ& p) { return {p.X(), p.Y(), p.Z()}; }
inline Point3 FromModeller(const gp_Pnt& p) { return FromModeller(p.XYZ()); }
/// Without negative zeros, so that texts of a normal never show "-0".
inline Point3 FromModeller(const gp_Dir& d) { return {d.X() + 0.0, d.Y() + 0.0, d.Z() + 0.0}; }

}  // namespace brenvik
