// Variables of a drawing that can't be: each is told, also where the section's checksum is right.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>

#include "drafting_host/dwg/dwg_reader.h"
#include "drafting_host/dwg/header.h"
#include "drafting_host/dwg/header_checks.h"
#include "support/sample_files.h"

namespace brenvik {
namespace {

using namespace dwg;

std::string Sample(const std::string& name) {
    return test::FileBytes(test::SampleFolder() / "dwg" / (name + ".dwg"));
}

/// What is told of a drawing's variables, as lines, when one bit of their data is changed.
std::string ToldWithBit(const std::string& name, std::size_t dataAt, std::size_t bit) {
    Sections sections = Unpack(Sample(name), "job.dwg");
    char& byte = sections.header[dataAt + bit / 8];
    byte = static_cast<char>(byte ^ (0x80 >> (bit % 8)));
    const Texts texts(sections.release, sections.codePage);
    DrawingData data;
    ReadHeader(sections, texts, data);
    std::string told;
    for (const ReadNote& note : sections.notes) told += note.text + "\n";
    return told;
}

class DwgHeader : public testing::Test {
  protected:
    void SetUp() override {
        if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    }
};

TEST_F(DwgHeader, OfSoundDrawingsNothingIsTold) {
    for (const auto& entry : std::filesystem::directory_iterator(test::SampleFolder() / "dwg")) {
        Sections sections = Unpack(test::FileBytes(entry.path()), "job.dwg");
        const Texts texts(sections.release, sections.codePage);
        const ObjectMap map(sections);
        const Kinds kinds(sections, texts);
        DrawingData data;
        const Header header = ReadHeader(sections, texts, data);
        EXPECT_TRUE(sections.notes.empty()) << entry.path() << sections.notes.front().text;
        EXPECT_FALSE(header.handles.at("MODEL") == 0 || header.handles.at("BYLAYER") == 0) << entry.path();
        Links links;
        CheckHandles(header, sections, texts, map, kinds, links);
        Reading reading;
        links.Tell(reading);
        EXPECT_TRUE(reading.data.notes.empty()) << entry.path() << reading.data.notes.front().text;
    }
}

TEST_F(DwgHeader, VariablesThatEndElsewhereThanTheirSectionAreTold) {
    constexpr std::size_t sizeAt = 16, sumBytes = 2, added = 20;
    for (const auto& [name, dataAt] : {std::pair{"ACadSharp__sample_AC1014", 20},
                                       {"ACadSharp__sample_AC1018", 20},
                                       {"ACadSharp__sample_AC1021", 20},
                                       {"ACadSharp__sample_AC1032", 24}}) {
        Sections sections = Unpack(Sample(name), "job.dwg");
        const std::size_t size = LongAt(sections.header, sizeAt);
        sections.header[sizeAt] = static_cast<char>((size + added) & 0xFFU);
        sections.header[sizeAt + 1] = static_cast<char>((size + added) >> 8U);
        sections.header.insert(static_cast<std::size_t>(dataAt) + size, std::string(added, '\0'));
        const Texts texts(sections.release, sections.codePage);
        DrawingData data;
        ReadHeader(sections, texts, data);
        EXPECT_TRUE(std::ranges::any_of(sections.notes, [](const ReadNote& note) {
            return note.dataLost && note.text.starts_with("the drawing's variables end ") &&
                   note.text.ends_with(" bits before their section: what was read of them may be wrong");
        })) << name;
        EXPECT_LE(size + added + sumBytes, sections.header.size());
    }
}

TEST_F(DwgHeader, TimesAreLocalUpToRelease14AndUniversalSince) {
    const DrawingData old = ReadDwg(Sample("ACadSharp__sample_AC1014"), "job.dwg"),
                      later = ReadDwg(Sample("ACadSharp__sample_AC1015"), "job.dwg");
    EXPECT_TRUE(old.headerVariables.contains("$TDCREATE") && !old.headerVariables.contains("$TDUCREATE"));
    EXPECT_TRUE(later.headerVariables.contains("$TDUUPDATE") && !later.headerVariables.contains("$TDUPDATE"));
    // An hour apart, as in the DXF of that drawing.
    EXPECT_EQ(old.headerVariables.at("$TDCREATE").front().second, "2459632.4743402777");
    EXPECT_EQ(later.headerVariables.at("$TDUCREATE").front().second, "2459632.432673611");
}

TEST_F(DwgHeader, LaterVariablesThatBreakOffAreTold) {
    EXPECT_NE(ToldWithBit("ACadSharp__sample_AC1032", 24, 6482).find("the drawing's variables break off"),
              std::string::npos);
}

TEST_F(DwgHeader, ReferencesThatLeadNowhereOrToAnotherKindAreTold) {
    Sections sections = Unpack(Sample("ACadSharp__sample_AC1032"), "job.dwg");
    const Texts texts(sections.release, sections.codePage);
    const ObjectMap map(sections);
    const Kinds kinds(sections, texts);
    DrawingData data;
    Header header = ReadHeader(sections, texts, data);
    constexpr HandleValue layer = 0x10, nobody = 0xFFFE;
    header.handles["CLAYER"] = 0;
    header.handles["DIMSTYLE"] = layer;
    header.handles["GROUPS"] = nobody;
    header.handles["COLORS"] = 0;  // not every drawing has it
    Links links;
    CheckHandles(header, sections, texts, map, kinds, links);
    Reading reading;
    links.Tell(reading);
    std::vector<std::string> told;
    for (const ReadNote& note : reading.data.notes) told.push_back(note.text);
    EXPECT_EQ(told, (std::vector<std::string>{
                        "the drawing's head refers to a DICTIONARY (handle FFFE), which the drawing doesn't "
                        "have: the reference is left out",
                        "$DIMSTYLE refers to a DIMSTYLE (handle 10), which the drawing doesn't have: the "
                        "reference is left out",
                        "$CLAYER refers to a LAYER without a handle, which the drawing doesn't have: the "
                        "reference is left out"}));
}

TEST(DwgVariables, ValuesThatCanNotBeAreLeftOutAndTold) {
    Values values;
    values.whole = {{"LUNITS", 2}, {"INSUNITS", 4}, {"AUNITS", 9}, {"DIMADEC", -1}};
    values.reals = {{"LTSCALE", {1}},           {"TEXTSIZE", {-2.5}},       {"EXTMIN", {1e20, 1e20, 1e20}},
                    {"INSBASE", {0, 3e187, 0}}, {"TDUCREATE", {2459632.4}}, {"TDUUPDATE", {-12}},
                    {"TDINDWG", {0.4}},         {"UCSXDIR", {1, 0, 0}},     {"UCSYDIR", {0, 1, 0.5}},
                    {"PUCSXDIR", {1, 0, 0}},    {"PUCSYDIR", {0, 1, 0}}};
    values.texts = {{"VERSIONGUID", "{BB84A2F4-4D93-4E29-9D54-BB0123456789}"},
                    {"FINGERPRINTGUID", "{BB84A2F4-4D93-4E29-9D5G-BB0123456789}"},
                    {"MENU", "acad"}};
    const std::vector<std::string> doubts = DropImpossible(values);
    EXPECT_EQ(
        doubts,
        (std::vector<std::string>{
            "the variable $AUNITS is 9 where 0 to 4 was expected: it is left out",
            "the variable $INSBASE is 3e+187 where a number of a drawing's size was expected: it is left out",
            "the variable $TDUUPDATE is -12.0 where a time was expected: it is left out",
            "the variable $TEXTSIZE is -2.5 where 0 or more was expected: it is left out",
            "the variables $UCSXDIR and $UCSYDIR aren't at right angles or not of length 1: the axes of the "
            "world are taken",
            "the variable $FINGERPRINTGUID is \"{BB84A2F4-4D93-4E29-9D5G-BB0123456789}\" where an identifier "
            "was expected: it is left out"}));
    EXPECT_EQ(values.whole.size(), 3U);
    EXPECT_FALSE(values.whole.contains("AUNITS"));
    EXPECT_EQ(values.reals.size(), 6U);
    EXPECT_TRUE(values.reals.contains("EXTMIN") && values.reals.contains("PUCSXDIR") &&
                !values.reals.contains("UCSXDIR"));
}

TEST_F(DwgHeader, ANextHandleThatIsUsedIsTold) {
    Sections sections = Unpack(Sample("ACadSharp__empty"), "job.dwg");
    const ObjectMap map(sections);
    Reading reading;
    CheckHandleSeed(0x10, map, reading);
    ASSERT_EQ(reading.data.notes.size(), 1U);
    EXPECT_TRUE(reading.data.notes[0].text.starts_with("the variable $HANDSEED is 10 where more than "));
    CheckHandleSeed(0xFFFF, map, reading);
    EXPECT_EQ(reading.data.notes.size(), 1U);
}

TEST_F(DwgHeader, PropertiesThatEndElsewhereThanTheirSectionAreTold) {
    for (const char* name : {"ACadSharp__sample_AC1018", "ACadSharp__sample_AC1021", "ACadSharp__empty"}) {
        const auto told = [&](const std::function<void(std::string&)>& change) {
            Sections sections = Unpack(Sample(name), "job.dwg");
            change(sections.summary);
            const Texts texts(sections.release, sections.codePage);
            DrawingData data;
            ReadHeader(sections, texts, data);
            return sections.notes.empty() ? std::string() : sections.notes.front().text;
        };
        EXPECT_EQ(told([](std::string&) {}), "") << name;
        const std::string start = "the drawing's properties may be wrong from byte ";
        EXPECT_TRUE(told([](std::string& summary) { summary[0] = 9; }).starts_with(start)) << name;
        EXPECT_TRUE(told([](std::string& summary) { summary += summary; }).starts_with(start)) << name;
        EXPECT_TRUE(told([](std::string& summary) { summary.resize(20); }).starts_with(start)) << name;
    }
}

}  // namespace
}  // namespace brenvik
