#include "drafting_host/acis/body_middle.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "drafting_host/acis/binary_records.h"
#include "drafting_host/acis/geometry.h"
#include "drafting_host/acis/sat_model.h"

namespace brenvik::acis {
namespace {

/// Every row leads along an axis.
bool TurnsByQuarters(const TransformRecord& transform) {
    return std::ranges::all_of(transform.rows, [](const gp_XYZ& row) {
        return std::max({std::abs(row.X()), std::abs(row.Y()), std::abs(row.Z())}) == 1;
    });
}

bool IsRound(std::string_view name) {
    return (name.ends_with("-surface") && name != "plane-surface") ||
           (name.ends_with("-curve") && name != "straight-curve");
}

BodyMiddle MiddleOf(const Model& model, long bodyRecord) {
    const BodyRecord body = model.Body(bodyRecord);
    TransformRecord transform;
    if (body.transform >= 0) transform = model.Transform(body.transform);
    const Placement place(transform, body.transform);
    constexpr double far = std::numeric_limits<double>::infinity();
    gp_XYZ low(far, far, far), high = low.Reversed();
    BodyMiddle middle;
    middle.isCertain = TurnsByQuarters(transform);
    for (long i = 0; i < static_cast<long>(model.Count()); ++i) {
        const std::string_view name = model.At(i).name;
        middle.isCertain = middle.isCertain && !IsRound(name);
        if (name != "vertex") continue;
        const gp_XYZ at = place.Point(model.VertexPoint(i)).XYZ();
        low = {std::min(low.X(), at.X()), std::min(low.Y(), at.Y()), std::min(low.Z(), at.Z())};
        high = {std::max(high.X(), at.X()), std::max(high.Y(), at.Y()), std::max(high.Z(), at.Z())};
    }
    if (low.X() > high.X()) throw BadRecord(bodyRecord, "a body without a vertex");
    const gp_XYZ centre = (low + high) / 2;
    middle.place = {centre.X(), centre.Y(), centre.Z()};
    middle.size = (high - low).Modulus();
    return middle;
}

}  // namespace

std::optional<BodyMiddle> MiddleOfBody(std::string_view text) {
    const RecordText split = IsBinary(text) ? SplitBinaryRecords(text) : SplitRecords(text);
    const auto isBody = [](const Record& record) { return record.name == "body"; };
    const auto body = std::ranges::find_if(split.records, isBody);
    if (!split.readable || std::ranges::count_if(split.records, isBody) != 1) return std::nullopt;
    try {
        return MiddleOf(Model(split), static_cast<long>(body - split.records.begin()));
    } catch (const BadRecord&) {
        return std::nullopt;  // the body is reported where it is built
    }
}

}  // namespace brenvik::acis
