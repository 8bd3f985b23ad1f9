// Moves are repeated on the shape made anew, in their order: the numbers come out as they did at first.
#include "drafting_host/document/geometry/shape_source.h"

#include <TopoDS_Iterator.hxx>
#include <TopoDS_TShape.hxx>
#include <utility>

#include "drafting_host/document/geometry/host_geometry.h"

namespace brenvik {
namespace {

class MovedShape final : public ShapeSource {
  public:
    MovedShape(ShapeSourcePointer source, const Similarity& move) : mSource(std::move(source)), mMove(move) {}

    TopoDS_Shape Make() const override {
        ShapeData data;
        data.shape = mSource->Make();
        Transform(data, mMove);
        return data.shape;
    }
    std::size_t ShapeSize() const override { return mSource->ShapeSize(); }
    void Rest() const override { mSource->Rest(); }

  private:
    ShapeSourcePointer mSource;
    Similarity mMove;
};

/// Down to the faces: edges and vertices are shared among these anyway. Nobody has a face's edge and goes on
/// to compare it with those of the body.
bool HasOtherHolders(const TopoDS_Shape& shape, int ownHolders) {
    if (shape.TShape()->GetRefCount() > ownHolders) return true;
    if (shape.ShapeType() >= TopAbs_FACE) return false;
    constexpr int parentAndIterator = 2;
    for (TopoDS_Iterator part(shape); part.More(); part.Next())
        if (HasOtherHolders(part.Value(), parentAndIterator)) return true;
    return false;
}

}  // namespace

ShapeSourcePointer MovedSource(ShapeSourcePointer source, const Similarity& move) {
    if (dynamic_cast<const MovedShape*>(source.get()) != nullptr) return nullptr;
    return std::make_shared<const MovedShape>(std::move(source), move);
}

bool IsHeldElsewhere(const TopoDS_Shape& shape) { return HasOtherHolders(shape, 1); }

}  // namespace brenvik
