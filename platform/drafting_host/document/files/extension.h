// What the extension of a name asks for.
#pragma once

#include <filesystem>
#include <string>

#include "base/letter_case.h"

namespace brenvik {

/// In small letters and with its point: ".dxf".
inline std::string ExtensionOf(const std::filesystem::path& name) {
    return FoldLower(name.extension().string());
}

/// The host's own drawings. What is saved as ".dwg" is DXF text too.
inline bool IsDrawingExtension(const std::string& extension) {
    return extension == ".dxf" || extension == ".dwg";
}

inline bool IsStepExtension(const std::string& extension) {
    return extension == ".step" || extension == ".stp";
}

}  // namespace brenvik
