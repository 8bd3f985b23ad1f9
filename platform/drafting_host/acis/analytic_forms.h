// The modeller's surfaces and curves as the analytic kinds that ACIS text of version 400 knows, taken
// out of trims, extrusions and revolutions where these are such kinds exactly.
#pragma once

#include "drafting_host/acis/sat_model.h"

#include <Geom_Curve.hxx>
#include <Geom_Surface.hxx>

#include <optional>

namespace brenvik::acis {

/// The record of a surface, its outside away from its axis or centre. Empty for other surfaces.
std::optional<SurfaceRecord> AnalyticSurface(const Handle(Geom_Surface) & surface);

/// The outside of a record's analytic surface at a point on it; of any length above 0.
gp_XYZ Outside(const SurfaceRecord& surface, const gp_XYZ& point);

/// A record's cone is one half of a double cone. Moves its base to where the point is if that lies on the
/// other half.
void PutOnNappe(ConeRecord& cone, const gp_XYZ& point);

/// The record of a curve, running the way of its parameter. Empty for other curves.
std::optional<CurveRecord> AnalyticCurve(const Handle(Geom_Curve) & curve);

/// The kind of a surface or curve in words, for messages.
std::string KindName(const Handle(Standard_Transient) & geometry);

}  // namespace brenvik::acis
