// Journals: any bytes are read into steps or refused with their place.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "journal/journal_parser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    try {
        brenvik::ParseJournal(bytes, "fuzz.journal");
    } catch (const brenvik::JournalSyntaxError&) {
        // A refusal is an answer.
    }
    double point[3];
    brenvik::ParseJournalPoint(bytes, point);
    return 0;
}
