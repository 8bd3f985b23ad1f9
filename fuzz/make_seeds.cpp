// Writes drawings and solids for the fuzz targets to start from: make_seeds FOLDER, which gets folders
// seeds-dxf, seeds-sat, seeds-binary_dxf and seeds-sab.
// The host's own "Handle" must be declared before the modeller makes a macro of that word.
#include "drafting_host/dxf/writing/dxf_writer.h"

#include "drafting_host/acis/acis_text.h"

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepOffsetAPI_ThruSections.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <gp_Circ.hxx>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "support/binary_acis.h"
#include "support/binary_dxf.h"

namespace {

namespace fs = std::filesystem;

struct Seed {
    std::string name;
    TopoDS_Shape shape;
};

std::vector<Seed> Shapes() {
    const TopoDS_Shape panel = BRepPrimAPI_MakeBox(60, 30, 2).Shape();
    const TopoDS_Shape hole = BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(10, 10, -1), gp::DZ()), 1, 4).Shape();
    // Bores that cross leave splines; sections that a skin is laid over are nothing but splines.
    const TopoDS_Shape bore = BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(-1, 10, 1), gp::DX()), 0.5, 12).Shape();
    const TopoDS_Shape fitting = BRepAlgoAPI_Cut(BRepAlgoAPI_Cut(panel, hole).Shape(), bore).Shape();
    BRepOffsetAPI_ThruSections vase(true, false);
    for (const double z : {0.0, 2.0, 4.0}) {
        const gp_Circ circle(gp_Ax2(gp_Pnt(0, 0, z), gp::DZ()), 2 + (z - 2) * (z - 2) / 4);
        vase.AddWire(BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(circle).Edge()).Wire());
    }
    return {{"fitting", fitting},
            {"vase", vase.Shape()},
            {"box", BRepPrimAPI_MakeBox(3, 2, 1).Shape()},
            {"cylinder", BRepPrimAPI_MakeCylinder(1, 4).Shape()},
            {"cone", BRepPrimAPI_MakeCone(2, 1, 4).Shape()},
            {"sphere", BRepPrimAPI_MakeSphere(2).Shape()},
            {"torus", BRepPrimAPI_MakeTorus(4, 1).Shape()},
            {"panel", BRepAlgoAPI_Cut(panel, hole).Shape()}};
}

std::string AcisText(const TopoDS_Shape& shape) {
    std::string text;
    for (const std::string& line : brenvik::acis::WriteText(shape)) text += line + "\n";
    return text;
}

brenvik::EntityData Entity(brenvik::EntityGeometry geometry) {
    brenvik::EntityData entity;
    entity.layer = "Parts";
    entity.geometry = std::move(geometry);
    entity.xdata = {{"PARTNAME", {{1000, std::string("Side")}}}};
    return entity;
}

brenvik::DrawingData Drawing(std::vector<brenvik::EntityData> entities) {
    brenvik::DrawingData drawing;
    drawing.blocks.resize(2);
    drawing.blocks[0].name = "*Model_Space";
    drawing.blocks[1].name = "*Paper_Space";
    drawing.blocks[0].entities = std::move(entities);
    return drawing;
}

std::vector<brenvik::EntityData> Curves() {
    brenvik::LWPolylineData polyline;
    polyline.vertices = {{0, 0}, {10, 0, 1}, {10, 5}};
    brenvik::SplineData spline;
    spline.knots = {0, 0, 0, 0, 1, 1, 1, 1};
    spline.controlPoints = {{0, 0, 0}, {1, 1, 0}, {2, 1, 0}, {3, 0, 0}};
    brenvik::TextData text;
    text.text = "Side";
    return {Entity(brenvik::LineData{{0, 0, 0}, {1, 2, 3}}),
            Entity(brenvik::ArcData{{0, 0, 0}, 2, 0, 1.5}),
            Entity(brenvik::CircleData{{1, 1, 0}, 3}),
            Entity(brenvik::EllipseData{{0, 0, 0}, {2, 0, 0}}),
            Entity(std::move(polyline)),
            Entity(std::move(spline)),
            Entity(std::move(text))};
}

void Put(const fs::path& file, const std::string& content) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

/// As text and in both binary forms, the one with binary bodies.
void PutDrawing(const fs::path& folder, const std::string& name, const brenvik::DrawingData& drawing) {
    using brenvik::test::BinaryCodes;
    using brenvik::test::BinaryDxf;
    const std::string text = brenvik::WriteDxf(drawing);
    Put(folder / "seeds-dxf" / (name + ".dxf"), text);
    Put(folder / "seeds-binary_dxf" / (name + ".dxf"), BinaryDxf(brenvik::test::WithBinaryBodies(text)));
    Put(folder / "seeds-binary_dxf" / (name + "_short.dxf"), BinaryDxf(text, BinaryCodes::Short));
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "make_seeds FOLDER\n";
        return 2;
    }
    try {
        const fs::path folder = arguments[1];
        PutDrawing(folder, "curves", Drawing(Curves()));
        for (const Seed& seed : Shapes()) {
            const std::string text = AcisText(seed.shape);
            Put(folder / "seeds-sat" / (seed.name + ".sat"), text);
            Put(folder / "seeds-sab" / (seed.name + ".sab"), brenvik::test::BinaryAcis(text));
            const brenvik::AcisData body{brenvik::AcisData::Kind::Solid, text, 0};
            PutDrawing(folder, seed.name, Drawing({Entity(body)}));
        }
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
