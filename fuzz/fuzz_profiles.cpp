// Profile files: any bytes are profiles or passed over, what was read is read the same from a plain file,
// and every list of columns gives a part its line.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "base/text_lines.h"
#include "check.h"
#include "export/export_cells.h"
#include "export/profiles.h"
#include "list_session.h"

namespace {

void CheckColumns(const brenvik::ExportProfile& profile) {
    const std::vector<std::string> names = brenvik::Split(profile.columns, ',');
    const brenvik::SizeAdjustment adjustment{0.25, -1.5, 1e300};
    for (const brenvik::ColumnSource source :
         {brenvik::ColumnSource::Profile, brenvik::ColumnSource::Standard}) {
        for (const bool fractions : {false, true}) {
            const std::string line =
                brenvik::LineMaker(names, source, fractions).Line(brenvik::fuzz::OnePart(), adjustment);
            const auto commas = static_cast<std::size_t>(std::ranges::count(line, ','));
            brenvik::fuzz::Require(commas <= names.size(), "a line has no more cells than columns");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const brenvik::fuzz::ListSession session;
    const auto profiles =
        brenvik::ParseProfiles(brenvik::LinesOf({reinterpret_cast<const char*>(data), size}));
    std::string plain;
    for (const brenvik::ExportProfile& profile : profiles) {
        plain +=
            "[" + profile.name + "]\nextension=" + profile.extension + "\ncolumns=" + profile.columns + "\n";
        CheckColumns(profile);
    }
    const auto again = brenvik::ParseProfiles(brenvik::LinesOf(plain));
    brenvik::fuzz::Require(
        std::ranges::equal(profiles, again,
                           [](const brenvik::ExportProfile& a, const brenvik::ExportProfile& b) {
                               return a.name == b.name && a.extension == b.extension &&
                                      a.columns == b.columns;
                           }),
        "what was read is read again from a plain file");
    return 0;
}
