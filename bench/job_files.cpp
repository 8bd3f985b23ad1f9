// Making the panels. Each is a shape of its own, so that nothing can be read or measured once for all.
#include "job_files.h"

// The host's own "Handle" must be declared before the modeller makes a macro of that word.
#include "drafting_host/dxf/dxf_writer.h"

#include "drafting_host/acis/acis_text.h"
#include "drafting_host/step/step_writer.h"
#include "file_roots/whole_file.h"

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS_Shape.hxx>

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

TopoDS_Shape Panel(int holes) {
    const TopoDS_Shape board = BRepPrimAPI_MakeBox(length, width, thickness).Shape();
    if (holes == 0) return board;
    TopTools_ListOfShape boards;
    boards.Append(board);
    TopTools_ListOfShape drills;
    const int rows = (holes + holesInARow - 1) / holesInARow;
    for (int hole = 0; hole < holes; ++hole) {
        const double x = length * (hole % holesInARow + 1) / (holesInARow + 1);
        const double y = width * (hole / holesInARow + 1) / (rows + 1);
        const gp_Ax2 axis(gp_Pnt(x, y, thickness - holeDepth), gp::DZ());
        drills.Append(BRepPrimAPI_MakeCylinder(axis, holeRadius, holeDepth + 1).Shape());
    }
    BRepAlgoAPI_Cut drilling;
    drilling.SetArguments(boards);
    drilling.SetTools(drills);
    drilling.Build();
    return drilling.Shape();
}

std::vector<TopoDS_Shape> Panels(int count, int holes) {
    const TopoDS_Shape first = Panel(holes);
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

}  // namespace

fs::path JobFile(FileFormat format, int panels, int holesPerPanel) {
    static const WorkFolder folder;
    const bool dxf = format == FileFormat::Dxf;
    fs::path file = folder.Path() / (std::to_string(panels) + "x" + std::to_string(holesPerPanel));
    file += dxf ? ".dxf" : ".step";
    if (fs::exists(file)) return file;
    const std::vector<TopoDS_Shape> shapes = Panels(panels, holesPerPanel);
    dxf ? WriteDxfJob(file, shapes) : WriteStepJob(file, shapes);
    return file;
}

}  // namespace brenvik::bench
