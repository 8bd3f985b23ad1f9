// What a solid, region or body says of itself beside its ACIS data.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "drafting_host/dwg/entities.h"
#include "drafting_host/dxf/reading/reading.h"

namespace brenvik::dwg {

/// Reads what stands behind ACIS data up to the entity's end. The body is taken, whatever is found there.
void ReadBehindAcis(Object& object, AcisData::Kind kind, bool isStored, Further& further);

/// What a body says against its ACIS data and the file's other bodies. A program does it one way, so that
/// the few that are otherwise may be damaged.
class BodyChecks {
  public:
    void Take(const Holder& holder, const EntityGeometry& geometry, const Further& further);
    void Tell(Reading& reading) const;

  private:
    void TakeMiddle(const std::string& shown, const Point3& said, const std::string& text);

    std::size_t mMiddles = 0;              ///< Of bodies whose middle is where they say.
    std::vector<std::string> mOddMiddles;  ///< As they are reported.
    /// Who has which mark, in text and in binary data.
    std::array<std::array<std::vector<std::string>, 2>, 2> mMarks;
};

}  // namespace brenvik::dwg
