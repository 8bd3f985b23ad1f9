// What a STEP file holds for a cut list: solids with name, sub assembly, layer and colour.
#pragma once

#include <TopoDS_Shape.hxx>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace brenvik::step {

/// A colour as a screen shows it, 0 to 255 each, and how much of what stands behind it it hides: 255 is all.
struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t opacity = 255;

    bool operator==(const Rgb&) const = default;
};

/// One solid of the assembly, at its place: world coordinates, no location left in the shape. All texts are
/// UTF-8.
struct StepSolid {
    TopoDS_Shape shape;
    std::string name;      ///< the part's name
    std::string assembly;  ///< name of the assembly that it is placed in; empty outside of all assemblies
    std::string layer;     ///< empty when it stands on none
    std::optional<Rgb> color{};
    bool layerVisible = true;  ///< Of its layer.
    bool visible = true;
};

/// A report of the reader.
struct StepNote {
    std::string text;
    std::size_t line = 0;  ///< Of the file, from 1; 0 when there is none.
    bool lost = true;      ///< Parts of the job are missing, or aren't what they seem.

    bool operator==(const StepNote&) const = default;
};

/// The solids in the order of the file, the reader's reports, and the sizes of the file's units of length,
/// each once: most files have one.
struct StepDocument {
    std::vector<StepSolid> solids;
    std::vector<StepNote> notes;
    std::vector<double> millimetresPerUnit;
    /// Written by this program, so that all it holds is read.
    bool isWrittenHere = false;
};

}  // namespace brenvik::step
