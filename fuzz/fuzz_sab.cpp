// Solids as binary ACIS data: any bytes give bodies and problems, never a crash, and what was built can be
// written.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "drafting_host/acis/acis_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Most changes to the first bytes make the input no binary data at all, which is another reader's.
    constexpr std::string_view magic = "ACIS BinaryFile";
    std::string bytes(reinterpret_cast<const char*>(data), size);
    if (!brenvik::acis::IsBinary(bytes)) bytes.replace(0, magic.size(), magic);
    for (const TopoDS_Shape& body : brenvik::acis::ReadText(bytes).bodies) {
        try {
            brenvik::acis::WriteText(body);
        } catch (const brenvik::acis::WriteFailure&) {
            // A body of damaged data may well be one that version 400 cannot hold.
        }
    }
    return 0;
}
