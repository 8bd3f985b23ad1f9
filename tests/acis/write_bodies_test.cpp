// Several solids in one text stay bodies of their own.
#include <gtest/gtest.h>
#include <BRepPrimAPI_MakeBox.hxx>

#include "drafting_host/acis/acis_text.h"

namespace brenvik::acis {
namespace {

TEST(AcisBodies, EachShapeIsOneBodyEvenWhereCopiesShareTheirEdges) {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(10, 20, 30).Shape();
    const std::vector<std::string> lines = WriteBodies({box, BRepPrimAPI_MakeBox(1, 2, 3).Shape(), box});
    EXPECT_EQ(lines.front().substr(lines.front().size() - 4), " 3 0");
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    const ReadResult read = ReadText(text);
    EXPECT_TRUE(read.problems.empty());
    EXPECT_EQ(read.bodies.size(), 3u);
}

}  // namespace
}  // namespace brenvik::acis
