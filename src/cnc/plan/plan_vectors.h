// Vector arithmetic in plan; points count from the part's corner.
#pragma once

#include <cmath>

#include "session/ports/section_port.h"

namespace brenvik {

inline PlanPoint operator+(const PlanPoint& a, const PlanPoint& b) { return {a.x + b.x, a.y + b.y}; }
inline PlanPoint operator-(const PlanPoint& a, const PlanPoint& b) { return {a.x - b.x, a.y - b.y}; }
inline PlanPoint operator*(const PlanPoint& a, double by) { return {a.x * by, a.y * by}; }

inline double Dot(const PlanPoint& a, const PlanPoint& b) { return a.x * b.x + a.y * b.y; }
/// Above 0 where b turns counter-clockwise from a.
inline double Cross(const PlanPoint& a, const PlanPoint& b) { return a.x * b.y - a.y * b.x; }
inline double Length(const PlanPoint& a) { return std::hypot(a.x, a.y); }
inline double Distance(const PlanPoint& a, const PlanPoint& b) { return Length(a - b); }

}  // namespace brenvik
