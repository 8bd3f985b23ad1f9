// Unpacking: bounded by the size that the file names, whatever the data say.
#include "drafting_host/dwg/decompression.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>

namespace brenvik::dwg {
namespace {

struct Broken {};

/// What both ways share: bytes in, bytes out, both within bounds.
class Unpacking {
  public:
    Unpacking(std::string_view packed, std::size_t most) : mIn(packed), mMost(most) {
        mOut.reserve(std::min(most, packed.size() * 4));
    }

    bool InputEnded() const { return mAt >= mIn.size(); }
    unsigned Next() {
        if (InputEnded()) throw Broken{};
        return static_cast<unsigned char>(mIn[mAt++]);
    }
    unsigned NextShort() {
        const unsigned low = Next();
        return low | (Next() << 8U);
    }
    void SkipInput(std::size_t count) { Take(count); }
    std::string_view Take(std::size_t count) {
        if (count > mIn.size() - mAt) throw Broken{};
        mAt += count;
        return mIn.substr(mAt - count, count);
    }

    void Write(std::string_view bytes) {
        if (bytes.size() > mMost - mOut.size()) throw Broken{};
        mOut.append(bytes);
    }
    /// The source may reach into what is being written.
    void CopyBack(std::size_t distance, std::size_t count) {
        if (distance == 0 || distance > mOut.size() || count > mMost - mOut.size()) throw Broken{};
        if (distance == 1) {
            mOut.append(count, mOut.back());
            return;
        }
        for (std::size_t from = mOut.size() - distance; count > 0;) {
            const std::size_t piece = std::min(distance, count);
            mOut.append(mOut, from, piece);
            from += piece;
            count -= piece;
        }
    }

    std::string Result() && { return std::move(mOut); }
    std::size_t Written() const { return mOut.size(); }

  private:
    std::string_view mIn;
    std::size_t mAt = 0, mMost = 0;
    std::string mOut;
};

class Pages2004 {
  public:
    explicit Pages2004(Unpacking& data) : mData(data) {}

    void Run() {
        constexpr unsigned end = 0x11;
        unsigned code = mData.Next();
        if (code < 0x10) {
            mData.Write(mData.Take(LiteralLength(code)));
            code = mData.Next();
        }
        while (code != end) {
            std::size_t literals = Copy(code);
            if (literals == 0) {
                code = mData.Next();
                if (code >= 0x10) continue;
                literals = LiteralLength(code);
            }
            mData.Write(mData.Take(literals));
            code = mData.Next();
        }
    }

  private:
    /// A length that continues for as long as the bytes are 0.
    std::size_t Run0() {
        std::size_t length = 0;
        unsigned byte = mData.Next();
        for (; byte == 0; byte = mData.Next()) length += 255;
        return length + byte;
    }
    std::size_t LiteralLength(unsigned code) { return code != 0 ? code + 3 : Run0() + 15 + 3; }

    /// Copies, and gives the number of plain bytes behind.
    std::size_t Copy(unsigned code) {
        if (code >= 0x40) {
            const std::size_t distance = (((code >> 2U) & 3U) | (mData.Next() << 2U)) + 1;
            mData.CopyBack(distance, (code >> 4U) - 1);
            return code & 3U;
        }
        const bool isNear = code >= 0x20;
        if (!isNear && code < 0x10) throw Broken{};
        const unsigned mask = isNear ? 31 : 7;
        const std::size_t count = ((code & mask) != 0 ? code & mask : Run0() + mask) + 2;
        const unsigned low = mData.Next();
        std::size_t distance = (low >> 2U) | (mData.Next() << 6U);
        distance += isNear ? 1 : (std::size_t{code & 8U} << 11U) + 0x4000;
        mData.CopyBack(distance, count);
        return low & 3U;
    }

    Unpacking& mData;
};

/// A straight part of a group of plain bytes, which are stored with their parts from back to front.
struct Piece {
    unsigned char length, offset;
};
using Pieces = std::initializer_list<Piece>;

constexpr std::size_t GroupSize = 32;

/// In the order in which they are put out, for groups of 1 to 32 bytes.
const std::array<Pieces, GroupSize + 1>& PiecesBySize() {
    static const std::array<Pieces, GroupSize + 1> pieces = {
        Pieces{},
        Pieces{{1, 0}},
        Pieces{{1, 1}, {1, 0}},
        Pieces{{1, 2}, {1, 1}, {1, 0}},
        Pieces{{4, 0}},
        Pieces{{1, 4}, {4, 0}},
        Pieces{{1, 5}, {4, 1}, {1, 0}},
        Pieces{{1, 6}, {1, 5}, {4, 1}, {1, 0}},
        Pieces{{8, 0}},
        Pieces{{1, 8}, {8, 0}},
        Pieces{{1, 9}, {8, 1}, {1, 0}},
        Pieces{{1, 10}, {1, 9}, {8, 1}, {1, 0}},
        Pieces{{4, 8}, {8, 0}},
        Pieces{{1, 12}, {4, 8}, {8, 0}},
        Pieces{{1, 13}, {4, 9}, {8, 1}, {1, 0}},
        Pieces{{1, 14}, {1, 13}, {4, 9}, {8, 1}, {1, 0}},
        Pieces{{8, 8}, {8, 0}},
        Pieces{{8, 9}, {1, 8}, {8, 0}},
        Pieces{{1, 17}, {8, 9}, {8, 1}, {1, 0}},
        Pieces{{1, 18}, {1, 17}, {1, 16}, {8, 8}, {8, 0}},
        Pieces{{4, 16}, {8, 8}, {8, 0}},
        Pieces{{1, 20}, {4, 16}, {8, 8}, {8, 0}},
        Pieces{{1, 21}, {1, 20}, {4, 16}, {8, 8}, {8, 0}},
        Pieces{{1, 22}, {1, 21}, {1, 20}, {4, 16}, {8, 8}, {8, 0}},
        Pieces{{8, 16}, {8, 8}, {8, 0}},
        Pieces{{8, 17}, {1, 16}, {8, 8}, {8, 0}},
        Pieces{{1, 25}, {8, 17}, {1, 16}, {8, 8}, {8, 0}},
        Pieces{{1, 26}, {1, 25}, {8, 17}, {1, 16}, {8, 8}, {8, 0}},
        Pieces{{4, 24}, {8, 16}, {8, 8}, {8, 0}},
        Pieces{{1, 28}, {4, 24}, {8, 16}, {8, 8}, {8, 0}},
        Pieces{{1, 29}, {1, 28}, {4, 24}, {8, 16}, {8, 8}, {8, 0}},
        Pieces{{1, 30}, {4, 26}, {8, 18}, {8, 10}, {8, 2}, {1, 1}, {1, 0}},
        Pieces{{8, 24}, {8, 16}, {8, 8}, {8, 0}},
    };
    return pieces;
}

class Pages2007 {
  public:
    explicit Pages2007(Unpacking& data) : mData(data) {}

    void Run() {
        mCode = mData.Next();
        std::size_t literals = 0;
        if (mCode >> 4U == 2) {
            mData.SkipInput(2);
            literals = mData.Next() & 7U;
        }
        while (!mData.InputEnded()) {
            if (literals == 0) literals = LiteralLength();
            WriteLiterals(literals);
            if (mData.InputEnded()) return;
            mCode = mData.Next();
            literals = CopyAll();
        }
    }

  private:
    std::size_t LiteralLength() {
        std::size_t length = mCode + 8;
        if (length != 23) return length;
        unsigned more = mData.Next();
        length += more;
        if (more != 0xFF) return length;
        do {
            more = mData.NextShort();
            length += more;
        } while (more == 0xFFFF);
        return length;
    }

    void WriteLiterals(std::size_t count) {
        while (count > 0) {
            const std::size_t inGroup = std::min(count, GroupSize);
            const std::string_view group = mData.Take(inGroup);
            for (const Piece piece : PiecesBySize()[inGroup])
                mData.Write(group.substr(piece.offset, piece.length));
            count -= inGroup;
        }
    }

    /// Copies until plain bytes follow; gives their number, 0 if the next code gives it.
    std::size_t CopyAll() {
        Instruction();
        while (true) {
            mData.CopyBack(mDistance, mCount);
            const std::size_t literals = mCode & 7U;
            if (literals != 0 || mData.InputEnded()) return literals;
            mCode = mData.Next();
            if (mCode >> 4U == 0) return 0;
            if (mCode >> 4U == 15) mCode &= 15U;
            Instruction();
        }
    }

    void Instruction() {
        const unsigned kind = mCode >> 4U;
        switch (kind) {
            case 0:
            case 1:
                return Medium(kind);
            case 2:
                return Far();
            default:
                mCount = kind;
                mDistance = mCode & 15U;
                mCode = mData.Next();
                mDistance += ((mCode & 0xF8U) << 1U) + 1;
        }
    }

    void Medium(unsigned kind) {
        mCount = (mCode & 15U) + (kind == 0 ? 19 : 3);
        mDistance = mData.Next();
        mCode = mData.Next();
        if (kind == 0) mCount += (mCode >> 3U) & 16U;
        mDistance += ((mCode & (kind == 0 ? 0x78U : 0xF8U)) << 5U) + 1;
    }

    void Far() {
        mDistance = mData.NextShort();
        mCount = mCode & 7U;
        if ((mCode & 8U) == 0) {
            mCode = mData.Next();
            mCount += mCode & 0xF8U;
            return;
        }
        ++mDistance;
        mCount += std::size_t{mData.Next()} << 3U;
        mCode = mData.Next();
        mCount += (std::size_t{mCode & 0xF8U} << 8U) + 256;
    }

    Unpacking& mData;
    unsigned mCode = 0;
    std::size_t mCount = 0, mDistance = 0;
};

}  // namespace

std::optional<std::string> Unpack2004(std::string_view packed, std::size_t most) {
    Unpacking data(packed, most);
    try {
        Pages2004(data).Run();
    } catch (const Broken&) {
        return std::nullopt;
    }
    return std::move(data).Result();
}

std::optional<std::string> Unpack2007(std::string_view packed, std::size_t size) {
    if (packed.size() == size) return std::string(packed);
    Unpacking data(packed, size);
    try {
        Pages2007(data).Run();
    } catch (const Broken&) {
        return std::nullopt;
    }
    if (data.Written() != size) return std::nullopt;
    return std::move(data).Result();
}

}  // namespace brenvik::dwg
