// One body record with everything that hangs on it, made into a shape.
#pragma once

#include "drafting_host/acis/sat_model.h"

#include <TopoDS_Shape.hxx>

#include <vector>

namespace brenvik::acis {

/// A body made, and what has to be told about it.
struct BuiltBody {
    TopoDS_Shape shape;  ///< Null for a body with nothing in it.
    std::vector<Problem> remarks;
};

/// Builds the body at `index`. Throws BadRecord naming the record that is missing, damaged or of a
/// kind that is not read; failures of the modeller come as BadRecord too.
BuiltBody BuildBody(const Model& model, long index);

}  // namespace brenvik::acis
