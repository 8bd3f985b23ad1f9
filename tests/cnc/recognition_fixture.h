// Whole runs over parts built by code: the shops they are run in, the poses they lie in, and what comes out.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "cnc/checker.h"
#include "cnc/made_part.h"

namespace brenvik {

/// What a drawing is measured in and what the machine gets: an `ExportScaleSetting`.
struct Shop {
    std::string_view name;
    int scale = 2;

    bool DrawnInInches() const { return scale == 1 || scale == 3; }
    bool CutInInches() const { return scale == 1 || scale == 4; }
    friend void PrintTo(const Shop& shop, std::ostream* out) { *out << shop.name; }
};

inline constexpr auto Shops = std::to_array<Shop>(
    {{"Inches", 1}, {"Millimetres", 2}, {"InchesToMillimetres", 3}, {"MillimetresToInches", 4}});

struct LaidPose {
    double aboutX, aboutY, aboutZ;
    Point3 to;
};
/// Odd ones; the first lies square to the world.
inline constexpr auto OddPoses = std::to_array<LaidPose>({{0, 0, 0, {10, 20, 30}},
                                                          {31, -17, 123, {1234.5, -678.25, 91}},
                                                          {-142.7, 61.3, 8.9, {-3333.3, 12.1, 777.7}},
                                                          {90, 0, 33.3, {55.5, 66.6, -77.7}},
                                                          {180, 13.7, -91.2, {0, 0, 0}}});

class WholePartTest : public CheckedRunTest {
  protected:
    MadePart Made() {
        AddLayer(document, "Parts");
        return MadePart(document.ModelSpace());
    }
    void UseShop(const Shop& shop) {
        if (shop.CutInInches())
            UseImperial();
        else
            UseMetric();
        Set("ExportScaleSetting", NumberToText(shop.scale));
    }
    /// Brings a part made in millimetres into the drawing of a shop: its unit, part data, a pose.
    void PutDown(MadePart& part, const Shop& shop, std::size_t pose, std::string_view letters = "LWT") {
        Acad3DSolid& solid = part.Solid();
        if (shop.DrawnInInches()) solid.ScaleEntity({0, 0, 0}, 1 / 25.4);
        GivePartData(solid, "Panel", letters);
        const LaidPose& laid = OddPoses.at(pose % OddPoses.size());
        Lay(solid, laid.aboutX, laid.aboutY, laid.aboutZ, laid.to);
    }
    /// A part in millimetres, kept so, at an odd angle.
    void PutDown(MadePart& part) { PutDown(part, {"Millimetres", 2}, 1); }

    /// Runs a part in millimetres at an odd angle, and expects files without fault and no box in between.
    void ExpectSound(MadePart& part, const CheckOptions& options = {}) {
        PutDown(part);
        RunAll();
        EXPECT_EQ(Faults(part.Solid(), 0, options), std::vector<std::string>{});
        ExpectQuiet();
    }
    /// No box but the one at the start and the one at the end.
    void ExpectQuiet() {
        EXPECT_EQ(Between(), std::vector<std::string>{});
        ASSERT_FALSE(Messages().empty());
        EXPECT_EQ(Messages().back(), "-- Export Complete! --");
        EXPECT_EQ(LastRunReport().unexplained, std::vector<std::string>{});
        EXPECT_TRUE(LastRunReport().complete);
    }
    /// The boxes between the first one and the last one.
    std::vector<std::string> Between() const {
        std::vector<std::string> messages = Messages();
        if (!messages.empty()) messages.erase(messages.begin());
        if (!messages.empty()) messages.pop_back();
        return messages;
    }
    static std::size_t Count(const std::optional<std::vector<Drawn>>& drawn, std::string_view prefix) {
        return drawn ? OnLayers(*drawn, prefix).size() : 0;
    }
    std::size_t CountBoth(std::string_view prefix) {
        return Count(FirstSide(), prefix) + Count(SecondSide(), prefix);
    }
    /// How many operations of each kind a side has, as "PKC 1 VD 2", in the order of the alphabet.
    static std::string Kinds(const std::optional<std::vector<Drawn>>& drawn) {
        if (!drawn) return "no file";
        std::vector<std::string> kinds;
        for (const Drawn& each : *drawn) kinds.push_back(each.layer.substr(0, each.layer.find('_')));
        std::ranges::sort(kinds);
        std::string text;
        for (std::size_t i = 0; i < kinds.size();) {
            std::size_t same = i;
            while (same < kinds.size() && kinds[same] == kinds[i]) ++same;
            text += (text.empty() ? "" : " ") + kinds[i] + " " + std::to_string(same - i);
            i = same;
        }
        return text;
    }
    /// The only entity whose layer begins so.
    static Drawn Only(const std::optional<std::vector<Drawn>>& drawn, std::string_view prefix) {
        const std::vector<Drawn> found = OnLayers(drawn.value_or(std::vector<Drawn>{}), prefix);
        EXPECT_EQ(found.size(), 1U) << prefix;
        return found.empty() ? Drawn{} : found.front();
    }
};

}  // namespace brenvik
