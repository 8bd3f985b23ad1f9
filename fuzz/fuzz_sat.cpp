// Solids as ACIS text: any bytes give bodies and problems, never a crash, and what was built can be written.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "drafting_host/acis/acis_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto result = brenvik::acis::ReadText({reinterpret_cast<const char*>(data), size});
    for (const TopoDS_Shape& body : result.bodies) {
        try {
            brenvik::acis::WriteText(body);
        } catch (const brenvik::acis::WriteFailure&) {
            // A body of damaged text may well be one that version 400 cannot hold.
        }
    }
    return 0;
}
