// Materials, profiles and help as an installer would deliver them.
#include "home/install_files.h"

#include <array>
#include <span>
#include <string_view>

#include "session/library/command_table.h"

namespace brenvik::app {

namespace {

constexpr std::string_view LineEnd = "\r\n";

struct Bit {
    std::string_view number, diameter, spindleSpeed, feedSpeed;
};

/// One board. The key is the thickness as the run writes it, a blank, and the name.
struct Board {
    std::string_view key;
    bool grain;
    std::string_view direction;
    std::array<Bit, 3> bits;
};

// Melamine takes a compression bit at a high feed; solid wood and veneered ply run slower and against the
// feed ("cc"), thin backs take the small bit first.
constexpr std::array MetricBoards{
    Board{"18 white melamine",
          false,
          "cc",
          {{{"1", "12", "18000", "9000"}, {"2", "8", "18000", "7000"}, {"3", "5", "18000", "4000"}}}},
    Board{"18 birch ply",
          true,
          "cc",
          {{{"1", "12", "18000", "8000"}, {"2", "8", "18000", "6000"}, {"3", "5", "18000", "3500"}}}},
    Board{"19 cherry",
          true,
          "cc",
          {{{"1", "12", "16000", "6000"}, {"2", "8", "18000", "5000"}, {"3", "5", "18000", "3000"}}}},
    Board{"19.05 red oak ply",
          true,
          "cc",
          {{{"1", "12.7", "18000", "7500"}, {"2", "9.53", "18000", "6000"}, {"3", "6.35", "18000", "4000"}}}},
    Board{"15 birch ply",
          true,
          "cc",
          {{{"1", "12", "18000", "8000"}, {"2", "8", "18000", "6000"}, {"3", "5", "18000", "3500"}}}},
    Board{"12 birch ply",
          true,
          "cc",
          {{{"1", "8", "18000", "7000"}, {"2", "5", "18000", "4000"}, {"3", "3", "20000", "2500"}}}},
    Board{"8 birch ply",
          true,
          "cc",
          {{{"1", "8", "18000", "7000"}, {"2", "5", "18000", "4000"}, {"3", "3", "20000", "2500"}}}},
    Board{"8 white hdf",
          false,
          "c",
          {{{"1", "8", "18000", "9000"}, {"2", "5", "18000", "5000"}, {"3", "3", "20000", "3000"}}}},
};

constexpr std::array ImperialBoards{
    Board{".75 white melamine",
          false,
          "cc",
          {{{"1", ".5", "18000", "350"}, {"2", ".375", "18000", "275"}, {"3", ".1875", "18000", "150"}}}},
    Board{".75 birch ply",
          true,
          "cc",
          {{{"1", ".5", "18000", "315"}, {"2", ".375", "18000", "235"}, {"3", ".1875", "18000", "140"}}}},
    Board{".75 cherry",
          true,
          "cc",
          {{{"1", ".5", "16000", "235"}, {"2", ".375", "18000", "195"}, {"3", ".1875", "18000", "120"}}}},
    Board{".75 red oak ply",
          true,
          "cc",
          {{{"1", ".5", "18000", "295"}, {"2", ".375", "18000", "235"}, {"3", ".25", "18000", "155"}}}},
    Board{".5 birch ply",
          true,
          "cc",
          {{{"1", ".375", "18000", "275"}, {"2", ".1875", "18000", "155"}, {"3", ".125", "20000", "100"}}}},
    Board{".25 birch ply",
          true,
          "cc",
          {{{"1", ".25", "18000", "275"}, {"2", ".1875", "18000", "155"}, {"3", ".125", "20000", "100"}}}},
    Board{".25 white hdf",
          false,
          "c",
          {{{"1", ".25", "18000", "350"}, {"2", ".1875", "18000", "195"}, {"3", ".125", "20000", "120"}}}},
};

void AddLine(std::string& text, std::string_view key, std::string_view value) {
    text += key;
    text += value;
    text += LineEnd;
}

void AddBoard(std::string& text, const Board& board) {
    AddLine(text, "material=", board.key);
    AddLine(text, "grain=", board.grain ? "1" : "0");
    AddLine(text, "direction=", board.direction);
    int place = 0;
    for (const Bit& bit : board.bits) {
        const std::string tool = "tool" + std::to_string(++place);
        AddLine(text, tool + "=", bit.number);
        AddLine(text, tool + "dia=", bit.diameter);
        AddLine(text, tool + "ss=", bit.spindleSpeed);
        AddLine(text, tool + "fs=", bit.feedSpeed);
    }
}

void AddProfile(std::string& text, std::string_view name, std::string_view extension,
                std::string_view columns) {
    AddLine(text, "[" + std::string(name), "]");
    AddLine(text, "extension=", extension);
    AddLine(text, "columns=", columns);
}

}  // namespace

std::string InitialMaterials(MeasureUnits units) {
    const std::span<const Board> boards = units == MeasureUnits::Metric
                                              ? std::span<const Board>(MetricBoards)
                                              : std::span<const Board>(ImperialBoards);
    std::string text;
    for (const Board& board : boards) AddBoard(text, board);
    return text;
}

std::string InitialCsvProfiles() {
    std::string text;
    AddProfile(text, "Cut List", "csv",
               "QTY,Part Name,Sub Assembly,Material,Length,Width,Thickness,ORIE,Notes");
    AddProfile(text, "Panel Optimizer", "csv", "PN,QTY,Length,Width,Thickness-Material (Metric),Part Name");
    AddProfile(text, "Edge Banding", "csv", "PN,Part Name,L x W x T,EB1,EB2,EB3,EB4,Face");
    AddProfile(text, "Price List", "csv", "QTY,Part Name,Sub Assembly,Material,Price");
    return text;
}

std::string InitialCncProfiles() {
    std::string text;
    AddProfile(
        text, "CNC", "txt",
        "ID,QTY,Part Name,Sub Assembly,Material,Length,Width,Thickness,ORIE,Notes,User Data1,User Data2,PN,"
        "Price,EB1,EB2,EB3,EB4,Face,Layer");
    return text;
}

std::string HelpText() {
    std::string text;
    const auto add = [&text](std::string_view line) { AddLine(text, line, ""); };
    add("BRENVIK - cut lists and CNC feature recognition");
    add("");
    add("Select the solids of a job and call the cut list. Each solid is one row: quantity, names, "
        "material,");
    add("length, width, thickness and ORIE. ORIE holds three letters: the first names the part's largest "
        "extent,");
    add("the second the middle one, the third the smallest. A panel with the grain along its longer side is "
        "LWT,");
    add("with the grain across it WLT. Type the letters and the sizes follow.");
    add("");
    add("What you type stays in the list until you choose Apply to Drawing; then every value is kept on the "
        "solid");
    add("itself and comes back with the drawing.");
    add("");
    add("Commands of the drawing program:");
    add("");
    for (const CommandEntry& entry : CommandTable()) {
        std::string names(entry.hostCommands);
        names.resize(names.size() < 20 ? 20 : names.size() + 1, ' ');
        add("  " + names + std::string(entry.description));
    }
    add("");
    add("Settings are changed with BSET. The material library is materials.txt in this folder: fifteen lines "
        "for");
    add("each board, the thickness and the name of the material first.");
    return text;
}

}  // namespace brenvik::app
