// Where each object stands: handles and places, and the classes that name the kinds of objects.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drafting_host/dwg/containers.h"
#include "drafting_host/dwg/streams.h"

namespace brenvik::dwg {

/// Handles with the places of their objects in `Sections::objects`, in the order of the file's map. A handle
/// that stands twice has its last place.
class ObjectMap {
  public:
    /// Reads the map. Damaged pieces are reported in the sections' notes; what was read before them stays.
    explicit ObjectMap(Sections& sections);

    struct Entry {
        HandleValue handle = 0;
        std::size_t place = 0;
    };
    const std::vector<Entry>& Entries() const { return mEntries; }
    /// Null for a handle that isn't there.
    const Entry* Find(HandleValue handle) const;

  private:
    static void TellRest(Sections& sections, std::size_t end);
    void TakePiece(BitReader& reader, std::size_t end, std::size_t objectBytes);
    void Add(HandleValue handle, std::size_t place);

    std::vector<Entry> mEntries;
    std::unordered_map<HandleValue, std::size_t> mIndices;
};

/// The kind of an object by its type number, as DXF names it: fixed ones, and those of the drawing's own
/// classes.
class Kinds {
  public:
    /// Reads the section of classes; a damaged one is reported, and what was read of it stays.
    Kinds(Sections& sections, const Texts& texts);

    /// Blank for a number that no class has.
    std::string_view NameOf(unsigned type) const;
    /// Whether it is the number of a class that the file doesn't name, so that nobody can tell what is lost.
    bool IsUnnamedClass(unsigned type) const;

  private:
    void ReadClasses(Streams& streams);

    std::map<unsigned, std::string> mClasses;
};

}  // namespace brenvik::dwg
