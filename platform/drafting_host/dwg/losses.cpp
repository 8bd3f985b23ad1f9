#include "drafting_host/dwg/losses.h"

#include <algorithm>
#include <array>

#include "drafting_host/dxf/data/annotation_kinds.h"

namespace brenvik::dwg {
namespace {

void TellCounts(Reading& reading, const std::string& what, const std::map<std::string, std::size_t>& counts) {
    if (counts.empty()) return;
    std::string all;
    for (const auto& [kind, count] : counts)
        all += (all.empty() ? "" : ", ") + std::to_string(count) + " " + kind;
    reading.Note(0, what + all, false);
}

}  // namespace

std::string KindOrType(std::string_view kind, unsigned type) {
    return kind.empty() ? "of type " + std::to_string(type) : std::string(kind);
}

bool KeepsData(std::string_view kind) {
    constexpr auto kinds = std::to_array<std::string_view>(
        {"LAYER", "LTYPE", "STYLE", "VPORT", "VIEW", "BLOCK_RECORD", "BLOCK", "LAYOUT"});
    return std::ranges::find(kinds, kind) != kinds.end();
}

void Losses::PassOver(std::string_view kind, unsigned type) { ++mPassed[KindOrType(kind, type)]; }

void TellTexts(const Texts& texts, Reading& reading) {
    const auto tell = [&](std::size_t count, const char* what, const std::string& first) {
        if (count > 0)
            reading.Note(0, std::to_string(count) + what + ", the first one as " + ShownName(first));
    };
    tell(texts.Cut(), " text(s) end at a zero within", texts.FirstCut());
    tell(texts.Controlled(), " text(s) have a control character and may be damaged", texts.FirstControlled());
    tell(texts.OddlyEnded(), " text(s) end otherwise than all others of the file and may be damaged",
         texts.FirstOddlyEnded());
}

void Losses::Take(const Further& further, Reading& reading) {
    for (const std::string& value : further.mended) reading.Doubt("flags of vertex", 0, value, false);
    if (!further.unsettled.empty()) ++mSplines[further.unsettled];
    if (further.losesColumns) ++mTextsInColumns;
}

void Losses::TellPassedOver(Reading& reading) const {
    reading.file.unkeptReason = "of a binary drawing (DWG) only what a drawing holds is taken";
    for (const auto& [kind, count] : mPassed) {
        reading.unkept[kind] += count;
        reading.Note(0,
                     std::to_string(count) + " of kind " + ShownName(kind) +
                         " passed over: drawings don't hold this kind",
                     !IsAnnotationKind(kind));
    }
}

void Losses::TellSplines(Reading& reading) const {
    for (const auto& [what, count] : mSplines)
        reading.Note(0,
                     std::to_string(count) + (count == 1 ? " spline stands" : " splines stand") +
                         " in the file as the points through which it runs (" + what +
                         "): the program that drew it may bend it otherwise between them; save the drawing "
                         "as DXF to have it exact");
}

void Losses::Tell(Reading& reading, const std::set<HandleValue>& taken) const {
    TellPassedOver(reading);
    TellSplines(reading);
    if (mTextsInColumns > 0)
        reading.Note(0,
                     std::to_string(mTextsInColumns) + (mTextsInColumns == 1 ? " text" : " texts") +
                         " in columns: drawings hold such a text in one",
                     false);
    if (mUnknown > 0)
        reading.Note(0, std::to_string(mUnknown) + (mUnknown == 1 ? " object is" : " objects are") +
                            " of classes that the file doesn't name: what is lost with " +
                            (mUnknown == 1 ? "it" : "them") + " can't be known");
    std::map<std::string, std::size_t> counts;
    for (const auto& [handle, kind] : mLeft)
        if (!taken.contains(handle)) ++counts[kind];
    TellCounts(reading, "objects of the binary drawing that aren't taken along: ", counts);
    TellCounts(reading, "extended data of the binary drawing's records that aren't taken along: ", mData);
}

}  // namespace brenvik::dwg
