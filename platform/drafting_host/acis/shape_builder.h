// One body record with everything that hangs on it, made into a shape.
#pragma once

#include "drafting_host/acis/sat_model.h"

#include <TopoDS_Shape.hxx>

#include <vector>

namespace brenvik::acis {

/// A body, and the notes on how it was made.
struct BuiltBody {
    TopoDS_Shape shape;  ///< Null for a body with nothing in it.
    std::vector<Problem> remarks;
};

/// Builds the body at `index`. `budget` is the number of records that may still be walked through for all
/// bodies of the text together, since a damaged text can lead many bodies through the same records. Throws
/// BadRecord naming the record that is missing, damaged or of a kind that is not read; failures of the
/// modeller come as BadRecord too.
BuiltBody BuildBody(const Model& model, long index, std::size_t& budget);

}  // namespace brenvik::acis
