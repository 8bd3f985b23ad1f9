// Panels as shops make them, by lot.
#pragma once

#include <cstdint>
#include <string_view>

#include "corpus/panel.h"

namespace brenvik::corpus {

/// What features of a panel have to do with each other.
enum class Contacts {
    OneKind,      ///< A few of one kind, apart.
    Apart,        ///< Any kinds, apart.
    Touching,     ///< Some meet in a wall, a rim or a corner.
    Overlapping,  ///< Some lie over each other.
};

struct DrawnPanel {
    Panel panel;
    std::string_view kind;  ///< Of a panel with one kind.
};

/// The same for the same numbers, on every machine.
DrawnPanel DrawPanel(Contacts contacts, std::uint32_t number);

}  // namespace brenvik::corpus
