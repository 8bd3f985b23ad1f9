// What the parts of the reader share: the drawing in the making, the texts' decoding, and how a group's
// value is taken. An entity that can't be taken over throws EntityRefused inside the reader; it becomes a
// note, and the others still arrive.
#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/letter_case.h"
#include "drafting_host/dxf/data/drawing_data.h"
#include "drafting_host/dxf/data/standard_entries.h"
#include "drafting_host/dxf/reading/group_reader.h"
#include "drafting_host/dxf/reading/keeping.h"
#include "drafting_host/dxf/texts/dxf_text.h"
#include "drafting_host/dxf/texts/exact_numbers.h"

namespace brenvik {

using Groups = std::span<const Group>;

/// Why one entity is left out, and the line that says so.
struct EntityRefused {
    std::size_t line = 0;
    std::string reason;
};

/// Release 13, the first whose records say what they are.
inline constexpr int OldestKept = 1012;

/// The drawing in the making.
struct Reading {
    std::string fileName;
    TextDecoder decoder;
    DrawingData data;
    bool hasByteOrderMark = false;
    PlaceUnit unit = PlaceUnit::Line;
    bool isUnicode = false;       ///< Release 2007 on.
    bool isBinaryBodies = false;  ///< Release 2013 on, where bodies have left the text.
    /// Places in the drawing's vectors, by name without regard to case.
    std::map<std::string, std::size_t, LessIgnoreCase> layerPlaces, linetypePlaces, stylePlaces, blockPlaces;
    std::set<std::string, LessIgnoreCase> applicationNames, ucsNames, changedLayerNames;
    std::map<HandleValue, std::string> blockOfRecord;
    std::map<std::string, HandleValue, LessIgnoreCase> recordOfBlock;
    std::map<std::string, std::string, LessIgnoreCase> layoutOfBlock;

    /// Passed on unread. Records of releases before 13 have neither classes nor, often, handles, so that they
    /// can't stand in a later one: these are counted.
    KeptFile file;
    std::map<std::string, KeptBlock, LessIgnoreCase> keptBlocks;
    std::map<std::string, std::size_t> unkept;
    bool KeepsRecords() const { return file.release >= OldestKept; }

    struct Doubted {
        ReadNote note;
        std::size_t count = 0;
    };
    std::map<std::string, Doubted> doubts;

    /// Records of bodies whose data are still to come, by handle.
    std::map<HandleValue, KeptRecord> bodyRecords;

    /// Adds a note. Binary files have no lines: there the place in bytes goes into the text.
    void Note(std::size_t line, std::string text, bool dataLost = true, bool isKept = false) {
        if (unit == PlaceUnit::Byte && line > 0) {
            text = Place(line) + ": " + text;
            line = 0;
        }
        data.notes.push_back({line, std::move(text), dataLost, isKept});
    }
    /// Reports the first of many impossible values of one sort, and at the end the number of the others.
    void Doubt(const std::string& what, std::size_t line, std::string text, bool dataLost);
    void TellDoubts();
    std::string Place(std::size_t place) const { return PlaceText(place, unit); }
    /// A text in a file of UTF-8 that isn't UTF-8 is guessed; the first one is reported at the end. The same
    /// holds for one with characters of an East Asian page that can't be decoded.
    std::string Text(const Group& group) const;
    /// The same of the text that an entity's group ends, whose other pieces stand ahead of it.
    std::string Text(std::string_view text, std::size_t line) const;

    /// Texts that were guessed, and texts that keep escapes of characters: how many, and where the first one
    /// stands.
    mutable std::size_t guessedTexts = 0, firstGuessed = 0, escapedTexts = 0, firstEscaped = 0,
                        fiveDigitTexts = 0, firstFiveDigits = 0;
};

/// A layer's name; one that release 2000 refuses is changed, so that the drawing can be saved, and reported.
std::string LayerNameOf(Reading& reading, const Group& group);

/// A group's value as a finite number, a whole number, a handle. The first two throw EntityRefused; the
/// last gives 0 for what is no handle.
double RealOf(const Group& group);
LongReal LongRealOf(const Group& group);
int IntegerOf(const Group& group);
HandleValue HandleOf(const Group& group);
/// A whole number from `low` to `high`; otherwise `taken`, with a remark. `what` says what was expected ("a
/// colour").
int IntegerWithin(Reading& reading, const Group& group, int low, int high, std::string_view what, int taken);
/// The flags of a group among those of `mask`; a remark reports others.
int FlagsOf(Reading& reading, const Group& group, int mask);
/// An angle in degrees as radians.
double AngleOf(const Group& group);

/// Takes the group as a coordinate of point number `index` (groups 10+index, 20+index, 30+index).
bool TakePoint(const Group& group, int index, Point3& point);
/// Takes the group as a coordinate of the normal (210, 220, 230).
bool TakeNormal(const Group& group, Point3& normal);

/// The groups of a code; the first, or null.
const Group* FindGroup(Groups groups, int code);
/// Throws EntityRefused unless each of the codes is there.
void RequireGroups(Groups groups, std::initializer_list<int> codes, std::size_t line);

/// Reports groups of an entity that occur twice with different values though only one is allowed. Lists of
/// vertices and the like are not affected.
void TellDoubled(Reading& reading, std::string_view kind, Groups groups);

/// The groups without application brackets (102 "{..." to 102 "}") and embedded objects (101).
void DropBrackets(std::vector<Group>& groups);

/// A name as a message shows it: short and printable.
std::string ShownName(std::string_view name);

/// The block's name with the spaces' names as release 2000 spells them.
std::string CanonicalBlockName(std::string name);
/// The place of a block in the drawing, made when there is none.
std::size_t BlockPlace(Reading& reading, const std::string& name);

void ReadHeader(Reading& reading, Groups groups);
void ReadTableEntry(Reading& reading, const Record& record);
/// Extended data: the groups from the first application entry on. `entity` names their entity in notes.
std::vector<XDataOfApp> ReadXData(Reading& reading, Groups groups, const std::string& entity);

/// The entity's shape; null for a kind that the drawing doesn't hold. Throws EntityRefused.
std::optional<EntityGeometry> ReadGeometry(Reading& reading, const Record& record, Groups groups);
PolylineData::Vertex ReadPolylineVertex(Reading& reading, Groups groups, std::size_t line);
TextData ReadText(Reading& reading, Groups groups, std::size_t line);
MTextData ReadMText(Reading& reading, Groups groups, std::size_t line);
ViewportData ReadViewport(Reading& reading, Groups groups, std::size_t line);
AcisData ReadAcis(Reading& reading, const Record& record, Groups groups);

/// Gives the drawing what every drawing has (layer 0, the spaces, ...), and every object a handle of its
/// own; names that entities use and no table holds are added.
void CompleteDrawing(Reading& reading);

}  // namespace brenvik
