// Boards whose names, materials and sizes repeat as they do in a kitchen, so that sorting and filtering have
// something to tell apart and something to keep together.
#include "part_jobs.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "parts/mautocad.h"
#include "parts/mdatabase.h"
#include "parts/part_row.h"
#include "session/session.h"
#include "workshop.h"

namespace brenvik::bench {
namespace {

/// Millimetres.
struct Board {
    std::string name, cabinet, material;
    int length, width, thickness;
};

Board BoardOf(int number) {
    static constexpr std::array<std::string_view, 4> materials{"Oak", "Birch", "Maple", "White board"};
    const auto material = static_cast<std::size_t>(number % 4);
    return {"Shelf " + std::to_string(number % 20),
            "Cabinet " + std::to_string(number / 20),
            std::string(materials[material]),
            400 + 10 * (number % 60),
            100 + 10 * (number % 25),
            16 + number % 4};
}

}  // namespace

void DrawBoards(Workshop& workshop, int count) {
    HostDocument& drawing = workshop.Host().NewDocument();
    AcadBlock& space = drawing.ModelSpace();
    for (int number = 0; number < count; ++number) {
        const Board board = BoardOf(number);
        constexpr int boardsInARow = 40;
        const Point3 center{1000.0 * (number % boardsInARow), 500.0 * (number / boardsInARow), 0};
        AcadEntity* solid = space.AddBox(center, board.length, board.width, board.thickness);
        mAutoCAD::SetPartData(solid, "PARTNAME", board.name);
        mAutoCAD::SetPartData(solid, "SUBASSEMBLY", board.cabinet);
        mAutoCAD::SetPartData(solid, "MATERIAL", board.material);
        mAutoCAD::SetPartData(solid, "ORIE", "LWT");
        mAutoCAD::SetPartData(solid, "OLDVALUE1", std::to_string(board.length));
        mAutoCAD::SetPartData(solid, "OLDVALUE2", std::to_string(board.width));
        mAutoCAD::SetPartData(solid, "OLDVALUE3", std::to_string(board.thickness));
    }
    workshop.SelectSolids();
}

void AddRows(int count) {
    Connection& connection = *TheSession().ScanConnection;
    connection.BeginTrans();
    for (int number = 0; number < count; ++number) {
        const Board board = BoardOf(number);
        mAutoCAD::PartRow row;
        row.QUANTITY = "1";
        row.PARTNAME = board.name;
        row.SUBASSEMBLY = board.cabinet;
        row.MATERIAL = board.material;
        row.ORIE = "LWT";
        row.length = std::to_string(board.length);
        row.width = std::to_string(board.width);
        row.thickness = std::to_string(board.thickness);
        mDatabase::ExecuteSql(mAutoCAD::InsertStatement(row, "A" + std::to_string(number), "Panels"));
    }
    connection.CommitTrans();
}

}  // namespace brenvik::bench
