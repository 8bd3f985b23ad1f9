// The collation and the Like function that the engine calls.
#include "part_table/text_rules.h"

#include <sqlite3.h>

#include <algorithm>
#include <optional>
#include <string>

#include "base/ascii.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/wildcard.h"

namespace brenvik::part_table {
namespace {

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

int CompareAscii(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t at = 0; at < common; ++at) {
        const char x = LowerAscii(a[at]);
        const char y = LowerAscii(b[at]);
        if (x != y) return x < y ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

// Numbers are compared as the system writes them: 600, not 600.0.
std::optional<std::string> ArgumentText(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            return std::nullopt;
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return NumberToText(sqlite3_value_double(value));
        default: {
            const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
            const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
            return bytes ? std::string(bytes, size) : std::string();
        }
    }
}

// The engine passes the pattern first. A third argument, the escape character, isn't part of the language
// of these statements, so only the form with two is replaced.
void Like(sqlite3_context* context, int, sqlite3_value** arguments) noexcept {
    try {
        const std::optional<std::string> pattern = ArgumentText(arguments[0]);
        const std::optional<std::string> text = ArgumentText(arguments[1]);
        if (!pattern || !text) return sqlite3_result_null(context);
        sqlite3_result_int(context, MatchesWildcards(*text, *pattern, LikeWildcards) ? 1 : 0);
    } catch (const std::exception& error) {
        sqlite3_result_error(context, error.what(), -1);
    }
}

int Compare(void*, int sizeA, const void* a, int sizeB, const void* b) noexcept {
    return CompareWithoutCase({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                              {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

}  // namespace

int CompareWithoutCase(std::string_view a, std::string_view b) {
    if (IsAscii(a) && IsAscii(b)) return CompareAscii(a, b);
    return FoldLower(a).compare(FoldLower(b));
}

int InstallTextRules(sqlite3* handle) {
    const int code = sqlite3_create_collation(handle, "NOCASE", SQLITE_UTF8, nullptr, Compare);
    if (code != SQLITE_OK) return code;
    return sqlite3_create_function(handle, "like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, Like,
                                   nullptr, nullptr);
}

}  // namespace brenvik::part_table
