// The drafting host as the system sees it: the members of its object model that the system counts on, named
// after it, some of which nobody calls yet. Lengths are drawing units, angles radians, points world
// coordinates. Every operation that the host refuses throws Failure; the document owns its objects, and a
// pointer stays good while the document is open: an erased object answers with a Failure.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace brenvik {

struct Point3 {
    double x = 0, y = 0, z = 0;
    friend bool operator==(const Point3&, const Point3&) = default;
};

/// Corners of an axis-aligned box, minimum first.
struct Box3 {
    Point3 min, max;
};

/// A row-major 4 by 4 transform, applied to column points.
using Matrix4 = std::array<std::array<double, 4>, 4>;

/// One item of extended data: text (codes 1000 to 1005), a real (1040 to 1042), a 16-bit or 32-bit
/// integer (1070, 1071), a point (1010 to 1013), or a chunk of bytes (1004).
using XDataValue =
    std::variant<std::string, double, std::int16_t, std::int32_t, Point3, std::vector<std::uint8_t>>;

/// The longest text, in characters, that one item of extended data takes.
inline constexpr std::size_t XDataTextLimit = 255;

/// How `AcadSelectionSet::Select` fills a set. The numbers are the host's own.
enum class SelectMode { Previous = 3, Last = 4, All = 5 };

enum class BooleanKind { Union = 0, Intersection = 1, Subtraction = 2 };

/// How `IntersectWith` may extend its two entities. The numbers are the host's own.
enum class ExtendOption { None = 0, This = 1, Other = 2, Both = 3 };

enum class CoordinateSystem { World = 0, UserCoordinates = 1 };

enum class ActiveSpaceKind { PaperSpace = 0, ModelSpace = 1 };

enum class WindowStateKind { Normal = 1, Minimized = 2, Maximized = 3 };

/// The file type of `AcadDocument::SaveAs`: the drawing's own form, or DXF of release 2000.
enum class SaveAsKind { Native = 12, Dxf2000 = 13 };

class AcadObject {
  public:
    virtual ~AcadObject() = default;

    /// Hexadecimal text, upper case, stable in a drawing: the identity of a part's row.
    virtual std::string Handle() const = 0;
    /// The class name, such as "AcDb3dSolid".
    virtual std::string_view ObjectName() const = 0;
    /// What the solid measuring component is given; unique among the open documents.
    virtual std::int32_t ObjectID() const = 0;
    /// Extended data of one application, its application entry (1001) first. Both arrays come back
    /// empty when the object has none.
    virtual void GetXData(std::string_view appName, std::vector<std::int16_t>& types,
                          std::vector<XDataValue>& values) const = 0;
    /// Sets the data of the application named in the first item (1001). An application name new to the
    /// drawing is registered. Only an application entry clears that application's data. A text longer
    /// than XDataTextLimit, or a first item that is no application entry, fails and changes nothing.
    virtual void SetXData(std::span<const std::int16_t> types, std::span<const XDataValue> values) = 0;
    virtual void Delete() = 0;
};

class AcadEntity : public AcadObject {
  public:
    virtual std::string Layer() const = 0;
    /// Fails for a layer that the drawing doesn't hold.
    virtual void SetLayer(std::string_view name) = 0;
    virtual std::string Linetype() const = 0;
    virtual void SetLinetype(std::string_view name) = 0;
    virtual double LinetypeScale() const = 0;
    virtual void SetLinetypeScale(double scale) = 0;
    virtual bool Visible() const = 0;
    /// Fails for an entity on a locked layer, as every change of such an entity does.
    virtual void SetVisible(bool visible) = 0;
    /// Colour index: 0 by block, 1 to 255, 256 by layer.
    virtual int Color() const = 0;
    virtual void SetColor(int color) = 0;

    virtual void Highlight(bool on) = 0;
    virtual void Update() = 0;
    /// A copy in the same space, with extended data and a handle of its own.
    virtual AcadEntity* Copy() = 0;
    virtual void Move(const Point3& from, const Point3& to) = 0;
    /// Turns about the Z direction through a point.
    virtual void Rotate(const Point3& base, double angle) = 0;
    virtual void Rotate3D(const Point3& axisFrom, const Point3& axisTo, double angle) = 0;
    /// A mirrored copy; the mirror stands on the XY plane through two points.
    virtual AcadEntity* Mirror(const Point3& first, const Point3& second) = 0;
    virtual AcadEntity* Mirror3D(const Point3& first, const Point3& second, const Point3& third) = 0;
    virtual void ScaleEntity(const Point3& base, double factor) = 0;
    /// Fails for a matrix that is not a rigid move with an even scale (mirrors included).
    virtual void TransformBy(const Matrix4& matrix) = 0;
    /// The box in world axes, exact: no gap and no mesh.
    virtual Box3 GetBoundingBox() const = 0;
    virtual std::vector<Point3> IntersectWith(const AcadEntity& other, ExtendOption option) const = 0;
};

class AcadLine : public virtual AcadEntity {
  public:
    virtual Point3 StartPoint() const = 0;
    virtual Point3 EndPoint() const = 0;
    virtual Point3 Delta() const = 0;
    /// Of the line's image in the XY plane, from the X axis.
    virtual double Angle() const = 0;
    virtual double Length() const = 0;
    virtual Point3 Normal() const = 0;
    /// The ends stay where they are; fails for a vector without length.
    virtual void SetNormal(const Point3& normal) = 0;
};

class AcadArc : public virtual AcadEntity {
  public:
    virtual Point3 Center() const = 0;
    virtual double Radius() const = 0;
    /// Angles run counter-clockwise about the normal from the arc's own X axis.
    virtual double StartAngle() const = 0;
    virtual double EndAngle() const = 0;
    virtual Point3 StartPoint() const = 0;
    virtual Point3 EndPoint() const = 0;
    virtual Point3 Normal() const = 0;
};

class AcadCircle : public virtual AcadEntity {
  public:
    virtual Point3 Center() const = 0;
    virtual void SetCenter(const Point3& center) = 0;
    virtual double Radius() const = 0;
    virtual double Diameter() const = 0;
    virtual Point3 Normal() const = 0;
    /// The centre stays where it is in the world; fails for a vector without length.
    virtual void SetNormal(const Point3& normal) = 0;
    virtual double Thickness() const = 0;
    virtual void SetThickness(double thickness) = 0;
};

/// A lightweight polyline: plane, with bulges for arcs.
class AcadLWPolyline : public virtual AcadEntity {
  public:
    /// X and Y of each vertex in the polyline's own plane, one after another.
    virtual std::vector<double> Coordinates() const = 0;
    virtual void SetCoordinates(std::span<const double> coordinates) = 0;
    virtual double Elevation() const = 0;
    virtual void SetElevation(double elevation) = 0;
    virtual double Thickness() const = 0;
    virtual void SetThickness(double thickness) = 0;
    virtual Point3 Normal() const = 0;
    virtual bool Closed() const = 0;
    virtual void SetClosed(bool closed) = 0;
    /// The bulge of the segment that begins at a vertex (from 0): the tangent of a quarter of its
    /// angle, positive when it runs counter-clockwise.
    virtual double GetBulge(int vertex) const = 0;
    virtual void SetBulge(int vertex, double bulge) = 0;
    virtual double Area() const = 0;
    /// New lines and arcs in the same space; the polyline itself stays.
    virtual std::vector<AcadEntity*> Explode() = 0;
};

/// A polyline in space, straight from vertex to vertex.
class Acad3DPolyline : public virtual AcadEntity {
  public:
    /// X, Y and Z of each vertex, one after another.
    virtual std::vector<double> Coordinates() const = 0;
    virtual bool Closed() const = 0;
    virtual void SetClosed(bool closed) = 0;
    virtual double Thickness() const = 0;
    virtual void SetThickness(double thickness) = 0;
};

class AcadRegion : public virtual AcadEntity {
  public:
    virtual double Area() const = 0;
    virtual Point3 Normal() const = 0;
    virtual void Boolean(BooleanKind kind, AcadRegion& other) = 0;
    virtual std::vector<AcadEntity*> Explode() = 0;
};

class Acad3DSolid : public virtual AcadEntity {
  public:
    virtual double Volume() const = 0;
    virtual Point3 Centroid() const = 0;
    /// The other solid is used up. A subtraction that removes nothing leaves this solid untouched to
    /// the last bit of its volume.
    virtual void Boolean(BooleanKind kind, Acad3DSolid& other) = 0;
    /// The section by the plane through three points, as a region; fails where the plane misses.
    virtual AcadRegion* SectionSolid(const Point3& first, const Point3& second, const Point3& third) = 0;
};

class AcadBlockReference : public virtual AcadEntity {
  public:
    virtual std::string Name() const = 0;
    virtual Point3 InsertionPoint() const = 0;
    virtual std::vector<AcadEntity*> Explode() = 0;
};

class AcadPViewport : public virtual AcadEntity {
  public:
    virtual Point3 Center() const = 0;
    virtual double Width() const = 0;
    virtual double Height() const = 0;
    virtual void Display(bool on) = 0;
};

/// Model space, paper space, or a block: entities in drawing order.
class AcadBlock {
  public:
    virtual ~AcadBlock() = default;
    virtual std::string Name() const = 0;
    virtual int Count() const = 0;
    /// By position from 0; fails outside.
    virtual AcadEntity* Item(int index) = 0;
    /// Walks the entities that stand here at the start of the walk.
    virtual void ForEach(const std::function<void(AcadEntity&)>& visit) = 0;

    virtual AcadLine* AddLine(const Point3& start, const Point3& end) = 0;
    virtual AcadCircle* AddCircle(const Point3& center, double radius) = 0;
    virtual AcadArc* AddArc(const Point3& center, double radius, double startAngle, double endAngle) = 0;
    /// X and Y of each vertex, one after another, in the XY plane.
    virtual AcadLWPolyline* AddLightWeightPolyline(std::span<const double> coordinates) = 0;
    /// X, Y and Z of each vertex, one after another.
    virtual Acad3DPolyline* Add3DPoly(std::span<const double> coordinates) = 0;
    /// One region for each closed loop that the curves make; fails when they make none. The curves stay.
    virtual std::vector<AcadRegion*> AddRegion(std::span<AcadEntity* const> curves) = 0;
    /// Along the region's normal for a positive height; taper in radians. The region stays.
    virtual Acad3DSolid* AddExtrudedSolid(AcadRegion& region, double height, double taper) = 0;
    virtual Acad3DSolid* AddBox(const Point3& center, double length, double width, double height) = 0;
    virtual Acad3DSolid* AddCylinder(const Point3& center, double radius, double height) = 0;
    virtual AcadPViewport* AddPViewport(const Point3& center, double width, double height) = 0;
};

class AcadLayer {
  public:
    virtual ~AcadLayer() = default;
    virtual std::string Name() const = 0;
    virtual int Color() const = 0;
    virtual void SetColor(int color) = 0;
    virtual bool Freeze() const = 0;
    virtual void SetFreeze(bool freeze) = 0;
    virtual bool LayerOn() const = 0;
    virtual void SetLayerOn(bool on) = 0;
    virtual bool Lock() const = 0;
    virtual void SetLock(bool lock) = 0;
};

class AcadLayers {
  public:
    virtual ~AcadLayers() = default;
    virtual int Count() const = 0;
    virtual AcadLayer* Item(int index) = 0;
    /// Names compare without regard to case; fails when the name is unknown.
    virtual AcadLayer* Item(std::string_view name) = 0;
    /// The layer of that name, made if the drawing holds none; fails for a name that the host refuses.
    virtual AcadLayer* Add(std::string_view name) = 0;
};

class AcadGroup {
  public:
    virtual ~AcadGroup() = default;
    virtual std::string Name() const = 0;
    virtual int Count() const = 0;
    virtual AcadEntity* Item(int index) = 0;
    virtual void AppendItems(std::span<AcadEntity* const> items) = 0;
    virtual void Delete() = 0;
};

class AcadGroups {
  public:
    virtual ~AcadGroups() = default;
    virtual int Count() const = 0;
    virtual AcadGroup* Item(int index) = 0;
    virtual AcadGroup* Item(std::string_view name) = 0;
    /// An existing group of that name is given back.
    virtual AcadGroup* Add(std::string_view name) = 0;
};

class AcadBlocks {
  public:
    virtual ~AcadBlocks() = default;
    virtual int Count() const = 0;
    virtual AcadBlock* Item(int index) = 0;
    virtual AcadBlock* Item(std::string_view name) = 0;
};

class AcadSelectionSet {
  public:
    virtual ~AcadSelectionSet() = default;
    virtual std::string Name() const = 0;
    virtual int Count() const = 0;
    virtual AcadEntity* Item(int index) = 0;
    virtual void Highlight(bool on) = 0;
    /// Erases the members from the drawing.
    virtual void Erase() = 0;
    virtual void Update() = 0;
    virtual void AddItems(std::span<AcadEntity* const> items) = 0;
    virtual void RemoveItems(std::span<AcadEntity* const> items) = 0;
    virtual void Clear() = 0;
    /// Adds what the mode takes; an empty previous selection adds nothing.
    virtual void Select(SelectMode mode) = 0;
    virtual void SelectAtPoint(const Point3& point) = 0;
    virtual void SelectByPolygon(std::span<const Point3> polygon) = 0;
    virtual void SelectOnScreen() = 0;
    /// Removes the set from its collection; the members stay in the drawing.
    virtual void Delete() = 0;
};

class AcadSelectionSets {
  public:
    virtual ~AcadSelectionSets() = default;
    virtual int Count() const = 0;
    /// Fails when the name is unknown.
    virtual AcadSelectionSet* Item(std::string_view name) = 0;
    /// Fails when the name exists.
    virtual AcadSelectionSet* Add(std::string_view name) = 0;
};

class AcadUtility {
  public:
    virtual ~AcadUtility() = default;
    /// Asks on the host's command line. A cancelled prompt fails.
    virtual Point3 GetPoint(std::string_view prompt) = 0;
    virtual double GetReal(std::string_view prompt) = 0;
    /// A blank ends the answer unless blanks are allowed.
    virtual std::string GetString(bool blanksAllowed, std::string_view prompt) = 0;
    virtual std::string GetKeyword(std::string_view prompt) = 0;
    virtual void Prompt(std::string_view text) = 0;
    virtual Point3 TranslateCoordinates(const Point3& point, CoordinateSystem from, CoordinateSystem to) = 0;
};

class AcadApplication;

class AcadDocument {
  public:
    virtual ~AcadDocument() = default;
    virtual AcadApplication& Application() = 0;
    /// File name without its folder, and with it; both are blank for a drawing never saved.
    virtual std::string Name() const = 0;
    virtual std::string FullName() const = 0;

    virtual AcadSelectionSets& SelectionSets() = 0;
    virtual AcadBlock& ModelSpace() = 0;
    virtual AcadBlock& PaperSpace() = 0;
    virtual AcadBlocks& Blocks() = 0;
    virtual AcadGroups& Groups() = 0;
    virtual AcadLayers& Layers() = 0;
    virtual AcadUtility& Utility() = 0;
    /// The object with this handle, or null when there is none or it was erased.
    virtual AcadObject* HandleToObject(std::string_view handle) = 0;

    /// Types text on the host's command line, where a blank or a carriage return ends an answer. What
    /// the text sets going has been done when the call returns.
    virtual void SendCommand(std::string_view text) = 0;

    virtual void Save() = 0;
    virtual void SaveAs(std::string_view fileName, SaveAsKind kind) = 0;
    /// Writes the set's entities as a drawing of their own, in the present user coordinate system.
    virtual void Wblock(std::string_view fileName, AcadSelectionSet& set) = 0;
    virtual void PurgeAll() = 0;
    virtual void Close(bool saveChanges) = 0;

    virtual ActiveSpaceKind ActiveSpace() const = 0;
    virtual void SetActiveSpace(ActiveSpaceKind space) = 0;
    virtual bool MSpace() const = 0;
    virtual void SetMSpace(bool on) = 0;
    virtual AcadPViewport* ActivePViewport() = 0;
    /// Makes a viewport of paper space the one that is entered, and the one that commands mean by the
    /// current one. Fails for a viewport that is off or of another drawing.
    virtual void SetActivePViewport(AcadPViewport& viewport) = 0;
    virtual AcadLayer* ActiveLayer() = 0;
    virtual void SetActiveLayer(AcadLayer& layer) = 0;
    virtual std::string ActiveLayout() const = 0;
    /// Origin, X axis and Y axis of the user coordinate system, in world coordinates.
    virtual std::array<Point3, 3> ActiveUCS() const = 0;
};

class AcadDocuments {
  public:
    virtual ~AcadDocuments() = default;
    virtual int Count() const = 0;
    virtual AcadDocument* Item(int index) = 0;
    /// Opens a drawing and makes it the active one.
    virtual AcadDocument* Open(std::string_view fileName) = 0;
};

class AcadApplication {
  public:
    virtual ~AcadApplication() = default;
    /// Fails when no document is open.
    virtual AcadDocument* ActiveDocument() = 0;
    virtual AcadDocuments& Documents() = 0;
    virtual WindowStateKind WindowState() const = 0;
    virtual void SetWindowState(WindowStateKind state) = 0;
    virtual void ZoomExtents() = 0;
};

}  // namespace brenvik
