#include "drafting_host/document/shape_keeper.h"

#include "drafting_host/document/host_solids.h"

namespace brenvik {

ShapeKeeper::Place ShapeKeeper::Add(const HostShapeEntity& entity) {
    mEntities.push_front(&entity);
    mBytes += entity.ShapeSize();
    const Place place = mEntities.begin();
    LetGoBut(entity);
    return place;
}

void ShapeKeeper::Remove(Place place) {
    mBytes -= (*place)->ShapeSize();
    mEntities.erase(place);
}

// Where all are held, as in a run that keeps the drawings of its parts, a few looks have to do.
void ShapeKeeper::LetGoBut(const HostShapeEntity& newest) {
    constexpr int looks = 8;
    for (int look = 0; look < looks && mBytes > mLimit; ++look) {
        const HostShapeEntity& oldest = *mEntities.back();
        if (&oldest == &newest) return;
        if (!oldest.LetGo()) Touch(std::prev(mEntities.end()));
    }
}

}  // namespace brenvik
