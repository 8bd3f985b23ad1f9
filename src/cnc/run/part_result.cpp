// The result as a row of texts.
#include "cnc/run/part_result.h"

#include <array>
#include <cstdlib>
#include <sstream>

#include "base/failure.h"
#include "base/packed_text.h"
#include "cnc/part/told.h"

namespace brenvik {

namespace {

void PackFlag(std::string& packed, bool flag) { PackText(packed, flag ? "1" : "0"); }
bool TakeFlag(PackedTexts& packed) { return packed.Take() == "1"; }

void PackBox(std::string& packed, const MessageRequest& box) {
    PackText(packed, box.text);
    PackText(packed, box.title);
    PackText(packed, std::to_string(static_cast<int>(box.icon)));
}

MessageRequest TakeBox(PackedTexts& packed) {
    MessageRequest box;
    box.text = packed.Take();
    box.title = packed.Take();
    box.icon = static_cast<MessageIcon>(packed.TakeCount());
    return box;
}

void PackTrouble(std::string& packed, const PartTrouble& trouble) {
    PackText(packed, trouble.handle);
    PackText(packed, trouble.name);
    PackText(packed, trouble.text);
    PackFlag(packed, trouble.toldInABox);
    PackFlag(packed, trouble.isRemark);
}

PartTrouble TakeTrouble(PackedTexts& packed) {
    PartTrouble trouble;
    trouble.handle = packed.Take();
    trouble.name = packed.Take();
    trouble.text = packed.Take();
    trouble.toldInABox = TakeFlag(packed);
    trouble.isRemark = TakeFlag(packed);
    return trouble;
}

void PackBits(std::string& packed, const BitChoice& bits) {
    std::ostringstream diameter;
    diameter << std::hexfloat << bits.ToolDiameter;
    PackText(packed, diameter.str());
    for (const std::string* text :
         {&bits.ToolDiameterText, &bits.ToolNumber, &bits.ToolSpeed, &bits.ToolFeed})
        PackText(packed, *text);
    PackText(packed, std::to_string(static_cast<int>(bits.kind)));
}

BitChoice TakeBits(PackedTexts& packed) {
    BitChoice bits;
    bits.ToolDiameter = std::strtod(packed.Take().c_str(), nullptr);
    for (std::string* text : {&bits.ToolDiameterText, &bits.ToolNumber, &bits.ToolSpeed, &bits.ToolFeed})
        *text = packed.Take();
    bits.kind = static_cast<PathKind>(packed.TakeCount());
    return bits;
}

void PackCount(std::string& packed, std::size_t count) { PackText(packed, std::to_string(count)); }

/// The lists of lines of a report, in the order in which they are packed.
template <class Report>
auto ListsOf(Report& report) {
    return std::array{&report.skipped, &report.passedOver, &report.unexplained, &report.doubtfulMaterials,
                      &report.unknownMaterials};
}

}  // namespace

std::string PackResult(const PartResult& result) {
    std::string packed;
    PackFlag(packed, result.isForTheRun);
    PackTexts(packed, result.files);
    PackCount(packed, result.boxes.size());
    for (const MessageRequest& box : result.boxes) PackBox(packed, box);
    PackCount(packed, result.lines.size());
    for (const ListLine& line : result.lines) {
        PackFlag(packed, line.secondSide);
        PackText(packed, line.text);
    }
    for (const auto* list : ListsOf(result.report)) PackTexts(packed, *list);
    PackCount(packed, result.troubles.size());
    for (const PartTrouble& trouble : result.troubles) PackTrouble(packed, trouble);
    PackFlag(packed, result.bits.has_value());
    if (result.bits) PackBits(packed, *result.bits);
    return packed;
}

PartResult UnpackResult(std::string_view text) {
    PackedTexts packed(text);
    PartResult result;
    result.isForTheRun = TakeFlag(packed);
    result.files = packed.TakeAll();
    for (std::size_t left = packed.TakeCount(); left > 0; --left) result.boxes.push_back(TakeBox(packed));
    for (std::size_t left = packed.TakeCount(); left > 0; --left) {
        const bool secondSide = TakeFlag(packed);
        result.lines.push_back({secondSide, packed.Take()});
    }
    for (auto* list : ListsOf(result.report)) *list = packed.TakeAll();
    for (std::size_t left = packed.TakeCount(); left > 0; --left)
        result.troubles.push_back(TakeTrouble(packed));
    if (TakeFlag(packed)) result.bits = TakeBits(packed);
    if (!packed.AtEnd()) throw TypeMismatch("expected the end of a part's result");
    return result;
}

void AddReport(RunReport& run, const RunReport& part) {
    for (const std::string& line : part.skipped) run.skipped.push_back(line);
    for (const std::string& line : part.passedOver) run.passedOver.push_back(line);
    for (const std::string& line : part.unexplained) run.unexplained.push_back(line);
    for (const std::string& line : part.doubtfulMaterials) NoteOnce(run.doubtfulMaterials, line);
    for (const std::string& key : part.unknownMaterials) NoteOnce(run.unknownMaterials, key);
}

}  // namespace brenvik
