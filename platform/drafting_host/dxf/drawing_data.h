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

#include "session/host_interface.h"

namespace brenvik {

using HandleValue = std::uint64_t;

/// One item of extended data with its group code.
struct XDataItem {
    std::int16_t code = 1000;
    XDataValue value;
};

/// Extended data of one application, without the application entry itself.
struct XDataOfApp {
    std::string app;
    std::vector<XDataItem> items;
};

struct LineData {
    Point3 start, end;
    double thickness = 0;
    Point3 normal{0, 0, 1};
};
/// Centre in the world; angles counter-clockwise about the normal from the plane's own X axis.
struct ArcData {
    Point3 center;
    double radius = 0, startAngle = 0, endAngle = 0, thickness = 0;
    Point3 normal{0, 0, 1};
};
struct CircleData {
    Point3 center;
    double radius = 0, thickness = 0;
    Point3 normal{0, 0, 1};
};
/// The major axis runs from the centre to its end; parameters as in the DXF.
struct EllipseData {
    Point3 center, majorAxis, normal{0, 0, 1};
    double ratio = 1, startParameter = 0, endParameter = 6.283185307179586;
};
struct SplineData {
    int degree = 3, flags = 0;
    Point3 normal{0, 0, 1};
    std::vector<double> knots, weights;
    std::vector<Point3> controlPoints, fitPoints;
};
/// Vertices in the polyline's own plane.
struct LWPolylineData {
    struct Vertex {
        double x = 0, y = 0, bulge = 0, startWidth = 0, endWidth = 0;
    };
    std::vector<Vertex> vertices;
    bool closed = false;
    int flags = 0;  ///< Group 70 as read, for the linetype bit; `closed` decides bit 1.
    double constantWidth = 0, elevation = 0, thickness = 0;
    Point3 normal{0, 0, 1};
};
/// An old-style polyline: plane ("AcDb2dPolyline", vertices in its own plane), in space
/// ("AcDb3dPolyline"), a polygon mesh or a polyface mesh, told apart by the flags of group 70.
struct PolylineData {
    struct Vertex {
        Point3 point;
        double bulge = 0, startWidth = 0, endWidth = 0;
        int flags = 0;
        std::array<int, 4> faceIndices{};
        HandleValue handle = 0;
    };
    std::vector<Vertex> vertices;
    int flags = 0, mCount = 0, nCount = 0, mDensity = 0, nDensity = 0, surfaceType = 0;
    double elevation = 0, thickness = 0;
    Point3 normal{0, 0, 1};
    HandleValue seqendHandle = 0;
};
struct PointData {
    Point3 position;
    double thickness = 0;
    Point3 normal{0, 0, 1};
};
/// TEXT and ATTRIB/ATTDEF-free: insertion in the entity's own plane, as the file has it.
struct TextData {
    Point3 insertion;
    std::optional<Point3> alignment;
    double height = 1, rotation = 0, widthFactor = 1, oblique = 0, thickness = 0;
    int horizontal = 0, vertical = 0, generation = 0;
    std::string text, style = "Standard";
    Point3 normal{0, 0, 1};
};
struct MTextData {
    Point3 insertion, normal{0, 0, 1};
    std::optional<Point3> direction;
    double height = 1, width = 0, rotation = 0;
    int attachment = 1, flow = 1;
    std::string text, style = "Standard";
};
/// A block reference; insertion in its own plane.
struct InsertData {
    std::string block;
    Point3 insertion, scale{1, 1, 1}, normal{0, 0, 1};
    double rotation = 0;
    int columns = 1, rows = 1;
    double columnSpacing = 0, rowSpacing = 0;
};
/// SOLID and TRACE (corners in the own plane), 3DFACE (corners in the world).
struct QuadData {
    enum class Kind { Solid, Trace, Face } kind = Kind::Solid;
    std::array<Point3, 4> corners{};
    int edgeFlags = 0;
    double thickness = 0;
    Point3 normal{0, 0, 1};
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
};
/// 3DSOLID, REGION or BODY: the ACIS text in clear, lines ended by "\n". `firstLine` is the line of the
/// file at which the body's text begins, for messages.
struct AcisData {
    enum class Kind { Solid, Region, Body } kind = Kind::Solid;
    std::string text;
    std::size_t firstLine = 0;
};

using EntityGeometry = std::variant<LineData, ArcData, CircleData, EllipseData, SplineData, LWPolylineData,
                                    PolylineData, PointData, TextData, MTextData, InsertData, QuadData,
                                    ViewportData, AcisData>;

struct EntityData {
    HandleValue handle = 0;  ///< 0: the writer gives one.
    std::string layer = "0", linetype = "ByLayer";
    double linetypeScale = 1;
    int color = 256;  ///< 0 by block, 256 by layer.
    bool visible = true;
    EntityGeometry geometry;
    std::vector<XDataOfApp> xdata;
};

struct LayerData {
    HandleValue handle = 0;
    std::string name;
    int color = 7;
    std::string linetype = "Continuous";
    bool on = true, frozen = false, locked = false, plottable = true;
};
struct LinetypeData {
    HandleValue handle = 0;
    std::string name, description;
    double patternLength = 0;
    std::vector<double> dashes;
};
struct TextStyleData {
    HandleValue handle = 0;
    std::string name, font = "txt", bigFont;
    double height = 0, widthFactor = 1, oblique = 0;
    int flags = 0, generation = 0;
};
struct UcsData {
    HandleValue handle = 0;
    std::string name;
    Point3 origin, xAxis{1, 0, 0}, yAxis{0, 1, 0};
};
struct GroupData {
    HandleValue handle = 0;
    std::string name, description;
    bool selectable = true;
    std::vector<HandleValue> members;
};
/// Model space and paper space are the blocks "*Model_Space" and "*Paper_Space".
struct BlockData {
    HandleValue handle = 0;  ///< Of the block record.
    std::string name;
    Point3 base;
    int flags = 0;
    std::vector<EntityData> entities;
};

/// Something in a file that could not be taken over: where it stands and what it is.
struct ReadNote {
    std::size_t line = 0;   ///< Of the file, from 1; 0 when there is none.
    std::string text;       ///< Says what was found, what was expected, and what became of it.
    bool dataLost = true;   ///< False for things passed over on purpose that hold no part of the job.
};

struct DrawingData {
    std::string version = "AC1015";  ///< As read; files are always written as AC1015.
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
    std::map<std::string, std::vector<std::pair<int, std::string>>> headerVariables;  ///< Others, as read.
    std::vector<ReadNote> notes;
};

}  // namespace brenvik
