// The boundary of a face as ACIS wants it: loops without seams and without the lines that a pole or an
// apex is spread to.
#pragma once

#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>

#include <string>
#include <vector>

namespace brenvik::acis {

/// The loops of a face. Edges are oriented so that the face lies to their left, seen from its outside.
struct FaceLoops {
    std::vector<std::vector<TopoDS_Edge>> loops;
    std::vector<TopoDS_Vertex> spreadPoints;  ///< Apexes and poles that no edge of the face ends in.
};

/// An edge of a free face in two guises: as seen from the outside of the face, and as it lies in the face
/// turned forward, which distinguishes the two sides of a seam.
struct FreeUse {
    TopoDS_Edge edge, inFace;
};

/// The loops of a face on a free surface, whose seams are edges like any other. The order is that of the
/// walk. Throws WriteFailure for a wire that is torn.
std::vector<std::vector<FreeUse>> FreeLoopsOf(const TopoDS_Face& face, const std::string& name);

/// Takes a face's wires apart. Loops on a face that goes all the way round come out one by one. Throws
/// WriteFailure for a wire that is torn; `name` names the face in it.
FaceLoops LoopsOf(const TopoDS_Face& face, const std::string& name);

}  // namespace brenvik::acis
