// Texts and viewports.
#include <optional>

#include "drafting_host/dwg/entities.h"

namespace brenvik::dwg {
namespace {

/// From release 2000 on flags tell which values are left out.
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

EntityGeometry ReadText(Object& object, const Surroundings& surroundings) {
    Streams& streams = object.streams;
    TextData text;
    if (streams.IsAtLeast(Release::R2000)) {
        ReadShortText(streams, text);
    } else {
        ReadLongText(streams, text);
    }
    text.style = NameOr(surroundings.names.styles, streams.Handle(), "Standard");
    return text;
}

EntityGeometry ReadMText(Object& object, const Surroundings& surroundings) {
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    MTextData text;
    text.insertion = data.BitPoint();
    text.normal = data.BitPoint();
    text.direction = data.BitPoint();
    text.width = data.BitReal();
    if (streams.IsAtLeast(Release::R2007)) data.BitReal();
    text.height = data.BitReal();
    text.attachment = data.BitShort();
    text.flow = data.BitShort();
    data.BitReal();
    data.BitReal();
    text.text = streams.Text();
    text.style = NameOr(surroundings.names.styles, streams.Handle(), "Standard");
    return text;
}

EntityGeometry ReadViewport(Object& object) {
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    ViewportData view;
    view.center = data.BitPoint();
    view.width = data.BitReal();
    view.height = data.BitReal();
    if (!streams.IsAtLeast(Release::R2000)) return view;
    view.viewTarget = data.BitPoint();
    view.viewDirection = data.BitPoint();
    view.twist = data.BitReal();
    view.viewHeight = data.BitReal();
    view.lensLength = data.BitReal();
    view.frontClip = data.BitReal();
    view.backClip = data.BitReal();
    data.BitReal();
    const Point3 center = data.FlatPoint();
    view.viewCenter = {center.x, center.y};
    for (int i = 0; i < 3; ++i) data.FlatPoint();
    data.BitShort();
    if (streams.IsAtLeast(Release::R2007)) data.BitShort();
    const std::size_t frozen = streams.handles.Count(data.BitLong(), 8);
    view.statusFlags = data.BitLong();
    for (std::size_t i = 0; i < frozen; ++i) view.frozenLayers.push_back(streams.Handle());
    return view;
}

}  // namespace brenvik::dwg
