// Which bodies of the open drawings are in memory as shapes: those that were asked for last. A list looks at
// each body of a large job once, and a run works on one at a time.
#pragma once

#include <cstddef>
#include <limits>
#include <list>

namespace brenvik {

class HostShapeEntity;

class ShapeKeeper {
  public:
    using Place = std::list<const HostShapeEntity*>::iterator;

    /// How many bytes the shapes may take that can be made again. Without a limit, which is how it begins,
    /// bodies don't keep what they were made from: whoever shows a drawing or goes back in its history has
    /// the shapes at hand anyway.
    void SetLimit(std::size_t bytes) { mLimit = bytes; }
    bool IsLimited() const { return mLimit != std::numeric_limits<std::size_t>::max(); }

    /// How many bodies have a shape that can be made again.
    std::size_t Count() const { return mEntities.size(); }

    /// The entity has its shape now. Others let theirs go where all together are too large, those first that
    /// nobody has asked for longest; never one that somebody holds.
    Place Add(const HostShapeEntity& entity);
    /// The entity's shape was asked for again.
    void Touch(Place place) { mEntities.splice(mEntities.begin(), mEntities, place); }
    /// The entity's shape is gone, or not to be made again.
    void Remove(Place place);

  private:
    void LetGoBut(const HostShapeEntity& newest);

    std::list<const HostShapeEntity*> mEntities;  ///< The one asked for last is the first.
    std::size_t mBytes = 0;
    std::size_t mLimit = std::numeric_limits<std::size_t>::max();
};

}  // namespace brenvik
