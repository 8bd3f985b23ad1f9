// Table records of which a drawing has the values, dictionaries and groups.
#include "drafting_host/dwg/records.h"

#include <algorithm>
#include <utility>

#include "drafting_host/dwg/table_data.h"
#include "drafting_host/dxf/data/kept_text.h"

namespace brenvik::dwg {
namespace {

/// A layer's further properties; empty if it has none.
Kept<KeptGroups> GroupsOfLayer(std::optional<std::uint32_t> trueColor, bool isFrozenInNewViews) {
    constexpr int frozenInNewViews = 2;
    if (!trueColor && !isFrozenInNewViews) return {};
    KeptGroups kept;
    if (trueColor) kept.own = GroupsOfTrueColor(*trueColor, true)->own;
    if (isFrozenInNewViews) kept.flags = frozenInNewViews;
    return {std::make_shared<const KeptGroups>(std::move(kept))};
}

/// A record of handles that is shorter than a release has it ends there.
HandleValue HandleIfAny(Streams& streams) { return streams.handles.Left() < 8 ? 0 : streams.Handle(); }

}  // namespace

std::string ReadRecordName(Object& object) {
    ReadOwner(object);
    Streams& streams = object.streams;
    std::string name = streams.Text();
    if (streams.IsAtLeast(Release::R2007)) {
        constexpr unsigned dependent = 256;
        object.isDependent = (static_cast<unsigned>(streams.data.BitShort()) & dependent) != 0;
    } else {
        streams.data.Bit();
        streams.data.BitShort();
        object.isDependent = streams.data.Bit();
    }
    streams.Handle();  // the block of an external drawing
    object.name = name;
    return name;
}

LayerData ReadLayer(Object& object, HandleValue& linetype) {
    LayerData layer;
    bool isFrozenInNewViews = false;
    layer.name = ReadRecordName(object);
    layer.handle = object.handle;
    Streams& streams = object.streams;
    if (streams.IsAtLeast(Release::R2000)) {
        const auto flags = static_cast<unsigned>(streams.data.BitShort());
        layer.frozen = (flags & 1U) != 0;
        isFrozenInNewViews = (flags & 4U) != 0;
        layer.on = (flags & 2U) == 0;
        layer.locked = (flags & 8U) != 0;
        layer.plottable = (flags & 16U) != 0;
        layer.lineweight = LineweightOf((flags >> 5U) & 31U);
    } else {
        layer.frozen = streams.data.Bit();
        layer.on = !streams.data.Bit();
        isFrozenInNewViews = streams.data.Bit();
        layer.locked = streams.data.Bit();
    }
    const RecordColor color = ReadRecordColor(streams);
    constexpr int usual = 7, last = 255;
    const int index = std::abs(color.index);
    if (color.index < 0) layer.on = false;
    layer.color = index >= 1 && index <= last ? index : usual;
    if (color.trueColor) layer.color = IndexOf(color);
    layer.kept = GroupsOfLayer(color.trueColor, isFrozenInNewViews);
    if (streams.IsAtLeast(Release::R2000)) streams.Handle();  // plot style
    if (streams.IsAtLeast(Release::R2007)) streams.Handle();  // material
    linetype = HandleIfAny(streams);
    if (streams.IsAtLeast(Release::R2013)) HandleIfAny(streams);  // visual style
    return layer;
}

UcsData ReadUcs(Object& object) {
    UcsData ucs;
    ucs.name = ReadRecordName(object);
    ucs.handle = object.handle;
    ucs.origin = object.streams.data.BitPoint();
    ucs.xAxis = object.streams.data.BitPoint();
    ucs.yAxis = object.streams.data.BitPoint();
    return ucs;
}

std::string ReadApplication(Object& object) {
    std::string name = ReadRecordName(object);
    object.streams.data.Byte();
    return name;
}

Block ReadBlockRecord(Object& object) {
    Block block;
    block.name = ReadRecordName(object);
    block.record = object.handle;
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    block.isAnonymous = data.Bit();
    data.Bit();
    const bool isReference = data.Bit();
    block.isOverlay = data.Bit();
    block.isExternal = isReference || block.isOverlay;
    if (streams.IsAtLeast(Release::R2000)) data.Bit();
    std::size_t owned = 0;
    if (streams.IsAtLeast(Release::R2004) && !block.isExternal)
        owned = streams.handles.Count(data.BitLong(), 8);
    block.base = data.BitPoint();
    block.drawing = streams.Text();
    block.xdata = object.xdata;
    std::size_t inserts = 0;
    if (streams.IsAtLeast(Release::R2000)) {
        while (data.Byte() != 0) ++inserts;
        block.description = streams.Text();
        const std::size_t size = data.Count(data.BitLong(), 8);
        const std::string picture = data.Bytes(size);
        GroupText groups;
        if (streams.IsAtLeast(Release::R2007)) {
            groups.Whole(70, data.BitShort());
            groups.Whole(280, data.Bit() ? 1 : 0);
            groups.Whole(281, data.Byte());
        }
        block.groups = groups.Bytes(310, picture).Take();
    }
    block.begin = streams.Handle();
    if (streams.IsAtLeast(Release::R2004)) {
        for (std::size_t i = 0; i < owned; ++i) block.entities.push_back(streams.Handle());
    } else if (!block.isExternal) {
        block.first = streams.Handle();
        block.last = streams.Handle();
    }
    streams.Handle();  // ENDBLK
    if (streams.IsAtLeast(Release::R2000)) {
        for (std::size_t i = 0; i < inserts; ++i) block.references.push_back(streams.Handle());
        block.layout = HandleIfAny(streams);
    }
    return block;
}

std::string ReadBlockName(Object& object, HandleValue& record) {
    const Common common = ReadCommon(object);
    record = common.owner;
    object.isDependent = true;  // its record says whether it is
    return object.name = object.streams.Text();
}

Dictionary ReadDictionary(Object& object) {
    ReadOwner(object);
    Streams& streams = object.streams;
    const std::size_t count = streams.handles.Count(streams.data.BitLong(), 8);
    if (streams.release == Release::R14) streams.data.Byte();
    if (streams.IsAtLeast(Release::R2000)) {
        streams.data.BitShort();
        streams.data.Byte();
    }
    Dictionary dictionary;
    for (std::size_t i = 0; i < count; ++i) dictionary.entries.emplace_back(streams.Text(), 0);
    for (auto& [key, handle] : dictionary.entries) handle = streams.Handle();
    return dictionary;
}

GroupData ReadGroup(Object& object) {
    ReadOwner(object);
    Streams& streams = object.streams;
    GroupData group;
    group.handle = object.handle;
    group.description = streams.Text();
    streams.data.BitShort();
    group.selectable = streams.data.BitShort() != 0;
    const std::size_t count = streams.handles.Count(streams.data.BitLong(), 8);
    for (std::size_t i = 0; i < count; ++i) group.members.push_back(streams.Handle());
    return group;
}

}  // namespace brenvik::dwg
