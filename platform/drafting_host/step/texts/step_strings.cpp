// Encoding and decoding of texts, and the walk over a file that exchanges them.
#include "drafting_host/step/texts/step_strings.h"

#include <Resource_Unicode.hxx>
#include <TCollection_ExtendedString.hxx>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include "base/hex.h"
#include "base/utf8.h"
#include "drafting_host/step/texts/modeller_session.h"

namespace brenvik::step {
namespace {

constexpr std::string_view WordPrefix = "BrenvikText";
constexpr std::string_view SystemPrefix = "Brenvik ";
constexpr char32_t ReplacementCharacter = 0xFFFD;
constexpr std::string_view Replacement = "\xEF\xBF\xBD";

bool IsPrintable(char c) { return c >= ' ' && c <= '~'; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// The four-digit escape holds UTF-16 units.
void AppendUnits(std::string& text, char32_t character) {
    if (character < 0x10000) {
        AppendHex(text, character, 4);
        return;
    }
    AppendHex(text, 0xD800 + ((character - 0x10000) >> 10), 4);
    AppendHex(text, 0xDC00 + ((character - 0x10000) & 0x3FF), 4);
}

std::string FromPage(Resource_FormatType page, std::string_view bytes) {
    TCollection_ExtendedString text;
    Resource_Unicode::ConvertFormatToUnicode(page, std::string(bytes).c_str(), text);
    return Utf8(text);
}

/// The number that `digits` hexadecimal digits at the front of `text` make.
std::optional<char32_t> HexAt(std::string_view text, std::size_t digits) {
    if (text.size() < digits) return std::nullopt;
    std::uint32_t number = 0;
    const char* const end = text.data() + digits;
    const auto read = std::from_chars(text.data(), end, number, 16);
    if (read.ec != std::errc{} || read.ptr != end) return std::nullopt;
    return number;
}

class Decoder {
  public:
    Decoder(std::string_view written, CodePage codePage) : mText(written), mCodePage(codePage) {}

    std::string Run() {
        while (!mText.empty()) Step();
        return std::move(mResult);
    }

    bool IsBroken() const { return mIsBroken; }

  private:
    void Step() {
        const char c = mText.front();
        if (c == '\\' && TakeEscape()) return;
        mIsBroken = mIsBroken || mText.starts_with("\\X\\") || mText.starts_with("\\X2\\") ||
                    mText.starts_with("\\X4\\") || mText.starts_with("\\X0\\");
        if (c == '\'' && mText.starts_with("''")) {
            mText.remove_prefix(1);
        } else if (c == '\n' || c == '\r') {
            mText.remove_prefix(1);
            return;
        } else if (!IsPrintable(c) && static_cast<unsigned char>(c) >= 0x80) {
            return TakeHighBytes();
        }
        mResult += c;
        mText.remove_prefix(1);
    }

    bool TakeEscape() {
        if (Take("\\\\")) return Put('\\');
        if (Take("\\N\\")) return Put('\n');
        if (Take("\\T\\")) return Put('\t');
        if (mText.size() > 3 && mText.starts_with("\\S\\")) return TakeOfAlphabet();
        if (mText.size() > 3 && mText.starts_with("\\P") && mText[3] == '\\' && mText[2] >= 'A' &&
            mText[2] <= 'I')
            return TakeAlphabet();
        if (mText.starts_with("\\X\\")) return TakeLatin();
        if (mText.starts_with("\\X2\\")) return TakeRun(4);
        if (mText.starts_with("\\X4\\")) return TakeRun(8);
        return false;
    }

    bool Take(std::string_view mark) {
        if (!mText.starts_with(mark)) return false;
        mText.remove_prefix(mark.size());
        return true;
    }

    bool Put(char32_t character) {
        const bool sound = character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
        AppendUtf8(mResult, sound ? character : ReplacementCharacter);
        return true;
    }

    /// The upper half of an ISO 8859 alphabet, by a character of its lower half.
    bool TakeOfAlphabet() {
        const char low = mText[3];
        if (!IsPrintable(low)) return false;
        const char high = static_cast<char>(static_cast<unsigned char>(low) + 0x80U);
        mResult += FromPage(mAlphabet, std::string_view(&high, 1));
        mText.remove_prefix(4);
        return true;
    }

    bool TakeAlphabet() {
        mAlphabet = static_cast<Resource_FormatType>(Resource_FormatType_iso8859_1 + (mText[2] - 'A'));
        mText.remove_prefix(4);
        return true;
    }

    bool TakeLatin() {
        const auto character = HexAt(mText.substr(3), 2);
        if (!character) return false;
        mText.remove_prefix(5);
        return Put(*character);
    }

    /// "\X2\" or "\X4\", characters of so many digits each, "\X0\". Line breaks may stand among them.
    bool TakeRun(std::size_t digits) {
        constexpr std::string_view mark = "\\X0\\";
        const std::size_t end = mText.find(mark, 4);
        if (end == std::string_view::npos) return false;
        std::string run(mText.substr(4, end - 4));
        std::erase_if(run, [](char c) { return c == '\n' || c == '\r'; });
        if (run.empty() || run.size() % digits != 0) return false;
        std::u32string characters;
        for (std::size_t at = 0; at < run.size(); at += digits) {
            const auto character = HexAt(std::string_view(run).substr(at), digits);
            if (!character) return false;
            const bool second = digits == 4 && IsLowSurrogate(*character) && !characters.empty() &&
                                characters.back() >= 0xD800 && characters.back() <= 0xDBFF;
            if (second)
                characters.back() = 0x10000 + ((characters.back() - 0xD800) << 10) + (*character - 0xDC00);
            else
                characters += *character;
        }
        for (const char32_t character : characters) Put(character);
        mText.remove_prefix(end + mark.size());
        return true;
    }

    void TakeHighBytes() {
        const auto last =
            std::ranges::find_if(mText, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
        const std::string_view bytes(mText.begin(), last);
        mResult += mCodePage == CodePage::Utf8 ? std::string(bytes) : FromPage(FormatOf(mCodePage), bytes);
        mText.remove_prefix(bytes.size());
    }

    std::string_view mText;
    CodePage mCodePage;
    Resource_FormatType mAlphabet = Resource_FormatType_iso8859_1;
    std::string mResult;
    bool mIsBroken = false;
};

/// Goes over a file and exchanges what stands between quotes. A comment becomes a blank.
template <class Exchange>
std::string WithTexts(std::string_view content, Exchange exchange) {
    std::string result;
    result.reserve(content.size());
    while (!content.empty()) {
        std::size_t plain = content.find_first_of("'/");
        if (plain != std::string_view::npos && content[plain] == '/') {
            const bool comment = content.substr(plain, 2) == "/*";
            result += content.substr(0, plain);
            result += comment ? ' ' : '/';
            const std::size_t end = comment ? content.find("*/", plain + 2) : plain;
            plain = end == std::string_view::npos ? end : end + (comment ? 2 : 1);
            content.remove_prefix(std::min(plain, content.size()));
            continue;
        }
        result += content.substr(0, plain);
        if (plain == std::string_view::npos) break;
        content.remove_prefix(plain + 1);
        std::size_t end = content.find('\'');
        while (end != std::string_view::npos && content.substr(end + 1).starts_with('\''))
            end = content.find('\'', end + 2);
        result += '\'';
        if (end == std::string_view::npos) return result += content;
        result += exchange(content.substr(0, end));
        result += '\'';
        content.remove_prefix(end + 1);
    }
    return result;
}

/// The modeller has room for some ten thousand characters in a word.
constexpr std::size_t LongestPlain = 1000;

/// Whether the modeller takes and gives the text as it is: it asks for a character that shows, strips blanks,
/// and refuses a file for a text that is too long for it.
bool IsPlain(std::string_view text) {
    if (text.empty()) return true;
    if (text.size() > LongestPlain) return false;
    if (text.front() == ' ' || text.back() == ' ' || text.starts_with(WordPrefix)) return false;
    return std::ranges::all_of(text, [](char c) { return IsPrintable(c) && c != '\'' && c != '\\'; });
}

bool IsBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

}  // namespace

std::string Utf8(const TCollection_ExtendedString& text) {
    std::string result(static_cast<std::size_t>(text.LengthOfCString()), '\0');
    char* place = result.data();
    text.ToUTF8CString(place);
    return result;
}

std::string EncodedText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    bool escaped = false;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        const bool escape = !IsPrintable(c);
        if (escape != escaped) result += escape ? "\\X2\\" : "\\X0\\";
        escaped = escape;
        if (!escape) {
            if (c == '\'' || c == '\\') result += c;
            result += c;
            ++at;
            continue;
        }
        const Utf8Character character = Utf8CharacterAt(text, at);
        AppendUnits(result, character.valid ? character.codePoint : ReplacementCharacter);
        at += character.length;
    }
    if (escaped) result += "\\X0\\";
    return result;
}

std::string DecodedText(std::string_view written, CodePage codePage) {
    return Decoder(written, codePage).Run();
}

bool HasBrokenEscape(std::string_view written) {
    if (written.find("\\X") == std::string_view::npos) return false;
    Decoder decoder(written, CodePage::Utf8);
    decoder.Run();
    return decoder.IsBroken();
}

std::string OriginatingSystem() { return std::string(SystemPrefix) + BRENVIK_VERSION; }

bool IsWrittenHere(std::string_view content) {
    bool found = false;
    WithTexts(content.substr(0, content.find("ENDSEC")), [&](std::string_view text) {
        found = found || (text.starts_with(SystemPrefix) && text.size() > SystemPrefix.size() &&
                          text[SystemPrefix.size()] >= '0' && text[SystemPrefix.size()] <= '9');
        return std::string();
    });
    return found;
}

std::string StandIns::WordFor(std::string_view text) {
    const auto known = mWordOf.find(text);
    if (known != mWordOf.end()) return known->second;
    std::string word = std::string(WordPrefix) + std::to_string(mWordOf.size() + 1);
    mTextOf.emplace(word, text);
    return mWordOf.emplace(text, std::move(word)).first->second;
}

std::string StandIns::TextFor(std::string_view shown) const {
    const auto found = mTextOf.find(shown);
    return std::string(found == mTextOf.end() ? shown : found->second);
}

std::string StandIns::PutInto(std::string_view content, CodePage codePage) {
    const bool toTheLetter = IsWrittenHere(content);
    return WithTexts(content, [&](std::string_view written) -> std::string {
        if (IsPlain(written)) return std::string(written);
        const std::string text = DecodedText(written, codePage);
        if (text.find(Replacement) != std::string::npos &&
            written.find(Replacement) == std::string_view::npos)
            mMended.push_back(text);
        if (HasBrokenEscape(written) && mKnownBroken.emplace(written).second) mBroken.emplace_back(written);
        // A blank name of another program is none: the modeller takes the number of the product then.
        if (!toTheLetter && IsBlank(text)) return {};
        return IsPlain(text) ? text : WordFor(text);
    });
}

std::string StandIns::Resolve(std::string_view written) const {
    return WithTexts(written, [&](std::string_view text) {
        std::string word(text);
        std::erase_if(word, [](char c) { return c == '\n' || c == '\r'; });
        const auto found = mTextOf.find(word);
        return found == mTextOf.end() ? word : EncodedText(found->second);
    });
}

}  // namespace brenvik::step
