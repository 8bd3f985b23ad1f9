// The reader of the proof says what each entity does; here it is turned back into the file's own plan and put
// into words.
#include "cnc/picture/part_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "base/text.h"
#include "cnc/part/lengths.h"
#include "cnc/plan/plan_piece.h"
#include "cnc/plan/plan_sides.h"
#include "cnc/plan/plan_vectors.h"
#include "cnc/proof/operation_names.h"
#include "cnc/proof/target_of_names.h"
#include "cnc/proof/written_side.h"

namespace brenvik {

namespace {

/// A round side whose middle strays from its chord by less than this is straight, in any unit.
constexpr double NoArch = 1e-9;
constexpr int WordDecimals = 3;
/// How much less than the part's thickness still goes right through it, in millimetres.
constexpr double ThroughSlack = 1e-3;

/// The flat path that the second vertex leads away from.
std::vector<PlanSide> SidesOfSpacePath(const Acad3DPolyline& path) {
    const std::vector<double> at = path.Coordinates();
    std::vector<PlanPoint> corners;
    for (std::size_t i = 0; i + 2 < at.size(); i += 3) corners.push_back({at[i], at[i + 1]});
    std::vector<PlanSide> sides = SidesAround(corners);
    if (!path.Closed() && !sides.empty()) sides.pop_back();
    return sides;
}

std::vector<PlanSide> SidesOfAny(const AcadEntity& entity, bool& closed) {
    if (const auto* circle = dynamic_cast<const AcadCircle*>(&entity)) return SidesOf(*circle);
    if (const auto* sheet = dynamic_cast<const Acad3DPolyline*>(&entity)) {
        closed = sheet->Closed();
        return SidesOfSpacePath(*sheet);
    }
    if (const auto* polyline = dynamic_cast<const AcadLWPolyline*>(&entity)) {
        std::vector<PlanSide> sides = SidesOf(*polyline);
        closed = polyline->Closed();
        if (!closed && !sides.empty()) sides.pop_back();
        return sides;
    }
    if (const auto* line = dynamic_cast<const AcadLine*>(&entity)) {
        closed = false;
        return {{{line->StartPoint().x, line->StartPoint().y}, {line->EndPoint().x, line->EndPoint().y}, 0}};
    }
    return {};
}

/// A bore as seen from above: a rectangle of its depth and diameter.
std::vector<PlanSide> PlanOf(const LevelRound& bore, double depth) {
    const PlanPoint mouth{bore.on.x, bore.on.y}, into{bore.along.x, bore.along.y};
    const PlanPoint across{-into.y * bore.radius, into.x * bore.radius};
    return SidesAround({{mouth.x - across.x, mouth.y - across.y},
                        {mouth.x + into.x * depth - across.x, mouth.y + into.y * depth - across.y},
                        {mouth.x + into.x * depth + across.x, mouth.y + into.y * depth + across.y},
                        {mouth.x + across.x, mouth.y + across.y}});
}

/// The proof sees a second side from the first; a picture shows the file as it is. The reader is given no
/// width, so it only mirrors what it reads.
void TurnBack(WrittenOperation& operation) {
    for (PlanSide& side : operation.sides) {
        side.from.y = -side.from.y;
        side.to.y = -side.to.y;
        side.bulge = -side.bulge;
    }
    if (!operation.bore) return;
    operation.bore->on.y = -operation.bore->on.y;
    operation.bore->along.y = -operation.bore->along.y;
}

/// What shapes take up.
struct Frame {
    PlanPoint low, high;
    bool any = false;

    void Take(const PlanPoint& point) {
        if (!any) low = high = point;
        any = true;
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }
    /// A round side reaches beyond its ends where it passes an outermost point of its circle.
    void Take(const PlanSide& side) {
        std::vector<PlanPiece> pieces;
        AddPieces(side, NoArch, pieces);
        Take(side.from);
        Take(side.to);
        for (const PlanPiece& piece : pieces) {
            Take(PlanPoint{piece.x0, piece.Lowest(piece.x0, piece.x1)});
            Take(PlanPoint{piece.x1, piece.Highest(piece.x0, piece.x1)});
        }
    }
};

class PictureReader {
  public:
    PictureReader(const PictureContext& context, PartPicture& picture)
        : mContext(context), mPicture(picture) {}

    void Read(AcadDocument& drawing) {
        mPicture.metric = mContext.metric;
        std::vector<std::string> layers;
        drawing.ModelSpace().ForEach([&](AcadEntity& entity) { layers.push_back(entity.Layer()); });
        mPicture.target = TargetOfNames(layers, mContext.metric, mContext.tools);
        drawing.ModelSpace().ForEach([this](AcadEntity& entity) { LookForSheet(entity); });
        drawing.ModelSpace().ForEach([this](AcadEntity& entity) { Take(entity); });
        std::ranges::stable_sort(mPicture.shapes, {}, &PictureShape::kind);
        Measure();
    }

  private:
    NameContext Names(std::optional<double> depth) const {
        return {mPicture.target, mContext.metric, mContext.tools, depth};
    }

    void LookForSheet(const AcadEntity& entity) {
        const auto* sheet = dynamic_cast<const Acad3DPolyline*>(&entity);
        if (sheet == nullptr) return;
        const std::optional<OperationName> name =
            ReadOperationName(Names(sheet->Thickness()), entity.Layer());
        if (!name || name->kind != OperationKind::Sheet) return;
        const double thickness = sheet->Thickness() != 0 ? sheet->Thickness() : name->depth.value_or(0);
        if (thickness > 0) mPicture.thickness = thickness;
    }

    void Take(const AcadEntity& entity) {
        const SideContext context{
            mPicture.target, mContext.metric, mContext.secondSide, 0, mPicture.thickness.value_or(0),
            mContext.tools};
        WrittenSide read;
        ReadWrittenEntity(entity, context, read);
        mPicture.faults.insert(mPicture.faults.end(), read.faults.begin(), read.faults.end());
        for (WrittenOperation& operation : read.operations) Add(operation);
        if (!read.operations.empty()) return;
        PictureShape shape;
        shape.layer = entity.Layer();
        shape.sides = SidesOfAny(entity, shape.closed);
        if (read.faults.empty()) {
            shape.kind = PictureKind::Sheet;
            shape.words = "sheet" + (mPicture.thickness ? " " + Words(*mPicture.thickness) + " thick" : "");
        } else {
            shape.words = read.faults.front();
        }
        mPicture.shapes.push_back(std::move(shape));
    }

    void Add(WrittenOperation& operation) {
        if (operation.secondSide) TurnBack(operation);
        PictureShape shape;
        shape.layer = operation.layer;
        shape.kind = KindOf(operation);
        shape.words = WordsOf(operation, shape.kind);
        shape.sides =
            operation.bore ? PlanOf(*operation.bore, operation.boreDepth) : std::move(operation.sides);
        mPicture.shapes.push_back(std::move(shape));
    }

    bool GoesThrough(double depth) const {
        const double slack = ThroughSlack * MillimetreIn(mContext.metric);
        return mPicture.thickness && depth >= *mPicture.thickness - slack;
    }
    static double DepthOf(const WrittenOperation& operation) {
        return operation.bore ? operation.boreDepth : operation.high - operation.low;
    }

    PictureKind KindOf(const WrittenOperation& operation) const {
        switch (operation.kind) {
            case OperationKind::Outline:
                return PictureKind::Outline;
            case OperationKind::Hole:
                return GoesThrough(DepthOf(operation)) ? PictureKind::ThroughHole : PictureKind::Hole;
            case OperationKind::Bore:
                return PictureKind::Bore;
            case OperationKind::Pocket:
                return PictureKind::Pocket;
            case OperationKind::Route:
            case OperationKind::Path:
                return GoesThrough(DepthOf(operation)) ? PictureKind::CutOut : PictureKind::Route;
            case OperationKind::Sheet:
                break;
        }
        return PictureKind::Sheet;
    }

    std::string Words(double length) const { return LengthInWords(length, mContext.metric); }

    std::string WordsOf(const WrittenOperation& operation, PictureKind kind) const {
        const double depth = DepthOf(operation);
        const std::optional<OperationName> name = ReadOperationName(Names(depth), operation.layer);
        std::string words(StyleOf(kind).words);
        if (operation.bore)
            words += " " + Words(2 * operation.bore->radius);
        else if (operation.kind == OperationKind::Hole)
            words += " " + Words(Distance(operation.sides.front().from, operation.sides.front().to));
        words += ", " + Words(depth) + " deep";
        if (operation.bore && !operation.heightUnknown)
            words +=
                ", axis " + HeightWords(operation) + (mPicture.thickness ? " above the underside" : " high");
        if (!name) return words;
        if (!name->tool.empty()) words += ", tool " + name->tool;
        if (operation.kind != OperationKind::Hole && !operation.bore && name->diameter)
            words += ", bit " + Words(*name->diameter);
        return words;
    }

    std::string HeightWords(const WrittenOperation& operation) const {
        const double height = operation.bore->on.z;
        return Words(operation.secondSide ? mPicture.thickness.value_or(0) - height : height);
    }

    void Measure() {
        const Frame all = FrameOf([](const PictureShape&) { return true; });
        mPicture.low = all.low;
        mPicture.high = all.high;
        Frame board = FrameOf([](const PictureShape& shape) { return shape.kind == PictureKind::Sheet; });
        if (!board.any)
            board = FrameOf([](const PictureShape& shape) { return shape.kind == PictureKind::Outline; });
        // Paths run off the board's edges.
        if (!board.any) board = all;
        mPicture.length = board.high.x - board.low.x;
        mPicture.width = board.high.y - board.low.y;
    }

    template <class Wanted>
    Frame FrameOf(const Wanted& wanted) const {
        Frame frame;
        for (const PictureShape& shape : mPicture.shapes)
            if (wanted(shape))
                for (const PlanSide& side : shape.sides) frame.Take(side);
        return frame;
    }

    const PictureContext& mContext;
    PartPicture& mPicture;
};

}  // namespace

const PictureStyle& StyleOf(PictureKind kind) {
    // Chosen to differ for colour-blind eyes too, on white and on wood.
    static constexpr std::array<PictureStyle, 9> styles{
        {{"sheet", "sheet", "#9aa0a6", "#f6efe2"},
         {"outline", "outline", "#1b1b1b", "none"},
         {"cut-out", "cut-out", "#b3261e", "#ffffff"},
         {"pocket", "pocket", "#1f5fbf", "#cfe0f7"},
         {"route", "route", "#6a3fb5", "#e5dbf5"},
         {"through-hole", "hole right through", "#b3261e", "#ffffff"},
         {"hole", "hole", "#0b7a4b", "#bfe8d3"},
         {"bore", "edge bore", "#c25e00", "#ffe0bf"},
         {"unread", "not understood", "#ff00aa", "none"}}};
    return styles[static_cast<std::size_t>(kind)];
}

std::size_t PartPicture::CountOf(PictureKind kind) const {
    return static_cast<std::size_t>(std::ranges::count(shapes, kind, &PictureShape::kind));
}

std::string LengthInWords(double length, bool metric) {
    return RoundedText(length, metric ? WordDecimals : WordDecimals + 1) + (metric ? " mm" : " in");
}

PartPicture ReadPartPicture(AcadDocument& drawing, const PictureContext& context) {
    PartPicture picture;
    PictureReader(context, picture).Read(drawing);
    return picture;
}

}  // namespace brenvik
