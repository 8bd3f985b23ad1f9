// Counted and measured for people.
#include "cnc/picture/picture_legend.h"

#include <algorithm>

#include "base/numbers.h"
#include "cnc/part/lengths.h"

namespace brenvik {

namespace {

constexpr int Decimals = 4, MetricDecimals = 2, InchDecimals = 4;

std::string Number(double value) { return RoundedText(value, Decimals); }

}  // namespace

std::vector<LegendEntry> LegendOf(const PartPicture& picture) {
    std::vector<LegendEntry> legend;
    for (const PictureShape& shape : picture.shapes) {
        const auto found = std::ranges::find_if(legend, [&](const LegendEntry& entry) {
            return entry.kind == shape.kind && entry.words == shape.words;
        });
        if (found != legend.end())
            ++found->count;
        else
            legend.push_back({shape.kind, shape.words, 1});
    }
    return legend;
}

std::string TitleOf(const PartPicture& picture, std::string_view title) {
    const int decimals = picture.metric ? MetricDecimals : InchDecimals;
    std::string words = std::string(title) + "   " + Number(RoundHalfEven(picture.length, decimals)) + " x " +
                        LengthInWords(RoundHalfEven(picture.width, decimals), picture.metric);
    if (picture.thickness) words += ", " + LengthInWords(*picture.thickness, picture.metric) + " thick";
    return words;
}

}  // namespace brenvik
