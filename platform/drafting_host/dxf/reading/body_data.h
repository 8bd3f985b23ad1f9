// The section ACDSDATA of release 2013 and later, where the bodies of solids, regions and bodies stand apart
// from them, as binary ACIS data (SAB) in chunks, each record with the handle of the entity it belongs to.
// Thumbnails of layouts and bodies that no entity has any more stand there too.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "drafting_host/dxf/reading/reading.h"

namespace brenvik {

class BodyData {
  public:
    explicit BodyData(Reading& reading) : mReading(reading) {}

    /// Takes a record of the section, which is the next to be kept with the last of the kept sections;
    /// schemas and records without ACIS data are passed over.
    void Take(const Record& record);
    /// Gives entities without ACIS data of their own the data that is stored here, and drops those records.
    /// Entities still without data are noted, and kept as records.
    void Join();

  private:
    struct Body {
        std::string bytes;
        std::size_t line = 0;                 ///< Of its first chunk.
        std::string damage;                   ///< Why it can't be taken; empty for a sound one.
        std::size_t section = 0, record = 0;  ///< Where its record is kept.
    };

    void JoinBlock(BlockData& block);
    bool Joined(EntityData& entity);
    /// A body without its data stays in the drawing as the record that it is.
    void KeepRecord(const BlockData& block, HandleValue handle, std::size_t place);
    void ForgetJoined();
    std::string MissingReason(const Body* body) const;

    Reading& mReading;
    std::map<HandleValue, Body> mBodies;
    std::vector<Body> mJoined;
};

}  // namespace brenvik
