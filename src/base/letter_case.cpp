// The pairs of upper and lower Latin letters as runs, and folding by them.
#include "base/letter_case.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "base/ascii.h"
#include "base/utf8.h"

namespace brenvik {
namespace {

// Upper-case letters `first` to `last` in steps of `step`, each `toLower` away from its lower form.
// Steps of 2 are the blocks where the two forms alternate.
struct CaseRun {
    char32_t first;
    char32_t last;
    char32_t step;
    std::int32_t toLower;
};

constexpr CaseRun CaseRuns[] = {
    // Latin-1
    {0x00C0, 0x00D6, 1, 32},
    {0x00D8, 0x00DE, 1, 32},
    // Latin Extended-A; the dotted and the dotless i are left out, since their partner is an ASCII letter
    // that belongs to another one.
    {0x0100, 0x012E, 2, 1},
    {0x0132, 0x0136, 2, 1},
    {0x0139, 0x0147, 2, 1},
    {0x014A, 0x0176, 2, 1},
    {0x0178, 0x0178, 1, -121},
    {0x0179, 0x017D, 2, 1},
    // Latin Extended-B; some lower forms stand among the phonetic letters
    {0x0181, 0x0181, 1, 210},
    {0x0182, 0x0184, 2, 1},
    {0x0186, 0x0186, 1, 206},
    {0x0187, 0x0187, 1, 1},
    {0x0189, 0x018A, 1, 205},
    {0x018B, 0x018B, 1, 1},
    {0x018E, 0x018E, 1, 79},
    {0x018F, 0x018F, 1, 202},
    {0x0190, 0x0190, 1, 203},
    {0x0191, 0x0191, 1, 1},
    {0x0193, 0x0193, 1, 205},
    {0x0194, 0x0194, 1, 207},
    {0x0196, 0x0196, 1, 211},
    {0x0197, 0x0197, 1, 209},
    {0x0198, 0x0198, 1, 1},
    {0x019C, 0x019C, 1, 211},
    {0x019D, 0x019D, 1, 213},
    {0x019F, 0x019F, 1, 214},
    {0x01A0, 0x01A4, 2, 1},
    {0x01A6, 0x01A6, 1, 218},
    {0x01A7, 0x01A7, 1, 1},
    {0x01A9, 0x01A9, 1, 218},
    {0x01AC, 0x01AC, 1, 1},
    {0x01AE, 0x01AE, 1, 218},
    {0x01AF, 0x01AF, 1, 1},
    {0x01B1, 0x01B2, 1, 217},
    {0x01B3, 0x01B5, 2, 1},
    {0x01B7, 0x01B7, 1, 219},
    {0x01B8, 0x01B8, 1, 1},
    {0x01BC, 0x01BC, 1, 1},
    {0x01C4, 0x01C4, 1, 2},
    {0x01C7, 0x01C7, 1, 2},
    {0x01CA, 0x01CA, 1, 2},
    {0x01CD, 0x01DB, 2, 1},
    {0x01DE, 0x01EE, 2, 1},
    {0x01F1, 0x01F1, 1, 2},
    {0x01F4, 0x01F4, 1, 1},
    {0x01F6, 0x01F6, 1, -97},
    {0x01F7, 0x01F7, 1, -56},
    {0x01F8, 0x021E, 2, 1},
    {0x0220, 0x0220, 1, -130},
    {0x0222, 0x0232, 2, 1},
    {0x023A, 0x023A, 1, 10795},
    {0x023B, 0x023B, 1, 1},
    {0x023D, 0x023D, 1, -163},
    {0x023E, 0x023E, 1, 10792},
    {0x0241, 0x0241, 1, 1},
    {0x0243, 0x0243, 1, -195},
    {0x0244, 0x0244, 1, 69},
    {0x0245, 0x0245, 1, 71},
    {0x0246, 0x024E, 2, 1},
    // Latin Extended Additional
    {0x1E00, 0x1E94, 2, 1},
    {0x1EA0, 0x1EFE, 2, 1},
};

struct CaseTables {
    std::unordered_map<char32_t, char32_t> toLower;
    std::unordered_map<char32_t, char32_t> toUpper;
};

const CaseTables& Tables() {
    static const CaseTables tables = [] {
        CaseTables made;
        for (const CaseRun& run : CaseRuns) {
            for (char32_t upper = run.first; upper <= run.last; upper += run.step) {
                const auto lower = static_cast<char32_t>(static_cast<std::int32_t>(upper) + run.toLower);
                made.toLower.emplace(upper, lower);
                made.toUpper.emplace(lower, upper);
            }
        }
        return made;
    }();
    return tables;
}

char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

// Folds a text by a table for the letters above ASCII and a function for those of it.
std::string Fold(std::string_view text, const std::unordered_map<char32_t, char32_t>& table,
                 char (*foldAscii)(char)) {
    std::string folded;
    folded.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (IsAscii(text[at])) {
            folded += foldAscii(text[at++]);
            continue;
        }
        const Utf8Character character = Utf8CharacterAt(text, at);
        const auto found = character.valid ? table.find(character.codePoint) : table.end();
        if (found == table.end())
            folded += text.substr(at, character.length);
        else
            AppendUtf8(folded, found->second);
        at += character.length;
    }
    return folded;
}

}  // namespace

std::string FoldLower(std::string_view text) { return Fold(text, Tables().toLower, LowerAscii); }

std::string FoldUpper(std::string_view text) { return Fold(text, Tables().toUpper, UpperAscii); }

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
    // Names and keys are mostly ASCII and mostly differ, and nothing is compared more often: the first ASCII
    // letter that differs settles it, since no letter above ASCII has a partner in it.
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t at = 0;
    while (at < shorter && IsAscii(a[at]) && IsAscii(b[at])) {
        if (LowerAscii(a[at]) != LowerAscii(b[at])) return false;
        ++at;
    }
    if (at == shorter) return a.size() == b.size();
    if (IsAscii(a[at]) || IsAscii(b[at])) return false;
    return FoldLower(a.substr(at)) == FoldLower(b.substr(at));
}

bool StartsWithIgnoreCase(std::string_view text, std::string_view start) {
    return FoldLower(text).starts_with(FoldLower(start));
}

bool LessIgnoreCase::operator()(std::string_view a, std::string_view b) const {
    return FoldLower(a) < FoldLower(b);
}

}  // namespace brenvik
