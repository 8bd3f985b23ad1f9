// Values of groups as text.
#include "drafting_host/dxf/writing/group_writer.h"

#include <array>
#include <charconv>
#include <cmath>

#include "base/failure.h"
#include "base/handle_text.h"
#include "base/noise.h"
#include "drafting_host/dxf/texts/dxf_text.h"
#include "drafting_host/dxf/texts/exact_numbers.h"

namespace brenvik {

void GroupWriter::Code(int code) {
    std::array<char, 8> digits;
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), code);
    const auto count = static_cast<std::size_t>(written.ptr - digits.data());
    if (count < 3) mOut.append(3 - count, ' ');
    mOut.append(digits.data(), count);
    End();
}

void GroupWriter::Text(int code, std::string_view text) {
    Code(code);
    mOut += EncodeText(text, mIsUnicode);
    End();
}

void GroupWriter::Word(int code, std::string_view word) {
    Code(code);
    mOut += word;
    End();
}

void GroupWriter::Whole(int code, long value) {
    Code(code);
    std::array<char, 24> digits;
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    mOut.append(digits.data(), written.ptr);
    End();
}

void GroupWriter::RequireFinite(double value, int code) const {
    if (!std::isfinite(value))
        throw InvalidCall(mPlace + ": a finite number was expected for group " + std::to_string(code));
}

void GroupWriter::Real(int code, double value) { ExactReal(code, NoiseAsZero(value)); }

void GroupWriter::ExactReal(int code, double value) {
    RequireFinite(value, code);
    Code(code);
    std::array<char, 32> digits;
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    const std::string_view text(digits.data(), static_cast<std::size_t>(written.ptr - digits.data()));
    mOut += text;
    if (text.find_first_of(".e") == std::string_view::npos) mOut += ".0";
    End();
}

void GroupWriter::Degrees(int code, double radians) {
    RequireFinite(radians, code);
    Word(code, DegreesText(NoiseAsZero(radians)));
}

void GroupWriter::HandleGroup(int code, HandleValue handle) { Word(code, HandleToText(handle)); }

void GroupWriter::Point(int code, const Point3& point) {
    Real(code, point.x);
    Real(code + 10, point.y);
    Real(code + 20, point.z);
}

void GroupWriter::Normal(const Point3& normal) {
    if (NoiseAsZero(normal) != Point3{0, 0, 1}) Point(210, normal);
}

void GroupWriter::RealUnless(int code, double value, double usual) {
    if (NoiseAsZero(value) != usual) Real(code, value);
}

}  // namespace brenvik
