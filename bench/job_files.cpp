// Making the panels. Each is a shape of its own, so that nothing can be read or measured once for all.
#include "job_files.h"

// The host's own "Handle" must be declared before the modeller makes a macro of that word.
#include "drafting_host/dxf/writing/dxf_writer.h"

#include "drafting_host/acis/acis_text.h"
#include "drafting_host/step/step_writer.h"
#include "file_roots/whole_file.h"

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS_Shape.hxx>

#include <array>
#include <random>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace brenvik::bench {
namespace {

namespace fs = std::filesystem;

// Millimetres: a shelf, with holes for 5 mm pins.
constexpr double length = 600;
constexpr double width = 300;
constexpr double thickness = 18;
constexpr double holeRadius = 2.5;
constexpr double holeDepth = 12;
constexpr int holesInARow = 10;

// Where the files lie; it goes with the program.
class WorkFolder {
  public:
    WorkFolder()
        : mPath(fs::temp_directory_path() / ("brenvik-bench-" + std::to_string(std::random_device{}()))) {
        fs::create_directories(mPath);
    }
    ~WorkFolder() {
        std::error_code ignored;
        fs::remove_all(mPath, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const fs::path& Path() const { return mPath; }

  private:
    fs::path mPath;
};

TopoDS_Shape Drill(const gp_Pnt& bottom, const gp_Dir& axis, double depth) {
    return BRepPrimAPI_MakeCylinder(gp_Ax2(bottom, axis), holeRadius, depth).Shape();
}

TopTools_ListOfShape Drills(int holes) {
    TopTools_ListOfShape drills;
    const int rows = (holes + holesInARow - 1) / holesInARow;
    for (int hole = 0; hole < holes; ++hole) {
        const double x = length * (hole % holesInARow + 1) / (holesInARow + 1);
        const double y = width * (hole / holesInARow + 1) / (rows + 1);
        drills.Append(Drill({x, y, thickness - holeDepth}, gp::DZ(), holeDepth + 1));
    }
    return drills;
}

TopoDS_Shape Cut(const TopTools_ListOfShape& tools) {
    const TopoDS_Shape board = BRepPrimAPI_MakeBox(length, width, thickness).Shape();
    if (tools.IsEmpty()) return board;
    TopTools_ListOfShape boards;
    boards.Append(board);
    BRepAlgoAPI_Cut cutting;
    cutting.SetArguments(boards);
    cutting.SetTools(tools);
    cutting.Build();
    return cutting.Shape();
}

TopoDS_Shape Panel(int holes) { return Cut(Drills(holes)); }

TopoDS_Shape Box(const gp_Pnt& low, const gp_Pnt& high) { return BRepPrimAPI_MakeBox(low, high).Shape(); }

// Holes in four rows on the left, between them and the right edge the dado and the cut-out.
TopoDS_Shape MachinedPanel(int holes, Machining machining) {
    constexpr int inAnEdge = 10;
    constexpr double firstColumn = 30, pitch = 32;
    constexpr int rows = 8;
    constexpr std::array<double, rows> places{30, 60, 90, 120, 150, 180, 210, 240};
    TopTools_ListOfShape tools;
    const int bores = holes / inAnEdge;
    for (int hole = 0; hole < holes - bores; ++hole) {
        const double x = firstColumn + pitch * (hole / rows),
                     y = places[static_cast<std::size_t>(hole % rows)];
        tools.Append(Drill({x, y, thickness - holeDepth}, gp::DZ(), holeDepth + 1));
    }
    for (int bore = 0; bore < bores; ++bore)
        tools.Append(Drill({firstColumn + pitch * bore, -1, thickness / 2}, gp::DY(), holeDepth + 1));
    tools.Append(Box({-1, width - 34, thickness - 6}, {length + 1, width - 16, thickness + 1}));
    tools.Append(Box({length - 120, 60, -1}, {length - 40, 160, thickness + 1}));
    if (machining == Machining::BothSides) tools.Append(Box({length - 120, 180, -1}, {length - 40, 240, 5}));
    return Cut(tools);
}

std::vector<TopoDS_Shape> Panels(int count, const TopoDS_Shape& first) {
    std::vector<TopoDS_Shape> panels;
    constexpr int panelsInARow = 40;
    for (int panel = 0; panel < count; ++panel) {
        gp_Trsf move;
        move.SetTranslation(
            gp_Vec((panel % panelsInARow) * (length + 50), (panel / panelsInARow) * (width + 50), 0));
        constexpr bool copyGeometry = true;
        panels.push_back(BRepBuilderAPI_Transform(first, move, copyGeometry).Shape());
    }
    return panels;
}

void WriteDxfJob(const fs::path& file, const std::vector<TopoDS_Shape>& panels) {
    DrawingData drawing;
    drawing.blocks.resize(2);
    drawing.blocks[0].name = "*Model_Space";
    drawing.blocks[1].name = "*Paper_Space";
    for (std::size_t panel = 0; panel < panels.size(); ++panel) {
        AcisData body;
        for (const std::string& line : acis::WriteText(panels[panel])) body.text += line + "\n";
        EntityData entity;
        entity.layer = "Panels";
        entity.geometry = std::move(body);
        entity.xdata = {{"PARTNAME", {{1000, "Shelf " + std::to_string(panel % 20)}}},
                        {"QUANTITY", {{1000, std::string("1")}}},
                        {"MATERIAL", {{1000, std::string("Oak")}}},
                        {"ORIE", {{1000, std::string("LWT")}}}};
        drawing.blocks[0].entities.push_back(std::move(entity));
    }
    WriteWholeFile(file, WriteDxf(drawing));
}

void WriteStepJob(const fs::path& file, const std::vector<TopoDS_Shape>& panels) {
    std::vector<step::StepSolid> parts;
    for (std::size_t panel = 0; panel < panels.size(); ++panel)
        parts.push_back({panels[panel], "Shelf " + std::to_string(panel % 20), "Cabinet", "Panels"});
    WriteWholeFile(file, step::StepText(file, parts));
}

const WorkFolder& Folder() {
    static const WorkFolder folder;
    return folder;
}

}  // namespace

fs::path JobFile(FileFormat format, int panels, int holesPerPanel) {
    const bool dxf = format == FileFormat::Dxf;
    fs::path file = Folder().Path() / (std::to_string(panels) + "x" + std::to_string(holesPerPanel));
    file += dxf ? ".dxf" : ".step";
    if (fs::exists(file)) return file;
    const std::vector<TopoDS_Shape> shapes = Panels(panels, Panel(holesPerPanel));
    dxf ? WriteDxfJob(file, shapes) : WriteStepJob(file, shapes);
    return file;
}

fs::path MachinedJobFile(int panels, int holesPerPanel, Machining machining) {
    const std::string sides = machining == Machining::OneSide ? "one-side" : "both-sides";
    const fs::path file = Folder().Path() / (std::to_string(panels) + "x" + std::to_string(holesPerPanel) +
                                             "-" + sides + ".dxf");
    if (!fs::exists(file)) WriteDxfJob(file, Panels(panels, MachinedPanel(holesPerPanel, machining)));
    return file;
}

}  // namespace brenvik::bench
