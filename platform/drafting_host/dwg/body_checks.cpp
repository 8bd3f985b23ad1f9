#include "drafting_host/dwg/body_checks.h"

#include <algorithm>
#include <cmath>
#include <variant>

#include "drafting_host/acis/body_middle.h"
#include "drafting_host/dxf/texts/exact_numbers.h"

namespace brenvik::dwg {
namespace {

/// Less than a third are few: where programs take turns, neither way is damage.
bool AreFew(std::size_t odd, std::size_t usual) { return 2 * odd <= usual; }

/// What stands there in a kind or number that was never seen is passed over with all that follows.
void Leave(Streams& streams) {
    streams.data.MoveTo(streams.data.End());
    streams.handles.MoveTo(streams.handles.End());
}

/// The picture by wires. False where it holds more than the middle.
bool ReadPicture(BitReader& data, BodyWitness& body) {
    if (!data.Bit()) return true;
    if (data.Bit()) body.middle = data.BitPoint();
    data.BitLong();  // lines on a round face
    const bool hasWires = data.Bit();
    if (!hasWires || data.BitLong() != 0) return false;
    const bool hasOutlines = data.BitLong() != 0;
    return !hasOutlines;
}

bool ReadToEnd(Object& object, AcisData::Kind kind, bool isStored, BodyWitness& body) {
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    if (streams.IsAtLeast(Release::R2013) && !isStored) return false;
    const bool isPlain = ReadPicture(data, body);
    if (!isPlain) return false;
    const bool hasSecond = !data.Bit();
    if (hasSecond) return false;
    const bool hasMaterials = streams.IsAtLeast(Release::R2007) && data.BitLong() != 0;
    if (hasMaterials) return false;
    if (streams.IsAtLeast(Release::R2013)) {
        constexpr unsigned idBytes = 8;
        data.Bit();
        data.BitLong();
        data.BitShort();
        data.BitShort();
        data.Skip(std::size_t{idBytes} * 8);
        if (data.BitLong() != 0) return false;
    }
    // The history of how it was made.
    if (streams.IsAtLeast(Release::R2007) && kind == AcisData::Kind::Solid) SkipHandles(streams, 1);
    return true;
}

std::string Shown(const Point3& point) {
    return "(" + RealText(point.x) + ", " + RealText(point.y) + ", " + RealText(point.z) + ")";
}

bool IsNear(const Point3& a, const Point3& b, double size) {
    constexpr double ofSize = 1e-6, ofPlace = 1e-9;
    const auto near = [&](double first, double second) {
        return std::abs(first - second) <= ofSize * size + ofPlace * std::abs(second);
    };
    return near(a.x, b.x) && near(a.y, b.y) && near(a.z, b.z);
}

}  // namespace

void ReadBehindAcis(Object& object, AcisData::Kind kind, bool isStored, Further& further) {
    try {
        if (!ReadToEnd(object, kind, isStored, further.body)) Leave(object.streams);
    } catch (const Damage& damage) {
        further.doubt = "what stands behind its body can't be read: " + damage.reason;
        Leave(object.streams);
    }
}

void BodyChecks::Take(const Holder& holder, const EntityGeometry& geometry, const Further& further) {
    const auto* const body = std::get_if<AcisData>(&geometry);
    if (body == nullptr) return;
    const std::string shown = ShownHolder(holder);
    if (further.body.mark) mMarks[further.body.isText ? 0 : 1][*further.body.mark ? 1 : 0].push_back(shown);
    if (further.body.middle) TakeMiddle(shown, *further.body.middle, body->text);
}

void BodyChecks::TakeMiddle(const std::string& shown, const Point3& said, const std::string& text) {
    const auto middle = acis::MiddleOfBody(text);
    if (!middle) return;
    const Point3 place{middle->place[0], middle->place[1], middle->place[2]};
    if (IsNear(said, place, middle->size))
        ++mMiddles;
    else if (middle->isCertain)
        mOddMiddles.push_back(shown + ": its middle is said to be at " + Shown(said) + " where " +
                              Shown(place) + " was expected, as its faces have it: it may be damaged");
}

void BodyChecks::Tell(Reading& reading) const {
    if (AreFew(mOddMiddles.size(), mMiddles))
        for (const std::string& odd : mOddMiddles) reading.Note(0, odd);
    for (const auto& marks : mMarks) {
        const std::size_t few = marks[0].size() < marks[1].size() ? 0 : 1;
        if (!AreFew(marks[few].size(), marks[1 - few].size())) continue;
        for (const std::string& odd : marks[few])
            reading.Note(0, odd + ": the mark in front of its body is " + std::to_string(few) + " where " +
                                std::to_string(1 - few) +
                                " was expected, as the file's other bodies have it: it may be damaged");
    }
}

}  // namespace brenvik::dwg
