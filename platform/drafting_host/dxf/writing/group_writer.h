// Writes groups: the code right-aligned in three columns, the value in the next line, both ended by
// "\r\n", as old receivers on Windows machines want them.
#pragma once

#include <string>
#include <string_view>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

class GroupWriter {
  public:
    /// Text of the drawing: encoded (EncodeText).
    void Text(int code, std::string_view text);
    /// Groups in their final form.
    void Raw(std::string_view groups) { mOut += groups; }
    /// A word of the format itself, or a value that is encoded already.
    void Word(int code, std::string_view word);
    void Whole(int code, long value);
    /// A measure of the drawing; noise becomes 0. Throws Failure 5 naming the place (see SetPlace) for a
    /// value that is not finite.
    void Real(int code, double value);
    /// A number of somebody else's, as it is.
    void ExactReal(int code, double value);
    void RequireFinite(double value, int code) const;
    void Degrees(int code, double radians);
    void HandleGroup(int code, HandleValue handle);
    /// Groups code, code + 10, code + 20.
    void Point(int code, const Point3& point);
    /// Unless it is the world's Z direction.
    void Normal(const Point3& normal);
    /// Unless it is the usual value.
    void RealUnless(int code, double value, double usual);

    /// What is being written, for messages: "entity 1AF".
    void SetPlace(std::string place) { mPlace = std::move(place); }
    const std::string& Place() const { return mPlace; }

    /// From release 2007 on texts stand in UTF-8.
    void SetUnicode(bool isUnicode) { mIsUnicode = isUnicode; }

    std::string Take() { return std::move(mOut); }

  private:
    void Code(int code);
    void End() { mOut += "\r\n"; }

    std::string mOut;
    std::string mPlace = "the drawing";
    bool mIsUnicode = false;
};

}  // namespace brenvik
