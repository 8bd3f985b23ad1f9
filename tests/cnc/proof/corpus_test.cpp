// Panels by lot whose features touch and overlap, each with two judges that know nothing of each other: the
// checker, which puts the operations back onto the part with the modeller, and the run's own proof. What the
// one finds the other has to tell, and nothing else.
#include <array>
#include <random>

#include "base/text.h"
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

constexpr int PanelsPerLot = 6;

/// The same panels on every machine: the library's distributions differ, its generator doesn't.
class Lot {
  public:
    explicit Lot(std::uint32_t seed) : mNumbers(seed) {}
    int Below(int count) { return static_cast<int>(mNumbers() % static_cast<std::uint32_t>(count)); }
    /// In steps of a half.
    double Between(double low, double high) {
        return low + Below(static_cast<int>((high - low) * 2) + 1) / 2.0;
    }

  private:
    std::mt19937 mNumbers;
};

/// A panel in the making.
struct Panel {
    MadePart& part;
    Lot& lot;
    double length = 0, width = 0, thickness = 0;
    double x = 0, y = 0;  ///< Where the last feature came.

    /// A place for the next feature, often where the last one is.
    void Choose() {
        if (x > 0 && lot.Below(3) == 0) {
            x += lot.Between(-20, 20);
            y += lot.Between(-20, 20);
            return;
        }
        x = lot.Between(60, length - 60);
        y = lot.Between(60, width - 60);
    }
    double Depth() { return lot.Between(3, thickness - 3); }
    Shape Field() {
        const double left = x - lot.Between(10, 70), right = x + lot.Between(10, 70);
        const double front = y - lot.Between(10, 60), back = y + lot.Between(10, 60);
        return lot.Below(2) == 0 ? Rectangle(left, front, right, back)
                                 : Rounded(left, front, right, back, 6.5);
    }
};

void CutUpright(Panel& panel) {
    Lot& lot = panel.lot;
    const double depth = panel.Depth();
    switch (lot.Below(4)) {
        case 0:
            return panel.part.Pocket(panel.Field(), panel.thickness - depth);
        case 1:
            return panel.part.PocketBelow(panel.Field(), depth);
        case 2:
            return panel.part.Window(panel.Field());
        default:
            break;
    }
    const double half = lot.Between(4, 40);
    const Shape dado = lot.Below(2) == 0 ? Rectangle(panel.x - half, -1, panel.x + half, panel.width + 1)
                                         : Rectangle(-1, panel.y - half, panel.length + 1, panel.y + half);
    if (lot.Below(3) == 0)
        panel.part.PocketBelow(dado, depth);
    else
        panel.part.Pocket(dado, panel.thickness - depth);
}

void DrillUpright(Panel& panel) {
    constexpr std::array diameters{5.0, 8.0, 15.0, 35.0, 60.0};
    const double diameter = diameters[static_cast<std::size_t>(panel.lot.Below(5))];
    switch (panel.lot.Below(3)) {
        case 0:
            return panel.part.Hole(panel.x, panel.y, diameter);
        case 1:
            return panel.part.Hole(panel.x, panel.y, diameter, panel.Depth());
        default:
            return panel.part.HoleBelow(panel.x, panel.y, diameter, panel.Depth());
    }
}

void BoreEdge(Panel& panel) {
    const double height = panel.thickness / 2, depth = panel.lot.Between(12, 60);
    switch (panel.lot.Below(4)) {
        case 0:
            return panel.part.Drill({0, panel.y, height}, {1, 0, 0}, depth, 8);
        case 1:
            return panel.part.Drill({panel.length, panel.y, height}, {-1, 0, 0}, depth, 8);
        case 2:
            return panel.part.Drill({panel.x, 0, height}, {0, 1, 0}, depth, 5);
        default:
            return panel.part.Drill({panel.x, panel.width, height}, {0, -1, 0}, depth, 5);
    }
}

void MakePanel(MadePart& part, Lot& lot) {
    constexpr std::array thicknesses{16.0, 18.0, 19.05, 25.0};
    Panel panel{part, lot, lot.Between(300, 900), lot.Between(200, 500),
                thicknesses[static_cast<std::size_t>(lot.Below(4))]};
    part.Board(panel.length, panel.width, panel.thickness);
    for (int feature = 1 + lot.Below(6); feature > 0; --feature) {
        panel.Choose();
        switch (lot.Below(5)) {
            case 0:
            case 1:
                CutUpright(panel);
                break;
            case 2:
            case 3:
                DrillUpright(panel);
                break;
            default:
                BoreEdge(panel);
        }
    }
}

class Corpus : public WholePartTest, public ::testing::WithParamInterface<std::uint32_t> {
  protected:
    /// The checker takes what lies within a path as cleared.
    static bool IsAboutABit(const std::string& text) {
        return text.find("does not reach it") != std::string::npos ||
               text.find("is too narrow for its bit") != std::string::npos;
    }

    /// What the run tells of one part, but for what a bit leaves.
    std::string Told(Acad3DSolid& solid) {
        Choose({&solid});
        dialogs.messages.clear();
        RunOnly(Target::C2C);
        std::vector<std::string> told;
        for (const std::string& line : LastRunReport().unexplained)
            for (const std::string& text : Split(line.substr(line.find(": ") + 1), ';'))
                if (!IsAboutABit(text)) told.push_back(text);
        return Join(told, ";");
    }
};

TEST_P(Corpus, WhatTheCheckerFindsIsToldAndNothingElse) {
    WriteMaterials({"16", "18", "19.05", "25"}, std::array{12.0, 6.0, 3.0});
    Lot lot(GetParam());
    for (int i = 0; i < PanelsPerLot; ++i) {
        SCOPED_TRACE("panel " + std::to_string(i));
        MadePart part = Made();
        MakePanel(part, lot);
        GivePartData(part.Solid(), "Panel", lot.Below(2) == 0 ? "LWT" : "WLT");
        if (lot.Below(2) == 0)
            Lay(part.Solid(), lot.Between(-180, 180), lot.Between(-90, 90), lot.Between(-180, 180), {});
        const std::string told = Told(part.Solid());
        const bool made = !LastRunReport().skipped.empty() ? false : FirstSide().has_value();
        if (made) {
            const std::vector<std::string> faults =
                Faults(part.Solid(), 0, {0, {"RT_", "PKC_", "PKS_", "VD_", "H"}});
            EXPECT_EQ(faults.empty(), told.empty()) << "found: " << Join(faults, "; ") << "\ntold: " << told;
        }
        part.Solid().Delete();
    }
}

INSTANTIATE_TEST_SUITE_P(All, Corpus, ::testing::Range(1U, 13U));

}  // namespace
}  // namespace brenvik
