// How a part is shown, and whether it is.
#pragma once

#include <Quantity_Color.hxx>

namespace brenvik {
class HostEntity;
}

namespace brenvik::desktop {

/// That of the entity or its layer. Boards are seldom coloured: where that would be white, they are wood.
Quantity_Color PartColor(const HostEntity& entity);
bool IsShown(const HostEntity& entity);

}  // namespace brenvik::desktop
