// Drawings as binary DXF: any bytes give a drawing or a failure, and what was read can be written as text,
// which is read without a change.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "dxf_round_trip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace std::string_view_literals;
    constexpr std::string_view sentinel = "AutoCAD Binary DXF\r\n\x1A\0"sv;
    std::string bytes(reinterpret_cast<const char*>(data), size);
    if (!bytes.starts_with(sentinel)) bytes.replace(0, sentinel.size(), sentinel);
    brenvik::fuzz::RequireRoundTrip(bytes);
    return 0;
}
