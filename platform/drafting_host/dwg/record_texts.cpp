// Table records and layouts that a drawing keeps as the text that a DXF file has of them: line types with
// texts and shapes, text styles, views, sheets.
#include "drafting_host/dwg/record_texts.h"

#include <algorithm>
#include <vector>

#include "drafting_host/dwg/records.h"
#include "drafting_host/dwg/table_data.h"

namespace brenvik::dwg {
namespace {

/// A dash, with the text or the shape that stands in it.
struct Dash {
    double length = 0;
    int shape = 0;
    Point3 offset;
    double scale = 1, turn = 0;
    unsigned flags = 0;
};
constexpr unsigned DashTurned = 1, DashText = 2, DashShape = 4;

/// The flags for texts that are always upright came with release 2013; older files may have them too.
Dash ReadDash(BitReader& data, bool keepsUpright) {
    Dash dash;
    dash.length = data.BitReal();
    dash.shape = data.BitShort();
    dash.offset.x = data.Real();
    dash.offset.y = data.Real();
    dash.scale = data.BitReal();
    dash.turn = data.BitReal();
    dash.flags = static_cast<unsigned>(data.BitShort());
    if (!keepsUpright) dash.flags &= DashTurned | DashText | DashShape;
    return dash;
}

/// The texts of all dashes, each at the place that its dash names.
class DashTexts {
  public:
    DashTexts(Streams& streams, bool areThere) : mTexts(*streams.texts) {
        constexpr std::size_t short_ = 256, long_ = 512;
        if (areThere) mBytes = streams.data.Bytes(streams.IsAtLeast(Release::R2007) ? long_ : short_);
    }

    std::string At(int place) const {
        const std::size_t at = static_cast<std::size_t>(std::max(place, 0)) * (mTexts.IsUnicode() ? 2 : 1);
        if (at >= mBytes.size()) return {};
        const std::string rest = mBytes.substr(at);
        return mTexts.IsUnicode() ? mTexts.FromUnits(rest) : mTexts.FromPage(rest);
    }

  private:
    const Texts& mTexts;
    std::string mBytes;
};

void AddDash(GroupText& groups, const Dash& dash, const DashTexts& texts, HandleValue style) {
    groups.Real(49, dash.length).Whole(74, static_cast<long>(dash.flags));
    if ((dash.flags & (DashText | DashShape)) == 0) return;
    const bool isText = (dash.flags & DashText) != 0;
    groups.Whole(75, isText ? 0 : dash.shape).Handle(340, style);
    groups.Real(46, dash.scale).Degrees(50, dash.turn);
    groups.Real(44, dash.offset.x).Real(45, dash.offset.y);
    if (isText) groups.Text(9, texts.At(dash.shape));
}

}  // namespace

LinetypeData ReadLinetype(Object& object, std::string& groups) {
    LinetypeData linetype;
    linetype.name = ReadRecordName(object);
    linetype.handle = object.handle;
    Streams& streams = object.streams;
    linetype.description = streams.Text();
    linetype.patternLength = streams.data.BitReal();
    streams.data.Byte();
    std::vector<Dash> dashes;
    unsigned kinds = 0;
    for (unsigned left = streams.data.Byte(); left > 0; --left) {
        dashes.push_back(ReadDash(streams.data, streams.IsAtLeast(Release::R2013)));
        linetype.dashes.push_back(dashes.back().length);
        kinds |= dashes.back().flags;
    }
    const DashTexts texts(streams, !streams.IsAtLeast(Release::R2007) || (kinds & DashText) != 0);
    std::vector<HandleValue> styles;
    for (std::size_t i = 0; i < dashes.size(); ++i) styles.push_back(streams.Handle());
    if ((kinds & (DashText | DashShape)) == 0) return linetype;
    GroupText record = RecordHead(object.handle, "AcDbLinetypeTableRecord", linetype.name);
    record.Whole(70, 0).Text(3, linetype.description).Whole(72, 65);
    record.Whole(73, static_cast<long>(dashes.size())).Real(40, linetype.patternLength);
    for (std::size_t i = 0; i < dashes.size(); ++i) AddDash(record, dashes[i], texts, styles[i]);
    groups = record.Take();
    return linetype;
}

TextStyleData ReadStyle(Object& object, std::string& groups) {
    constexpr int flagShapes = 1, flagVertical = 4;
    TextStyleData style;
    style.name = ReadRecordName(object);
    style.handle = object.handle;
    Streams& streams = object.streams;
    const bool isShapeFile = streams.data.Bit();
    const bool isVertical = streams.data.Bit();
    style.flags = (isShapeFile ? flagShapes : 0) | (isVertical ? flagVertical : 0);
    style.height = std::max(0.0, streams.data.BitReal());
    style.widthFactor = streams.data.BitReal();
    style.oblique = streams.data.BitReal();
    style.generation = streams.data.Byte() & 6;
    const double lastHeight = streams.data.BitReal();
    style.font = streams.Text();
    style.bigFont = streams.Text();
    GroupText record = RecordHead(object.handle, "AcDbTextStyleTableRecord", isShapeFile ? "" : style.name);
    record.Whole(70, style.flags).Real(40, style.height).Real(41, style.widthFactor);
    record.Degrees(50, style.oblique).Whole(71, style.generation).Real(42, lastHeight);
    record.Text(3, style.font).Text(4, style.bigFont);
    groups = record.Take();
    return style;
}

namespace {

/// What all views have of the eye and of what it sees.
struct Sight {
    double height = 0, width = 0;
    Point3 centre, target, direction;
    double twist = 0, lens = 0, front = 0, back = 0;
    unsigned mode = 0;
};

Sight ReadSight(BitReader& data) {
    Sight sight;
    sight.height = data.BitReal();
    sight.width = data.BitReal();
    sight.centre = data.FlatPoint();
    sight.target = data.BitPoint();
    sight.direction = data.BitPoint();
    sight.twist = data.BitReal();
    sight.lens = data.BitReal();
    sight.front = data.BitReal();
    sight.back = data.BitReal();
    // Perspective, the two cuts; the last bit is the other way round.
    constexpr unsigned cutAtEye = 16;
    for (const unsigned bit : {1U, 2U, 4U}) sight.mode |= data.Bit() ? bit : 0;
    sight.mode |= data.Bit() ? 0 : cutAtEye;
    return sight;
}

/// The coordinate system of a view.
void AddSystem(BitReader& data, GroupText& groups) {
    for (const int code : {110, 111, 112}) groups.Point(code, data.BitPoint());
    const double elevation = data.BitReal();
    groups.Whole(79, data.BitShort()).Real(146, elevation);
}

}  // namespace

std::string ReadScreenView(Object& object, std::string& name) {
    name = ReadRecordName(object);
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    const Sight sight = ReadSight(data);
    GroupText light;
    if (streams.IsAtLeast(Release::R2000)) light.Whole(281, data.Byte());
    if (streams.IsAtLeast(Release::R2007)) ReadViewLight(streams, light);
    GroupText groups = RecordHead(object.handle, "AcDbViewportTableRecord", name);
    groups.Whole(70, 0);
    const Point3 low = data.FlatPoint(), high = data.FlatPoint();
    groups.Flat(10, low).Flat(11, high).Flat(12, sight.centre);
    const bool followsSystem = data.Bit();
    const int circleZoom = data.BitShort();
    const bool fastZoom = data.Bit();
    const bool iconIsOn = data.Bit(), iconAtOrigin = data.Bit(), gridIsOn = data.Bit();
    const Point3 grid = data.FlatPoint();
    const bool snapIsOn = data.Bit(), snapIsIsometric = data.Bit();
    const int isometricPair = data.BitShort();
    const double snapTurn = data.BitReal();
    const Point3 snapBase = data.FlatPoint(), snap = data.FlatPoint();
    groups.Flat(13, snapBase).Flat(14, snap).Flat(15, grid);
    groups.Point(16, sight.direction).Point(17, sight.target);
    groups.Real(40, sight.height).Real(41, sight.height == 0 ? 1 : sight.width / sight.height);
    groups.Real(42, sight.lens).Real(43, sight.front).Real(44, sight.back);
    groups.Degrees(50, snapTurn).Degrees(51, sight.twist);
    groups.Whole(71, static_cast<long>(sight.mode | (followsSystem ? 8U : 0U))).Whole(72, circleZoom);
    groups.Whole(73, fastZoom ? 1 : 0).Whole(74, (iconIsOn ? 1 : 0) | (iconAtOrigin ? 2 : 0));
    groups.Whole(75, snapIsOn ? 1 : 0).Whole(76, gridIsOn ? 1 : 0).Whole(77, snapIsIsometric ? 1 : 0);
    groups.Whole(78, isometricPair).Raw(light.Take());
    if (streams.IsAtLeast(Release::R2000)) {
        data.Bit();
        groups.Whole(65, data.Bit() ? 1 : 0);
        AddSystem(data, groups);
    }
    if (streams.IsAtLeast(Release::R2007)) groups.Whole(60, data.BitShort()).Whole(61, data.BitShort());
    if (streams.IsAtLeast(Release::R2000)) SkipHandles(streams, streams.IsAtLeast(Release::R2007) ? 5 : 2);
    return groups.Take();
}

std::string ReadNamedView(Object& object) {
    const std::string name = ReadRecordName(object);
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    const Sight sight = ReadSight(data);
    const unsigned shading = streams.IsAtLeast(Release::R2000) ? data.Byte() : 0;
    if (streams.IsAtLeast(Release::R2007)) {
        GroupText light;  // texts of views have none
        ReadViewLight(streams, light);
    }
    GroupText groups = RecordHead(object.handle, "AcDbViewTableRecord", name);
    groups.Whole(70, data.Bit() ? 1 : 0);
    groups.Real(40, sight.height).Flat(10, sight.centre).Real(41, sight.width);
    groups.Point(11, sight.direction).Point(12, sight.target);
    groups.Real(42, sight.lens).Real(43, sight.front).Real(44, sight.back).Degrees(50, sight.twist);
    groups.Whole(71, static_cast<long>(sight.mode)).Whole(281, static_cast<long>(shading));
    bool hasSystem = false;
    if (streams.IsAtLeast(Release::R2000)) {
        hasSystem = data.Bit();
        groups.Whole(72, hasSystem ? 1 : 0);
        if (hasSystem) AddSystem(data, groups);
    }
    if (streams.IsAtLeast(Release::R2007)) groups.Whole(73, data.Bit() ? 1 : 0);
    SkipHandles(streams, (streams.IsAtLeast(Release::R2007) ? 4U : 0U) + (hasSystem ? 2U : 0U));
    return groups.Take();
}

namespace {

void AddReals(BitReader& data, GroupText& groups, std::initializer_list<int> codes) {
    for (const int code : codes) groups.Real(code, data.BitReal());
}

void AddShorts(BitReader& data, GroupText& groups, std::initializer_list<int> codes) {
    for (const int code : codes) groups.Whole(code, data.BitShort());
}

/// How a sheet is plotted, which stands in front of what it is.
void AddPlotSettings(Streams& streams, GroupText& groups) {
    BitReader& data = streams.data;
    groups.Text(100, "AcDbPlotSettings").Text(1, streams.Text()).Text(2, streams.Text());
    const int flags = data.BitShort();
    AddReals(data, groups, {40, 41, 42, 43, 44, 45});  // margins and paper
    groups.Text(4, streams.Text());
    AddReals(data, groups, {46, 47});
    AddShorts(data, groups, {72, 73, 74});
    AddReals(data, groups, {48, 49, 140, 141});  // what is plotted of a window
    groups.Text(6, streams.IsAtLeast(Release::R2004) ? std::string() : streams.Text());
    AddReals(data, groups, {142, 143});
    groups.Whole(70, flags).Text(7, streams.Text());
    AddShorts(data, groups, {75});
    AddReals(data, groups, {147, 148, 149});
    if (streams.IsAtLeast(Release::R2004)) AddShorts(data, groups, {76, 77, 78});
}

}  // namespace

Layout ReadLayout(Object& object) {
    Layout layout;
    layout.handle = object.handle;
    layout.dictionary = ReadOwner(object);
    layout.xdata = object.xdata;
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    GroupText groups;
    AddPlotSettings(streams, groups);
    layout.name = object.name = streams.Text();
    if (streams.IsAtLeast(Release::R2004)) streams.Handle();  // plot view
    if (streams.IsAtLeast(Release::R2007)) streams.Handle();  // visual style
    layout.block = streams.Handle();
    try {
        groups.Text(100, "AcDbLayout").Text(1, layout.name);
        const std::int32_t order = data.BitLong();
        groups.Whole(70, data.BitShort()).Whole(71, order);
        const Point3 origin = data.BitPoint();
        groups.Flat(10, data.FlatPoint()).Flat(11, data.FlatPoint());  // limits
        groups.Point(12, data.BitPoint());
        const Point3 xAxis = data.BitPoint(), yAxis = data.BitPoint();
        AddReals(data, groups, {146});
        const int view = data.BitShort();
        groups.Point(14, data.BitPoint()).Point(15, data.BitPoint());  // extents
        groups.Point(13, origin).Point(16, xAxis).Point(17, yAxis).Whole(76, view);
        const std::int32_t viewports = streams.IsAtLeast(Release::R2004) ? data.BitLong() : 0;
        constexpr unsigned lastViewportAndSystems = 3;
        SkipHandles(streams, lastViewportAndSystems);
        SkipHandles(streams, static_cast<unsigned>(streams.handles.Count(viewports, 8)));
        layout.groups = groups.Take();
    } catch (const Damage&) {
        // The sheet arrives all the same, with settings as a new one has them.
    }
    return layout;
}

}  // namespace brenvik::dwg
