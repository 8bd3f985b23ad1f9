// Where the middle of a body lies, without building the body.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace brenvik::acis {

/// The middle of a text's body as its vertices have it.
struct BodyMiddle {
    std::array<double, 3> place{};
    double size = 0;  ///< From corner to corner of the box around the vertices.
    /// Faces and edges are plain and the body isn't turned, so that no other middle can be meant: round ones
    /// reach beyond their vertices, and of a turned body some programs turn the middle, too.
    bool isCertain = false;
};

/// Null where the text doesn't hold one body, or a damaged one.
std::optional<BodyMiddle> MiddleOfBody(std::string_view text);

}  // namespace brenvik::acis
