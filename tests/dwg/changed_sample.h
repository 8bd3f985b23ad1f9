// A sample drawing of release 14 or 2000 with bits of one object changed, and its checksum right.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "drafting_host/dwg/checksums.h"
#include "drafting_host/dwg/dwg_reader.h"
#include "drafting_host/dwg/objects.h"
#include "support/sample_files.h"

namespace brenvik::test {

inline std::string BitsOf(std::string_view bytes) {
    std::string bits;
    for (const char c : bytes)
        for (int bit = 7; bit >= 0; --bit)
            bits += ((static_cast<unsigned char>(c) >> bit) & 1) != 0 ? '1' : '0';
    return bits;
}

/// `change` gets the object's bits as digits, and leaves as many.
inline DrawingData ChangedSample(const std::string& release, HandleValue handle,
                                 const std::function<void(std::string& bits)>& change) {
    std::string bytes = FileBytes(SampleFolder() / "dwg" / ("ACadSharp__sample_" + release + ".dwg"));
    dwg::Sections sections = dwg::Unpack(bytes, "job.dwg");
    const dwg::ObjectMap map(sections);
    const dwg::Texts texts(sections.release, sections.codePage);
    const dwg::ObjectMap::Entry* const entry = map.Find(handle);
    if (entry == nullptr) throw std::runtime_error("no such object");
    const dwg::Object object = dwg::OpenObject(sections, texts, *entry);
    const std::size_t behind = object.end / 8, first = object.start / 8;
    std::string bits = BitsOf(std::string_view(bytes).substr(first, behind - first));
    change(bits);
    for (std::size_t i = 0; i < bits.size(); ++i) {
        const int mask = 0x80 >> (i % 8);
        char& byte = bytes[first + i / 8];
        byte = static_cast<char>(bits[i] == '1' ? byte | mask : byte & ~mask);
    }
    const std::uint16_t sum =
        dwg::Crc16(std::string_view(bytes).substr(object.place, behind - object.place), dwg::ObjectSeed);
    bytes[behind] = static_cast<char>(sum & 0xFFU);
    bytes[behind + 1] = static_cast<char>(sum >> 8U);
    return ReadDwg(bytes, "job.dwg");
}

/// The drawing's losses have this one.
inline void ExpectLoss(const DrawingData& data, const std::string& text) {
    std::string all;
    bool isTold = false;
    for (const ReadNote& note : data.notes) {
        isTold = isTold || (note.dataLost && note.text == text);
        if (note.dataLost) all += note.text + "\n";
    }
    EXPECT_TRUE(isTold) << "expected: " << text << "\n" << all;
}

}  // namespace brenvik::test
