// Lengths of a drawing that stay as they stand when it is brought to another unit.
#pragma once

#include <string>

namespace brenvik {

class HostDocument;

/// What holds such lengths, by number and kind ("extended data of 2 blocks, 1 XRECORD"): extended data of
/// blocks and of what stands in them (a block keeps its own unit, its references are scaled), and objects
/// that go through as text. Blank where there are none.
std::string UnscaledLengths(const HostDocument& document);

}  // namespace brenvik
