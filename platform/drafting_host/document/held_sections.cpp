// Level sections of a solid of the host, in the words of the port.
#include <algorithm>
#include <memory>

#include "drafting_host/document/geometry/modeller_points.h"
#include "drafting_host/document/host_application.h"
#include "drafting_host/document/host_solids.h"
#include "drafting_host/solids/level_sections.h"

namespace brenvik {

namespace {

/// The shape is shared with the solid: a change of the solid gives that one a new shape.
class HeldSections final : public SolidSections {
  public:
    explicit HeldSections(const TopoDS_Shape& shape) : mSections(shape) {
        for (const solids::Reach& reach : mSections.Slopes()) mSlopes.push_back({reach.low, reach.high});
        for (const solids::LyingCylinder& lying : mSections.Lying())
            mRounds.push_back(
                {FromModeller(lying.on.XYZ()), FromModeller(lying.along), lying.radius, lying.hollow});
    }

    Box3 Box() const override {
        const solids::Box& box = mSections.Bounds();
        return {FromModeller(box.min.XYZ()), FromModeller(box.max.XYZ())};
    }
    const std::vector<double>& Levels() const override { return mSections.Levels(); }
    const std::vector<HeightSpan>& Slopes() const override { return mSlopes; }
    const std::vector<LevelRound>& Rounds() const override { return mRounds; }
    std::vector<PlanSide> At(double height) const override {
        std::vector<PlanSide> sides;
        for (const solids::SectionSide& side : mSections.At(height))
            sides.push_back({{side.from.x, side.from.y}, {side.to.x, side.to.y}, side.bulge});
        return sides;
    }

  private:
    solids::LevelSections mSections;
    std::vector<HeightSpan> mSlopes;
    std::vector<LevelRound> mRounds;
};

}  // namespace

std::unique_ptr<SolidSections> HostApplication::HoldSolid(std::int32_t objectId) {
    const auto* solid = dynamic_cast<const HostSolid*>(FindByObjectId(objectId));
    if (solid == nullptr) return nullptr;
    return std::make_unique<HeldSections>(solid->Shape());
}

}  // namespace brenvik
