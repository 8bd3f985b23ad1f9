// What an open drawing holds, to be compared with what it holds later.
#pragma once

#include <cstddef>
#include <vector>

#include "drafting_host/document/geometry/host_geometry.h"

namespace brenvik {

class HostDocument;

/// By value; of shapes whether they are the same ones.
bool IsSameGeometry(const HostGeometry& a, const HostGeometry& b);

/// The entities of the drawing's spaces with geometry, layer, look and extended data. Shapes are shared, not
/// copied; two states of which one was moved there and back may differ.
class DrawingState {
  public:
    explicit DrawingState(const HostDocument& document);
    friend bool operator==(const DrawingState& a, const DrawingState& b);

  private:
    struct Entity {
        HandleValue handle = 0;
        std::size_t texts = 0;  ///< Of everything but the geometry.
        HostGeometry geometry;
    };
    std::vector<Entity> mEntities;
};

}  // namespace brenvik
