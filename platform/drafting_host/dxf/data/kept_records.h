// What a drawing file holds besides what a drawing understands: records and groups as they stand there, so
// that a drawing that was read and is saved again keeps them. Plain text, shared and never changed; the texts
// are groups in the writer's own form (code in three columns, value in the next line, both ended by "\r\n").
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace brenvik {

using HandleValue = std::uint64_t;

/// A shared record of something kept, or nothing. It is no part of a drawing's value: two drawings that mean
/// the same are equal whatever else stands in their files.
template <typename T>
struct Kept {
    std::shared_ptr<const T> value;
    explicit operator bool() const { return value != nullptr; }
    const T& operator*() const { return *value; }
    const T* operator->() const { return value.get(); }
    friend bool operator==(const Kept&, const Kept&) { return true; }
};

/// A record that nothing here understands. `groups` begins behind its name; records that belong to it (the
/// end of a sequence) may follow in the same text.
struct KeptRecord {
    std::string name;
    HandleValue handle = 0, owner = 0;
    std::string groups;
    std::size_t place = 0;  ///< Of an entity: how many understood ones of its block stand before it.
};

/// The groups of an understood record that a drawing has no value for.
struct KeptGroups {
    struct Vertex {
        HandleValue handle = 0;
        bool hasLayer = false;  ///< `common` holds a layer of the vertex's own.
        std::string head, common, own;
    };

    std::string head;                ///< Lists in brackets in front: reactors, the extension dictionary.
    std::string common;              ///< What all entities share: true colour, transparency, material.
    std::string own;                 ///< Of the kind.
    std::string further;             ///< Classes that the kind has here besides, with their marks.
    int flags = 0;                   ///< Of a layer: the bits of group 70 without a member of their own.
    std::vector<int> vertexNumbers;  ///< Of a lightweight polyline: one for each vertex, or none.
    std::vector<KeptRecord> parts;   ///< Of a block reference: its attributes and their end.
    std::vector<Vertex> vertices;    ///< Of an old polyline: vertices and end with anything, by handle.
};

/// A block's own records, and the entities in it that nothing here understands.
struct KeptBlock {
    KeptGroups record;       ///< Of the block record in the table.
    std::string begin, end;  ///< The groups of BLOCK and ENDBLK; blank where there were none.
    std::vector<KeptRecord> entities;
    std::vector<HandleValue> order;  ///< The understood entities as read, where there are others among them.
};

struct KeptTable {
    std::string name;
    std::string head;                 ///< Groups of its TABLE record.
    std::vector<KeptRecord> entries;  ///< Entries of kinds that a drawing doesn't hold.
};

struct KeptSection {
    std::string name, head;
    std::vector<KeptRecord> records;
};

/// What belongs to the file as a whole.
struct KeptFile {
    int release = 1009;  ///< The number in $ACADVER: 1009 is release 12, 1015 release 2000.
    bool hasByteOrderMark = false;
    std::vector<std::pair<std::string, std::string>> header;  ///< Variables by name, all, with their groups.
    std::vector<KeptTable> tables;
    std::vector<KeptRecord> objects;
    std::vector<KeptSection> sections;  ///< Classes, the thumbnail, data of other programs.
    std::vector<HandleValue> handles;   ///< All that the file uses, ascending.
    /// What the release in which the drawing is saved has no form for: kinds and how many of each.
    std::vector<std::pair<std::string, std::size_t>> unkept;
    std::string unkeptReason = "release 12 writes them in another form than release 2000";
};

}  // namespace brenvik
