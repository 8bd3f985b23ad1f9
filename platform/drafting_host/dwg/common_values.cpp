#include "drafting_host/dwg/common_values.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>
#include <variant>

#include "base/handle_text.h"
#include "base/letter_case.h"
#include "drafting_host/dwg/table_data.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/texts/exact_numbers.h"

namespace brenvik::dwg {

EntityData CommonValues::EntityOf(std::string_view kind, const Object& object, const Common& common) const {
    const Holder holder{kind, object.handle};
    EntityData entity;
    entity.handle = object.handle;
    entity.layer = mSource.links.Named(mSource.names.layers, common.layer, "0", "a layer", holder);
    constexpr int byLayer = 256;
    entity.color = common.color >= 0 && common.color <= byLayer ? common.color : byLayer;
    if (entity.color != common.color)
        mSource.reading.Doubt("colour", 0,
                              ShownHolder(holder) + " has colour " + std::to_string(common.color) +
                                  " where one from 0 to 256 was expected; that of its layer is taken",
                              false);
    if (!common.oddity.empty())
        mSource.reading.Doubt(
            common.oddity + " of entity", 0,
            ShownHolder(holder) + " has a " + common.oddity + " that there isn't: it may be damaged", true);
    switch (common.linetypeBy) {
        case LinetypeBy::Layer:
            break;
        case LinetypeBy::Block:
            entity.linetype = "ByBlock";
            break;
        case LinetypeBy::Continuous:
            entity.linetype = "Continuous";
            break;
        case LinetypeBy::Handle:
            entity.linetype = mSource.links.Named(mSource.names.linetypes, common.linetype, "ByLayer",
                                                  "a line type", holder);
            break;
    }
    if (common.linetypeScale > 0)
        entity.linetypeScale = common.linetypeScale;
    else
        mSource.reading.Doubt(
            "scale", 0, ShownHolder(holder) + " has a scale of line types of 0 or less; 1 is taken", false);
    entity.visible = !common.invisible;
    entity.lineweight = common.lineweight;
    entity.xdata = XDataOf("entity", object.handle, object.xdata);
    return entity;
}

void CommonValues::KeepFurther(EntityData& entity, std::string_view kind, const Common& common,
                               const Further& further) const {
    KeptGroups look;
    const RecordColor color = TrueColorOf(common, {kind, entity.handle});
    if (color.trueColor) look.common = GroupsOfTrueColor(*color.trueColor)->common;
    if (!color.name.empty())
        look.common +=
            GroupText().Text(430, color.book.empty() ? color.name : color.book + "$" + color.name).Take();
    if (common.transparency) AppendGroup(look.common, 440, std::to_string(*common.transparency));
    look.own = further.groups;
    if (!look.common.empty() || !look.own.empty())
        entity.kept = {std::make_shared<const KeptGroups>(std::move(look))};
}

/// Colours of a book stand in objects of their own.
RecordColor CommonValues::TrueColorOf(const Common& common, const Holder& holder) const {
    const RecordColor own{7, common.trueColor};
    if (common.bookColor == 0) return own;
    if (const ObjectMap::Entry* const book = mSource.map.Find(common.bookColor); book != nullptr) {
        try {
            Object object = OpenObject(mSource.sections, mSource.texts, *book);
            if (mSource.kinds.NameOf(object.type) == "DBCOLOR") {
                ReadOwner(object);
                return ReadRecordColor(object.streams);
            }
        } catch (const Damage&) {
            // reported below
        }
    }
    mSource.links.Drop("a colour of a book", common.bookColor, holder);
    return own;
}

/// What a handle among them led to may be gone; what was never there is another thing.
void CommonValues::CheckHandles(std::string_view what, HandleValue handle, const XDataOfApp& app) const {
    constexpr int codeHandle = 1005;
    for (const XDataItem& item : app.items) {
        if (item.code != codeHandle) continue;
        const auto target = HandleFromText(std::get<std::string>(item.value));
        const HandleValue next = mSource.header.handleSeed;
        if (!target || next == 0 || *target < next || mSource.map.Find(*target) != nullptr) continue;
        mSource.reading.Note(0, ShownHolder({what, handle}) + ": the extended data of " + ShownName(app.app) +
                                    " refer to handle " + HandleToText(*target) + " where one below " +
                                    HandleToText(next) + ", the next one, was expected: it may be damaged");
    }
}

namespace {

/// Brackets open and close lists, in pairs.
bool BracketsMatch(const RawXData& raw) {
    constexpr int codeBracket = 1002;
    int open = 0;
    for (const XDataItem& item : raw.items) {
        if (item.code != codeBracket) continue;
        open += std::get<std::string>(item.value) == "{" ? 1 : -1;
        if (open < 0) return false;
    }
    return open == 0 || raw.isCut;
}

bool HoldsLong(const RawXData& raw, const std::function<bool(std::uint32_t)>& isWanted) {
    return std::ranges::any_of(raw.items, [&](const XDataItem& item) {
        const auto* const value = std::get_if<std::int32_t>(&item.value);
        return value != nullptr && isWanted(static_cast<std::uint32_t>(*value));
    });
}

/// Layers have their transparency here. Release 14 has names in capitals.
bool HoldsFalseTransparency(const RawXData& raw, std::string_view application) {
    return EqualsIgnoreCase(application, "AcCmTransparency") &&
           HoldsLong(raw, [](std::uint32_t value) { return !IsTransparency(value); });
}

/// Text styles have their font here: its kind and its set of characters in a byte each, whether it is italic
/// and bold.
bool HoldsFalseFont(std::string_view what, const RawXData& raw, std::string_view application) {
    constexpr std::uint32_t known = 0x0300FFFF;
    return what == "STYLE" && application == "ACAD" &&
           HoldsLong(raw, [](std::uint32_t value) { return (value & ~known) != 0; });
}

/// Bodies have the identifier of their last change here: the number 1, a long, two shorts and eight bytes.
bool HoldsFalseIdentifier(const RawXData& raw, std::string_view application) {
    if (application != "ACAD_OBJECT_CHANGE_GUID" || raw.isCut) return false;
    constexpr std::size_t firstByte = 3;
    std::vector<int> shorts;
    for (const XDataItem& item : raw.items)
        if (const auto* const value = std::get_if<std::int16_t>(&item.value)) shorts.push_back(*value);
    if (shorts.size() < firstByte) return true;
    return shorts.front() != 1 || std::any_of(shorts.begin() + firstByte, shorts.end(),
                                              [](int byte) { return byte < 0 || byte > 0xFF; });
}

}  // namespace

void CommonValues::CheckItems(std::string_view what, HandleValue handle, const RawXData& raw,
                              const std::string& application) const {
    const std::string doubt = raw.absurd != 0       ? "the number " + RealText(raw.absurd)
                              : !BracketsMatch(raw) ? "brackets that don't match"
                              : HoldsFalseTransparency(raw, application) ? "a transparency that there isn't"
                              : HoldsFalseFont(what, raw, application)   ? "marks of a font that there aren't"
                              : HoldsFalseIdentifier(raw, application)   ? "an identifier that isn't one"
                                                                         : "";
    if (!doubt.empty())
        mSource.reading.Note(0, ShownHolder({what, handle}) + ": the extended data of " +
                                    ShownName(application) + " hold " + doubt + ": they may be damaged");
}

std::vector<XDataOfApp> CommonValues::XDataOf(std::string_view what, HandleValue handle,
                                              const std::vector<RawXData>& data) const {
    std::vector<XDataOfApp> all;
    for (const RawXData& raw : data) {
        const auto name = mSource.names.applications.find(raw.application);
        if (name == mSource.names.applications.end() || name->second.empty()) {
            mSource.reading.Note(0, ShownHolder({what, handle}) +
                                        ": extended data of an application that the drawing doesn't name are "
                                        "left out");
            continue;
        }
        XDataOfApp app{name->second, raw.items};
        if (raw.isCut)
            mSource.reading.Note(0, ShownHolder({what, handle}) + ": the extended data of " +
                                        ShownName(app.app) +
                                        " break off at an unknown code, the rest is left out");
        constexpr int codeLayer = 1003;
        CheckHandles(what, handle, app);
        CheckItems(what, handle, raw, app.app);
        for (XDataItem& item : app.items) {
            if (item.code != codeLayer) continue;
            HandleValue layer = 0;
            if (const auto named = HandleFromText(std::get<std::string>(item.value))) layer = *named;
            item.value =
                mSource.links.NamedIfAny(mSource.names.layers, layer, "0", "a layer", {what, handle});
        }
        all.push_back(std::move(app));
    }
    return all;
}

}  // namespace brenvik::dwg
