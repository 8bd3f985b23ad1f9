// A drawing as plain values: what a DXF file holds and what the drafting host's document is made of.
// Lengths are drawing units, angles radians (the reader converts the file's degrees), text is UTF-8.
// Curves are kept as analytic values with their normal; coordinates are world coordinates unless a
// member says that they lie in the entity's own plane (the DXF "object coordinate system").
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "drafting_host/dxf/data/kept_records.h"
#include "session/ports/host_interface.h"

namespace brenvik {

/// One item of extended data with its group code.
struct XDataItem {
    std::int16_t code = 1000;
    XDataValue value;
    friend bool operator==(const XDataItem&, const XDataItem&) = default;
};

/// Extended data of one application, without the application entry itself.
struct XDataOfApp {
    std::string app;
    std::vector<XDataItem> items;
    friend bool operator==(const XDataOfApp&, const XDataOfApp&) = default;
};

struct LineData {
    Point3 start, end;
    double thickness = 0;
    Point3 normal{0, 0, 1};
    friend bool operator==(const LineData&, const LineData&) = default;
};
/// Centre in the world; angles counter-clockwise about the normal from the plane's own X axis.
struct ArcData {
    Point3 center;
    double radius = 0, startAngle = 0, endAngle = 0, thickness = 0;
    Point3 normal{0, 0, 1};
    friend bool operator==(const ArcData&, const ArcData&) = default;
};
struct CircleData {
    Point3 center;
    double radius = 0, thickness = 0;
    Point3 normal{0, 0, 1};
    friend bool operator==(const CircleData&, const CircleData&) = default;
};
/// The major axis runs from the centre to its end; parameters as in the DXF.
struct EllipseData {
    Point3 center, majorAxis, normal{0, 0, 1};
    double ratio = 1, startParameter = 0, endParameter = 6.283185307179586;
    friend bool operator==(const EllipseData&, const EllipseData&) = default;
};
struct SplineData {
    int degree = 3, flags = 0;
    Point3 normal{0, 0, 1};
    std::vector<double> knots, weights;
    std::vector<Point3> controlPoints, fitPoints;
    friend bool operator==(const SplineData&, const SplineData&) = default;
};
/// Vertices in the polyline's own plane.
struct LWPolylineData {
    struct Vertex {
        double x = 0, y = 0, bulge = 0, startWidth = 0, endWidth = 0;
        friend bool operator==(const Vertex&, const Vertex&) = default;
    };
    std::vector<Vertex> vertices;
    bool closed = false;
    int flags = 0;  ///< Group 70 without bit 1, which `closed` stands for: 128 runs linetypes through.
    double constantWidth = 0, elevation = 0, thickness = 0;
    Point3 normal{0, 0, 1};
    friend bool operator==(const LWPolylineData&, const LWPolylineData&) = default;
};
/// An old-style polyline: plane ("AcDb2dPolyline", vertices in its own plane), in space ("AcDb3dPolyline"), a
/// polygon mesh or a polyface mesh, distinguished by the flags of group 70.
struct PolylineData {
    struct Vertex {
        Point3 point;
        double bulge = 0, startWidth = 0, endWidth = 0;
        int flags = 0;
        std::array<int, 4> faceIndices{};
        HandleValue handle = 0;
        friend bool operator==(const Vertex&, const Vertex&) = default;
    };
    std::vector<Vertex> vertices;
    int flags = 0, mCount = 0, nCount = 0, mDensity = 0, nDensity = 0, surfaceType = 0;
    double elevation = 0, thickness = 0;
    Point3 normal{0, 0, 1};
    HandleValue seqendHandle = 0;
    friend bool operator==(const PolylineData&, const PolylineData&) = default;
};
struct PointData {
    Point3 position;
    double thickness = 0;
    Point3 normal{0, 0, 1};
    friend bool operator==(const PointData&, const PointData&) = default;
};
/// TEXT and ATTRIB/ATTDEF-free: insertion in the entity's own plane, as the file has it.
struct TextData {
    Point3 insertion;
    std::optional<Point3> alignment;
    double height = 1, rotation = 0, widthFactor = 1, oblique = 0, thickness = 0;
    int horizontal = 0, vertical = 0, generation = 0;
    std::string text, style = "Standard";
    Point3 normal{0, 0, 1};
    friend bool operator==(const TextData&, const TextData&) = default;
};
struct MTextData {
    Point3 insertion, normal{0, 0, 1};
    std::optional<Point3> direction;
    double height = 1, width = 0, rotation = 0;
    int attachment = 1, flow = 1;
    std::string text, style = "Standard";
    friend bool operator==(const MTextData&, const MTextData&) = default;
};
/// A block reference; insertion in its own plane.
struct InsertData {
    std::string block;
    Point3 insertion, scale{1, 1, 1}, normal{0, 0, 1};
    double rotation = 0;
    int columns = 1, rows = 1;
    double columnSpacing = 0, rowSpacing = 0;
    friend bool operator==(const InsertData&, const InsertData&) = default;
};
/// SOLID and TRACE (corners in the own plane), 3DFACE (corners in the world).
struct QuadData {
    enum class Kind { Solid, Trace, Face } kind = Kind::Solid;
    std::array<Point3, 4> corners{};
    int edgeFlags = 0;
    double thickness = 0;
    Point3 normal{0, 0, 1};
    friend bool operator==(const QuadData&, const QuadData&) = default;
};
struct ViewportData {
    Point3 center;
    double width = 0, height = 0;
    int status = 1, id = 1;
    Point3 viewTarget, viewDirection{0, 0, 1};
    std::array<double, 2> viewCenter{};
    double viewHeight = 1, twist = 0, lensLength = 50, frontClip = 0, backClip = 0;
    int statusFlags = 0;
    std::vector<HandleValue> frozenLayers;
    friend bool operator==(const ViewportData&, const ViewportData&) = default;
};
/// 3DSOLID, REGION or BODY: its ACIS text in clear, lines ended by "\n", or its binary ACIS data (SAB), which
/// begin at `firstLine` of the file, for messages (0 in a binary file).
struct AcisData {
    enum class Kind { Solid, Region, Body } kind = Kind::Solid;
    std::string text;
    std::size_t firstLine = 0;
    friend bool operator==(const AcisData&, const AcisData&) = default;
};

using EntityGeometry =
    std::variant<LineData, ArcData, CircleData, EllipseData, SplineData, LWPolylineData, PolylineData,
                 PointData, TextData, MTextData, InsertData, QuadData, ViewportData, AcisData>;

struct EntityData {
    HandleValue handle = 0;  ///< 0: the writer gives one.
    std::string layer = "0", linetype = "ByLayer";
    double linetypeScale = 1;
    int color = 256;  ///< 0 by block, 256 by layer.
    bool visible = true;
    int lineweight = -1;  ///< Hundredths of a millimetre; -1 by layer, -2 by block, -3 the default.
    EntityGeometry geometry;
    std::vector<XDataOfApp> xdata;
    Kept<KeptGroups> kept{};
    friend bool operator==(const EntityData&, const EntityData&) = default;
};

struct LayerData {
    HandleValue handle = 0;
    std::string name;
    int color = 7;
    std::string linetype = "Continuous";
    bool on = true, frozen = false, locked = false, plottable = true;
    int lineweight = -3;  ///< As an entity's.
    Kept<KeptGroups> kept{};
    friend bool operator==(const LayerData&, const LayerData&) = default;
};
struct LinetypeData {
    HandleValue handle = 0;
    std::string name, description;
    double patternLength = 0;
    std::vector<double> dashes;
    Kept<KeptRecord> kept{};  ///< The whole record.
    friend bool operator==(const LinetypeData&, const LinetypeData&) = default;
};
struct TextStyleData {
    HandleValue handle = 0;
    std::string name, font = "txt", bigFont;
    double height = 0, widthFactor = 1, oblique = 0;
    int flags = 0, generation = 0;
    Kept<KeptRecord> kept{};  ///< The whole record.
    friend bool operator==(const TextStyleData&, const TextStyleData&) = default;
};
struct UcsData {
    HandleValue handle = 0;
    std::string name;
    Point3 origin, xAxis{1, 0, 0}, yAxis{0, 1, 0};
    Kept<KeptGroups> kept{};
    friend bool operator==(const UcsData&, const UcsData&) = default;
};
struct GroupData {
    HandleValue handle = 0;
    std::string name, description;
    bool selectable = true;
    std::vector<HandleValue> members;
    friend bool operator==(const GroupData&, const GroupData&) = default;
};
/// Model space and paper space are the blocks "*Model_Space" and "*Paper_Space", further layouts
/// "*Paper_Space0" and on.
struct BlockData {
    HandleValue handle = 0;  ///< Of the block record.
    std::string name;
    Point3 base;
    int flags = 0;           ///< Bit 1: anonymous.
    std::string layoutName;  ///< Of a space: the name on its tab ("Model", "Layout1").
    std::vector<EntityData> entities;
    Kept<KeptBlock> kept{};
    friend bool operator==(const BlockData&, const BlockData&) = default;
};

/// Something in a file that could not be taken over: where it stands and what it is.
struct ReadNote {
    std::size_t line = 0;  ///< Of the file, from 1; 0 when there is none.
    std::string text;      ///< Names what was found, what was expected, and the outcome.
    bool dataLost = true;  ///< False for things passed over on purpose that hold no part of the job.
    bool isKept = false;   ///< A drawing saved again still holds it.
    friend bool operator==(const ReadNote&, const ReadNote&) = default;
};

struct DrawingData {
    std::string version = "AC1015";  ///< As read; WriteDxf chooses the release to write.
    std::string codePage = "ANSI_1252";
    int insertUnits = 0, measurement = 0;
    HandleValue handleSeed = 1;  ///< Above every handle used.
    UcsData ucs;                 ///< The present user coordinate system of model space.
    std::string currentLayer = "0";
    std::vector<LayerData> layers;
    std::vector<LinetypeData> linetypes;
    std::vector<TextStyleData> styles;
    std::vector<UcsData> namedUcs;
    std::vector<std::string> applications;  ///< Registered application names.
    std::vector<BlockData> blocks;          ///< "*Model_Space" first, "*Paper_Space" second, then the others.
    std::vector<GroupData> groups;
    /// The other variables that release 2000 knows, as read (DxfHeaderVariables names them).
    std::map<std::string, std::vector<std::pair<int, std::string>>> headerVariables;
    /// Handles of what a file needs and a drawing doesn't (tables, dictionaries, the begin and end of a
    /// block), so that a drawing written again gives the same bytes. May be empty: new ones are given.
    std::map<std::string, HandleValue> fileHandles;
    std::vector<ReadNote> notes;
    Kept<KeptFile> file{};  ///< Nothing for a drawing that was made here.
    friend bool operator==(const DrawingData&, const DrawingData&) = default;
};

}  // namespace brenvik
