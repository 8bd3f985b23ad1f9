// Where in plan a part has floors and ledges between its two faces: holes elsewhere need no trial cut.
#pragma once

#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

/// The boxes in plan of the level shapes of a part, one for each set of edges that hang together.
class LevelShapes {
  public:
    /// Gathers the level edges strictly between the faces. Call it after the sorting and before
    /// the routes, which use the edges up. `part` is the box of the solid.
    static LevelShapes Of(AcadDocument& drawing, const Box3& part);

    /// Whether the circle reaches into a shape at its own height or above.
    bool Meet(const Point3& center, double diameter) const;

  private:
    void Add(Box3 box);

    std::vector<Box3> mBoxes;
};

}  // namespace brenvik
