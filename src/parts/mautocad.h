// Module mAutoCAD: part data on solids, the scan of the selection into the part table, and the measuring of
// solids with the letters that name their sizes. Extents and sizes are drawing units.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

class AcadObject;
class DataControl;
class Form;
class GridControl;

namespace mAutoCAD {

/// The value that the object of this handle keeps under a key, blank if there is none. An object that is
/// gone shows the text "not found" and gives blank. Fails with 9 when the data hold no value behind their
/// application name.
std::string GetPartData(std::string_view handle, std::string_view key);

/// The same of an object at hand, whichever drawing it stands in.
std::string PartDataOf(const AcadObject& object, std::string_view key);

/// Replaces the value under a key: the old one is cleared first. Does nothing for a null object; fails as
/// the host does, as for a text longer than it takes.
void SetPartData(AcadObject* object, std::string_view key, std::string_view value);

/// Where a scan is seen: the form that waits, and the grid with its data control that show the rows.
struct ScanScreen {
    Form& form;
    DataControl& data;
    GridControl& grid;
};

/// Reads the host's previous selection into the part table, one row for each entity, and binds the grid to
/// it. An empty selection leaves table, grid and hourglass as they are. Fails with 13 when one of the two
/// measuring switches is not numeric; any later failure is shown, and the scan goes on behind it.
void ScanSelection(const ScanScreen& screen);

/// The smallest and the largest, each input and the result rounded to 5 decimals.
double SmallestOfThree(double a, double b, double c);
double LargestOfThree(double a, double b, double c);

/// 1 to 3. Of equal largest values the last wins; values below 0 never win, and 0 says that all are.
int IndexOfLargest(float a, float b, float c);
/// 1 to 3. Of equal smallest values the first wins. 0 when each value is greater than the sum of the three.
int IndexOfSmallest(float a, float b, float c);
/// The index that is neither of two: 6 less their sum.
int ThirdIndex(int i, int j);

}  // namespace mAutoCAD

}  // namespace brenvik
