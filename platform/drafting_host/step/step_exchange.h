// What a program that opens the STEP library gets of it. Reading STEP pulls in fifty libraries of the
// modeller, its visualisation among them, which takes longer than many a list; so the program opens them only
// when a STEP file is read or written.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "base/length_unit.h"
#include "drafting_host/step/texts/step_document.h"

namespace brenvik::step {

/// `ReadStep`, `StepText` and `IsWrittenHere`.
struct StepExchange {
    StepDocument (*read)(const std::filesystem::path& path, LengthUnit unit) = nullptr;
    std::string (*text)(const std::filesystem::path& path, std::span<const StepSolid> parts,
                        LengthUnit unit) = nullptr;
    bool (*isWrittenHere)(std::string_view content) = nullptr;
};

/// The library file, which lies beside the program, its entry function, and the function that names its
/// build. A program checks the build before anything else, because memory layouts may differ between builds.
inline constexpr const char* ExchangeLibrary = "brenvik_step.so";
inline constexpr const char* ExchangeEntryName = "brenvik_step_exchange";
inline constexpr const char* ExchangeBuildName = "brenvik_step_build";
using ExchangeBuild = const char* (*)();
using ExchangeEntry = const StepExchange* (*)();

}  // namespace brenvik::step
