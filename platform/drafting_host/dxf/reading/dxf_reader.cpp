// The walk over a DXF file: sections, and which part of the reader takes which record.
#include "drafting_host/dxf/reading/dxf_reader.h"

#include <algorithm>
#include <utility>

#include "drafting_host/dxf/reading/body_data.h"
#include "drafting_host/dxf/reading/entity_reader.h"
#include "drafting_host/dxf/reading/object_reader.h"

namespace brenvik {
namespace {

enum class Section { None, Header, Tables, Blocks, Entities, Objects, BodyData, Other };

Section SectionNamed(std::string_view name) {
    if (name == "HEADER") return Section::Header;
    if (name == "TABLES") return Section::Tables;
    if (name == "BLOCKS") return Section::Blocks;
    if (name == "ENTITIES") return Section::Entities;
    if (name == "OBJECTS") return Section::Objects;
    if (name == "ACDSDATA") return Section::BodyData;
    return Section::Other;
}

/// The first line after so many that holds more than blanks and the control Z of DOS.
std::optional<std::size_t> LineBehind(std::string_view content, std::size_t line) {
    std::size_t at = 0;
    for (std::size_t passed = 0; passed < line && at < content.size(); ++passed) {
        at = std::min(content.find_first_of("\r\n", at), content.size());
        if (content.substr(at, 2) == "\r\n") ++at;
        at = std::min(at + 1, content.size());
    }
    const std::size_t found = content.find_first_not_of(std::string_view(" \t\r\n\x1A\0", 6), at);
    if (found == std::string_view::npos) return std::nullopt;
    return line + 1 + static_cast<std::size_t>(std::ranges::count(content.substr(at, found - at), '\n'));
}

class Walk {
  public:
    Walk(std::string_view content, std::string_view fileName)
        : mFileName(fileName),
          mContent(content),
          mGroups(content, fileName),
          mEntities(mReading),
          mObjects(mReading),
          mBodies(mReading) {
        mReading.fileName = fileName;
        mReading.unit = mGroups.Unit();
        mReading.hasByteOrderMark = mGroups.HasByteOrderMark();
        if (mReading.hasByteOrderMark) mReading.decoder = TextDecoder(TextDecoder::Bytes::Utf8, 1252);
        mReading.data.version = "AC1009";  // what a file without a version is
        BlockPlace(mReading, std::string(ModelSpaceName));
        BlockPlace(mReading, std::string(PaperSpaceName));
    }

    DrawingData Run() {
        Record record;
        while (!mHasEnded && mGroups.NextRecord(record)) Take(record);
        if (!mHasSection) {
            throw InvalidDxf(mFileName, mGroups.Line(), "a section (0 SECTION) of a DXF drawing",
                             mHasEnded ? "the end of the file" : "other content", mGroups.Unit());
        }
        if (!mHasEnded) {
            NoteCut();
        } else if (const auto line = mReading.unit == PlaceUnit::Byte
                                         ? std::nullopt
                                         : LineBehind(mContent, mGroups.Line())) {
            mReading.Note(*line, "what stands behind the end of the file (0 EOF) is left out");
        }
        mBodies.Join();
        mEntities.NotePassedOver();
        mReading.TellDoubts();
        mObjects.Finish();
        CompleteDrawing(mReading);
        return std::move(mReading.data);
    }

  private:
    void NoteCut() {
        const CutOff& cut = mGroups.Cut();
        std::string text = "the file breaks off: expected " + cut.expected + " or the end mark EOF";
        // A polyline less its last vertices would be another shape.
        const std::string polyline = mEntities.DropOpenPolyline();
        const std::string& dropped = polyline.empty() ? mCutRecord : polyline;
        if (!dropped.empty()) text += "; " + dropped + " is left out";
        mReading.Note(cut.line, text);
    }

    void Take(Record& record) {
        if (record.name == "SECTION") return BeginSection(record);
        if (!mHasSection && record.name != "EOF") {
            throw InvalidDxf(mFileName, record.line, "a section (0 SECTION) of a DXF drawing",
                             ShownName(record.name), mGroups.Unit());
        }
        if (record.name == "EOF") {
            if (mSection != Section::None) mReading.Note(record.line, "ENDSEC was expected before EOF");
            mEntities.EndOpenPolyline(record.line);
            mHasEnded = true;
            return;
        }
        if (!record.whole && record.name != "ENDSEC") {
            mCutRecord = std::string(ShownName(record.name)) + " of " + mReading.Place(record.line);
            return;
        }
        if (record.name == "ENDSEC") return EndSection(record.line);
        TakeInSection(record);
    }

    void BeginSection(Record& record) {
        if (mSection != Section::None) {
            mReading.Note(record.line, "ENDSEC was expected before the next SECTION", false);
            EndSection(record.line);
        }
        mHasSection = true;
        const Group* const name = FindGroup(record.groups, 2);
        const std::string_view word =
            name == nullptr ? std::string_view() : name->value.substr(0, name->value.find(' '));
        mSection = SectionNamed(word);
        if (mSection == Section::Other || mSection == Section::BodyData) {
            const Groups all = record.groups;
            const Groups head =
                name == nullptr ? all : all.subspan(static_cast<std::size_t>(name - all.data()) + 1);
            mReading.file.sections.push_back({std::string(word), TextOfGroups(head), {}});
        }
        if (name == nullptr) mReading.Note(record.line, "a section's name (group 2) was expected");
        if (mSection == Section::Header) ReadHeader(mReading, record.groups);
    }

    void EndSection(std::size_t line) {
        mEntities.EndOpenPolyline(line);
        mBlock.reset();
        mSection = Section::None;
    }

    void TakeInSection(Record& record) {
        switch (mSection) {
            case Section::Tables:
                ReadTableEntry(mReading, record);
                break;
            case Section::Blocks:
                TakeInBlocks(record);
                break;
            case Section::Entities:
                mEntities.Take(record, std::nullopt);
                break;
            case Section::Objects:
                mObjects.Take(record);
                break;
            case Section::BodyData:
                mBodies.Take(record);
                mReading.file.sections.back().records.push_back(KeptRecordOf(record));
                break;
            case Section::Other:
                mReading.file.sections.back().records.push_back(KeptRecordOf(record));
                break;
            case Section::None:
                mReading.Note(record.line, ShownName(record.name) + " passed over: a SECTION was expected");
                break;
            case Section::Header:
                break;
        }
    }

    void TakeInBlocks(Record& record) {
        if (record.name == "BLOCK") {
            mEntities.EndOpenPolyline(record.line);
            BeginBlock(record);
        } else if (record.name == "ENDBLK") {
            mEntities.EndOpenPolyline(record.line);
            EndBlock(record);
        } else if (mBlock) {
            mEntities.Take(record, mBlock);
        } else if (!mBlockRefused) {
            mReading.Note(record.line, ShownName(record.name) + " passed over: a BLOCK was expected");
        }
    }

    void BeginBlock(Record& record) {
        const std::string text = mReading.KeepsRecords() ? TextOfGroups(record.groups) : std::string();
        DropBrackets(record.groups);
        mBlock.reset();
        mBlockRefused = true;
        const Group* const nameGroup = FindGroup(record.groups, 2);
        const std::string name = nameGroup == nullptr ? "" : CanonicalBlockName(mReading.Text(*nameGroup));
        const bool isSpace = name == ModelSpaceName || name == PaperSpaceName;
        if (name.empty() || (!isSpace && mReading.blockPlaces.contains(name))) {
            mReading.Note(record.line,
                          "BLOCK " + ShownName(name) + " left out: a name of its own was expected");
            return;
        }
        const std::size_t place = BlockPlace(mReading, name);
        try {
            TakeBlockBegin(place, record.groups);
        } catch (const EntityRefused& refused) {
            mReading.Note(refused.line,
                          "BLOCK " + ShownName(name) + " taken over in part: " + refused.reason);
        }
        mBlock = place;
        mBlockRefused = false;
        if (!text.empty()) mReading.keptBlocks[name].begin = text;
    }

    void TakeBlockBegin(std::size_t place, Groups groups) {
        constexpr int flagAnonymous = 1, flagsOtherDrawing = 4 + 8, codeDescription = 4;
        BlockData& block = mReading.data.blocks[place];
        if (const Group* const flags = FindGroup(groups, 70);
            flags != nullptr && (IntegerOf(*flags) & flagsOtherDrawing) != 0)
            NoteOtherDrawing(block.name, groups);
        if (const Group* const text = FindGroup(groups, codeDescription);
            text != nullptr && !text->value.empty() && !mReading.KeepsRecords())
            ++mReading.unkept["BLOCK, its description"];
        for (const Group& group : groups) {
            if (group.code == 5) mReading.data.fileHandles.emplace("BLOCK " + block.name, HandleOf(group));
            if (group.code == 70) block.flags = IntegerOf(group) & flagAnonymous;
            TakePoint(group, 0, block.base);
        }
    }

    /// A reference to another drawing: what it shows is not in this file.
    void NoteOtherDrawing(const std::string& name, Groups groups) {
        const Group* const path = FindGroup(groups, 1);
        const Group& at = path == nullptr ? groups.front() : *path;
        mReading.Note(at.line,
                      "block " + ShownName(name) + ": the drawing " +
                          ShownName(path == nullptr ? "" : mReading.Text(*path)) +
                          " that it refers to is left out: expected its parts in this drawing, as "
                          "binding the reference gives them",
                      true, mReading.KeepsRecords());
    }

    void EndBlock(Record& record) {
        if (mBlock && mReading.KeepsRecords())
            mReading.keptBlocks[mReading.data.blocks[*mBlock].name].end = TextOfGroups(record.groups);
        DropBrackets(record.groups);
        if (mBlock) {
            if (const Group* const handle = FindGroup(record.groups, 5))
                mReading.data.fileHandles.emplace("ENDBLK " + mReading.data.blocks[*mBlock].name,
                                                  HandleOf(*handle));
        }
        mBlock.reset();
        mBlockRefused = false;
    }

    std::string_view mFileName, mContent;
    Reading mReading;
    GroupReader mGroups;
    EntityReader mEntities;
    ObjectReader mObjects;
    BodyData mBodies;
    Section mSection = Section::None;
    std::optional<std::size_t> mBlock;
    bool mBlockRefused = false;
    bool mHasSection = false, mHasEnded = false;
    std::string mCutRecord;
};

}  // namespace

DrawingData ReadDxf(std::string_view content, std::string_view fileName) {
    return Walk(content, fileName).Run();
}

}  // namespace brenvik
