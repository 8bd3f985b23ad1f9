// The part is drawn in its own coordinates, turned upright by a group; lines keep their width at any size.
#include "cnc/picture/picture_svg.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "base/text.h"
#include "cnc/part/lengths.h"
#include "cnc/picture/picture_legend.h"

namespace brenvik {

namespace {

constexpr int Decimals = 4;
constexpr double Margin = PictureLayout::Margin;

std::string Number(double value) { return RoundedText(value, Decimals); }

std::string Escaped(std::string_view text) {
    std::string safe = ReplaceAll(text, "&", "&amp;");
    safe = ReplaceAll(safe, "<", "&lt;");
    safe = ReplaceAll(safe, ">", "&gt;");
    return ReplaceAll(safe, "\"", "&quot;");
}

std::string At(const PlanPoint& point) { return Number(point.x) + " " + Number(point.y); }

std::string PathOf(const PictureShape& shape) {
    std::string path;
    PlanPoint pen;
    for (const PlanSide& side : shape.sides) {
        if (path.empty() || side.from.x != pen.x || side.from.y != pen.y) path += "M" + At(side.from);
        if (side.bulge == 0) {
            path += "L" + At(side.to);
        } else {
            const double chord = std::hypot(side.to.x - side.from.x, side.to.y - side.from.y);
            const double radius = chord * (1 + side.bulge * side.bulge) / (4 * std::abs(side.bulge));
            path += "A" + Number(radius) + " " + Number(radius) + " 0 " +
                    (std::abs(side.bulge) > 1 ? "1 " : "0 ") + (side.bulge > 0 ? "1 " : "0 ") + At(side.to);
        }
        pen = side.to;
    }
    return shape.closed && !path.empty() ? path + "Z" : path;
}

std::string Attribute(std::string_view name, std::string_view value) {
    return " " + std::string(name) + "=\"" + Escaped(value) + "\"";
}

std::string Looks(PictureKind kind) {
    const PictureStyle& style = StyleOf(kind);
    return Attribute("stroke", style.line) + Attribute("fill", style.fill);
}

std::string TextAt(double x, double y, std::string_view words, std::string_view more = {}) {
    return "<text" + Attribute("x", Number(x)) + Attribute("y", Number(y)) + std::string(more) + ">" +
           Escaped(words) + "</text>\n";
}

}  // namespace

std::string PictureAsSvg(const PartPicture& picture, std::string_view title) {
    const std::vector<LegendEntry> legend = LegendOf(picture);
    const PictureLayout layout = LayoutOf(picture, legend);
    const double scale = layout.scale;
    std::string svg =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
        Attribute("width", Number(layout.sheetWidth)) + Attribute("height", Number(layout.sheetHeight)) +
        Attribute("viewBox", "0 0 " + Number(layout.sheetWidth) + " " + Number(layout.sheetHeight)) +
        " font-family=\"sans-serif\" font-size=\"15\">\n";
    svg += "<title>" + Escaped(title) + "</title>\n";
    svg += "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
    svg += TextAt(Margin, Margin + 14, TitleOf(picture, title), " font-size=\"18\" font-weight=\"bold\"");
    // The file's low corner comes to the lower left of the field.
    svg += "<g" +
           Attribute("transform", "matrix(" + NumberToText(scale) + " 0 0 " + NumberToText(-scale) + " " +
                                      NumberToText(Margin - picture.low.x * scale) + " " +
                                      NumberToText(layout.partTop + picture.high.y * scale) + ")") +
           " stroke-width=\"1.5\" fill-rule=\"evenodd\">\n";
    for (const PictureShape& shape : picture.shapes)
        svg += "<path" + Attribute("class", StyleOf(shape.kind).name) + Attribute("data-layer", shape.layer) +
               Looks(shape.kind) + " vector-effect=\"non-scaling-stroke\"" + Attribute("d", PathOf(shape)) +
               "><title>" + Escaped(shape.words) + "</title></path>\n";
    svg += "</g>\n<g class=\"legend\">\n";
    double y = layout.legendTop;
    for (const LegendEntry& entry : legend) {
        svg += "<rect" + Attribute("x", Number(Margin)) + Attribute("y", Number(y)) +
               " width=\"22\" height=\"14\" stroke-width=\"1.5\"" + Looks(entry.kind) + "/>\n";
        svg += TextAt(Margin + 34, y + 13, std::to_string(entry.count) + " x " + entry.words);
        y += PictureLayout::LegendLine;
    }
    return svg + "</g>\n</svg>\n";
}

}  // namespace brenvik
