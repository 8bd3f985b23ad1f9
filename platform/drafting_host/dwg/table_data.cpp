// Texts are escaped as every release reads them.
#include "drafting_host/dwg/table_data.h"

#include <array>

#include "base/number_text.h"
#include "drafting_host/dxf/dxf_text.h"
#include "drafting_host/dxf/kept_text.h"

namespace brenvik::dwg {
namespace {

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
        constexpr std::string_view digits = "0123456789ABCDEF";
        constexpr std::size_t longestChunk = 127;
        for (std::size_t at = 0; at < bytes.size(); at += longestChunk) {
            std::string chunk;
            for (std::size_t i = at; i < std::min(at + longestChunk, bytes.size()); ++i) {
                chunk += digits[bytes[i] >> 4U];
                chunk += digits[bytes[i] & 15U];
            }
            AppendGroup(mGroups, mCode, chunk);
        }
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

}  // namespace brenvik::dwg
