// The table of the sample job. The fronts' grain runs upright, across their longest side: WLT.
#include "sample/sample_data.h"

#include <algorithm>

#include "base/invariant.h"

namespace brenvik::app {

namespace {

// clang-format off
constexpr std::array Rows{
    SampleData{"B600-01", "Left Side", "Carcass", "White Melamine", "LWT", {"18", "560", "720"}, "", "14.80", {"1mm White", "", "", ""}, "Inside"},
    SampleData{"B600-02", "Right Side", "Carcass", "White Melamine", "LWT", {"18", "560", "720"}, "", "14.80", {"1mm White", "", "", ""}, "Inside"},
    SampleData{"B600-03", "Bottom", "Carcass", "White Melamine", "LWT", {"564", "542", "18"}, "", "11.20", {"1mm White", "", "", ""}, "Top"},
    SampleData{"B600-04", "Top Rail Front", "Carcass", "White Melamine", "LWT", {"564", "100", "18"}, "", "2.60", {"1mm White", "", "", ""}, ""},
    SampleData{"B600-05", "Top Rail Back", "Carcass", "White Melamine", "LWT", {"564", "100", "18"}, "", "2.60", {"", "", "", ""}, ""},
    SampleData{"B600-06", "Toe Kick", "Carcass", "White Melamine", "LWT", {"564", "18", "100"}, "scribe to the floor", "2.60", {"", "", "", ""}, "Front"},
    SampleData{"B600-07", "Back", "Carcass", "White HDF", "LWT", {"579", "8", "620"}, "cable cut-out", "4.10", {"", "", "", ""}, ""},
    SampleData{"B600-08", "Door", "Fronts", "Cherry", "WLT", {"596", "19", "472"}, "grain runs upright", "42.50", {"2mm Cherry", "2mm Cherry", "2mm Cherry", "2mm Cherry"}, "Front"},
    SampleData{"B600-09", "Drawer Front", "Fronts", "Cherry", "WLT", {"596", "19", "140"}, "grain matched to the door", "16.40", {"2mm Cherry", "2mm Cherry", "2mm Cherry", "2mm Cherry"}, "Front"},
    SampleData{"B600-10", "Drawer Side Left", "Drawer", "Birch Ply", "LWT", {"15", "500", "110"}, "", "6.30", {"", "", "", ""}, ""},
    SampleData{"B600-11", "Drawer Side Right", "Drawer", "Birch Ply", "LWT", {"15", "500", "110"}, "", "6.30", {"", "", "", ""}, ""},
    SampleData{"B600-12", "Drawer Sub Front", "Drawer", "Birch Ply", "LWT", {"508", "15", "110"}, "", "5.90", {"", "", "", ""}, ""},
    SampleData{"B600-13", "Drawer Back", "Drawer", "Birch Ply", "LWT", {"508", "15", "92"}, "", "5.20", {"", "", "", ""}, ""},
    SampleData{"B600-14", "Tray Divider", "Interior", "Birch Ply", "LWT", {"450", "270", "12"}, "stands at 17.5 degrees", "7.75", {"", "", "1mm Birch", ""}, ""},
};
// clang-format on

}  // namespace

const SampleData& SampleDataOf(std::string_view number) {
    const auto found =
        std::find_if(Rows.begin(), Rows.end(), [&](const SampleData& row) { return row.number == number; });
    Invariant(found != Rows.end(), "the sample job's parts stand in its table");
    return *found;
}

}  // namespace brenvik::app
