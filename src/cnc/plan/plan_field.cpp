// The sides are sorted into columns, and a point asks those of its own.
#include "cnc/plan/plan_field.h"

#include <algorithm>
#include <cmath>

namespace brenvik {

namespace {

constexpr double StrayOfChords = 1e-9;

}  // namespace

PlanField::PlanField(std::span<const PlanSide> sides) {
    for (const PlanSide& side : sides) AddPieces(side, StrayOfChords, mPieces);
    if (mPieces.empty()) return;
    double to = mPieces.front().x1;
    mFrom = mPieces.front().x0;
    for (const PlanPiece& piece : mPieces) {
        mFrom = std::min(mFrom, piece.x0);
        to = std::max(to, piece.x1);
    }
    mColumns.resize(std::min<std::size_t>(512, mPieces.size()));
    mStep = (to - mFrom) / static_cast<double>(mColumns.size());
    for (std::size_t i = 0; i < mPieces.size(); ++i)
        for (std::size_t column = ColumnOf(mPieces[i].x0); column <= ColumnOf(mPieces[i].x1); ++column)
            mColumns[column].push_back(i);
}

std::size_t PlanField::ColumnOf(double x) const {
    const double column = std::floor((x - mFrom) / mStep);
    return static_cast<std::size_t>(std::clamp(column, 0.0, static_cast<double>(mColumns.size() - 1)));
}

bool PlanField::Holds(const PlanPoint& point) const {
    if (mColumns.empty()) return false;
    bool inside = false;
    for (const std::size_t i : mColumns[ColumnOf(point.x)]) {
        const PlanPiece& piece = mPieces[i];
        if (point.x >= piece.x0 && point.x < piece.x1 && piece.At(point.x) > point.y) inside = !inside;
    }
    return inside;
}

}  // namespace brenvik
