// Puts the text of a STEP file on the disk, for tests that read it again.
#pragma once

#include <filesystem>
#include <fstream>
#include <span>

#include "drafting_host/step/step_writer.h"

namespace brenvik::step {

inline void WriteStep(const std::filesystem::path& path, std::span<const StepSolid> parts) {
    const std::string text = StepText(path, parts);
    std::ofstream(path, std::ios::binary) << text;
}

}  // namespace brenvik::step
