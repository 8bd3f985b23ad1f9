// Codes and values to bytes.
#include "binary_dxf.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "binary_acis.h"
#include "drafting_host/acis/acis_text.h"

namespace brenvik::test {
namespace {

template <typename Number>
void Put(std::string& out, Number number) {
    char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    out.append(bytes, sizeof number);
}

bool Within(int code, int first, int last) { return code >= first && code <= last; }

bool IsReal(int code) {
    return Within(code, 10, 59) || Within(code, 110, 149) || Within(code, 210, 239) ||
           Within(code, 460, 469) || Within(code, 1010, 1059);
}
bool IsShort(int code) {
    return Within(code, 60, 79) || Within(code, 170, 179) || Within(code, 270, 289) ||
           Within(code, 370, 389) || Within(code, 400, 409) || Within(code, 1060, 1070);
}
bool IsLong(int code) {
    return Within(code, 90, 99) || Within(code, 420, 429) || Within(code, 440, 459) || code == 1071;
}
bool IsChunk(int code) { return Within(code, 310, 319) || code == 1004; }

void PutCode(std::string& out, int code, BinaryCodes codes) {
    if (codes == BinaryCodes::Long) return Put(out, static_cast<std::int16_t>(code));
    if (code < 255) return Put(out, static_cast<std::uint8_t>(code));
    Put(out, std::uint8_t{255});
    Put(out, static_cast<std::int16_t>(code));
}

void PutChunk(std::string& out, std::string_view digits) {
    Put(out, static_cast<std::uint8_t>(digits.size() / 2));
    for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
        unsigned byte = 0;
        std::from_chars(digits.data() + at, digits.data() + at + 2, byte, 16);
        Put(out, static_cast<std::uint8_t>(byte));
    }
}

void PutText(std::string& out, std::string_view text) {
    constexpr std::string_view letters = " IJM", meant = "^\t\n\r";
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t which =
            text[at] == '^' && at + 1 < text.size() ? letters.find(text[at + 1]) : std::string_view::npos;
        out += which == std::string_view::npos ? text[at] : meant[which];
        if (which != std::string_view::npos) ++at;
    }
    out += '\0';
}

void PutValue(std::string& out, int code, const std::string& value) {
    const char* const text = value.c_str();
    if (IsReal(code))
        Put(out, std::strtod(text, nullptr));
    else if (IsShort(code))
        Put(out, static_cast<std::int16_t>(std::atoi(text)));
    else if (IsLong(code))
        Put(out, static_cast<std::int32_t>(std::atoll(text)));
    else if (Within(code, 160, 169))
        Put(out, static_cast<std::int64_t>(std::atoll(text)));
    else if (Within(code, 290, 299))
        Put(out, static_cast<std::uint8_t>(std::atoi(text)));
    else if (IsChunk(code))
        PutChunk(out, value);
    else
        PutText(out, value);
}

std::string TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string line(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return line;
}

void PutLines(std::string& out, int code, std::string_view value) {
    out += std::to_string(code) + "\r\n" + std::string(value) + "\r\n";
}

void PutBody(std::string& out, std::string_view handle, std::string_view segment, std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::size_t chunk = 127;
    PutLines(out, 0, "ACDSRECORD");
    PutLines(out, 90, "1");
    PutLines(out, 2, "AcDbDs::ID");
    PutLines(out, 280, "10");
    PutLines(out, 320, handle);
    PutLines(out, 2, segment);
    PutLines(out, 280, "15");
    PutLines(out, 94, std::to_string(bytes.size()));
    for (; !bytes.empty(); bytes.remove_prefix(std::min(chunk, bytes.size()))) {
        std::string hex;
        for (const char c : bytes.substr(0, chunk)) {
            hex += digits[static_cast<unsigned char>(c) >> 4U];
            hex += digits[static_cast<unsigned char>(c) & 0xFU];
        }
        PutLines(out, 310, hex);
    }
}

/// Takes the bodies out of a drawing, one line of it after another.
class BodyMover {
  public:
    std::string Run(std::string_view text) {
        while (!text.empty()) {
            const int code = std::atoi(TakeLine(text).c_str());
            Take(code, TakeLine(text));
        }
        return std::move(mOut);
    }

  private:
    void Take(int code, const std::string& value) {
        if (code == 0) {
            EndBody();
            mIsBody = value == "3DSOLID" || value == "REGION" || value == "BODY";
            if (value == "EOF") PutSection();
        }
        if (mIsBody && code == 5) mHandle = value;
        if (mIsBody && (code == 1 || (code == 3 && !mLines.empty()))) {
            if (code == 1) mLines.emplace_back();
            mLines.back() += value;
            return;
        }
        if (mIsBody && code == 100 && value == "AcDbModelerGeometry") {
            PutLines(mOut, code, value);
            PutLines(mOut, 290, "1");
            return;
        }
        if (mIsBody && code == 70) return;
        PutLines(mOut, code, code == 1 && mIsVersion ? "AC1027" : value);
        mIsVersion = code == 9 && value == "$ACADVER";
    }

    void EndBody() {
        std::string body;
        for (const std::string& line : mLines) body += acis::DecodeLine(acis::UnescapeDxf(line)) + "\n";
        if (!body.empty()) PutBody(mBodies, mHandle, "ASM_Data", BinaryAcis(body));
        mLines.clear();
    }

    void PutSection() {
        PutLines(mOut, 0, "SECTION");
        PutLines(mOut, 2, "ACDSDATA");
        PutLines(mOut, 70, "2");
        PutLines(mOut, 0, "ACDSSCHEMA");
        PutLines(mOut, 90, "1");
        PutBody(mOut, "22", "Thumbnail_Data", "\x89PNG");
        PutBody(mOut, "FFFFFF", "ASM_Data", "ACIS BinaryFile of a solid that was erased");
        mOut += mBodies;
        PutLines(mOut, 0, "ENDSEC");
    }

    std::string mOut, mBodies, mHandle;
    std::vector<std::string> mLines;
    bool mIsBody = false, mIsVersion = false;
};

}  // namespace

std::string WithBinaryBodies(std::string_view text) { return BodyMover().Run(text); }

std::string BinaryDxf(std::string_view text, BinaryCodes codes) {
    std::string out("AutoCAD Binary DXF\r\n\x1A\0", 22);
    while (!text.empty()) {
        const int code = std::atoi(TakeLine(text).c_str());
        const std::string value = TakeLine(text);
        PutCode(out, code, codes);
        PutValue(out, code, value);
    }
    return out;
}

}  // namespace brenvik::test
