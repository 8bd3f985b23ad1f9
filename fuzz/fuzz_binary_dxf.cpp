// Drawings as binary DXF: any bytes give a drawing or a failure, and what was read can be written as text,
// which is read without a change.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "check.h"
#include "drafting_host/dxf/dxf_reader.h"
#include "drafting_host/dxf/dxf_writer.h"

namespace {

using namespace std::string_view_literals;

std::optional<brenvik::DrawingData> Read(std::string_view content) {
    try {
        return brenvik::ReadDxf(content, "fuzz.dxf");
    } catch (const brenvik::Failure&) {
        return std::nullopt;
    }
}

// The writer refuses what other programs could not read, and binary bodies, which are written from their
// shapes.
std::optional<std::string> Write(const brenvik::DrawingData& drawing) {
    try {
        return brenvik::WriteDxf(drawing);
    } catch (const brenvik::Failure&) {
        return std::nullopt;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::string_view sentinel = "AutoCAD Binary DXF\r\n\x1A\0"sv;
    std::string bytes(reinterpret_cast<const char*>(data), size);
    if (!bytes.starts_with(sentinel)) bytes.replace(0, sentinel.size(), sentinel);
    const auto drawing = Read(bytes);
    if (!drawing) return 0;
    const auto written = Write(*drawing);
    if (!written) return 0;
    const auto again = Read(*written);
    brenvik::fuzz::Require(again.has_value(), "what was written is read again");
    brenvik::fuzz::Require(Write(*again) == written,
                           "a drawing that was read again is written in the same bytes");
    return 0;
}
