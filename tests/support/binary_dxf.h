// Binary DXF for tests, made from ASCII.
#pragma once

#include <string>
#include <string_view>

namespace brenvik::test {

/// Codes of one byte, as release 12 and before have them, or of two.
enum class BinaryCodes { Short, Long };

/// An ASCII DXF file as a binary one. What carets stand for in texts stands there itself.
std::string BinaryDxf(std::string_view text, BinaryCodes codes = BinaryCodes::Long);

/// An ASCII DXF file of release 2000 as release 2013 writes it: its bodies as binary ACIS data in a section
/// of their own, with a thumbnail and a body that no entity has before them.
std::string WithBinaryBodies(std::string_view text);

}  // namespace brenvik::test
