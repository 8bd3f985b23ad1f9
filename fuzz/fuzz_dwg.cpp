// Binary drawings: any bytes give a drawing or a failure, in bounded time and memory.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/failure.h"
#include "drafting_host/dwg/dwg_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        brenvik::ReadDwg({reinterpret_cast<const char*>(data), size}, "fuzz.dwg");
    } catch (const brenvik::Failure&) {
        return 0;
    }
    return 0;
}
