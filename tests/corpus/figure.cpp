// Even and odd along a line to the right.
#include "corpus/figure.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace brenvik::corpus {

namespace {

/// The angle of a chord; on a radius of 60 it strays by five thousandths.
constexpr double ChordAngle = std::numbers::pi / 128;

double DistanceToLine(const Spot& spot, const Spot& from, const Spot& to) {
    const double dx = to.x - from.x, dy = to.y - from.y, square = dx * dx + dy * dy;
    const double along =
        square == 0 ? 0 : std::clamp(((spot.x - from.x) * dx + (spot.y - from.y) * dy) / square, 0.0, 1.0);
    return std::hypot(spot.x - from.x - along * dx, spot.y - from.y - along * dy);
}

}  // namespace

Figure::Figure(const Shape& shape) {
    for (std::size_t i = 0; i < shape.size(); ++i) {
        const ShapeCorner &from = shape[i], &to = shape[(i + 1) % shape.size()];
        mSides.push_back(mCorners.size());
        mCorners.push_back({from.x, from.y});
        if (from.bulge == 0) continue;
        const double sweep = 4 * std::atan(from.bulge), dx = to.x - from.x, dy = to.y - from.y;
        const double lift = 1 / (2 * std::tan(sweep / 2));
        const Spot center{(from.x + to.x) / 2 - dy * lift, (from.y + to.y) / 2 + dx * lift};
        const int chords = std::max(2, static_cast<int>(std::ceil(std::abs(sweep) / ChordAngle)));
        for (int chord = 1; chord < chords; ++chord) {
            const double angle = sweep * chord / chords, c = std::cos(angle), s = std::sin(angle);
            const double x = from.x - center.x, y = from.y - center.y;
            mCorners.push_back({center.x + c * x - s * y, center.y + s * x + c * y});
        }
    }
    mLow = mHigh = mCorners.front();
    for (const Spot& corner : mCorners) {
        mLow = {std::min(mLow.x, corner.x), std::min(mLow.y, corner.y)};
        mHigh = {std::max(mHigh.x, corner.x), std::max(mHigh.y, corner.y)};
    }
}

bool Figure::MayBeNear(const Spot& spot, double distance) const {
    return spot.x > mLow.x - distance && spot.x < mHigh.x + distance && spot.y > mLow.y - distance &&
           spot.y < mHigh.y + distance;
}

bool Figure::Contains(const Spot& spot) const {
    if (!MayBeNear(spot, 0)) return false;
    bool inside = false;
    for (std::size_t i = 0; i < mCorners.size(); ++i) {
        const Spot &from = mCorners[i], &to = mCorners[(i + 1) % mCorners.size()];
        if ((from.y > spot.y) == (to.y > spot.y)) continue;
        if (from.x + (spot.y - from.y) / (to.y - from.y) * (to.x - from.x) > spot.x) inside = !inside;
    }
    return inside;
}

double Figure::DistanceToRim(const Spot& spot) const {
    double nearest = HUGE_VAL;
    for (std::size_t i = 0; i < mCorners.size(); ++i)
        nearest = std::min(nearest, DistanceToLine(spot, mCorners[i], mCorners[(i + 1) % mCorners.size()]));
    return nearest;
}

std::vector<Spot> Figure::Beside(double distance) const {
    std::vector<Spot> spots;
    for (std::size_t side = 0; side < mSides.size(); ++side) {
        const std::size_t begin = mSides[side];
        const std::size_t end = side + 1 < mSides.size() ? mSides[side + 1] : mCorners.size();
        const std::size_t step = std::max<std::size_t>(1, (end - begin) / 8);
        for (std::size_t i = begin; i < end; i += step) {
            const Spot &from = mCorners[i], &to = mCorners[(i + 1) % mCorners.size()];
            const double length = std::hypot(to.x - from.x, to.y - from.y);
            if (length == 0) continue;
            const double outX = (to.y - from.y) / length * distance;
            const double outY = (from.x - to.x) / length * distance;
            for (const double share : {0.02, 0.31, 0.5, 0.77, 0.98}) {
                const double x = from.x + share * (to.x - from.x), y = from.y + share * (to.y - from.y);
                spots.push_back({x + outX, y + outY});
                spots.push_back({x - outX, y - outY});
            }
        }
    }
    return spots;
}

Shape Circle(double x, double y, double diameter) {
    return {{x - diameter / 2, y, 1}, {x + diameter / 2, y, 1}};
}

}  // namespace brenvik::corpus
