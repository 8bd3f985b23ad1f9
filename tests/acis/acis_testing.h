// What the tests of ACIS text share: sample files, bodies out of drawings, and the checks that every
// body read has to pass.
#pragma once

#include "drafting_host/acis/acis_text.h"

#include <TopAbs_ShapeEnum.hxx>
#include <gp_Pnt.hxx>

#include <optional>
#include <string>
#include <vector>

namespace brenvik::acis::testing {

/// The text of a sample file, empty where the samples are absent.
std::optional<std::string> Sample(const std::string& name);

/// The ACIS texts of a drawing in DXF text, in the order of its entities.
std::vector<std::string> TextsInDrawing(const std::string& drawing);

std::string Joined(const std::vector<std::string>& lines);

/// The text of a shape with a transform record of the given fields on its body.
std::string Placed(const TopoDS_Shape& shape, const std::string& transform);

double Volume(const TopoDS_Shape& shape);
double Area(const TopoDS_Shape& shape);
int Count(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind);
/// Places of all vertices where edges meet, each once, sorted. The single vertex of a full circle is left
/// out: it may stand anywhere on it.
std::vector<gp_Pnt> Corners(const TopoDS_Shape& shape);

/// Reads a text that has to be free of problems and hold one valid body; the problems are told as test
/// failures.
TopoDS_Shape ReadOne(const std::string& text);

/// Fails unless the modeller's own checks find nothing.
void ExpectValid(const TopoDS_Shape& shape);

/// Writes and reads a shape and expects the same volume, area, counts and corners. `knownVolume` stands
/// in for the volume of the shape where that is less exact.
TopoDS_Shape ExpectRoundTrip(const TopoDS_Shape& shape, std::optional<double> knownVolume = std::nullopt);

}  // namespace brenvik::acis::testing
