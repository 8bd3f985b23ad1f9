// Drawings as DXF text: any bytes give a drawing or a failure, and what was read can be written and read
// again without a change.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "dxf_round_trip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    brenvik::fuzz::RequireRoundTrip({reinterpret_cast<const char*>(data), size});
    return 0;
}
