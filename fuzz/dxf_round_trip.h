// What holds of every drawing that is read from DXF, text or binary: what was read can be written, which is
// read again and written in the same bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "check.h"
#include "drafting_host/dxf/reading/dxf_reader.h"
#include "drafting_host/dxf/writing/dxf_writer.h"

namespace brenvik::fuzz {

inline std::optional<DrawingData> ReadAny(std::string_view content) {
    try {
        return ReadDxf(content, "fuzz.dxf");
    } catch (const Failure&) {
        return std::nullopt;
    }
}

/// The writer refuses what other programs could not read, such as names with forbidden characters, and binary
/// bodies, which are written from their shapes.
inline std::optional<std::string> WriteAny(const DrawingData& drawing) {
    try {
        return WriteDxf(drawing);
    } catch (const Failure&) {
        return std::nullopt;
    }
}

inline void RequireRoundTrip(std::string_view content) {
    const auto drawing = ReadAny(content);
    if (!drawing) return;
    const auto written = WriteAny(*drawing);
    if (!written) return;
    const auto again = ReadAny(*written);
    Require(again.has_value(), "what was written is read again");
    Require(WriteAny(*again) == written, "a drawing that was read again is written in the same bytes");
}

}  // namespace brenvik::fuzz
