// Puts the operations of a part's files onto a blank and asks, place by place, whether wood stands where the
// panel has some. It shares nothing with the run's own proof: no section of the solid, no reader of names.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cnc/cnc_fixture.h"
#include "corpus/panel.h"

namespace brenvik::corpus {

struct Findings {
    /// The first place of each kind, in words; blank when all is right.
    std::string standing, gone;
    /// What of an entity or its name can't be right.
    std::vector<std::string> faults;
    bool Exact() const { return standing.empty() && gone.empty() && faults.empty(); }
    std::string Text() const;
};

/// Of files of C2C in millimetres. The panel may lie in them any way up and round, but not mirrored.
Findings CheckFiles(const Panel& panel, const std::vector<Drawn>& first,
                    const std::optional<std::vector<Drawn>>& second);

}  // namespace brenvik::corpus
