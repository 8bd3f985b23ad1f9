// Texts and viewports.
#include <optional>

#include "drafting_host/dwg/entities.h"
#include "drafting_host/dwg/record_checks.h"
#include "drafting_host/dwg/table_data.h"

namespace brenvik::dwg {
namespace {

/// From release 2000 on, flags mark the values that are left out.
void ReadShortText(Streams& streams, TextData& text) {
    BitReader& data = streams.data;
    const unsigned flags = data.Byte();
    const auto has = [&](unsigned flag) { return (flags & flag) == 0; };
    const double elevation = has(1) ? data.Real() : 0;
    text.insertion = data.FlatPoint();
    text.insertion.z = elevation;
    if (has(2)) {
        Point3 alignment;
        alignment.x = data.RealNear(text.insertion.x);
        alignment.y = data.RealNear(text.insertion.y);
        alignment.z = elevation;
        text.alignment = alignment;
    }
    text.normal = data.Extrusion(true);
    text.thickness = data.Thickness(true);
    if (has(4)) text.oblique = data.Real();
    if (has(8)) text.rotation = data.Real();
    text.height = data.Real();
    if (has(16)) text.widthFactor = data.Real();
    text.text = streams.Text();
    if (has(32)) text.generation = data.BitShort() & 6;
    if (has(64)) text.horizontal = data.BitShort();
    if (has(128)) text.vertical = data.BitShort();
}

void ReadLongText(Streams& streams, TextData& text) {
    BitReader& data = streams.data;
    const double elevation = data.BitReal();
    text.insertion = data.FlatPoint();
    Point3 alignment = data.FlatPoint();
    text.insertion.z = alignment.z = elevation;
    text.normal = data.BitPoint();
    text.thickness = data.BitReal();
    text.oblique = data.BitReal();
    text.rotation = data.BitReal();
    text.height = data.BitReal();
    text.widthFactor = data.BitReal();
    text.text = streams.Text();
    text.generation = data.BitShort() & 6;
    text.horizontal = data.BitShort();
    text.vertical = data.BitShort();
    if (text.horizontal != 0 || text.vertical != 0) text.alignment = alignment;
}

}  // namespace

namespace {

std::string StyleOf(Object& object, const Surroundings& surroundings) {
    const HandleValue style = object.streams.Handle();
    static const NamesByHandle none;
    const bool isOfShapes = surroundings.names.shapeFiles.contains(style);
    return surroundings.links.Named(isOfShapes ? none : surroundings.names.styles, style, "Standard",
                                    "a text style", {"text", object.handle});
}

}  // namespace

EntityGeometry ReadText(Object& object, const Surroundings& surroundings) {
    Streams& streams = object.streams;
    TextData text;
    if (streams.IsAtLeast(Release::R2000))
        ReadShortText(streams, text);
    else
        ReadLongText(streams, text);
    text.style = StyleOf(object, surroundings);
    return text;
}

namespace {

/// The ground behind a text, and its frame. From release 2004 on.
void ReadGround(Streams& streams, GroupText& groups) {
    constexpr std::int32_t filled = 1, framed = 16;
    BitReader& data = streams.data;
    const std::int32_t ground = data.BitLong();
    if (ground == 0) return;
    groups.Whole(90, ground);
    const bool hasValues =
        (ground & filled) != 0 || (streams.IsAtLeast(Release::R2018) && (ground & framed) != 0);
    if (!hasValues) return;
    const double scale = data.BitReal();
    groups.Color(63, 421, ReadRecordColor(streams));
    groups.Real(45, scale).Whole(441, data.BitLong());
}

/// Behind the values of a text of release 2018 stands, unless it is of one scale, what its columns are.
bool HasColumns(Streams& streams) {
    if (!streams.IsAtLeast(Release::R2018)) return false;
    BitReader& data = streams.data;
    if (!data.Bit()) return false;
    data.BitShort();
    data.Bit();
    data.BitLong();
    data.BitPoint();
    data.BitPoint();
    for (int i = 0; i < 4; ++i) data.BitReal();
    const int columns = data.BitShort();
    streams.Handle();  // the application
    if (columns == 0) return false;
    constexpr int heightOfEach = 2;
    const std::size_t heights = data.Count(data.BitLong(), 2);
    data.BitReal();
    data.BitReal();
    const bool areEven = data.Bit();
    data.Bit();
    if (columns == heightOfEach && !areEven)
        for (std::size_t i = 0; i < heights; ++i) data.BitReal();
    return true;
}

}  // namespace

EntityGeometry ReadMText(Object& object, const Surroundings& surroundings, Further& further) {
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    GroupText groups;
    MTextData text;
    text.insertion = data.BitPoint();
    text.normal = data.BitPoint();
    text.direction = data.BitPoint();
    text.width = data.BitReal();
    if (streams.IsAtLeast(Release::R2007)) groups.Real(46, data.BitReal());
    text.height = data.BitReal();
    text.attachment = data.BitShort();
    text.flow = data.BitShort();
    data.BitReal();
    data.BitReal();
    text.text = streams.Text();
    text.style = StyleOf(object, surroundings);
    if (streams.IsAtLeast(Release::R2000)) {
        groups.Whole(73, data.BitShort());
        groups.Real(44, data.BitReal());
        data.Bit();
    }
    if (streams.IsAtLeast(Release::R2004)) ReadGround(streams, groups);
    further.losesColumns = HasColumns(streams);
    further.groups = groups.Take();
    further.doubt = ImpossibleIn("MTEXT", further.groups);
    return text;
}

namespace {

/// What a viewport has behind its frozen layers.
void ReadViewSettings(Streams& streams, GroupText& groups) {
    BitReader& data = streams.data;
    groups.Text(1, streams.Text()).Whole(281, data.Byte());
    const bool iconAtOrigin = data.Bit(), ownSystem = data.Bit();
    groups.Whole(71, ownSystem ? 1 : 0).Whole(74, iconAtOrigin ? 1 : 0);
    for (const int code : {110, 111, 112}) groups.Point(code, data.BitPoint());
    const double elevation = data.BitReal();
    groups.Whole(79, data.BitShort()).Real(146, elevation);
    if (streams.IsAtLeast(Release::R2004)) groups.Whole(170, data.BitShort());
}

}  // namespace

EntityGeometry ReadViewport(Object& object, Further& further) {
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    GroupText groups;
    ViewportData view;
    view.center = data.BitPoint();
    view.width = data.BitReal();
    view.height = data.BitReal();
    if (!streams.IsAtLeast(Release::R2000)) {
        SkipHandles(streams, 1);
        return view;
    }
    view.viewTarget = data.BitPoint();
    view.viewDirection = data.BitPoint();
    view.twist = data.BitReal();
    view.viewHeight = data.BitReal();
    view.lensLength = data.BitReal();
    view.frontClip = data.BitReal();
    view.backClip = data.BitReal();
    const double snapAngle = data.BitReal();
    const Point3 center = data.FlatPoint();
    view.viewCenter = {center.x, center.y};
    for (const int code : {13, 14, 15}) groups.Flat(code, data.FlatPoint());  // snap base, snap and grid
    groups.Degrees(50, snapAngle).Whole(72, data.BitShort());
    if (streams.IsAtLeast(Release::R2007)) groups.Whole(61, data.BitShort());
    const std::size_t frozen = streams.handles.Count(data.BitLong(), 8);
    view.statusFlags = data.BitLong();
    ReadViewSettings(streams, groups);
    if (streams.IsAtLeast(Release::R2007)) ReadViewLight(streams, groups);
    for (std::size_t i = 0; i < frozen; ++i) view.frozenLayers.push_back(streams.Handle());
    // Its outline, up to release 2000 its head, two coordinate systems, what it looks like.
    const bool hasHead = !streams.IsAtLeast(Release::R2004), hasLooks = streams.IsAtLeast(Release::R2007);
    SkipHandles(streams, 3U + (hasHead ? 1U : 0U) + (hasLooks ? 4U : 0U));
    further.groups = groups.Take();
    further.doubt = ImpossibleIn("VIEWPORT", further.groups);
    return view;
}

}  // namespace brenvik::dwg
