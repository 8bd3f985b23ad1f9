// The families of bodies. Sizes are those of furniture, in millimetres; what varies is drawn by the dice.
#include "made_bodies.h"

#include <BRepBuilderAPI_GTransform.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepFilletAPI_MakeChamfer.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepOffsetAPI_DraftAngle.hxx>
#include <BRepOffsetAPI_MakeThickSolid.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <GeomAPI_PointsToBSplineSurface.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Standard_Failure.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <gp_GTrsf.hxx>

#include <cmath>
#include <numbers>

#include "section_bodies.h"

namespace brenvik::acis::testing {

double Dice::Between(double low, double high) {
    return low + (high - low) * static_cast<double>(mEngine()) / static_cast<double>(std::mt19937::max());
}

int Dice::Whole(int low, int high) {
    return low + static_cast<int>(mEngine() % static_cast<unsigned>(high - low + 1));
}

namespace {

TopoDS_Shape Board(Dice& dice) {
    return BRepPrimAPI_MakeBox(dice.Between(100, 900), dice.Between(80, 500), dice.Between(12, 40)).Shape();
}

std::vector<TopoDS_Edge> EdgesOf(const TopoDS_Shape& shape) {
    TopTools_IndexedMapOfShape found;
    TopExp::MapShapes(shape, TopAbs_EDGE, found);
    std::vector<TopoDS_Edge> edges;
    for (int i = 1; i <= found.Extent(); ++i)
        if (!BRep_Tool::Degenerated(TopoDS::Edge(found(i)))) edges.push_back(TopoDS::Edge(found(i)));
    return edges;
}

TopoDS_Shape Drilled(TopoDS_Shape part, Dice& dice) {
    for (int holes = dice.Whole(1, 4); holes > 0; --holes) {
        const gp_Ax2 at(gp_Pnt(dice.Between(20, 90), dice.Between(20, 70), -5),
                        Upward(dice, dice.Coin() ? 0.3 : 0));
        part = Without(part, BRepPrimAPI_MakeCylinder(at, dice.Between(2, 12), dice.Between(8, 80)).Shape());
    }
    return part;
}

TopoDS_Shape DrilledBoard(Dice& dice) { return Drilled(Board(dice), dice); }

TopoDS_Shape FilletedBoard(Dice& dice) {
    const TopoDS_Shape board = dice.Coin() ? Board(dice) : DrilledBoard(dice);
    BRepFilletAPI_MakeFillet fillet(board);
    const double radius = dice.Between(0.5, 3);
    const double end = dice.Coin() ? radius : dice.Between(0.5, 3);
    const bool all = dice.Coin();
    int taken = 0;
    for (const TopoDS_Edge& edge : EdgesOf(board)) {
        if (!all && dice.Whole(0, 3) != 0) continue;
        if (++taken > 14) break;
        if (radius == end)
            fillet.Add(radius, edge);
        else
            fillet.Add(radius, end, edge);
    }
    return taken > 0 ? fillet.Shape() : board;
}

TopoDS_Shape ChamferedBoard(Dice& dice) {
    const TopoDS_Shape board = dice.Coin() ? Board(dice) : DrilledBoard(dice);
    BRepFilletAPI_MakeChamfer chamfer(board);
    int taken = 0;
    for (const TopoDS_Edge& edge : EdgesOf(board)) {
        if (dice.Whole(0, 2) != 0) continue;
        ++taken;
        chamfer.Add(dice.Between(0.5, 1.8), edge);
    }
    return taken > 0 ? chamfer.Shape() : board;
}

TopoDS_Shape CrossedBores(Dice& dice) {
    TopoDS_Shape part = BRepPrimAPI_MakeBox(80., 80., 80.).Shape();
    const double radius = dice.Between(8, 20);
    part = Without(part,
                   BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(40, 40, -1), gp_Dir(0, 0, 1)), radius, 90).Shape());
    const gp_Ax2 across(gp_Pnt(-40, 40 + dice.Between(0, 10), 40),
                        gp_Dir(1, dice.Between(-0.1, 0.1), dice.Between(0, 0.2)));
    part = Without(
        part,
        BRepPrimAPI_MakeCylinder(across, dice.Whole(0, 3) == 0 ? radius : dice.Between(3, 12), 160).Shape());
    if (!dice.Coin()) return part;
    return Without(
        part, BRepPrimAPI_MakeSphere(gp_Pnt(dice.Between(60, 90), 10, 70), dice.Between(10, 30)).Shape());
}

TopoDS_Shape CutRound(Dice& dice) {
    TopoDS_Shape part;
    switch (dice.Whole(0, 3)) {
        case 0:
            part = BRepPrimAPI_MakeSphere(gp_Pnt(0, 0, 0), 25).Shape();
            break;
        case 1:
            part = BRepPrimAPI_MakeTorus(30, dice.Between(5, 20)).Shape();
            break;
        case 2:
            part = BRepPrimAPI_MakeCone(dice.Between(0, 15), 25, 40).Shape();
            if (dice.Coin()) part = BRepPrimAPI_MakeCone(0, 25, 40).Shape();
            break;
        default:
            part = BRepPrimAPI_MakeCylinder(25, 40).Shape();
    }
    const int cuts = dice.Whole(1, 3);
    for (int i = 0; i < cuts; ++i) {
        const gp_Ax2 at(gp_Pnt(dice.Between(-25, 25), dice.Between(-25, 25), dice.Between(-10, 20)),
                        Somewhere(dice));
        switch (dice.Whole(0, 3)) {
            case 0:
                part = Without(part, BRepPrimAPI_MakeBox(at, 60, 60, 60).Shape());
                break;
            case 1:
                part = Without(part, BRepPrimAPI_MakeCylinder(at, dice.Between(3, 10), 80).Shape());
                break;
            case 2:
                part = Without(part, BRepPrimAPI_MakeSphere(at.Location(), dice.Between(5, 15)).Shape());
                break;
            default:
                part = Without(part, BRepPrimAPI_MakeCone(at, dice.Between(5, 15), 0, 30).Shape());
        }
    }
    return part;
}

TopoDS_Shape RoundedEdgesOfRound(Dice& dice) {
    const TopoDS_Shape part = CrossedBores(dice);
    BRepFilletAPI_MakeFillet fillet(part);
    int taken = 0;
    for (const TopoDS_Edge& edge : EdgesOf(part)) {
        double first = 0;
        double last = 0;
        const Handle(Geom_Curve) curve = BRep_Tool::Curve(edge, first, last);
        if (curve.IsNull() || !curve->IsKind(STANDARD_TYPE(Geom_BSplineCurve))) continue;
        fillet.Add(dice.Between(0.5, 1.5), edge);
        ++taken;
    }
    return taken > 0 ? fillet.Shape() : part;
}

TopoDS_Shape Hollowed(Dice& dice) {
    const TopoDS_Shape part = dice.Coin() ? Moulding(dice) : Loft(dice);
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(part, TopAbs_FACE, faces);
    TopTools_ListOfShape open;
    open.Append(faces(faces.Extent()));
    BRepOffsetAPI_MakeThickSolid hollow;
    hollow.MakeThickSolidByJoin(part, open, -dice.Between(0.8, 2), 1e-3);
    return hollow.Shape();
}

TopoDS_Shape Drafted(Dice& dice) {
    const TopoDS_Shape part = BRepPrimAPI_MakeBox(dice.Between(30, 90), dice.Between(30, 90), 20.).Shape();
    BRepOffsetAPI_DraftAngle draft(part);
    for (TopExp_Explorer face(part, TopAbs_FACE); face.More(); face.Next()) {
        const TopoDS_Face& side = TopoDS::Face(face.Current());
        if (!dice.Coin()) continue;
        draft.Add(side, gp_Dir(0, 0, 1), dice.Between(0.02, 0.2), gp_Pln(gp_Pnt(0, 0, 0), gp_Dir(0, 0, 1)));
        if (!draft.AddDone()) draft.Remove(side);
    }
    draft.Build();
    return draft.Shape();
}

TopoDS_Shape AllSplines(Dice& dice) {
    TopoDS_Shape part;
    switch (dice.Whole(0, 4)) {
        case 0:
            part = CutRound(dice);
            break;
        case 1:
            part = FilletedBoard(dice);
            break;
        case 2:
            part = TurnedLeg(dice);
            break;
        case 3:
            part = CrossedBores(dice);
            break;
        default:
            part = TurnedArc(dice);
    }
    return BRepBuilderAPI_NurbsConvert(part, true).Shape();
}

/// Stretched more one way than another: cylinders become splines or ellipses.
TopoDS_Shape Stretched(Dice& dice) {
    gp_GTrsf stretch;
    stretch.SetAffinity(gp_Ax2(gp_Pnt(0, 0, 0), Somewhere(dice)), dice.Between(0.5, 1.8));
    return BRepBuilderAPI_GTransform(dice.Coin() ? CutRound(dice) : DrilledBoard(dice), stretch, true)
        .Shape();
}

TopoDS_Shape Placed(Dice& dice) {
    gp_Trsf place;
    place.SetRotation(gp_Ax1(gp_Pnt(5, 3, 1), Somewhere(dice)), dice.Between(-3, 3));
    gp_Trsf mirror;
    mirror.SetMirror(gp_Ax2(gp_Pnt(1, 2, 3), Somewhere(dice)));
    gp_Trsf scale;
    scale.SetScale(gp_Pnt(0, 0, 0), dice.Between(0.3, 30));
    const TopoDS_Shape part = dice.Coin() ? TurnedLeg(dice) : CutRound(dice);
    return BRepBuilderAPI_Transform(part, scale * (dice.Coin() ? place * mirror : place), dice.Coin())
        .Shape();
}

TopoDS_Shape FreeTop(Dice& dice) {
    TColgp_Array2OfPnt points(1, 6, 1, 6);
    for (int i = 1; i <= 6; ++i) {
        for (int j = 1; j <= 6; ++j)
            points(i, j) = gp_Pnt(30 * i - 80, 30 * j - 80, 30 + dice.Between(-6, 6));
    }
    const TopoDS_Face top =
        BRepBuilderAPI_MakeFace(GeomAPI_PointsToBSplineSurface(points).Surface(), 1e-6).Face();
    const TopoDS_Shape above = BRepPrimAPI_MakePrism(top, gp_Vec(0, 0, 80)).Shape();
    const TopoDS_Shape part = Without(BRepPrimAPI_MakeBox(60., 60., 50.).Shape(), above);
    return dice.Coin() ? part : Drilled(part, dice);
}

TopoDS_Shape Sheet(Dice& dice) {
    const TopoDS_Shape part = dice.Coin() ? Moulding(dice) : dice.Coin() ? CutRound(dice) : FreeTop(dice);
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(part, TopAbs_FACE, faces);
    if (dice.Coin()) return faces(dice.Whole(1, faces.Extent()));
    BRep_Builder builder;
    TopoDS_Compound sheets;
    builder.MakeCompound(sheets);
    for (int i = 1; i < faces.Extent(); ++i) builder.Add(sheets, faces(i));
    return sheets;
}

TopoDS_Shape Several(Dice& dice) {
    BRep_Builder builder;
    TopoDS_Compound all;
    builder.MakeCompound(all);
    builder.Add(all, DrilledBoard(dice));
    gp_Trsf away;
    away.SetTranslation(gp_Vec(1000, 0, 0));
    builder.Add(all, TurnedLeg(dice).Moved(away));
    const TopoDS_Shape hollow =
        Without(BRepPrimAPI_MakeBox(gp_Pnt(2000, 0, 0), 90, 90, 90).Shape(),
                BRepPrimAPI_MakeSphere(gp_Pnt(2045, 45, 45), dice.Between(10, 40)).Shape());
    builder.Add(all, hollow);
    return all;
}

TopoDS_Shape AnyBody(Dice& dice) {
    constexpr TopoDS_Shape (*all[])(Dice&) = {DrilledBoard, FilletedBoard, Moulding,        TurnedLeg,
                                              CutRound,     TurnedArc,     DrilledMoulding, CrossedBores,
                                              FreeTop,      Loft};
    return all[dice.Whole(0, static_cast<int>(std::size(all)) - 1)](dice);
}

TopoDS_Shape LooseBody(Dice& dice) {
    const double gap = std::pow(10, dice.Between(-4.5, -2.1));
    return Loosened(AnyBody(dice), gap, dice);
}

}  // namespace

TopoDS_Shape Loosened(const TopoDS_Shape& shape, double gap, Dice& dice) {
    BRep_Builder builder;
    for (const TopoDS_Edge& edge : EdgesOf(shape)) {
        if (dice.Coin()) continue;
        double first = 0;
        double last = 0;
        TopLoc_Location place;
        const Handle(Geom_Curve) curve = BRep_Tool::Curve(edge, place, first, last);
        if (curve.IsNull()) continue;
        const gp_Vec aside(gp_Dir(dice.Between(-1, 1), dice.Between(-1, 1), dice.Between(-1, 1)));
        const Handle(Geom_Curve) moved = Handle(Geom_Curve)::DownCast(curve->Translated(aside * gap));
        builder.UpdateEdge(edge, moved, place, 1.05 * gap);
        for (TopExp_Explorer end(edge, TopAbs_VERTEX); end.More(); end.Next())
            builder.UpdateVertex(TopoDS::Vertex(end.Current()), 1.1 * gap);
    }
    return shape;
}

const std::vector<BodyFamily>& BodyFamilies() {
    static const std::vector<BodyFamily> families{{"drilled", DrilledBoard, true},
                                                  {"filleted", FilletedBoard, false},
                                                  {"chamfered", ChamferedBoard, true},
                                                  {"loft", Loft, false},
                                                  {"mixed loft", MixedLoft, false},
                                                  {"sweep", Sweep, false},
                                                  {"swept shell", SweptShell, false},
                                                  {"bent bar", BentBar, true},
                                                  {"thread", Thread, false},
                                                  {"turned leg", TurnedLeg, true},
                                                  {"turned arc", TurnedArc, true},
                                                  {"turned ellipse", TurnedEllipse, true},
                                                  {"moulding", Moulding, true},
                                                  {"round extrusion", RoundExtrusion, true},
                                                  {"drilled moulding", DrilledMoulding, true},
                                                  {"crossed bores", CrossedBores, false},
                                                  {"cut round", CutRound, true},
                                                  {"rounded crossing", RoundedEdgesOfRound, false},
                                                  {"hollowed", Hollowed, false},
                                                  {"drafted", Drafted, true},
                                                  {"all splines", AllSplines, false},
                                                  {"stretched", Stretched, false},
                                                  {"placed", Placed, true},
                                                  {"free top", FreeTop, false},
                                                  {"sheet", Sheet, true},
                                                  {"several", Several, false},
                                                  {"loose", LooseBody, true}};
    return families;
}

MadeBody Make(const BodyFamily& family, unsigned seed) {
    Dice dice(seed);
    MadeBody made{std::string(family.name) + " " + std::to_string(seed), {}};
    try {
        made.shape = family.make(dice);
        made.sound =
            !made.shape.IsNull() && (family.make == LooseBody || BRepCheck_Analyzer(made.shape).IsValid());
    } catch (const Standard_Failure&) {
        made.shape.Nullify();
    }
    return made;
}

}  // namespace brenvik::acis::testing
