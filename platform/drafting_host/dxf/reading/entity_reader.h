// Takes the records of entities into the drawing's blocks. Old polylines and their vertices are records of
// their own, one after another, so the reader of entities remembers the polyline that stands open.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "drafting_host/dxf/reading/reading.h"

namespace brenvik {

class EntityReader {
  public:
    explicit EntityReader(Reading& reading) : mReading(reading) {}

    /// Takes a record. `block` is the place of the block that holds it; without one, in the section of
    /// entities, the entity's own owner or paper space flag determines the space.
    void Take(Record& record, std::optional<std::size_t> block);
    /// Ends a polyline that lacks its end; called where a block or a section ends.
    void EndOpenPolyline(std::size_t line);
    /// Leaves out a polyline in which the file broke off; the text names it, or is empty.
    std::string DropOpenPolyline();
    /// Reports the kinds that were passed over, and the colours that don't exist.
    void NotePassedOver();

  private:
    struct Passed {
        std::size_t firstLine = 0, count = 0;
    };
    struct OpenPolyline {
        EntityData entity;
        std::size_t block = 0, line = 0;
        bool refused = false;   ///< Its vertices are passed over with it.
        std::string fileLayer;  ///< As the file has it.
        std::shared_ptr<KeptGroups> kept;
        /// Of release 12: what a vertex has that doesn't say its own.
        double startWidth = 0, endWidth = 0;
    };

    void TakeEntity(Record& record, std::optional<std::size_t> block);
    /// An entity of a kind that drawings don't hold.
    void KeepEntity(Record& record, std::optional<std::size_t> block);
    void KeepRecord(KeptRecord record, std::size_t block);
    void Pass(const Record& record);
    /// Whether the record is an attribute, or the end, of the block reference before it.
    bool TakeInsertPart(const Record& record);
    bool TakePolylinePart(Record& record);
    void Refuse(const Record& record, const EntityRefused& refused);
    /// Reports a handle that is no number in hexadecimal digits, or beyond reason.
    void NoteDamagedHandle(Groups groups, HandleValue read, std::size_t line);
    /// Reports counts that contradict the number of items that follow: a vertex may be missing.
    void NoteFalseCounts(const Record& record, Groups groups, const EntityGeometry& geometry);
    void TakeFalseColor(const Record& record, Groups groups);
    HandleValue OwnHandle(HandleValue handle, std::size_t line, bool isOfEntity);
    std::size_t SpaceOf(Groups groups);

    Reading& mReading;
    std::optional<OpenPolyline> mPolyline;
    bool mAfterInsert = false;
    std::shared_ptr<KeptGroups>
        mInsert;  ///< What the reference before this record keeps, as long as it goes on.
    std::map<std::string, Passed> mPassed;
    Passed mFalseColors;
    std::string mFirstFalseColor;
    std::unordered_set<HandleValue> mHandles;
};

}  // namespace brenvik
