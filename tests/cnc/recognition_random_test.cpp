// Panels that nobody thought of: features drawn by lot into the cells of a grid, so that none meets another.
#include <random>

#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

constexpr int PanelsPerShop = 3;
constexpr double Margin = 48, Cell = 104, Clear = 6;

/// The same panels on every machine: the library's distributions differ, its generator doesn't.
class Lot {
  public:
    explicit Lot(std::uint32_t seed) : mNumbers(seed) {}
    int Below(int count) { return static_cast<int>(mNumbers() % static_cast<std::uint32_t>(count)); }
    /// In steps of a tenth.
    double Between(double low, double high) {
        return low + Below(static_cast<int>((high - low) * 10) + 1) / 10.0;
    }
    template <class List>
    auto OneOf(const List& list) {
        return list[static_cast<std::size_t>(Below(static_cast<int>(list.size())))];
    }

  private:
    std::mt19937 mNumbers;
};

struct Place {
    double left = 0, front = 0;
    double Right() const { return left + Cell - 2 * Clear; }
    double Back() const { return front + Cell - 2 * Clear; }
    double MiddleX() const { return (left + Right()) / 2; }
    double MiddleY() const { return (front + Back()) / 2; }
};

Shape WithinCell(Lot& lot, const Place& place) {
    const double left = place.left + lot.Between(0, 15), right = place.Right() - lot.Between(0, 15);
    const double front = place.front + lot.Between(0, 15), back = place.Back() - lot.Between(0, 15);
    return lot.Below(2) == 0 ? Rectangle(left, front, right, back) : Rounded(left, front, right, back, 18.5);
}

void DrillInCell(MadePart& part, Lot& lot, const Place& place, double thickness) {
    const double x = place.MiddleX() + lot.Between(0, 20), y = place.MiddleY() + lot.Between(0, 20);
    const double diameter = lot.Between(3, 30), depth = lot.Between(3, thickness - 3);
    switch (lot.Below(5)) {
        case 0:
            return part.Hole(x, y, diameter);
        case 1:
            return part.Hole(x, y, diameter, depth);
        case 2:
            return part.HoleBelow(x, y, diameter, depth);
        case 3:
            part.Hole(x, y, diameter);
            return part.Hole(x, y, diameter + 4, thickness / 2);
        default:
            part.Hole(x, y, diameter);
            return part.HoleBelow(x, y, diameter + 4, thickness / 2);
    }
}

void FillCell(MadePart& part, Lot& lot, const Place& place, double thickness) {
    const double depth = lot.Between(3, thickness - 4);
    switch (lot.Below(9)) {
        case 0:
            return part.Pocket(WithinCell(lot, place), thickness - depth);
        case 1:
            return part.PocketBelow(WithinCell(lot, place), depth);
        case 2:
            return part.Window(WithinCell(lot, place));
        case 3:
            return part.Hole(place.MiddleX(), place.MiddleY(), lot.Between(36, 80));
        case 4:
            return part.Hole(place.MiddleX(), place.MiddleY(), lot.Between(36, 80), depth);
        case 5:
            return part.HoleBelow(place.MiddleX(), place.MiddleY(), lot.Between(36, 80), depth);
        default:
            return DrillInCell(part, lot, place, thickness);
    }
}

void DadoIn(MadePart& part, Lot& lot, double left, double width, double thickness) {
    const double from = lot.Below(2) == 0 ? -1 : Margin + lot.Between(0, 40);
    const Shape dado = Rectangle(left, from, left + lot.Between(8, 20), width + 1);
    const double depth = lot.Between(4, thickness - 5);
    if (lot.Below(3) == 0)
        part.PocketBelow(dado, depth);
    else
        part.Pocket(dado, thickness - depth);
}

void BoreEdges(MadePart& part, Lot& lot, double length, double width, double thickness) {
    const double height = thickness / 2 + lot.Between(0, 1.5);
    for (int row = 0; row < lot.Below(4); ++row) {
        const double y = Margin + row * 60 + lot.Between(0, 30);
        part.Drill({0, y, height}, {1, 0, 0}, lot.Between(10, 38), lot.OneOf(std::array{5.0, 8.0}));
        part.Drill({length, y, height}, {-1, 0, 0}, lot.Between(10, 38), lot.OneOf(std::array{5.0, 8.0}));
    }
    // In the borders of the columns, where no dado comes.
    for (int column = 1; column < lot.Below(4); ++column) {
        const bool back = lot.Below(2) == 0;
        part.Drill({Margin + column * Cell, back ? width : 0, height}, {0, back ? -1.0 : 1.0, 0},
                   lot.Between(10, 38), 5);
    }
}

void MakePanel(MadePart& part, Lot& lot) {
    const int columns = 3 + lot.Below(5), rows = 2 + lot.Below(2);
    const double length = 2 * Margin + columns * Cell + lot.Between(0, 30);
    const double width = 2 * Margin + rows * Cell + lot.Between(0, 20);
    const double thickness = lot.OneOf(std::array{16.0, 18.0, 19.05, 25.0});
    part.Board(length, width, thickness);
    for (int column = 0; column < columns; ++column) {
        const double left = Margin + column * Cell + Clear;
        if (lot.Below(5) == 0) {
            DadoIn(part, lot, left + 30, width, thickness);
            continue;
        }
        for (int row = 0; row < rows; ++row)
            if (lot.Below(3) != 0) FillCell(part, lot, {left, Margin + row * Cell + Clear}, thickness);
    }
    BoreEdges(part, lot, length, width, thickness);
}

struct Draw {
    Shop shop;
    std::uint32_t seed;
    friend void PrintTo(const Draw& draw, std::ostream* out) { *out << draw.shop.name << draw.seed; }
};
constexpr std::array Draws{Draw{Shops[0], 20261}, Draw{Shops[1], 20262}, Draw{Shops[2], 20263},
                           Draw{Shops[3], 30264},
                           // Sections of the outline that all but touch leave slits.
                           Draw{Shops[2], 30263},
                           // A pocket's rounded corners are cut twice, turned against each other.
                           Draw{Shops[3], 20264}};

class RandomPanels : public WholePartTest, public ::testing::WithParamInterface<Draw> {};

TEST_P(RandomPanels, AreCutInAirWholeAndOnce) {
    const Shop& shop = GetParam().shop;
    UseShop(shop);
    WriteMaterials(shop.CutInInches() ? std::vector<std::string>{".62992", ".70866", ".75", ".98425"}
                                      : std::vector<std::string>{"16", "18", "19.05", "25"},
                   shop.CutInInches() ? std::array{0.5, 0.25, 0.125} : std::array{12.0, 6.0, 3.0});
    Lot lot(GetParam().seed);
    std::vector<Acad3DSolid*> panels;
    for (int i = 0; i < PanelsPerShop; ++i) {
        MadePart part = Made();
        MakePanel(part, lot);
        Acad3DSolid& solid = part.Solid();
        if (shop.DrawnInInches()) solid.ScaleEntity({0, 0, 0}, 1 / 25.4);
        GivePartData(solid, "Panel", lot.Below(2) == 0 ? "LWT" : "WLT");
        Lay(solid, lot.Between(-180, 180), lot.Between(-90, 90), lot.Between(-180, 180),
            {lot.Between(-5000, 5000), lot.Between(-5000, 5000), lot.Between(-500, 500)});
        panels.push_back(&solid);
    }
    RunAll();
    EXPECT_EQ(LastRunReport().parts, PanelsPerShop);
    ExpectQuiet();
    for (std::size_t i = 0; i < panels.size(); ++i) {
        SCOPED_TRACE("panel " + std::to_string(i));
        EXPECT_EQ(Faults(*panels[i], static_cast<int>(i), {0, {"H"}}), std::vector<std::string>{});
    }
}

INSTANTIATE_TEST_SUITE_P(All, RandomPanels, ::testing::ValuesIn(Draws), [](const auto& one) {
    return std::string(one.param.shop.name) + std::to_string(one.param.seed);
});

}  // namespace
}  // namespace brenvik
