// What a drawing keeps as text of a binary file: the same groups as in the DXF text of the same drawing.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>

#include "base/handle_text.h"
#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/text.h"
#include "drafting_host/dwg/dwg_reader.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/reading/dxf_reader.h"
#include "drafting_host/dxf/texts/dxf_text.h"
#include "drafting_host/dxf/writing/dxf_writer.h"
#include "support/sample_files.h"

namespace brenvik {
namespace {

/// Groups that refer to objects which aren't taken along: visual styles, what an extension dictionary holds.
const std::set<int> Referring = {5, 330, 331, 332, 333, 345, 346, 348, 360, 361};

bool IsNumber(int code) { return (code >= 10 && code < 100) || (code >= 110 && code < 300) || code >= 1010; }

/// Each group in one line, in order of the lines; numbers to nine digits.
std::multiset<std::string> LinesOf(std::string_view groups) {
    const TextDecoder decoder(TextDecoder::Bytes::Utf8, 1252);
    std::multiset<std::string> lines;
    bool inBrackets = false;
    GroupWalk walk(groups);
    while (walk.Next()) {
        const std::string value = Trim(walk.Value());
        if (walk.Code() == 102) inBrackets = value.starts_with('{');
        if (inBrackets || walk.Code() == 102 || Referring.contains(walk.Code())) continue;
        std::array<char, 40> number{};
        if (IsNumber(walk.Code()) && walk.Code() != 100)
            std::snprintf(number.data(), number.size(), "%.9g", LenientNumber(value) + 0.0);
        const std::string shown = number[0] == 0 ? decoder.Decode(value) : std::string(number.data());
        lines.insert(std::to_string(walk.Code()) + " " + (shown == "-0" ? "0" : shown));
    }
    return lines;
}

std::string Joined(const std::multiset<std::string>& lines) {
    std::string all;
    for (const std::string& line : lines) all += line + "; ";
    return all;
}

std::string NameIn(std::string_view groups) {
    GroupWalk walk(groups);
    while (walk.Next())
        if (walk.Code() == 2) return Trim(walk.Value());
    return {};
}

class DwgKept : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
        const std::string name = GetParam();
        const auto bytes = [](const std::string& kind, const std::string& file) {
            return test::FileBytes(test::SampleFolder() / kind / (file + "." + kind));
        };
        mDwg = ReadDwg(bytes("dwg", name), name + ".dwg");
        const std::string ascii = bytes("dxf", name + "_ascii");
        mDxf = ReadDxf(ascii.empty() ? bytes("dxf", name) : ascii, name + ".dxf");
    }

    /// The entries of a table by name.
    static std::map<std::string, std::string> EntriesOf(const DrawingData& data, std::string_view table) {
        std::map<std::string, std::string> entries;
        for (const KeptTable& each : data.file->tables) {
            if (each.name != table) continue;
            for (const KeptRecord& entry : each.entries)
                entries[NameIn(entry.groups) + HandleToText(entry.handle)] = entry.groups;
        }
        return entries;
    }

    DrawingData mDwg, mDxf;
};

/// One drawing was saved a second time from another place on the screen.
std::string WithoutPlace(std::multiset<std::string> lines) {
    if (std::string_view(testing::UnitTest::GetInstance()->current_test_info()->value_param())
            .find("geoloc") != std::string_view::npos)
        std::erase_if(lines, [](const std::string& line) {
            return line.starts_with("12 ") || line.starts_with("22 ") || line.starts_with("40 ");
        });
    return Joined(lines);
}

TEST_P(DwgKept, ViewsAndStylesOfShapeFilesAreEqual) {
    for (const char* table : {"VPORT", "VIEW", "STYLE"}) {
        const auto own = EntriesOf(mDwg, table), twin = EntriesOf(mDxf, table);
        EXPECT_EQ(own.size(), twin.size()) << table;
        for (const auto& [name, groups] : twin) {
            ASSERT_TRUE(own.contains(name)) << table << " " << name;
            EXPECT_EQ(WithoutPlace(LinesOf(own.at(name))), WithoutPlace(LinesOf(groups)))
                << table << " " << name;
        }
    }
}

TEST_P(DwgKept, LineTypesWithTextsAndShapesAndTextStylesAreEqual) {
    const auto compare = [](const auto& own, const auto& twin) {
        for (const auto& entry : twin) {
            const auto found = std::ranges::find_if(
                own, [&](const auto& each) { return EqualsIgnoreCase(each.name, entry.name); });
            ASSERT_NE(found, own.end()) << entry.name;
            if (!found->kept) continue;
            EXPECT_EQ(Joined(LinesOf(found->kept->groups)), Joined(LinesOf(entry.kept->groups)))
                << entry.name;
        }
    };
    compare(mDwg.linetypes, mDxf.linetypes);
    compare(mDwg.styles, mDxf.styles);
    // Those without a text of their own have dashes alone.
    for (const LinetypeData& linetype : mDxf.linetypes) {
        const auto own = std::ranges::find(mDwg.linetypes, linetype.name, &LinetypeData::name);
        const bool isComplex = linetype.kept->groups.find("\r\n340\r\n") != std::string::npos;
        EXPECT_EQ(static_cast<bool>(own->kept), isComplex) << linetype.name;
    }
}

TEST_P(DwgKept, SheetsAreEqual) {
    std::size_t count = 0;
    for (const KeptRecord& object : mDxf.file->objects) {
        if (object.name != "LAYOUT") continue;
        const auto own = std::ranges::find(mDwg.file->objects, object.handle, &KeptRecord::handle);
        ASSERT_NE(own, mDwg.file->objects.end()) << HandleToText(object.handle);
        EXPECT_EQ(Joined(LinesOf(own->groups)), Joined(LinesOf(object.groups)));
        ++count;
    }
    EXPECT_GE(count, 2U);
    EXPECT_EQ(count, mDwg.file->objects.size());
}

/// As the drawing is when its bodies have been read: as text.
DrawingData WithBodiesAsText(DrawingData data) {
    for (BlockData& block : data.blocks)
        for (EntityData& entity : block.entities)
            if (auto* const body = std::get_if<AcisData>(&entity.geometry)) body->text = "400 0 1 0\n";
    return data;
}

/// A drawing saved again has what was read.
TEST_P(DwgKept, SavedAndReadAgainTheSheetsAndViewsAreThere) {
    const DrawingData again = ReadDxf(WriteDxf(WithBodiesAsText(mDwg)), "again.dxf");
    for (const KeptRecord& object : mDwg.file->objects) {
        const auto saved = std::ranges::find(again.file->objects, object.handle, &KeptRecord::handle);
        ASSERT_NE(saved, again.file->objects.end());
        EXPECT_EQ(Joined(LinesOf(saved->groups)), Joined(LinesOf(object.groups)));
        EXPECT_EQ(saved->owner, again.fileHandles.at("DICTIONARY ACAD_LAYOUT"));
        EXPECT_NE(saved->owner, 0U);
    }
    EXPECT_EQ(EntriesOf(again, "VPORT").size(), EntriesOf(mDwg, "VPORT").size());
    EXPECT_EQ(EntriesOf(again, "VIEW").size(), EntriesOf(mDwg, "VIEW").size());
}

/// What a fill's number is for a true colour, each program reckons for itself.
std::string WithoutFillNumber(std::multiset<std::string> lines) {
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("63 "); });
    return Joined(lines);
}

TEST_P(DwgKept, WhatTextsAndViewportsHaveBesidesIsEqual) {
    std::map<HandleValue, const EntityData*> own;
    for (const BlockData& block : mDwg.blocks)
        for (const EntityData& entity : block.entities) own.emplace(entity.handle, &entity);
    std::size_t compared = 0;
    for (const BlockData& block : mDxf.blocks) {
        for (const EntityData& entity : block.entities) {
            const bool isCompared = std::holds_alternative<MTextData>(entity.geometry) ||
                                    std::holds_alternative<ViewportData>(entity.geometry) ||
                                    std::holds_alternative<SplineData>(entity.geometry);
            const auto found = own.find(entity.handle);
            if (!isCompared || found == own.end()) continue;
            const auto linesOf = [](const EntityData& each) {
                return WithoutFillNumber(LinesOf(each.kept ? each.kept->own : std::string()));
            };
            // A spline through points has no tolerances in the binary file.
            if (std::holds_alternative<SplineData>(entity.geometry) && linesOf(*found->second).empty())
                continue;
            EXPECT_EQ(linesOf(*found->second), linesOf(entity)) << HandleToText(entity.handle);
            ++compared;
        }
    }
    EXPECT_TRUE(compared > 0 || mDxf.blocks[0].entities.size() < 20);
}

TEST_P(DwgKept, BlocksHaveTheirUnitsAndDescriptions) {
    for (const BlockData& block : mDxf.blocks) {
        if (block.name.starts_with("*U")) continue;
        const auto own = std::ranges::find(mDwg.blocks, block.name, &BlockData::name);
        ASSERT_NE(own, mDwg.blocks.end()) << block.name;
        EXPECT_EQ(Joined(LinesOf(own->kept->record.own)), Joined(LinesOf(block.kept->record.own)))
            << block.name;
        const auto descriptionOf = [](const std::string& begin) {
            GroupWalk walk(begin);
            while (walk.Next())
                if (walk.Code() == 4) return Trim(walk.Value());
            return std::string();
        };
        EXPECT_EQ(descriptionOf(own->kept->begin), descriptionOf(block.kept->begin)) << block.name;
    }
}

TEST_P(DwgKept, VariablesAreThose) {
    // What a drawing has a member for is compared elsewhere; the others differ from save to save, name what
    // isn't taken along, or don't stand in the binary file.
    const std::set<std::string> others = {
        "$ACADVER",          "$ACADMAINTVER",    "$DWGCODEPAGE",   "$HANDSEED",
        "$CLAYER",           "$MEASUREMENT",     "$INSUNITS",      "$UCSNAME",
        "$UCSORG",           "$UCSXDIR",         "$UCSYDIR",       "$LASTSAVEDBY",
        "$VERSIONGUID",      "$TDUUPDATE",       "$TDINDWG",       "$TDUSRTIMER",
        "$TDCREATE",         "$TDUPDATE",        "$DIMSTYLE",      "$CMLSTYLE",
        "$CMATERIAL",        "$INTERFEREOBJVS",  "$INTERFEREVPVS", "$CECOLOR",
        "$REQUIREDVERSIONS", "$FINGERPRINTGUID", "$MENU"};
    std::map<std::string, std::string> own;
    for (const auto& [name, groups] : mDwg.file->header) own[name] = groups;
    for (const auto& [name, values] : mDwg.headerVariables) {
        std::string text;
        for (const auto& [code, value] : values) AppendGroup(text, code, value);
        own[name] = text;
    }
    for (const auto& [name, groups] : mDxf.file->header) {
        if (others.contains(name)) continue;
        EXPECT_EQ(Joined(LinesOf(own[name])), Joined(LinesOf(groups))) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(OfEachRelease, DwgKept,
                         testing::Values("ACadSharp__sample_AC1015", "ACadSharp__sample_AC1018",
                                         "ACadSharp__sample_AC1024", "ACadSharp__sample_AC1027",
                                         "ACadSharp__sample_AC1032", "ACadSharp__BLOCKFLIPPARAMETER",
                                         "ACadSharp__BLOCKVISIBILITYPARAMETER", "ACadSharp__geoloc"));

TEST(DwgSaved, KeepsTheReleaseThatTheDrawingHas) {
    if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    const auto savedAs = [](const std::string& name) {
        const std::string bytes = test::FileBytes(test::SampleFolder() / "dwg" / (name + ".dwg"));
        return ReadDxf(WriteDxf(WithBodiesAsText(ReadDwg(bytes, name))), "again.dxf").version;
    };
    EXPECT_EQ(
        savedAs("ACadSharp__geoloc"),
        ReadDwg(test::FileBytes(test::SampleFolder() / "dwg" / "ACadSharp__geoloc.dwg"), "geoloc").version);
    EXPECT_EQ(savedAs("ACadSharp__sample_AC1014"), "AC1015") << "older ones become release 2000";
    EXPECT_EQ(savedAs("ACadSharp__sample_AC1021"), "AC1021");
    EXPECT_EQ(savedAs("ACadSharp__sample_AC1032"), "AC1024") << "bodies are written as text";
}

}  // namespace
}  // namespace brenvik
