// The exact box is the support of the shape along three axes.
#include "drafting_host/solids/exact_box.h"

#include <cmath>

#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/support.h"

namespace brenvik::solids {
namespace {

Box BoxAlong(const TopoDS_Shape& shape, const gp_XYZ& x, const gp_XYZ& y, const gp_XYZ& z,
             const gp_XYZ& origin) {
    return Guarded("bounding box", [&] {
        const Support support(shape);
        if (support.Empty()) throw InvalidCall("bounding box: the object has no geometry");
        const Reach along[] = {support.Along(x, origin), support.Along(y, origin), support.Along(z, origin)};
        for (const Reach& reach : along) {
            if (!std::isfinite(reach.low) || !std::isfinite(reach.high))
                throw InvalidCall("bounding box: the object is not finite");
        }
        // Adding zero turns a negative zero, which the reversed search leaves, into a plain one.
        return Box{gp_Pnt(along[0].low + 0.0, along[1].low + 0.0, along[2].low + 0.0),
                   gp_Pnt(along[0].high + 0.0, along[1].high + 0.0, along[2].high + 0.0)};
    });
}

}  // namespace

Box ExactBox(const TopoDS_Shape& shape) {
    return BoxAlong(shape, gp_XYZ(1, 0, 0), gp_XYZ(0, 1, 0), gp_XYZ(0, 0, 1), gp_XYZ(0, 0, 0));
}

Box ExactBoxIn(const TopoDS_Shape& shape, const gp_Ax3& frame) {
    return BoxAlong(shape, frame.XDirection().XYZ(), frame.YDirection().XYZ(), frame.Direction().XYZ(),
                    frame.Location().XYZ());
}

bool Overlap(const Box& one, const Box& other, double film) {
    return one.min.X() < other.max.X() - film && other.min.X() < one.max.X() - film &&
           one.min.Y() < other.max.Y() - film && other.min.Y() < one.max.Y() - film &&
           one.min.Z() < other.max.Z() - film && other.min.Z() < one.max.Z() - film;
}

}  // namespace brenvik::solids
