// Pieces are counted by what they stand in.
#include "drafting_host/step/shape_contents.h"

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>

namespace brenvik::step {
namespace {

std::size_t CountOf(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind, TopAbs_ShapeEnum within) {
    std::size_t count = 0;
    for (TopExp_Explorer one(shape, kind, within); one.More(); one.Next()) ++count;
    return count;
}

void TakeOutside(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind, TopAbs_ShapeEnum within,
                 TopoDS_Compound& rest, bool& found) {
    for (TopExp_Explorer one(shape, kind, within); one.More(); one.Next()) {
        BRep_Builder().Add(rest, one.Current());
        found = true;
    }
}

}  // namespace

std::string ContentsOf(const TopoDS_Shape& shape) {
    const auto counted = [](std::size_t count, const char* thing) {
        return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
    };
    const std::size_t faces = CountOf(shape, TopAbs_FACE, TopAbs_SHAPE);
    std::size_t shells = 0, open = 0;
    for (TopExp_Explorer shell(shape, TopAbs_SHELL); shell.More(); shell.Next()) {
        ++shells;
        if (!BRep_Tool::IsClosed(shell.Current())) ++open;
    }
    if (shells > 0) {
        const std::string closed = counted(shells - open, "closed shell");
        const std::string opened = counted(open, "open shell");
        const std::string all = open == 0 ? closed : open == shells ? opened : opened + " and " + closed;
        return "a surface model, " + all + " of " + counted(faces, "face");
    }
    if (faces > 0) return "a surface model of " + counted(faces, "face");
    const std::size_t edges = CountOf(shape, TopAbs_EDGE, TopAbs_SHAPE);
    return edges > 0 ? counted(edges, "curve")
                     : counted(CountOf(shape, TopAbs_VERTEX, TopAbs_SHAPE), "point");
}

TopoDS_Shape BesideSolids(const TopoDS_Shape& shape) {
    TopoDS_Compound rest;
    BRep_Builder().MakeCompound(rest);
    bool found = false;
    TakeOutside(shape, TopAbs_SHELL, TopAbs_SOLID, rest, found);
    TakeOutside(shape, TopAbs_FACE, TopAbs_SHELL, rest, found);
    TakeOutside(shape, TopAbs_EDGE, TopAbs_FACE, rest, found);
    TakeOutside(shape, TopAbs_VERTEX, TopAbs_EDGE, rest, found);
    return found ? rest : TopoDS_Shape();
}

bool HoldsFaces(const TopoDS_Shape& shape) { return TopExp_Explorer(shape, TopAbs_FACE).More(); }

}  // namespace brenvik::step
