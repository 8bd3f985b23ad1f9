// Whether a part file's text states each thing once and in a form that all receivers read alike. A reader of
// drawings makes the best of doubled, contradicting and unknown groups, and each reader makes something else
// of them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

struct TextForm {
    /// In words, each with its line, counted from 1.
    std::vector<std::string> faults;
    /// How many entities a reader of drawings has to find in it; vertices are no entities of their own.
    std::size_t entities = 0;
};

/// What a head says of the unit of lengths: $INSUNITS and $MEASUREMENT, 0 where it is silent.
struct HeadUnits {
    int insertUnits = 0, measurement = 0;
};

/// The unit that the run's lengths are in, and what its files say of it, where that is known.
struct RunUnits {
    bool metric = true;
    std::optional<HeadUnits> head = {};
};

/// Of a DXF file in text as a run writes it; a binary one is a fault.
TextForm FormOfText(std::string_view content, const RunUnits& units);

}  // namespace brenvik
