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

PictureLayout LayoutOf(const PartPicture& picture, const std::vector<LegendEntry>& legend) {
    using Layout = PictureLayout;
    const double width = std::max(picture.high.x - picture.low.x, 1e-6),
                 height = std::max(picture.high.y - picture.low.y, 1e-6);
    Layout layout;
    layout.scale = std::min(Layout::FieldWidth / width, Layout::FieldHeight / height);
    layout.partTop = Layout::Margin + Layout::TitleHeight;
    layout.partWidth = width * layout.scale;
    layout.partHeight = height * layout.scale;
    layout.legendTop = layout.partTop + layout.partHeight + Layout::Margin;
    layout.sheetWidth = Layout::FieldWidth + 2 * Layout::Margin;
    layout.sheetHeight =
        layout.legendTop + static_cast<double>(legend.size()) * Layout::LegendLine + Layout::Margin;
    return layout;
}

std::string TitleOf(const PartPicture& picture, std::string_view title) {
    const int decimals = picture.metric ? MetricDecimals : InchDecimals;
    std::string words = std::string(title) + "   " + Number(RoundHalfEven(picture.length, decimals)) + " x " +
                        LengthInWords(RoundHalfEven(picture.width, decimals), picture.metric);
    if (picture.thickness) words += ", " + LengthInWords(*picture.thickness, picture.metric) + " thick";
    return words;
}

}  // namespace brenvik
