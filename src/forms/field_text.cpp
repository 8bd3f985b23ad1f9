// The grid, the filter's items and the groups of a list show a value alike.
#include "forms/field_text.h"

#include <variant>

#include "base/number_text.h"

namespace brenvik {

std::string FieldText(const FieldValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* number = std::get_if<double>(&value)) return NumberToText(*number);
    return {};
}

}  // namespace brenvik
