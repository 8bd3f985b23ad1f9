// Objects of a binary drawing, made bit by bit as the format is described, for what no drawing at hand holds.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>

#include "drafting_host/dwg/objects.h"

namespace brenvik::test {

/// Bits from the highest of each byte on; numbers of several bytes with their lowest byte first.
class BitWriter {
  public:
    BitWriter& Bits(std::uint64_t value, unsigned count) {
        while (count-- > 0) mBits += ((value >> count) & 1U) != 0 ? '1' : '0';
        return *this;
    }
    BitWriter& Raw(std::uint64_t value, unsigned bytes) {
        for (unsigned i = 0; i < bytes; ++i) Bits((value >> (8 * i)) & 0xFFU, 8);
        return *this;
    }
    BitWriter& Short(int value) { return Bits(0, 2).Raw(static_cast<std::uint16_t>(value), 2); }
    BitWriter& Long(std::int32_t value) { return Bits(0, 2).Raw(static_cast<std::uint32_t>(value), 4); }
    BitWriter& Real(double value) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        return Bits(0, 2).Raw(bits, 8);
    }
    BitWriter& Point(const Point3& point) { return Real(point.x).Real(point.y).Real(point.z); }
    BitWriter& Text(std::string_view text, bool isUnicode) {
        Short(static_cast<int>(text.size()));
        for (const char c : text) Raw(static_cast<unsigned char>(c), isUnicode ? 2 : 1);
        return *this;
    }
    BitWriter& Handle(unsigned code, HandleValue value) {
        unsigned bytes = 0;
        while (bytes < 8 && (value >> (8 * bytes)) != 0) ++bytes;
        Bits(code, 4).Bits(bytes, 4);
        while (bytes-- > 0) Bits((value >> (8 * bytes)) & 0xFFU, 8);
        return *this;
    }
    BitWriter& Append(const BitWriter& other) {
        mBits += other.mBits;
        return *this;
    }
    std::size_t Count() const { return mBits.size(); }
    void Split(std::size_t at, BitWriter& before, BitWriter& behind) const {
        before.mBits = mBits.substr(0, at);
        behind.mBits = mBits.substr(at);
    }
    std::string Bytes() const {
        std::string bytes;
        for (std::size_t i = 0; i < mBits.size(); ++i) {
            if (i % 8 == 0) bytes += '\0';
            if (mBits[i] == '1') bytes.back() = static_cast<char>(bytes.back() | (0x80 >> (i % 8)));
        }
        return bytes;
    }

  private:
    std::string mBits;
};

/// An object in a section of its own, with what belongs to all objects in front.
struct MadeObject {
    MadeObject(dwg::Release ofRelease, unsigned ofType) : release(ofRelease), type(ofType) {}

    dwg::Release release = dwg::Release::R2000;
    unsigned type = 0;
    HandleValue handle = 0x100;
    BitWriter data, strings, handles;

    bool IsAtLeast(dwg::Release other) const { return release >= other; }
    /// Puts a text where the release has it.
    void Text(std::string_view text) {
        if (IsAtLeast(dwg::Release::R2007))
            strings.Text(text, true);
        else
            data.Text(text, false);
    }

    /// What an object that is no entity begins with; owner 1.
    void BeginRecord(std::string_view name) {
        data.Long(0);
        if (IsAtLeast(dwg::Release::R2004)) data.Bits(1, 1);
        if (IsAtLeast(dwg::Release::R2013)) data.Bits(0, 1);
        handles.Handle(4, 1);
        if (!IsAtLeast(dwg::Release::R2004)) handles.Handle(3, 0);
        Text(name);
        if (IsAtLeast(dwg::Release::R2007))
            data.Short(0);
        else
            data.Bits(0, 1).Short(0).Bits(0, 1);
        handles.Handle(5, 0);
    }

    /// What an entity of model space on layer 10 begins with.
    void BeginEntity() {
        constexpr int byLayer = 256, lineweightByLayer = 29;
        data.Bits(0, 1);
        if (!IsAtLeast(dwg::Release::R2000)) mLateBoundaryAt = data.Count();
        data.Bits(2, 2).Long(0);
        if (IsAtLeast(dwg::Release::R2004)) data.Bits(1, 1);
        if (IsAtLeast(dwg::Release::R2013)) data.Bits(0, 1);
        if (!IsAtLeast(dwg::Release::R2000)) data.Bits(1, 1);
        if (!IsAtLeast(dwg::Release::R2004)) {
            data.Bits(1, 1);
            handles.Handle(3, 0);
        }
        data.Short(byLayer).Real(1);
        if (IsAtLeast(dwg::Release::R2000)) data.Bits(0, 2);
        if (IsAtLeast(dwg::Release::R2007)) data.Bits(0, 2).Raw(0, 1);
        if (IsAtLeast(dwg::Release::R2000)) data.Bits(0, 2);
        if (IsAtLeast(dwg::Release::R2010)) data.Bits(0, 3);
        data.Short(0);
        if (IsAtLeast(dwg::Release::R2000)) data.Raw(lineweightByLayer, 1);
        handles.Handle(5, 0x10);
    }

    /// The sections with nothing but the object, which begins at byte 4.
    dwg::Sections Sections() const {
        dwg::Sections sections;
        sections.release = release;
        sections.objects = std::string(Place, '\0') + Frame();
        return sections;
    }
    static constexpr std::size_t Place = 4;

    std::string Frame() const {
        BitWriter head, body;
        if (IsAtLeast(dwg::Release::R2010))
            head.Bits(0, 2).Raw(type, 1);
        else
            head.Short(static_cast<int>(type));
        BitWriter own;
        own.Handle(0, handle).Short(0);  // no extended data
        BitWriter tail;
        if (IsAtLeast(dwg::Release::R2007)) {
            tail.Append(strings);
            if (strings.Count() > 0) tail.Raw(strings.Count(), 2);
            tail.Bits(strings.Count() > 0 ? 1 : 0, 1);
        }
        constexpr unsigned boundaryBits = 32;
        const bool isLate = !IsAtLeast(dwg::Release::R2000);
        const bool isAhead = !isLate && !IsAtLeast(dwg::Release::R2010);
        const std::size_t length =
            head.Count() + own.Count() + data.Count() + tail.Count() + (isLate || isAhead ? boundaryBits : 0);
        body.Append(head);
        if (isAhead) body.Raw(length, 4);
        body.Append(own);
        if (isLate) {
            BitWriter before, behind;
            data.Split(mLateBoundaryAt, before, behind);
            body.Append(before).Raw(length, 4).Append(behind);
        } else {
            body.Append(data);
        }
        body.Append(tail).Append(handles);
        std::size_t handleBits = handles.Count();
        while (body.Count() % 8 != 0) {
            body.Bits(0, 1);
            ++handleBits;
        }
        const std::string bytes = body.Bytes();
        BitWriter frame;
        frame.Raw(bytes.size(), 2);
        if (IsAtLeast(dwg::Release::R2010)) {
            for (std::size_t rest = handleBits;; rest >>= 7U) {
                frame.Raw((rest & 0x7FU) | (rest > 0x7F ? 0x80U : 0U), 1);
                if (rest <= 0x7F) break;
            }
        }
        return frame.Bytes() + bytes + std::string(2, '\0');
    }

  private:
    std::size_t mLateBoundaryAt = 0;  ///< Of an object that is no entity it stands in front of all.
};

}  // namespace brenvik::test
