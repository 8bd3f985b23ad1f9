// Part data: one piece of extended data for each key, the key being the application's name and the value
// one text behind it.
#include <type_traits>

#include "base/failure.h"
#include "base/number_text.h"
#include "base/skip.h"
#include "parts/mautocad.h"
#include "session/message.h"
#include "session/ports/host_interface.h"
#include "session/session.h"

namespace brenvik::mAutoCAD {

namespace {

constexpr std::int16_t ApplicationCode = 1001;
constexpr std::int16_t TextCode = 1000;

/// An item of extended data as text. Other programs may keep numbers under our keys.
std::string TextOf(const XDataValue& value) {
    return std::visit(
        [](const auto& item) -> std::string {
            using Item = std::decay_t<decltype(item)>;
            if constexpr (std::is_same_v<Item, std::string>)
                return item;
            else if constexpr (std::is_arithmetic_v<Item>)
                return NumberToText(item);
            else
                throw TypeMismatch("extended data");
        },
        value);
}

}  // namespace

std::string GetPartData(std::string_view handle, std::string_view key) {
    AcadDocument* document = TheSession().AcadDoc;
    if (document == nullptr) throw ObjectNotSet("document");
    // A handle that is gone gives nothing or fails, by the host's choice.
    AcadObject* object = nullptr;
    Skip([&] { object = document->HandleToObject(handle); });
    if (object == nullptr) {
        ShowMessage("not found");
        return {};
    }
    return PartDataOf(*object, key);
}

std::string PartDataOf(const AcadObject& object, std::string_view key) {
    std::vector<std::int16_t> types;
    std::vector<XDataValue> values;
    object.GetXData(key, types, values);
    if (values.empty()) return {};
    if (values.size() < 2) throw SubscriptOutOfRange(std::string(key));
    return TextOf(values[1]);
}

void SetPartData(AcadObject* object, std::string_view key, std::string_view value) {
    if (object == nullptr) return;
    const std::array<std::int16_t, 1> clearingTypes{ApplicationCode};
    const std::array<XDataValue, 1> clearingValues{std::string(key)};
    object->SetXData(clearingTypes, clearingValues);
    const std::array<std::int16_t, 2> types{ApplicationCode, TextCode};
    const std::array<XDataValue, 2> values{std::string(key), std::string(value)};
    object->SetXData(types, values);
}

}  // namespace brenvik::mAutoCAD
