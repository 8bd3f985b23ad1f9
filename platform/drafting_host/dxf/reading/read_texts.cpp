// From an entity's groups to texts, viewports, and the ACIS text of bodies.
#include <algorithm>

#include "drafting_host/dxf/reading/reading.h"
#include "drafting_host/dxf/texts/acis_lines.h"

namespace brenvik {
namespace {

AcisData::Kind KindOf(std::string_view name) {
    if (name == "REGION") return AcisData::Kind::Region;
    return name == "BODY" ? AcisData::Kind::Body : AcisData::Kind::Solid;
}

}  // namespace

TextData ReadText(Reading& reading, Groups groups, std::size_t line) {
    RequireGroups(groups, {10, 20, 1}, line);
    TextData data;
    Point3 alignment;
    for (const Group& group : groups) {
        if (TakePoint(group, 0, data.insertion) || TakeNormal(group, data.normal)) continue;
        if (TakePoint(group, 1, alignment)) {
            data.alignment = alignment;
            continue;
        }
        switch (group.code) {
            case 1:
                data.text = reading.Text(group);
                break;
            case 7:
                data.style = reading.Text(group);
                break;
            case 39:
                data.thickness = RealOf(group);
                break;
            case 40:
                data.height = RealOf(group);
                break;
            case 41:
                data.widthFactor = RealOf(group);
                break;
            case 50:
                data.rotation = AngleOf(group);
                break;
            case 51:
                data.oblique = AngleOf(group);
                break;
            case 71:
                data.generation = IntegerOf(group) & 0x06;
                break;
            case 72:
                data.horizontal = IntegerWithin(reading, group, 0, 5, "a justification", 0);
                break;
            case 73:
                data.vertical = IntegerWithin(reading, group, 0, 3, "a justification", 0);
                break;
            default:
                break;
        }
    }
    return data;
}

MTextData ReadMText(Reading& reading, Groups groups, std::size_t line) {
    RequireGroups(groups, {10, 20}, line);
    MTextData data;
    Point3 direction;
    std::string text, last;  // as in the file: a piece may end inside an escape
    for (const Group& group : groups) {
        // What follows describes columns, the heights of each as group 50.
        if (group.code == 75) break;
        if (TakePoint(group, 0, data.insertion) || TakeNormal(group, data.normal)) continue;
        if (TakePoint(group, 1, direction)) {
            data.direction = direction;
            continue;
        }
        switch (group.code) {
            case 1:
                last = group.value;
                break;
            case 3:
                text += group.value;
                break;
            case 7:
                data.style = reading.Text(group);
                break;
            case 40:
                data.height = RealOf(group);
                break;
            case 41:
                data.width = RealOf(group);
                break;
            case 50:
                data.rotation = AngleOf(group);
                break;
            case 71:
                data.attachment = IntegerWithin(reading, group, 1, 9, "an attachment", 1);
                break;
            case 72:
                data.flow = IntegerWithin(reading, group, 1, 5, "a direction", 1);
                break;
            default:
                break;
        }
    }
    data.text = reading.Text(text + last, line);
    return data;
}

ViewportData ReadViewport(Reading& reading, Groups groups, std::size_t line) {
    RequireGroups(groups, {10, 20, 40, 41}, line);
    ViewportData data;
    for (const Group& group : groups) {
        if (TakePoint(group, 0, data.center) || TakePoint(group, 6, data.viewDirection) ||
            TakePoint(group, 7, data.viewTarget))
            continue;
        switch (group.code) {
            case 12:
                data.viewCenter[0] = RealOf(group);
                break;
            case 22:
                data.viewCenter[1] = RealOf(group);
                break;
            case 40:
                data.width = RealOf(group);
                break;
            case 41:
                data.height = RealOf(group);
                break;
            case 42:
                data.lensLength = RealOf(group);
                break;
            case 43:
                data.frontClip = RealOf(group);
                break;
            case 44:
                data.backClip = RealOf(group);
                break;
            case 45:
                data.viewHeight = RealOf(group);
                break;
            case 51:
                data.twist = AngleOf(group);
                break;
            case 68:
                data.status = IntegerWithin(reading, group, -1, 32767, "a status", 1);
                break;
            case 69:
                data.id = IntegerWithin(reading, group, 0, 32767, "a number", 1);
                break;
            case 90:
                data.statusFlags = IntegerOf(group);
                break;
            case 331:
            case 341:
                if (const HandleValue layer = HandleOf(group); layer != 0) data.frozenLayers.push_back(layer);
                break;
            default:
                break;
        }
    }
    return data;
}

AcisData ReadAcis(Reading& reading, const Record& record, Groups groups) {
    std::vector<std::string> lines;
    AcisData data;
    data.kind = KindOf(record.name);
    data.firstLine = record.line;
    for (const Group& group : groups) {
        if (group.code == 1) {
            if (lines.empty()) data.firstLine = reading.unit == PlaceUnit::Line ? group.line : 0;
            lines.emplace_back(group.value);
        } else if (group.code == 3 && !lines.empty()) {
            lines.back() += group.value;
        }
    }
    // A record without ACIS text of its own gets the one after the entities, once all of them are read.
    if (!lines.empty()) data.text = AcisTextOf(lines);
    return data;
}

}  // namespace brenvik
