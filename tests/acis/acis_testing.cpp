// Shared checks of the tests of ACIS text.
#include "acis_testing.h"

#include <gtest/gtest.h>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <BRep_Tool.hxx>
#include <GProp_GProps.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <tuple>

#include "checkout_paths.h"

namespace brenvik::acis::testing {

std::optional<std::string> Sample(const std::string& name) {
    std::ifstream file(std::string(BRENVIK_SOURCE_DIR) + "/../shared/data/" + name, std::ios::binary);
    if (!file) return std::nullopt;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::vector<std::string> TextsInDrawing(const std::string& drawing) {
    std::vector<std::string> texts;
    std::vector<std::string> masked;
    bool inside = false;
    const auto finish = [&] {
        std::string text;
        for (const std::string& line : masked) text += DecodeLine(UnescapeDxf(line)) + "\n";
        if (!text.empty()) texts.push_back(text);
        masked.clear();
    };
    std::istringstream stream(drawing);
    std::string code;
    std::string value;
    while (std::getline(stream, code) && std::getline(stream, value)) {
        if (!value.empty() && value.back() == '\r') value.pop_back();
        const int group = std::atoi(code.c_str());
        if (group == 0 || group == 100) {
            finish();
            inside = group == 100 && value == "AcDbModelerGeometry";
        }
        if (!inside) continue;
        if (group == 1) masked.push_back(value);
        if (group == 3 && !masked.empty()) masked.back() += value;
    }
    finish();
    return texts;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

std::string Placed(const TopoDS_Shape& shape, const std::string& transform) {
    std::vector<std::string> lines = WriteText(shape);
    const std::size_t record = lines.size() - 4;
    const std::string none = "$1 $-1 $-1 #";
    const std::size_t place = lines[3].find(none);
    if (place == std::string::npos) throw std::logic_error("the body record is not the first");
    lines[3].replace(place, none.size(), "$1 $-1 $" + std::to_string(record) + " #");
    lines[0] = "400 " + std::to_string(record + 1) + " 1 0";
    lines.insert(lines.end() - 1, "transform $-1 " + transform + " #");
    return Joined(lines);
}

double Volume(const TopoDS_Shape& shape) {
    GProp_GProps properties;
    BRepGProp::VolumeProperties(shape, properties);
    return properties.Mass();
}

double Area(const TopoDS_Shape& shape) {
    GProp_GProps properties;
    BRepGProp::SurfaceProperties(shape, properties);
    return properties.Mass();
}

int Count(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind) {
    TopTools_IndexedMapOfShape found;
    TopExp::MapShapes(shape, kind, found);
    return found.Extent();
}

std::vector<gp_Pnt> Corners(const TopoDS_Shape& shape) {
    TopTools_IndexedMapOfShape found;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) {
        for (TopExp_Explorer part(face.Current(), TopAbs_EDGE); part.More(); part.Next()) {
            const TopoDS_Edge& edge = TopoDS::Edge(part.Current());
            if (BRep_Tool::Degenerated(edge) || BRep_Tool::IsClosed(edge, TopoDS::Face(face.Current())))
                continue;
            TopoDS_Vertex first;
            TopoDS_Vertex last;
            TopExp::Vertices(edge, first, last);
            if (first.IsSame(last)) continue;
            found.Add(first);
            found.Add(last);
        }
    }
    std::vector<gp_Pnt> corners;
    for (int i = 1; i <= found.Extent(); ++i) corners.push_back(BRep_Tool::Pnt(TopoDS::Vertex(found(i))));
    std::sort(corners.begin(), corners.end(), [](const gp_Pnt& a, const gp_Pnt& b) {
        return std::tuple(a.X(), a.Y(), a.Z()) < std::tuple(b.X(), b.Y(), b.Z());
    });
    return corners;
}

TopoDS_Shape ReadOne(const std::string& text) {
    const ReadResult result = ReadText(text);
    for (const Problem& problem : result.problems)
        ADD_FAILURE() << "line " << problem.line << ", record " << problem.record << ": " << problem.text;
    if (result.bodies.size() != 1) {
        ADD_FAILURE() << "expected one body, found " << result.bodies.size();
        return {};
    }
    ExpectValid(result.bodies.front());
    return result.bodies.front();
}

void ExpectValid(const TopoDS_Shape& shape) {
    ASSERT_FALSE(shape.IsNull());
    EXPECT_TRUE(BRepCheck_Analyzer(shape).IsValid()) << "the modeller finds the shape invalid";
}

TopoDS_Shape ExpectRoundTrip(const TopoDS_Shape& shape, std::optional<double> knownVolume) {
    std::vector<std::string> lines;
    try {
        lines = WriteText(shape);
    } catch (const WriteFailure& failure) {
        ADD_FAILURE() << failure.what();
        return {};
    }
    const TopoDS_Shape back = ReadOne(Joined(lines));
    if (back.IsNull()) return back;
    const double area = Area(shape);
    // Where the true volume is known, the modeller's own curves on the surface were the less exact ones.
    EXPECT_NEAR(Area(back), area, (knownVolume ? 1e-7 : 1e-9) * area);
    if (Count(shape, TopAbs_SOLID) > 0) {
        const double volume = knownVolume.value_or(Volume(shape));
        EXPECT_NEAR(Volume(back), volume, 1e-9 * volume);
    }
    EXPECT_EQ(Count(back, TopAbs_SOLID), Count(shape, TopAbs_SOLID));
    EXPECT_EQ(Count(back, TopAbs_FACE), Count(shape, TopAbs_FACE));
    const std::vector<gp_Pnt> before = Corners(shape);
    EXPECT_EQ(Corners(back).size(), before.size());
    for (const gp_Pnt& corner : Corners(back)) {
        const auto matches = [&](const gp_Pnt& other) { return corner.Distance(other) < 1e-9; };
        EXPECT_TRUE(std::any_of(before.begin(), before.end(), matches))
            << "a corner at " << corner.X() << ", " << corner.Y() << ", " << corner.Z();
    }
    return back;
}

}  // namespace brenvik::acis::testing
