// One object of the file: its frame, what all objects and all entities begin with, and its streams.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drafting_host/dwg/containers.h"
#include "drafting_host/dwg/object_map.h"
#include "drafting_host/dwg/streams.h"

namespace brenvik::dwg {

/// Extended data of one application. Names of layers (1003) are still handles, as texts of 16 digits at most.
struct RawXData {
    HandleValue application = 0;
    std::vector<XDataItem> items;
    bool isCut = false;  ///< Items behind one of an unknown code are missing.
    double absurd = 0;   ///< A number that a drawing can't have; 0 for none.
};

/// An opened object: its streams are positioned after the data that all objects begin with.
struct Object {
    HandleValue handle = 0;
    unsigned type = 0;
    std::size_t place = 0;  ///< Of its first byte in the objects' section.
    Streams streams;
    std::vector<RawXData> xdata;
    std::string name;                ///< Of a record that has been read.
    bool isDependent = false;        ///< The record comes out of another drawing.
    std::string_view bytes;          ///< Of the section.
    std::size_t start = 0, end = 0;  ///< The bits at which the object begins and ends.

    // Who hears of its changes, and the dictionary of what others keep with it; from ReadCommon and
    // ReadOwner.
    std::vector<HandleValue> reactors;
    HandleValue dictionary = 0;
};

/// Opens the object that stands at `place` under `handle`. Throws Damage.
Object OpenObject(const Sections& sections, const Texts& texts, const ObjectMap::Entry& entry);

/// Whether the checksum behind the object isn't that of its bytes. Some writers don't keep them.
bool SumIsWrong(const Object& object);

enum class LinetypeBy { Layer, Block, Continuous, Handle };

/// What all entities have.
struct Common {
    unsigned mode = 0;  ///< 0: `owner` is the block; 1 paper space, 2 model space.
    HandleValue owner = 0, layer = 0, linetype = 0;
    HandleValue next = 0;  ///< The neighbour up to release 2000.
    LinetypeBy linetypeBy = LinetypeBy::Layer;
    int color = 256;
    std::optional<std::uint32_t> trueColor;
    std::optional<std::uint32_t> transparency;  ///< As group 440 of a DXF has it.
    HandleValue bookColor = 0;                  ///< The object that has the colour of a colour book.
    double linetypeScale = 1;
    bool invisible = false;
    int lineweight = -1;
    bool hasStoredData = false;  ///< Its body may lie in the data section of release 2013 on.
    std::string oddity;          ///< A value that there isn't; blank for none.
};

/// Reads on behind OpenObject: the values, then the handles up to the entity's own. Throws Damage.
Common ReadCommon(Object& object);
/// The same for an object that is no entity; gives its owner.
HandleValue ReadOwner(Object& object);

/// A colour of a table's record: its number, 7 for a true colour; 0 by block, 256 by layer.
struct RecordColor {
    int index = 7;
    std::optional<std::uint32_t> trueColor{};
    std::string name{}, book{};  ///< Of a colour book.
};
RecordColor ReadRecordColor(Streams& streams);
/// Its number; of a true colour, which has none in the file, the nearest.
int IndexOf(const RecordColor& color);

/// Whether a transparency is one that there is: by layer, by block, or a value in the lowest byte.
bool IsTransparency(std::uint32_t value);

/// Hundredths of a millimetre by the file's number of a lineweight; -1 by layer, -2 by block, -3 the default.
int LineweightOf(unsigned number);
bool IsLineweight(unsigned number);

}  // namespace brenvik::dwg
