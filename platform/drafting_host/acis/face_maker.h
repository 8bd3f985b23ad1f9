// The last step of reading: vertices, edges and faces of the modeller from settled plans, sharing what
// the records share. Nothing is sewn by distance.
#pragma once

#include "drafting_host/acis/face_plan.h"

#include <TopoDS_Face.hxx>

#include <vector>

namespace brenvik::acis {

/// Makes the shapes of all vertices and edges. Call once, after PlanFaces.
void MakeEdges(Nodes& nodes);

/// One face, or several where a flat face consists of separate areas.
struct MadeFaces {
    std::vector<TopoDS_Face> faces;
    double flux = 0;  ///< Share in three times the volume of the shell, about the place of the first vertex.
};

/// Makes the face of one plan. Throws BadRecord.
MadeFaces MakeFaces(const FacePlan& face, Nodes& nodes);

/// Widens the vertices to the tolerance of their edges; call when all faces are made.
void SettleTolerances(const Nodes& nodes);

}  // namespace brenvik::acis
