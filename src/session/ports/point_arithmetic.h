// Points of the host as vectors, in drawing units. The operators stand in a namespace of their own, which a
// source file brings in where it computes.
#pragma once

#include <cmath>

#include "session/ports/host_interface.h"

namespace brenvik::vectors {

inline Point3 operator+(const Point3& a, const Point3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Point3 operator-(const Point3& a, const Point3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Point3 operator*(const Point3& a, double f) { return {a.x * f, a.y * f, a.z * f}; }
inline double Dot(const Point3& a, const Point3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Point3 Cross(const Point3& a, const Point3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// Exact along a world axis, where the square root of a square could round.
inline double Length(const Point3& a) { return std::hypot(a.x, a.y, a.z); }
inline double Distance(const Point3& a, const Point3& b) { return Length(a - b); }
inline bool IsZero(const Point3& a) { return a.x == 0 && a.y == 0 && a.z == 0; }

}  // namespace brenvik::vectors
