// The same features said twice: to the modeller, and as questions about a place.
#include "corpus/panel.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "base/text.h"

namespace brenvik::corpus {

namespace {

Shape MirroredShape(const Shape& shape, double length) {
    Shape mirrored = shape;
    for (ShapeCorner& corner : mirrored) {
        corner.x = length - corner.x;
        corner.bulge = -corner.bulge;
    }
    return mirrored;
}

}  // namespace

std::string Panel::Text() const {
    return NumberToText(length) + " x " + NumberToText(width) + " x " + NumberToText(thickness) + ": " +
           Join(words, ", ");
}

Panel Mirrored(const Panel& panel) {
    Panel mirrored = panel;
    for (Recess& recess : mirrored.recesses) {
        recess.shape = MirroredShape(recess.shape, panel.length);
        if (recess.island) recess.island = MirroredShape(*recess.island, panel.length);
    }
    for (EdgeBore& bore : mirrored.bores) {
        bore.x = panel.length - bore.x;
        bore.alongX = -bore.alongX;
    }
    mirrored.words.push_back("mirrored");
    return mirrored;
}

Acad3DSolid& BuildSolid(const Panel& panel, AcadBlock& space) {
    MadePart part(space);
    part.Board(panel.length, panel.width, panel.thickness);
    for (const Recess& recess : panel.recesses) {
        const double low = recess.low <= 0 ? -1 : recess.low;
        const double high = recess.high >= panel.thickness ? panel.thickness + 1 : recess.high;
        Acad3DSolid* const body = part.Body(recess.shape, low, high);
        if (recess.island)
            body->Boolean(BooleanKind::Subtraction, *part.Body(*recess.island, low - 1, high + 1));
        part.Subtract(*body);
    }
    for (const EdgeBore& bore : panel.bores)
        part.Drill({bore.x, bore.y, bore.z}, {bore.alongX, bore.alongY, 0}, bore.depth, bore.diameter);
    return part.Solid();
}

Truth::Truth(const Panel& panel) : mPanel(panel) {
    for (const Recess& recess : panel.recesses) {
        Prism prism{mFigures.size(), std::nullopt, recess.low, recess.high};
        mFigures.emplace_back(recess.shape);
        if (recess.island) {
            prism.island = mFigures.size();
            mFigures.emplace_back(*recess.island);
        }
        mPrisms.push_back(prism);
    }
}

bool Truth::HasWood(double x, double y, double z) const {
    if (x <= 0 || y <= 0 || z <= 0 || x >= mPanel.length || y >= mPanel.width || z >= mPanel.thickness)
        return false;
    for (const Prism& prism : mPrisms) {
        if (z <= prism.low || z >= prism.high || !mFigures[prism.figure].Contains({x, y})) continue;
        if (!prism.island || !mFigures[*prism.island].Contains({x, y})) return false;
    }
    return std::ranges::none_of(mPanel.bores, [&](const EdgeBore& bore) { return Takes(bore, x, y, z); });
}

bool Truth::IsNearBorder(double x, double y, double z, double distance) const {
    const auto near = [distance](double a, double b) { return std::abs(a - b) < distance; };
    if (near(x, 0) || near(x, mPanel.length) || near(y, 0) || near(y, mPanel.width) || near(z, 0) ||
        near(z, mPanel.thickness))
        return true;
    if (std::ranges::any_of(mPrisms,
                            [&](const Prism& prism) { return near(z, prism.low) || near(z, prism.high); }))
        return true;
    if (std::ranges::any_of(mFigures, [&](const Figure& figure) {
            return figure.MayBeNear({x, y}, distance) && figure.DistanceToRim({x, y}) < distance;
        }))
        return true;
    return std::ranges::any_of(mPanel.bores,
                               [&](const EdgeBore& bore) { return IsNearWall(bore, x, y, z, distance); });
}

BorePlace PlaceIn(const EdgeBore& bore, double x, double y, double z) {
    const double dx = x - bore.x, dy = y - bore.y, dz = z - bore.z;
    const double along = dx * bore.alongX + dy * bore.alongY;
    return {along, std::hypot(dx * bore.alongY - dy * bore.alongX, dz)};
}

bool Takes(const EdgeBore& bore, double x, double y, double z) {
    const BorePlace place = PlaceIn(bore, x, y, z);
    return place.along < bore.depth && place.along > -1 && place.across < bore.diameter / 2;
}

bool IsNearWall(const EdgeBore& bore, double x, double y, double z, double distance) {
    const BorePlace place = PlaceIn(bore, x, y, z);
    if (place.along < -1 - distance || place.along > bore.depth + distance ||
        place.across > bore.diameter / 2 + distance)
        return false;
    return std::abs(place.across - bore.diameter / 2) < distance ||
           std::abs(place.along - bore.depth) < distance;
}

}  // namespace brenvik::corpus
