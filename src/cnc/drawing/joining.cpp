// What the host's join command is given, and what it has made.
#include "cnc/drawing/joining.h"

#include "cnc/drawing/drawing_walk.h"

namespace brenvik {

namespace {

constexpr double NoArea = 1e-9;

}  // namespace

int CurvesOn(AcadDocument& drawing, std::string_view layer, int most) {
    int count = 0;
    for (const AcadEntity* entity : AllOn<AcadEntity>(drawing, layer)) {
        if (count == most) break;
        if (dynamic_cast<const AcadLine*>(entity) != nullptr ||
            dynamic_cast<const AcadArc*>(entity) != nullptr)
            ++count;
    }
    return count;
}

bool IsContour(const AcadLWPolyline& polyline) { return polyline.Closed() && polyline.Area() > NoArea; }

}  // namespace brenvik
