// Within a drawing the head keeps its 1: there lengths are the drawing's.
#include "drafting_host/acis/unit_head.h"

#include "base/number_text.h"

namespace brenvik::acis {

void NameUnit(std::vector<std::string>& lines, double millimetresPerUnit) {
    std::string& line = lines.at(2);
    line = ShortestRoundTrip(millimetresPerUnit) + line.substr(line.find(' '));
}

}  // namespace brenvik::acis
