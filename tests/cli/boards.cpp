// Boards by the drafting host's own solids.
#include "boards.h"

#include <cstdint>
#include <utility>

#include "base/number_text.h"
#include "drafting_host/document/files/drawing_files.h"
#include "drafting_host/document/host_application.h"
#include "file_roots/whole_file.h"
#include "sample/workpiece.h"

namespace brenvik::cli_test {

namespace {

using Data = std::vector<std::pair<std::string, std::string>>;

void SetData(AcadEntity& solid, const Data& data) {
    for (const auto& [key, value] : data) {
        const std::vector<std::int16_t> types{1001, 1000};
        const std::vector<XDataValue> values{key, value};
        solid.SetXData(types, values);
    }
}

}  // namespace

void WriteBoardsTo(const std::filesystem::path& file, const Boards& boards) {
    HostApplication host(WriteWholeFile);
    HostDocument& document = host.NewDocument();
    document.Layers().Add("Parts");
    double place = 0;
    for (std::size_t i = 0; i < boards.names.size(); ++i) {
        const double length = boards.lengths.empty() ? boards.length : boards.lengths[i];
        app::Workpiece board(document.ModelSpace(), {place, 0, 0}, {place + length, 400, 18}, "Parts");
        board.Drill({place + 100, 100, 18}, app::Axis::Z, -10, 8);
        if (boards.pocketBelow) board.Cut({place + 200, 100, -1}, {place + 300, 250, 6});
        if (boards.rabbetAndBore) {
            board.Cut({place - 1, -1, 12}, {place + length + 1, 15, 19});
            board.Drill({place, 200, 9}, app::Axis::X, 30, 8);
        }
        if (boards.areSawn) board.Cut({place + 400, -1, -1}, {place + 420, 401, 19});
        if (!boards.areStacked) place += length + 400;
        SetData(board.Solid(), {{"PartName", boards.names[i]},
                                {"PN", "7"},
                                {"Material", boards.material},
                                {"ORIE", "LWT"},
                                {"OldValue1", NumberToText(length)},
                                {"OldValue2", "400"},
                                {"OldValue3", "18"}});
        if (!boards.subAssemblies.empty()) SetData(board.Solid(), {{"SubAssembly", boards.subAssemblies[i]}});
    }
    SaveDrawing(document, file);
}

}  // namespace brenvik::cli_test
