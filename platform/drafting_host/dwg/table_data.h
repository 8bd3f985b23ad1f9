// Values that a drawing keeps as the text that a DXF file has of them: groups of records that it has no
// member for, and extended data of table records.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "drafting_host/dwg/objects.h"
#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik::dwg {

/// The groups of extended data, from each application's name on.
std::string GroupsOfXData(std::span<const XDataOfApp> data);

/// Groups in the making. Reals are exact, angles are turned from radians to degrees, texts are escaped as
/// every release reads them.
class GroupText {
  public:
    GroupText& Whole(int code, long value);        ///< Adds a group with this whole number.
    GroupText& Real(int code, double value);       ///< By the shortest text that reads back as it.
    GroupText& Degrees(int code, double radians);  ///< An angle, as DXF writes it.
    GroupText& Text(int code, std::string_view text);
    GroupText& Handle(int code, HandleValue handle);
    /// With three coordinates, and with two.
    GroupText& Point(int code, const Point3& point);
    GroupText& Flat(int code, const Point3& point);
    /// The number of a colour, and under `trueCode` the true one where there is one.
    GroupText& Color(int code, int trueCode, const RecordColor& color);
    GroupText& Bytes(int code, std::string_view bytes);
    GroupText& Raw(std::string_view groups);

    std::string Take() { return std::move(mText); }

  private:
    std::string mText;
};

/// The lighting of a view, which viewports and named views state alike. From release 2007 on.
void ReadViewLight(Streams& streams, GroupText& groups);

/// The head of a table's record up to its own groups: a handle, an owner that the writer puts right, the
/// name.
GroupText RecordHead(HandleValue handle, std::string_view className, std::string_view name);

}  // namespace brenvik::dwg
