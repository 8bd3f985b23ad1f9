// Objects that a binary drawing names and doesn't hold.
#include "drafting_host/dwg/missing_records.h"

#include <gtest/gtest.h>

namespace brenvik::dwg {
namespace {

using namespace std::string_literals;

Sections WithMap(const std::string& map) {
    Sections sections;
    sections.objectMap = map;
    return sections;
}

/// The texts of the notes that lose something.
std::string LossesOf(const std::vector<ReadNote>& notes) {
    std::string all;
    for (const ReadNote& note : notes)
        if (note.dataLost) all += note.text + "\n";
    return all;
}

TEST(ObjectMaps, AMapThatEndsAheadOfItsSectionIsTold) {
    Sections sections = WithMap("\x00\x02\x11\x22\x00\x04\x01\x02\x33\x44"s);
    const ObjectMap map(sections);
    EXPECT_EQ(LossesOf(sections.notes),
              "the object map ends at byte 4 of 10: objects named behind are missing\n"
              "the object map names no objects: the drawing is missing\n");
}

TEST(ObjectMaps, PaddingBehindAMapIsNoLoss) {
    Sections sections = WithMap("\x00\x02\x11\x22\x00\x00\x00\x00"s);
    const ObjectMap map(sections);
    EXPECT_EQ(LossesOf(sections.notes), "the object map names no objects: the drawing is missing\n");
}

TEST(MissingRecords, AreToldByKindAndHandle) {
    Sections sections;
    const ObjectMap map(sections);
    MissingRecords missing;
    missing.Expect(0, "LAYER", "LAYER");
    missing.Expect(0x27A, "LAYER", "LAYER");
    missing.Expect(0x1F, "BLOCK_RECORD", "BLOCK_RECORD");
    Reading reading;
    missing.Tell(reading, map, [](const ObjectMap::Entry&) { return "LAYER"; });
    EXPECT_EQ(
        LossesOf(reading.data.notes),
        "LAYER (handle 27A) is missing: the file names it and has no such object\n"
        "BLOCK_RECORD (handle 1F) is missing: the file names it and has no such object; its entities are "
        "missing with it\n");
}

TEST(MissingRecords, AnObjectOfAnotherKindIsNoneOfThem) {
    // Handles 5 and 6, at bytes 1 and 2.
    Sections sections = WithMap("\x00\x06\x05\x01\x01\x01\x00\x00\x00\x02"s);
    sections.objects = std::string(10, '\0');
    const ObjectMap map(sections);
    MissingRecords missing;
    missing.Expect(5, "STYLE", "STYLE");
    missing.Expect(6, "GROUP", "group \"A\"");
    Reading reading;
    missing.Tell(reading, map,
                 [](const ObjectMap::Entry& entry) { return entry.handle == 5 ? "STYLE" : "XRECORD"; });
    EXPECT_EQ(LossesOf(reading.data.notes),
              "group \"A\" (handle 6) is missing: the file names it and has no such object\n");
}

}  // namespace
}  // namespace brenvik::dwg
