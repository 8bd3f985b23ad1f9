// Conversions of a record's values.
#include "export/record_values.h"

#include "base/failure.h"
#include "base/noise.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/skip.h"

namespace brenvik {

std::string ValueText(const FieldValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* number = std::get_if<double>(&value)) return NumberToText(NoiseAsZero(*number));
    return {};
}

std::string TextIfThere(const Recordset& records, std::string_view field) {
    std::string text;
    Skip([&] { text = ValueText(records.Value(field)); });
    return text;
}

std::string PartOf(const Recordset& records) {
    return "the part " + TextIfThere(records, "bv_id") + " \"" + TextIfThere(records, "bv_partname") + "\"";
}

double ValueNumber(const FieldValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return *number;
    if (const auto* text = std::get_if<std::string>(&value)) return StrictNumber(*text);
    throw InvalidNull();
}

}  // namespace brenvik
