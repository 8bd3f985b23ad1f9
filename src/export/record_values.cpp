// Conversions of a record's values.
#include "export/record_values.h"

#include "base/failure.h"
#include "base/noise.h"
#include "base/number_text.h"
#include "base/numbers.h"

namespace brenvik {

std::string ValueText(const FieldValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* number = std::get_if<double>(&value)) return NumberToText(NoiseAsZero(*number));
    return {};
}

double ValueNumber(const FieldValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return *number;
    if (const auto* text = std::get_if<std::string>(&value)) return StrictNumber(*text);
    throw InvalidNull();
}

}  // namespace brenvik
