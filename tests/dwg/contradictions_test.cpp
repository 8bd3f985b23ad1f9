// Values of entities that contradict their kind or what the drawing says elsewhere, in files whose checksums
// are right.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <variant>

#include "drafting_host/dwg/common_values.h"
#include "drafting_host/dwg/entities.h"
#include "drafting_host/dwg/objects.h"
#include "dwg/changed_sample.h"
#include "dwg/made_objects.h"

namespace brenvik {
namespace {

using namespace dwg;

class DwgContradictions : public testing::Test {
  protected:
    void SetUp() override {
        if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    }
    static DrawingData Flipped(HandleValue handle, std::size_t bit) {
        return test::ChangedSample("AC1015", handle,
                                   [&](std::string& bits) { bits[bit] = bits[bit] == '1' ? '0' : '1'; });
    }
};

int FlagsOfVertex(const DrawingData& data, HandleValue handle) {
    for (const BlockData& block : data.blocks)
        for (const EntityData& entity : block.entities) {
            const auto* const line = std::get_if<PolylineData>(&entity.geometry);
            if (line == nullptr) continue;
            for (const auto& vertex : line->vertices)
                if (vertex.handle == handle) return vertex.flags;
        }
    return -1;
}

void ExpectRemark(const DrawingData& data, const std::string& text) {
    EXPECT_TRUE(std::ranges::any_of(data.notes, [&](const ReadNote& note) {
        return !note.dataLost && note.text == text;
    })) << text;
}

TEST_F(DwgContradictions, AVertexHasTheFlagsOfItsKind) {
    constexpr std::size_t flags = 92;
    const DrawingData mesh = Flipped(0x426, flags);
    EXPECT_EQ(FlagsOfVertex(mesh, 0x426), 192);
    ExpectRemark(mesh, "VERTEX (handle 426) has the flags 64, which contradict its kind: 192 is taken");
    const DrawingData line = Flipped(0x42F, flags + 2);
    EXPECT_EQ(FlagsOfVertex(line, 0x42F), 32);
    ExpectRemark(line, "VERTEX (handle 42F) has the flags 0, which contradict its kind: 32 is taken");
}

TEST_F(DwgContradictions, AVertexOfASmoothingThatThePolylineDoesntHaveIsTold) {
    test::ExpectLoss(
        Flipped(0x42F, 92 + 4),
        "POLYLINE_3D (handle 42B): its vertex (handle 42F) has the flags 40 of a smoothing that the "
        "polyline doesn't have");
}

TEST(DwgTransparency, HasAValueOnlyWhereItIsItsOwn) {
    for (const std::uint32_t sound : {0U, 0x01000000U, 0x02000066U, 0x020000FFU})
        EXPECT_TRUE(IsTransparency(sound));
    for (const std::uint32_t odd : {0x01000008U, 0x00000066U, 0x02010066U, 0x03000000U, 0x40000000U})
        EXPECT_FALSE(IsTransparency(odd)) << odd;
}

/// What is told of extended data of a layer.
std::string ToldOf(const RawXData& raw, const char* what = "layer",
                   const char* application = "AcCmTransparency") {
    Reading reading;
    const Sections sections;
    const Texts texts;
    Sections none;
    const ObjectMap map(none);
    const Kinds kinds(none, texts);
    const Header header;
    Names names;
    names.applications[0x12] = application;
    Links links;
    CommonValues({sections, texts, map, kinds, header, names, links, reading}).XDataOf(what, 0x9F4, {raw});
    return reading.data.notes.empty() ? "" : reading.data.notes[0].text;
}

XDataItem Item(int code, XDataValue value) { return {static_cast<std::int16_t>(code), std::move(value)}; }

TEST(DwgExtendedData, WhatTheyCantHoldIsTold) {
    RawXData sound;
    sound.application = 0x12;
    sound.items = {Item(1002, std::string("{")), Item(1071, std::int32_t{0x02000066}),
                   Item(1002, std::string("}"))};
    EXPECT_EQ(ToldOf(sound), "");
    const std::string what = "layer (handle 9F4): the extended data of \"AcCmTransparency\" hold ";
    RawXData odd = sound;
    odd.items[1] = Item(1071, std::int32_t{0x40000000});
    EXPECT_EQ(ToldOf(odd), what + "a transparency that there isn't: they may be damaged");
    odd = sound;
    odd.items[0] = Item(1002, std::string("}"));
    EXPECT_EQ(ToldOf(odd), what + "brackets that don't match: they may be damaged");
    odd.items.clear();
    odd.items.push_back(Item(1071, std::int32_t{0x00040022}));
    EXPECT_EQ(ToldOf(odd, "STYLE", "ACAD"),
              "STYLE (handle 9F4): the extended data of \"ACAD\" hold marks of a font that there aren't: "
              "they may be "
              "damaged");
    odd.items[0] = Item(1071, std::int32_t{0x03000031});
    EXPECT_EQ(ToldOf(odd, "STYLE", "ACAD"), "");
    EXPECT_NE(ToldOf(odd, "layer", "ACCMTRANSPARENCY"), "") << "as release 14 has names";
    odd = sound;
    odd.absurd = 1e-313;
    EXPECT_EQ(ToldOf(odd).substr(0, what.size() + 10), what + "the number");
}

TEST_F(DwgContradictions, ALayersTransparencyThatThereIsntIsTold) {
    test::ExpectLoss(
        Flipped(0x9F4, 231),
        "layer (handle 9F4): the extended data of \"AcCmTransparency\" hold a transparency that there "
        "isn't: they may be damaged");
}

}  // namespace
}  // namespace brenvik
