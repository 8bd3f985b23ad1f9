// What a binary drawing is packed in: a flat file up to release 2000, packed pages from 2004 on, of a kind of
// their own in 2007. All give the same sections.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik::dwg {

enum class Release { R13, R14, R2000, R2004, R2007, R2010, R2013, R2018 };

/// The release as DXF counts it: 1015 for 2000.
int ReleaseNumber(Release release);

/// The sections that a drawing is read from. Those that a release or a file doesn't have are empty.
struct Sections {
    Release release = Release::R2000;
    unsigned maintenance = 0;  ///< The byte that distinguishes saves of one release.
    unsigned codePage = 0;     ///< The file's number of the page, of which texts are before release 2007.
    std::string header, classes, objectMap, measurement, dataStore, summary;
    std::string objects;  ///< The object map counts from its first byte; of a flat file it is the whole.
    std::vector<ReadNote> notes;
};

/// Unpacks the sections. Pages that can't be unpacked become zeros. Both these and wrong checksums are
/// reported. Throws Failure 321 when the file's own tables can't be read, or for a drawing behind a password.
/// The unpacked data come to at most 12 times the file's size.
Sections Unpack(std::string_view content, std::string_view fileName);

// The three kinds of files.
void UnpackFlat(std::string_view content, Sections& sections);
void UnpackPaged(std::string_view content, Sections& sections);
void UnpackPaged2007(std::string_view content, Sections& sections);

/// How many bytes may be unpacked from a file of this size: drawings come to a quarter of their size or so,
/// and what claims to be much smaller is damage or worse.
std::size_t MostUnpacked(std::size_t fileSize);

/// Why a file as a whole can't be read, and where.
struct BrokenFile {
    std::size_t place = 0;
    std::string expected;
};

/// A whole number of the file, lowest byte first. Throws BrokenFile beyond the end.
std::uint16_t ShortAt(std::string_view bytes, std::size_t at);
std::uint32_t LongAt(std::string_view bytes, std::size_t at);
std::uint64_t LongLongAt(std::string_view bytes, std::size_t at);
/// Part of the file. Throws BrokenFile beyond the end.
std::string_view PartAt(std::string_view bytes, std::uint64_t at, std::uint64_t size);

/// Puts a section where its name says; the others are of no use here.
void Keep(Sections& sections, std::string_view name, std::string bytes);

/// Puts a section together from its pages; one that can't be unpacked stays zeros and is reported. `left` is
/// what may still be unpacked of the file. Throws BrokenFile for a section behind a password.
struct PagedSection {
    std::string_view name;
    std::uint64_t size = 0;
    bool isEncrypted = false;
    std::size_t pages = 0;
};
void TakeSection(Sections& sections, const PagedSection& section, std::size_t fileSize, std::size_t& left,
                 const std::function<void(std::size_t page, std::string& bytes)>& takePage);

void Note(Sections& sections, std::string text, bool dataLost = true);  ///< Adds to the notes.

}  // namespace brenvik::dwg
