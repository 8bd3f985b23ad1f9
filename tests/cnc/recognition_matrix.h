// Parts for the matrix of shops: what is made of a part, and what its files then hold.
#pragma once

#include <ostream>
#include <span>
#include <string_view>
#include <tuple>
#include <vector>

#include "base/text.h"
#include "cnc/recognition_fixture.h"

namespace brenvik {

struct PartCase {
    std::string_view name;
    void (*make)(MadePart& part);
    /// Operations by kind, on the first and the second side.
    std::string_view first, second = "no file";
    /// In cubic millimetres.
    double uncovered = 0;
    std::vector<std::string> twice = {};
    /// What the run tells of the part at its end; nothing where all is explained.
    std::string_view told = {};

    friend void PrintTo(const PartCase& each, std::ostream* out) { *out << each.name; }
};

/// Every part in every shop, each in another pose.
class RecognitionMatrix : public WholePartTest,
                          public ::testing::WithParamInterface<std::tuple<Shop, PartCase>> {
  protected:
    void RunCase() {
        const auto& [shop, each] = GetParam();
        UseShop(shop);
        MadePart part = Made();
        each.make(part);
        PutDown(part, shop, each.name.size() + static_cast<std::size_t>(shop.scale));
        RunAll();
        const double cube = shop.CutInInches() ? 25.4 * 25.4 * 25.4 : 1;
        EXPECT_EQ(Faults(part.Solid(), 0, {each.uncovered / cube, each.twice}), std::vector<std::string>{});
        EXPECT_EQ(Kinds(FirstSide()), each.first);
        EXPECT_EQ(Kinds(SecondSide()), each.second);
        if (each.told.empty()) {
            ExpectQuiet();
            return;
        }
        ASSERT_EQ(LastRunReport().unexplained.size(), 1U) << Join(LastRunReport().unexplained, "\n");
        EXPECT_NE(LastRunReport().unexplained[0].find(each.told), std::string::npos)
            << LastRunReport().unexplained[0];
        EXPECT_EQ(Between(), LastRunReport().unexplained);
    }
};

inline std::string MatrixName(const ::testing::TestParamInfo<std::tuple<Shop, PartCase>>& info) {
    return std::string(std::get<1>(info.param).name) + "_" + std::string(std::get<0>(info.param).name);
}

}  // namespace brenvik
