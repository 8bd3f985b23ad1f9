// Table records, dictionaries, groups and layouts.
#include <algorithm>
#include <utility>

#include "drafting_host/dwg/names.h"
#include "drafting_host/dxf/aci_colors.h"
#include "drafting_host/dxf/kept_text.h"

namespace brenvik::dwg {
namespace {

/// What every table record begins with: its name, and where it came from.
std::string ReadName(Object& object) {
    ReadOwner(object);
    Streams& streams = object.streams;
    std::string name = streams.Text();
    if (streams.IsAtLeast(Release::R2007)) {
        streams.data.BitShort();
    } else {
        streams.data.Bit();
        streams.data.BitShort();
        streams.data.Bit();
    }
    streams.Handle();  // the block of an external drawing
    return name;
}

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

LayerData ReadLayer(Object& object, HandleValue& linetype) {
    LayerData layer;
    bool isFrozenInNewViews = false;
    layer.name = ReadName(object);
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
    if (color.trueColor)
        layer.color = NearestColorIndex({static_cast<std::uint8_t>(*color.trueColor >> 16U),
                                         static_cast<std::uint8_t>(*color.trueColor >> 8U),
                                         static_cast<std::uint8_t>(*color.trueColor)});
    layer.kept = GroupsOfLayer(color.trueColor, isFrozenInNewViews);
    if (streams.IsAtLeast(Release::R2000)) streams.Handle();  // plot style
    if (streams.IsAtLeast(Release::R2007)) streams.Handle();  // material
    linetype = HandleIfAny(streams);
    return layer;
}

LinetypeData ReadLinetype(Object& object) {
    LinetypeData linetype;
    linetype.name = ReadName(object);
    linetype.handle = object.handle;
    Streams& streams = object.streams;
    linetype.description = streams.Text();
    linetype.patternLength = streams.data.BitReal();
    streams.data.Byte();
    for (unsigned dashes = streams.data.Byte(); dashes > 0; --dashes) {
        linetype.dashes.push_back(streams.data.BitReal());
        streams.data.BitShort();
        streams.data.Real();
        streams.data.Real();
        streams.data.BitReal();
        streams.data.BitReal();
        streams.data.BitShort();
    }
    return linetype;
}

TextStyleData ReadStyle(Object& object, bool& isShapeFile) {
    TextStyleData style;
    style.name = ReadName(object);
    style.handle = object.handle;
    Streams& streams = object.streams;
    const bool isVertical = streams.data.Bit();
    isShapeFile = streams.data.Bit();
    style.flags = (isShapeFile ? 1 : 0) | (isVertical ? 4 : 0);
    style.height = std::max(0.0, streams.data.BitReal());
    style.widthFactor = streams.data.BitReal();
    style.oblique = streams.data.BitReal();
    style.generation = streams.data.Byte() & 6;
    streams.data.BitReal();
    style.font = streams.Text();
    style.bigFont = streams.Text();
    return style;
}

UcsData ReadUcs(Object& object) {
    UcsData ucs;
    ucs.name = ReadName(object);
    ucs.handle = object.handle;
    ucs.origin = object.streams.data.BitPoint();
    ucs.xAxis = object.streams.data.BitPoint();
    ucs.yAxis = object.streams.data.BitPoint();
    return ucs;
}

std::string ReadApplication(Object& object) { return ReadName(object); }

Block ReadBlockRecord(Object& object) {
    Block block;
    block.name = ReadName(object);
    block.record = object.handle;
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    block.isAnonymous = data.Bit();
    data.Bit();
    const bool isReference = data.Bit(), isOverlay = data.Bit();
    block.isExternal = isReference || isOverlay;
    if (streams.IsAtLeast(Release::R2000)) data.Bit();
    std::size_t owned = 0;
    if (streams.IsAtLeast(Release::R2004) && !block.isExternal)
        owned = streams.handles.Count(data.BitLong(), 8);
    block.base = data.BitPoint();
    streams.Text();
    std::size_t inserts = 0;
    if (streams.IsAtLeast(Release::R2000)) {
        while (data.Byte() != 0) ++inserts;
        streams.Text();
        const auto preview = static_cast<std::uint32_t>(data.BitLong());
        data.Skip(std::size_t{preview} * 8);
    }
    streams.Handle();  // the BLOCK entity
    if (streams.IsAtLeast(Release::R2004)) {
        for (std::size_t i = 0; i < owned; ++i) block.entities.push_back(streams.Handle());
    } else if (!block.isExternal) {
        block.first = streams.Handle();
        block.last = streams.Handle();
    }
    streams.Handle();  // ENDBLK
    if (streams.IsAtLeast(Release::R2000)) {
        for (std::size_t i = 0; i < inserts; ++i) streams.Handle();
        block.layout = HandleIfAny(streams);
    }
    return block;
}

std::string ReadBlockName(Object& object, HandleValue& record) {
    const Common common = ReadCommon(object);
    record = common.owner;
    return object.streams.Text();
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

Layout ReadLayout(Object& object) {
    ReadOwner(object);
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    const auto reals = [&](int count) {
        for (; count > 0; --count) data.BitReal();
    };
    streams.Text();
    streams.Text();
    data.BitShort();
    reals(6);
    streams.Text();
    reals(2);
    for (int i = 0; i < 3; ++i) data.BitShort();
    reals(4);
    if (!streams.IsAtLeast(Release::R2004)) streams.Text();
    reals(2);
    streams.Text();
    data.BitShort();
    reals(3);
    if (streams.IsAtLeast(Release::R2004))
        for (int i = 0; i < 3; ++i) data.BitShort();
    Layout layout;
    layout.name = streams.Text();
    if (streams.IsAtLeast(Release::R2004)) streams.Handle();  // plot view
    if (streams.IsAtLeast(Release::R2007)) streams.Handle();  // visual style
    layout.block = streams.Handle();
    return layout;
}

}  // namespace brenvik::dwg
