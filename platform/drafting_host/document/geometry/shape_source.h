// What a body's shape can be made from again, so that it need not stay in memory: it takes more than three
// times the text that it was read from.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <TopoDS_Shape.hxx>
#include <cstddef>
#include <memory>

#include "drafting_host/document/geometry/similarity.h"

namespace brenvik {

class ShapeSource {
  public:
    virtual ~ShapeSource() = default;
    /// The shape, to the last bit the one that was made first. Reports made the first time are not
    /// repeated.
    virtual TopoDS_Shape Make() const = 0;
    /// About how many bytes the shape takes.
    virtual std::size_t ShapeSize() const = 0;
    /// The shape has gone: from now on it takes as little memory as it can.
    virtual void Rest() const {}
};
using ShapeSourcePointer = std::shared_ptr<const ShapeSource>;

/// The source of the moved shape. Null where that has been moved before: who moves a part moves it again, and
/// making it would take ever longer.
ShapeSourcePointer MovedSource(ShapeSourcePointer source, const Similarity& move);

/// Whether anybody else has this shape, or a part of its boundary. `shape` counts as one who has it.
bool IsHeldElsewhere(const TopoDS_Shape& shape);

}  // namespace brenvik
