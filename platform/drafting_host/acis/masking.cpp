// The mask that drawings lay over ACIS text, and the circumflex rule of text drawings that goes with
// it: a masked A is a circumflex, which would otherwise begin a control character.
#include "drafting_host/acis/acis_text.h"

namespace brenvik::acis {
namespace {

constexpr char FirstMasked = '!';
constexpr char LastMasked = '~';
// First and last printable character change places; blanks and everything outside stay.
constexpr int MirrorSum = FirstMasked + LastMasked;

}  // namespace

std::string DecodeLine(std::string_view masked) {
    std::string plain(masked);
    for (char& c : plain)
        if (c >= FirstMasked && c <= LastMasked) c = static_cast<char>(MirrorSum - c);
    return plain;
}

std::string EncodeLine(std::string_view plain) { return DecodeLine(plain); }

std::string UnescapeDxf(std::string_view line) {
    std::string text;
    text.reserve(line.size());
    for (std::size_t i = 0; i < line.size(); ++i) {
        text.push_back(line[i]);
        if (line[i] == '^' && i + 1 < line.size() && line[i + 1] == ' ') ++i;
    }
    return text;
}

std::string EscapeDxf(std::string_view line) {
    std::string text;
    text.reserve(line.size() + 8);
    for (const char c : line) {
        text.push_back(c);
        if (c == '^') text.push_back(' ');
    }
    return text;
}

}  // namespace brenvik::acis
