// Looking at part data by the strict rules.
#include "parts/part_data_faults.h"

#include <cmath>
#include <vector>

#include "base/numbers.h"
#include "base/quoted.h"
#include "base/text.h"
#include "parts/orie_update.h"

namespace brenvik {

std::optional<std::string> QuantityFault(std::string_view quantity) {
    if (quantity.empty()) return std::nullopt;
    // Work lists multiply quantities in 32 bits.
    constexpr double most = 1e6;
    // "1e3" is a number, and more often a slip; lists of others take the text as it stands.
    const bool isPlain = quantity.find_first_not_of("0123456789. ") == std::string_view::npos;
    if (isPlain && IsNumeric(quantity)) {
        const double value = StrictNumber(quantity);
        if (value >= 1 && value <= most && value == std::floor(value)) return std::nullopt;
    }
    return "its quantity is " + InQuotes(quantity) + ", expected a whole number from 1 to 1000000";
}

double PartsOf(std::string_view quantity) { return IsBlank(quantity) ? 1 : LenientNumber(quantity); }

std::optional<std::string> LettersFault(std::string_view letters) {
    if (IsBlank(letters) || mAutoCAD::AreValidLetters(letters)) return std::nullopt;
    return "its letters (ORIE) are " + InQuotes(letters) + ", expected L, W and T in some order";
}

std::optional<std::string> SavedExtentsFault(const std::array<std::string_view, 3>& oldValues) {
    std::vector<std::string> faults;
    for (std::size_t i = 0; i < oldValues.size(); ++i) {
        if (IsNumeric(oldValues[i]) && StrictNumber(oldValues[i]) > 0) continue;
        const std::string key = "OLDVALUE" + std::to_string(i + 1);
        faults.push_back(key + (IsBlank(oldValues[i]) ? " is missing" : " is " + InQuotes(oldValues[i])));
    }
    if (faults.empty()) return std::nullopt;
    return "of the extents saved with its letters " + Join(faults, ", ") + ", expected a number above 0";
}

}  // namespace brenvik
