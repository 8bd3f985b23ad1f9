// Texts are escaped as every release reads them.
#include "drafting_host/dwg/table_data.h"

#include <array>

#include "base/handle_text.h"
#include "base/hex.h"
#include "base/number_text.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/texts/dxf_text.h"
#include "drafting_host/dxf/texts/exact_numbers.h"

namespace brenvik::dwg {
namespace {

/// Bytes in lines of hexadecimal digits.
void AppendBytes(std::string& groups, int code, std::string_view bytes) {
    constexpr std::size_t longestChunk = 127;
    for (std::size_t at = 0; at < bytes.size(); at += longestChunk)
        AppendGroup(groups, code, HexOf(bytes.substr(at, longestChunk)));
}

class ItemWriter {
  public:
    ItemWriter(std::string& groups, int code) : mGroups(groups), mCode(code) {}

    void operator()(const std::string& text) const { AppendGroup(mGroups, mCode, EncodeText(text)); }
    void operator()(double value) const { AppendGroup(mGroups, mCode, ShortestRoundTrip(value, true)); }
    void operator()(std::int16_t value) const { AppendGroup(mGroups, mCode, std::to_string(value)); }
    void operator()(std::int32_t value) const { AppendGroup(mGroups, mCode, std::to_string(value)); }
    void operator()(const Point3& point) const {
        const std::array values{point.x, point.y, point.z};
        for (std::size_t axis = 0; axis < values.size(); ++axis)
            AppendGroup(mGroups, mCode + 10 * static_cast<int>(axis), ShortestRoundTrip(values[axis], true));
    }
    void operator()(const std::vector<std::uint8_t>& bytes) const {
        AppendBytes(mGroups, mCode, std::string(bytes.begin(), bytes.end()));
    }

  private:
    std::string& mGroups;
    int mCode;
};

}  // namespace

std::string GroupsOfXData(std::span<const XDataOfApp> data) {
    std::string groups;
    for (const XDataOfApp& app : data) {
        AppendGroup(groups, 1001, EncodeText(app.app));
        for (const XDataItem& item : app.items) std::visit(ItemWriter(groups, item.code), item.value);
    }
    return groups;
}

GroupText& GroupText::Whole(int code, long value) {
    AppendGroup(mText, code, std::to_string(value));
    return *this;
}

GroupText& GroupText::Real(int code, double value) {
    AppendGroup(mText, code, RealText(value));
    return *this;
}

GroupText& GroupText::Degrees(int code, double radians) {
    AppendGroup(mText, code, DegreesText(radians));
    return *this;
}

GroupText& GroupText::Text(int code, std::string_view text) {
    AppendGroup(mText, code, EncodeText(text));
    return *this;
}

GroupText& GroupText::Handle(int code, HandleValue handle) {
    AppendGroup(mText, code, HandleToText(handle));
    return *this;
}

GroupText& GroupText::Flat(int code, const Point3& point) {
    return Real(code, point.x).Real(code + 10, point.y);
}

GroupText& GroupText::Point(int code, const Point3& point) {
    return Flat(code, point).Real(code + 20, point.z);
}

GroupText& GroupText::Color(int code, int trueCode, const RecordColor& color) {
    Whole(code, IndexOf(color));
    if (color.trueColor) Whole(trueCode, static_cast<long>(*color.trueColor));
    return *this;
}

GroupText& GroupText::Bytes(int code, std::string_view bytes) {
    AppendBytes(mText, code, bytes);
    return *this;
}

GroupText& GroupText::Raw(std::string_view groups) {
    mText += groups;
    return *this;
}

void ReadViewLight(Streams& streams, GroupText& groups) {
    BitReader& data = streams.data;
    groups.Whole(292, data.Bit() ? 1 : 0).Whole(282, data.Byte());
    groups.Real(141, data.BitReal()).Real(142, data.BitReal());
    groups.Color(63, 421, ReadRecordColor(streams));
}

GroupText RecordHead(HandleValue handle, std::string_view className, std::string_view name) {
    GroupText text;
    text.Handle(5, handle).Handle(330, 0);
    text.Text(100, "AcDbSymbolTableRecord").Text(100, className).Text(2, name);
    return text;
}

}  // namespace brenvik::dwg
