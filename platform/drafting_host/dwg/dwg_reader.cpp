// The walk over a binary drawing: tables first, then each block's entities, then groups and layouts.
#include "drafting_host/dwg/dwg_reader.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "base/handle_text.h"
#include "base/letter_case.h"
#include "drafting_host/dwg/bodies.h"
#include "drafting_host/dwg/body_checks.h"
#include "drafting_host/dwg/common_values.h"
#include "drafting_host/dwg/entities.h"
#include "drafting_host/dwg/entity_checks.h"
#include "drafting_host/dwg/group_names.h"
#include "drafting_host/dwg/header_checks.h"
#include "drafting_host/dwg/kept_tables.h"
#include "drafting_host/dwg/links.h"
#include "drafting_host/dwg/losses.h"
#include "drafting_host/dwg/missing_records.h"
#include "drafting_host/dwg/record_checks.h"
#include "drafting_host/dwg/record_texts.h"
#include "drafting_host/dwg/records.h"
#include "drafting_host/dwg/shape_checks.h"
#include "drafting_host/dwg/sheets.h"
#include "drafting_host/dwg/table_data.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/reading/reading.h"
#include "session/ports/point_arithmetic.h"

namespace brenvik {
namespace {

using namespace dwg;

class DwgWalk {
  public:
    DwgWalk(std::string_view content, std::string_view fileName)
        : mSections(Unpack(content, fileName)),
          mTexts(mSections.release, mSections.codePage),
          mMap(mSections),
          mKinds(mSections, mTexts) {
        mReading.fileName = fileName;
        mReading.data.version = content.substr(0, 6);
        // It is saved in its own release, as a drawing from DXF is.
        mReading.file.release = ReleaseNumber(mSections.release);
        if (!mTexts.IsKnown())
            mReading.Note(0, "code page " + std::to_string(mSections.codePage) +
                                 " is unknown: its texts are taken as ANSI_1252");
        BlockPlace(mReading, std::string(ModelSpaceName));
        BlockPlace(mReading, std::string(PaperSpaceName));
    }

    DrawingData Run() {
        mHeader = ReadHeader(mSections, mTexts, mReading.data);
        mBodies = ReadDataStore(mSections);
        ReadRecords();
        CheckHandles(mHeader, mSections, mTexts, mMap, mKinds, mLinks);
        CheckStandardNames(mReading, mNames, mHeader);
        CheckHandleSeed(mHeader.handleSeed, mMap, mReading);
        TakeHeader();
        NameBlocks();
        mTables.HandOver(mReading, mNames, mNamed, mLinks);
        KeepVariables(mReading, mHeader, mNames, mSections.maintenance, mLinks);
        for (const Block& block : mNames.blocks) TakeBlock(block);
        TakeStrayEntities();
        TakeGroups();
        CheckReferences(mReading, mNames);
        mLinks.Tell(mReading);
        mMissing.Tell(mReading, mMap, [this](const ObjectMap::Entry& entry) { return KindOf(entry); });
        mLosses.Tell(mReading, mSeen);
        mBodyChecks.Tell(mReading);
        if (mTexts.Escaped() > 0)
            mReading.Note(0, KeptEscapesNote(mTexts.Escaped(), "in " + ShownName(mTexts.FirstEscaped())));
        TellTexts(mTexts, mReading);
        mReading.TellDoubts();
        for (ReadNote& note : mSections.notes) mReading.data.notes.push_back(std::move(note));
        CompleteDrawing(mReading);
        return std::move(mReading.data);
    }

  private:
    static std::string Shown(HandleValue handle) { return "(handle " + HandleToText(handle) + ")"; }
    void TellDamage(std::string_view kind, const ObjectMap::Entry& entry, const Damage& damage) {
        mReading.Note(
            0, std::string(kind.empty() ? "object" : kind) + " " + Shown(entry.handle) + " at byte " +
                   std::to_string(entry.place) + " left out: " + damage.reason + " at its bit " +
                   std::to_string(damage.bit >= entry.place * 8 ? damage.bit - entry.place * 8 : damage.bit));
    }

    std::string_view KindOf(const ObjectMap::Entry& entry) const {
        return mDamaged.contains(entry.handle) ? std::string_view() : mKinds.NameOf(Open(entry).type);
    }
    Object Open(const ObjectMap::Entry& entry) const { return OpenObject(mSections, mTexts, entry); }

    // --- Records ---

    void ReadRecords() {
        for (const ObjectMap::Entry& entry : mMap.Entries()) {
            std::string_view kind;
            try {
                Object object = Open(entry);
                if (SumIsWrong(object))
                    mReading.Note(0, "object " + Shown(entry.handle) + " at byte " +
                                         std::to_string(entry.place) +
                                         ": its checksum is wrong, it may be damaged");
                kind = mKinds.NameOf(object.type);
                if (kind == "ATTRIB") mLosses.PassOver(kind, object.type);
                if (IsShapeKind(kind) || IsVertexKind(kind)) mShapes.push_back(entry);
                const bool isRecord = ReadRecord(kind, object);
                if (!isRecord)
                    CountUnread(kind, object);
                else
                    CheckRecord(mReading, kind, object);
                if (isRecord && !object.xdata.empty() && !KeepsData(kind)) mLosses.LeaveData(kind);
            } catch (const Damage& damage) {
                TellDamage(kind, entry, damage);
                mDamaged.insert(entry.handle);
            }
        }
    }

    /// False for what is no record.
    bool ReadRecord(std::string_view kind, Object& object) {
        DrawingData& data = mReading.data;
        if (kind == "LAYER") {
            HandleValue linetype = 0;
            LayerData layer = ReadLayer(object, linetype);
            mNames.layers[object.handle] = layer.name;
            if (!AddEntry(data.layers, mReading.layerPlaces, std::move(layer))) return true;
            mLinetypeOfLayer.emplace_back(data.layers.size() - 1, linetype);
            if (!object.xdata.empty()) mDataOfLayers.emplace_back(data.layers.size() - 1, object.xdata);
        } else if (kind == "LTYPE") {
            std::string groups;
            LinetypeData linetype = ReadLinetype(object, groups);
            mNames.linetypes[object.handle] = linetype.name;
            if (AddEntry(data.linetypes, mReading.linetypePlaces, std::move(linetype)) && !groups.empty())
                mTables.AddLinetype(data.linetypes.size() - 1, std::move(groups), object.xdata);
        } else if (kind == "STYLE") {
            ReadStyleRecord(object);
        } else if (kind == "VPORT" || kind == "VIEW") {
            ReadView(kind, object);
        } else if (kind == "APPID") {
            std::string name = ReadApplication(object);
            mNames.applications[object.handle] = name;
            if (!name.empty() && mReading.applicationNames.insert(name).second)
                data.applications.push_back(std::move(name));
        } else if (kind == "UCS") {
            UcsData ucs = ReadUcs(object);
            mNames.ucs[object.handle] = ucs.name;
            if (!AreAxes(ucs.xAxis, ucs.yAxis))
                mReading.Note(0, ShownHolder({kind, object.handle}) +
                                     ": its axes aren't at right angles or not of length 1");
            if (HasOwnName(ucs, !mReading.ucsNames.insert(ucs.name).second))
                data.namedUcs.push_back(std::move(ucs));
        } else if (kind == "BLOCK_RECORD") {
            mNames.blocks.push_back(ReadBlockRecord(object));
        } else if (kind == "BLOCK") {
            HandleValue record = 0;
            std::string name = ReadBlockName(object, record);
            mNames.begins[object.handle] = {record, std::move(name), object.xdata};
        } else if (kind == "DICTIONARY" || kind == "ACDBDICTIONARYWDFLT") {
            mNames.dictionaries[object.handle] = ReadDictionary(object);
            mLosses.Leave(object.handle, std::string(kind));
        } else if (kind == "GROUP") {
            mNames.groups.push_back(ReadGroup(object));
        } else if (kind == "LAYOUT") {
            const Layout& sheet = mNames.layouts[object.handle] = ReadLayout(object);
            if (sheet.groups.empty())
                mReading.Note(0, ShownHolder({"sheet " + ShownName(sheet.name), object.handle}) +
                                     " can't be read to its end: it gets the settings of a new one");
        } else if (kind.ends_with("_CONTROL")) {
            mMissing.TakeTable(kind, object);
        } else {
            return false;
        }
        return true;
    }

    void ReadStyleRecord(Object& object) {
        constexpr int flagShapes = 1;
        std::string groups;
        TextStyleData style = ReadStyle(object, groups);
        mNames.styles[object.handle] = style.name;
        if ((style.flags & flagShapes) != 0) mNames.shapeFiles.insert(object.handle);
        if ((style.flags & flagShapes) != 0 || style.name.empty())
            mTables.AddEntry("STYLE", object.handle, std::move(groups), object.xdata);
        else if (AddEntry(mReading.data.styles, mReading.stylePlaces, std::move(style)))
            mTables.AddStyle(mReading.data.styles.size() - 1, std::move(groups), object.xdata);
    }

    void ReadView(std::string_view kind, Object& object) {
        std::string name;
        std::string groups = kind == "VIEW" ? ReadNamedView(object) : ReadScreenView(object, name);
        mTables.AddEntry(kind == "VIEW" ? "VIEW" : "VPORT", object.handle, std::move(groups), object.xdata);
        if (EqualsIgnoreCase(name, "*Active")) mReading.data.fileHandles.emplace("VPORT", object.handle);
    }

    /// Objects that a drawing doesn't hold, but for those that every file has and a written one gets anew.
    void CountUnread(std::string_view kind, Object& object) {
        constexpr auto usual = std::to_array<std::string_view>({"BLOCK", "ENDBLK", "SEQEND", "VERTEX_2D",
                                                                "VERTEX_3D", "VERTEX_MESH", "VERTEX_PFACE",
                                                                "FACE_PFACE", "ATTRIB", "VX_TABLE_RECORD"});
        if (IsShapeKind(kind) || std::ranges::find(usual, kind) != usual.end()) return;
        if (mKinds.IsUnnamedClass(object.type)) mLosses.LeaveUnknown();
        mLosses.Leave(object.handle, KindOrType(kind, object.type));
    }

    /// A current style of a kind that isn't taken along.
    void TellStyle(std::string_view variable, HandleValue handle) {
        const ObjectMap::Entry* const entry = mMap.Find(handle);
        if (handle == 0) return;
        if (entry == nullptr) return mLinks.Drop("a style", handle, {variable});
        try {
            Object object = Open(*entry);
            ReadOwner(object);
            const std::string name = object.streams.Text();
            if (!EqualsIgnoreCase(name, "Standard"))
                mReading.Note(0,
                              std::string(variable) + " is " + ShownName(name) +
                                  ", a style that isn't taken along: \"Standard\" is current instead",
                              false);
        } catch (const Damage& damage) {
            if (!mDamaged.contains(handle)) TellDamage(variable, *entry, damage);
        }
    }

    template <typename Entry, typename Places>
    bool AddEntry(std::vector<Entry>& entries, Places& places, Entry entry) {
        if (!HasOwnName(entry, !places.emplace(entry.name, entries.size()).second)) return false;
        entries.push_back(std::move(entry));
        return true;
    }

    template <typename Entry>
    bool HasOwnName(const Entry& entry, bool isTaken) {
        if (!entry.name.empty() && !isTaken) return true;
        mReading.Note(0, "table entry " + ShownName(entry.name) + " " + Shown(entry.handle) +
                             " passed over: expected a name of its own");
        return false;
    }

    void TakeHeader() {
        DrawingData& data = mReading.data;
        data.handleSeed = std::max<HandleValue>(mHeader.handleSeed, 1);
        data.currentLayer =
            mLinks.NamedIfAny(mNames.layers, mHeader.currentLayer, "0", "a layer", {"$CLAYER"});
        TellStyle("$DIMSTYLE", mHeader.dimensionStyle);
        TellStyle("$CMLSTYLE", mHeader.multilineStyle);
        data.ucs.name =
            mLinks.NamedIfAny(mNames.ucs, mHeader.ucsName, "", "a coordinate system", {"$UCSNAME"});
        for (const auto& [place, linetype] : mLinetypeOfLayer)
            data.layers[place].linetype = mLinks.Named(mNames.linetypes, linetype, "Continuous",
                                                       "a line type", {"LAYER", data.layers[place].handle});
        for (const auto& [place, raw] : mDataOfLayers) TakeLayerData(data.layers[place], raw);
    }

    /// Transparency and description of a layer are extended data.
    void TakeLayerData(LayerData& layer, const std::vector<RawXData>& raw) {
        KeptGroups kept = layer.kept ? *layer.kept : KeptGroups();
        kept.further += GroupsOfXData(mValues.XDataOf("layer", layer.handle, raw));
        layer.kept = {std::make_shared<const KeptGroups>(std::move(kept))};
    }

    /// The BLOCK that a record refers to, or that which refers to the record.
    const Names::Begin* BeginOf(const Block& block) const {
        if (const auto begin = mNames.begins.find(block.begin); begin != mNames.begins.end())
            return &begin->second;
        for (const auto& [handle, begin] : mNames.begins)
            if (begin.record == block.record) return &begin;
        return nullptr;
    }

    /// Spaces by the header's handles, or by their names where the header is damaged.
    void NameBlocks() {
        for (Block& block : mNames.blocks) {
            const Names::Begin* const begin = BeginOf(block);
            if (begin == nullptr) mLinks.Drop("a BLOCK", block.begin, {"BLOCK_RECORD", block.record});
            CheckAnonymous(mReading, block);
            if (begin != nullptr) TakeBlockName(mReading, block, begin->name);
            block.name = CanonicalBlockName(block.name);
            if (block.record == mHeader.modelSpace) block.name = ModelSpaceName;
            if (block.record == mHeader.paperSpace) block.name = PaperSpaceName;
            mNames.blockNames[block.record] = block.name;
        }
        JoinSheets(mNames, mHeader, mSections.release, mReading);
    }

    // --- Entities ---

    void TakeBlock(const Block& block) {
        const std::size_t place = BlockPlace(mReading, block.name);
        if (!mTakenBlocks.insert(place).second) {
            mReading.Note(0, "block " + ShownName(block.name) + " " + Shown(block.record) +
                                 " passed over: expected a name of its own");
            return;
        }
        BlockData& data = mReading.data.blocks[place];
        data.base = block.base;
        data.flags = block.isAnonymous ? 1 : 0;
        mReading.recordOfBlock.emplace(block.name, block.record);
        const Names::Begin* const begin = BeginOf(block);
        KeepBlock(mReading, block, "0", begin == nullptr ? std::vector<RawXData>() : begin->xdata, mNamed);
        if (const auto layout = mNames.layouts.find(block.layout); layout != mNames.layouts.end())
            KeepLayout(mReading, layout->second, block, mNamed);
        if (block.isExternal)
            mReading.Note(0, "block " + ShownName(block.name) +
                                 " stands for another drawing, which isn't read: its parts are missing");
        int viewport = 0;
        for (const HandleValue handle : EntitiesOf(block)) TakeEntity(handle, place, viewport);
    }

    std::vector<HandleValue> EntitiesOf(const Block& block) {
        return mSections.release >= Release::R2004 ? block.entities
                                                   : Chain(block.first, block.last, block.name);
    }

    /// From one end of a chain to the other by the neighbours that each entity names. What can't be read
    /// there still has a neighbour.
    std::vector<HandleValue> Chain(HandleValue first, HandleValue last, std::string_view what) {
        std::vector<HandleValue> chain;
        HandleValue handle = first;
        while (handle != 0 && chain.size() <= mMap.Entries().size()) {
            chain.push_back(handle);
            if (handle == last) return chain;
            const ObjectMap::Entry* const entry = mMap.Find(handle);
            if (entry == nullptr) break;
            try {
                Object object = Open(*entry);
                handle = ReadCommon(object).next;
            } catch (const Damage&) {
                break;
            }
        }
        if (first == 0) return chain;
        mChainIsBroken = true;
        mReading.Note(0, "the chain of entities in " + ShownName(what) + " breaks off behind " +
                             Shown(chain.empty() ? first : chain.back()));
        return chain;
    }

    /// The entities that no block leads to. Up to release 2000 those that say themselves that they stand in
    /// model space are taken, where its chain has broken or leads past them.
    void TakeStrayEntities() {
        const std::size_t place = BlockPlace(mReading, std::string(ModelSpaceName));
        int viewport = 0;
        std::map<std::string_view, std::vector<HandleValue>> strays;
        for (const ObjectMap::Entry& entry : mShapes) {
            if (mSeen.contains(entry.handle) || mDamaged.contains(entry.handle)) continue;
            try {
                Object object = Open(entry);
                constexpr unsigned inModelSpace = 2;
                const Common common = ReadCommon(object);
                const std::string_view kind = mKinds.NameOf(object.type);
                if (mSections.release < Release::R2004 && IsShapeKind(kind) && common.mode == inModelSpace) {
                    if (!mChainIsBroken)
                        mReading.Note(0,
                                      "entity " + Shown(entry.handle) +
                                          " stands in model space, whose chain leads past it: it is taken");
                    TakeEntity(entry.handle, place, viewport);
                } else {
                    strays[kind].push_back(entry.handle);
                }
            } catch (const Damage& damage) {
                TellDamage({}, entry, damage);
            }
        }
        for (const auto& [kind, handles] : strays)
            mReading.Note(0, ShownHolders(kind, handles) + (handles.size() == 1 ? " is" : " are") +
                                 " left out: no " + (IsShapeKind(kind) ? "block" : "polyline") +
                                 " of the drawing has " + (handles.size() == 1 ? "it" : "them"));
    }

    void TakeEntity(HandleValue handle, std::size_t place, int& viewport) {
        if (mDamaged.contains(handle)) return;
        const ObjectMap::Entry* const entry = mMap.Find(handle);
        if (entry == nullptr) {
            mReading.Note(0, "entity " + Shown(handle) + " of block " +
                                 ShownName(mReading.data.blocks[place].name) +
                                 " is missing: the file has no such object");
            return;
        }
        std::string_view kind;
        try {
            Object object = Open(*entry);
            kind = mKinds.NameOf(object.type);
            if (!mSeen.insert(handle).second) throw Damage{entry->place * 8, "it stands in a second block"};
            if (!IsShapeKind(kind)) return mLosses.PassOver(kind, object.type);
            const Common common = ReadCommon(object);
            if (!mNames.groups.empty()) mGroupsOfEntities.Add(object);
            EntityData entity = mValues.EntityOf(kind, object, common);
            Further further;
            entity.geometry = ReadShape(object, common, kind, mSurroundings, further);
            CheckEnd(entity.geometry, {kind, handle}, mSections, mTexts, mMap, mKinds, mLinks);
            CheckOwner(mReading, {kind, handle}, common, mReading.data.blocks[place].name);
            mValues.KeepFurther(entity, kind, common, further);
            mLosses.Take(further, mReading);
            mBodyChecks.Take({kind, handle}, entity.geometry, further);
            CheckRecord(mReading, kind, object);
            if (further.doubt.empty()) further.doubt = ImpossibleIn(entity.geometry);
            if (!further.doubt.empty()) mReading.Note(0, ShownHolder({kind, handle}) + ": " + further.doubt);
            Finish(entity, viewport);
            mReading.data.blocks[place].entities.push_back(std::move(entity));
        } catch (const Damage& damage) {
            TellDamage(kind, *entry, damage);
        }
    }

    /// What every shape needs, whatever its kind.
    void Finish(EntityData& entity, int& viewport) {
        std::visit(
            [&](auto& shape) {
                if constexpr (requires { shape.normal; })
                    if (vectors::IsZero(shape.normal)) shape.normal = {0, 0, 1};
            },
            entity.geometry);
        auto* const view = std::get_if<ViewportData>(&entity.geometry);
        if (view == nullptr) return;
        view->status = view->id = ++viewport;
        for (const HandleValue layer : view->frozenLayers)
            mLinks.NamedIfAny(mNames.layers, layer, "none", "a layer", {"VIEWPORT", entity.handle});
    }

    std::vector<Object> Parts(const std::vector<HandleValue>& listed, HandleValue first, HandleValue last) {
        std::vector<Object> parts;
        const std::vector<HandleValue> handles =
            mSections.release >= Release::R2004 ? listed : Chain(first, last, "a polyline");
        bool areOwn = true;
        for (const HandleValue handle : handles) areOwn = mSeen.insert(handle).second && areOwn;
        if (!areOwn) throw Damage{0, "vertices of its own were expected"};
        for (const HandleValue handle : handles) {
            const ObjectMap::Entry* const entry = mMap.Find(handle);
            if (entry == nullptr) throw Damage{0, "vertex " + Shown(handle) + " was expected"};
            parts.push_back(Open(*entry));
            ReadCommon(parts.back());
        }
        return parts;
    }

    // --- Groups ---

    void TakeGroups() {
        const Dictionary& named = mNames.dictionaries[mHeader.groupDictionary];
        for (const auto& [name, handle] : named.entries)
            mMissing.Expect(handle, "GROUP", "group " + ShownName(name));
        const auto isKnown = [this](HandleValue member) {
            return mSeen.contains(member) || mDamaged.contains(member);
        };
        dwg::TakeGroups(mNames, named, mGroupsOfEntities, isKnown, mLinks, mReading);
    }

    Sections mSections;
    Texts mTexts;
    ObjectMap mMap;
    Kinds mKinds;
    Header mHeader;
    Names mNames;
    Reading mReading;
    std::unordered_map<HandleValue, std::string> mBodies;
    std::unordered_set<HandleValue> mDamaged;  ///< Reported already.
    bool mChainIsBroken = false;
    MissingRecords mMissing;
    GroupsOfEntities mGroupsOfEntities;
    Links mLinks;
    CommonValues mValues{{mSections, mTexts, mMap, mKinds, mHeader, mNames, mLinks, mReading}};
    std::vector<ObjectMap::Entry> mShapes;  ///< Entities that blocks hold, and the vertices of polylines.
    std::vector<std::pair<std::size_t, HandleValue>> mLinetypeOfLayer;
    std::vector<std::pair<std::size_t, std::vector<RawXData>>> mDataOfLayers;
    std::set<std::size_t> mTakenBlocks;
    std::set<HandleValue> mSeen;
    Losses mLosses;
    BodyChecks mBodyChecks;
    KeptTables mTables;
    const NamedXData mNamed = [this](std::string_view what, HandleValue handle,
                                     const std::vector<RawXData>& data) {
        return mValues.XDataOf(what, handle, data);
    };
    Surroundings mSurroundings{mNames, mBodies, mLinks,
                               [this](const std::vector<HandleValue>& listed, HandleValue first,
                                      HandleValue last) { return Parts(listed, first, last); }};
};

}  // namespace

DrawingData ReadDwg(std::string_view content, std::string_view fileName) {
    return DwgWalk(content, fileName).Run();
}

}  // namespace brenvik
