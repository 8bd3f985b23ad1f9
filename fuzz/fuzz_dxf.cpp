// Drawings as DXF text: any bytes give a drawing or a failure, and what was read can be written and read
// again without a change.
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

std::optional<brenvik::DrawingData> Read(std::string_view content) {
    try {
        return brenvik::ReadDxf(content, "fuzz.dxf");
    } catch (const brenvik::Failure&) {
        return std::nullopt;
    }
}

// The writer refuses what other programs could not read, such as names with forbidden characters.
std::optional<std::string> Write(const brenvik::DrawingData& drawing) {
    try {
        return brenvik::WriteDxf(drawing);
    } catch (const brenvik::Failure&) {
        return std::nullopt;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto drawing = Read({reinterpret_cast<const char*>(data), size});
    if (!drawing) return 0;
    const auto written = Write(*drawing);
    if (!written) return 0;
    const auto again = Read(*written);
    brenvik::fuzz::Require(again.has_value(), "what was written is read again");
    const auto writtenAgain = Write(*again);
    brenvik::fuzz::Require(writtenAgain == written,
                           "a drawing that was read again is written in the same bytes");
    return 0;
}
