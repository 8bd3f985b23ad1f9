// What the extension of a name asks for.
#pragma once

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/letter_case.h"

namespace brenvik {

/// In small letters and with its point: ".dxf".
inline std::string ExtensionOf(const std::filesystem::path& name) {
    return FoldLower(name.extension().string());
}

/// The endings of drawings. What a file holds is known by its content when it is read; by these a drawing is
/// found in a folder, and they name the kind that is to be written.
struct DrawingEnding {
    std::string_view text;
    bool isWritten = true;
    /// The kind of drawing that a person who saves may choose. Blank for one that is only written by its
    /// name.
    std::string_view choice{};
};
inline constexpr auto DrawingEndings =
    std::to_array<DrawingEnding>({{.text = ".dxf", .choice = "DXF drawing"},
                                  {.text = ".dwg"},
                                  {.text = ".step", .choice = "STEP"},
                                  {.text = ".stp", .choice = "STEP"},
                                  {.text = ".sat", .choice = "ACIS text"},
                                  {.text = ".sab", .isWritten = false}});

inline bool IsEndingOfDrawing(std::string_view extension) {
    return std::ranges::find(DrawingEndings, extension, &DrawingEnding::text) != DrawingEndings.end();
}

inline bool IsEndingOfWrittenDrawing(std::string_view extension) {
    return std::ranges::any_of(DrawingEndings, [extension](const DrawingEnding& ending) {
        return ending.isWritten && ending.text == extension;
    });
}

/// As a message has them: ".dxf, .dwg or .sat".
std::string EndingsOfDrawings();
std::string EndingsOfWrittenDrawings();

/// The host's own drawings. What is saved as ".dwg" is DXF text too.
inline bool IsDrawingExtension(const std::string& extension) {
    return extension == ".dxf" || extension == ".dwg";
}

inline bool IsStepExtension(const std::string& extension) {
    return extension == ".step" || extension == ".stp";
}

}  // namespace brenvik
