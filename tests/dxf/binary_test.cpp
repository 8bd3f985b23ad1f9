// Binary DXF gives the drawing that the same file as text gives, and bodies that stand apart are joined.
// The host's own "Handle" must be declared before the modeller makes a macro of that word.
#include "dxf_texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "base/failure.h"
#include "drafting_host/acis/acis_text.h"
#include "drafting_host/dxf/writing/dxf_writer.h"
#include "support/binary_dxf.h"
#include "support/sample_files.h"

namespace brenvik {
namespace {

using test::BinaryCodes;
using test::BinaryDxf;
using test::Entities;
using test::Groups;
using test::ModelSpace;
using test::NotesOf;
using test::Read;
using test::Section;

const std::string allKinds =
    Section("HEADER", "9 $ACADVER|1 AC1015|9 $INSUNITS|70 4|9 $LTSCALE|40 0.30000000000000004") +
    Section("TABLES", "0 TABLE|2 LAYER|0 LAYER|2 Parts|70 0|62 -3|290 0|370 25|0 ENDTAB") +
    Entities(
        "0 LINE|5 1F|8 Parts|62 1|10 -0.1|20 1e-300|30 123456789.125|11 1|21 2|31 3"
        "|1001 BRENVIK|1000 a name|1004 00FFA0|1005 1F|1010 1|1020 2|1030 3|1040 0.1|1070 -7|1071 -70000"
        "|0 LWPOLYLINE|90 2|70 1|43 0.5|10 1|20 2|42 0.25|10 3|20 4|210 0|220 0|230 -1"
        "|0 TEXT|10 0|20 0|40 2|1 caret ^ I and \\U+00E4|50 33.3"
        "|0 SPLINE|71 1|40 0|40 0|40 1|40 1|10 0|20 0|10 1|20 1|160 5000000000|999 a remark");

/// The drawing without what hangs on the form of the file.
DrawingData Comparable(DrawingData data) {
    for (BlockData& block : data.blocks) {
        for (EntityData& entity : block.entities)
            if (auto* const body = std::get_if<AcisData>(&entity.geometry)) body->firstLine = 0;
    }
    for (auto& [name, values] : data.headerVariables) {
        for (auto& [code, text] : values)
            if (code >= 10) text = std::to_string(std::stod(text));
    }
    data.notes.clear();
    return data;
}

TEST(BinaryDxfFiles, OfTwoByteCodesGiveTheSameDrawing) {
    const DrawingData binary = Read(BinaryDxf(allKinds));
    EXPECT_EQ(NotesOf(binary), "");
    EXPECT_EQ(ModelSpace(binary).size(), 4U);
    EXPECT_TRUE(Comparable(binary) == Comparable(Read(allKinds)));
}

TEST(BinaryDxfFiles, OfOneByteCodesGiveTheSameDrawing) {
    EXPECT_TRUE(Comparable(Read(BinaryDxf(allKinds, BinaryCodes::Short))) == Comparable(Read(allKinds)));
}

TEST(BinaryDxfFiles, TakeCaretsForThemselves) {
    const std::string text = Entities("0 TEXT|10 0|20 0|40 1|1 A^ B^JC");
    std::string binary = BinaryDxf(text);
    binary.replace(binary.find("A^B\nC"), 5, "A^B^J");
    const auto textOf = [](const DrawingData& data) {
        return std::get<TextData>(ModelSpace(data).at(0).geometry).text;
    };
    EXPECT_EQ(textOf(Read(BinaryDxf(text))), "A^B\nC");
    EXPECT_EQ(textOf(Read(binary)), "A^B^J");
    EXPECT_EQ(textOf(Read(text)), "A^B\nC");
}

TEST(BinaryDxfFiles, DecodeTheirTextsByPageOrRelease) {
    const std::string entities = Entities("0 TEXT|10 0|20 0|40 1|1 \xC3\xA4");
    const auto textOf = [&](const char* version) {
        const std::string header =
            Section("HEADER", std::string("9 $ACADVER|1 ") + version + "|9 $DWGCODEPAGE|3 ANSI_1252");
        const DrawingData data = Read(BinaryDxf(header + entities));
        return std::get<TextData>(ModelSpace(data).at(0).geometry).text;
    };
    EXPECT_EQ(textOf("AC1015"), "\xC3\x83\xC2\xA4");
    EXPECT_EQ(textOf("AC1021"), "\xC3\xA4");
}

std::string FailureOf(const std::string& content) {
    try {
        Read(content);
    } catch (const Failure& failure) {
        return failure.detail();
    }
    return "no failure";
}

TEST(BinaryDxfFiles, DamagedByATransferAsTextAreRefused) {
    std::string binary = BinaryDxf(allKinds);
    binary.erase(18, 1);
    const std::string told = FailureOf(binary);
    EXPECT_EQ(told.find("job.dxf, byte 18: expected the end of a binary DXF drawing's mark"), 0U) << told;
}

TEST(BinaryDxfFiles, WithACodeOfNoReleaseAreRefusedWithThePlace) {
    const std::string begin("AutoCAD Binary DXF\r\n\x1A\0\0\0SECTION\0\2\0ENTITIES\0", 43);
    const std::string told = FailureOf(begin + std::string("\x52\0\0\0", 4));
    EXPECT_EQ(told, "job.dxf, byte 43: expected a group code of a DXF drawing, found 82");
    EXPECT_EQ(FailureOf(std::string("AutoCAD Binary DXF\r\n\x1A\0\1\0SECTION\0", 32)),
              "job.dxf, byte 22: expected group 0 with the name of a section or the end of the file, found "
              "group 1");
}

TEST(BinaryDxfFiles, TellPlacesInBytes) {
    const DrawingData data = Read(BinaryDxf(Entities("0 CIRCLE|10 0|20 0|40 0|0 POINT|10 0|20 0")));
    EXPECT_EQ(NotesOf(data), "0: byte 43: CIRCLE left out: a radius above 0 was expected\n");
    EXPECT_EQ(ModelSpace(data).size(), 1U);
}

TEST(BinaryDxfFiles, CutAtEachOf200PlacesTellItOrHaveNothingMore) {
    const std::string binary = BinaryDxf(allKinds);
    for (std::size_t i = 1; i < 200; ++i) {
        const std::string cut = binary.substr(0, std::max<std::size_t>(i * binary.size() / 200, 22));
        try {
            EXPECT_NE(NotesOf(Read(cut)).find("the file breaks off"), std::string::npos) << cut.size();
        } catch (const Failure& failure) {
            EXPECT_LT(cut.size(), 40U) << failure.detail();
        }
    }
}

TEST(BinaryDxfFiles, WithRandomBytesChangedNeitherCrashNorHang) {
    std::mt19937 random(11);
    const std::string sound = BinaryDxf(WriteDxf(Read(allKinds)));
    int refused = 0;
    for (int i = 0; i < 1000; ++i) {
        std::string binary = sound;
        for (int k = 0; k < 2; ++k) binary[random() % binary.size()] = static_cast<char>(random());
        try {
            Read(binary);
        } catch (const Failure&) {
            ++refused;
        }
    }
    EXPECT_LT(refused, 1000);
}

class DxfTwins : public testing::TestWithParam<const char*> {};

TEST_P(DxfTwins, GiveTheSameDrawingAsBinary) {
    if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    const std::string text = test::FileBytes(test::SampleFolder() / "dxf" / GetParam());
    const DrawingData expected = Comparable(Read(text));
    EXPECT_TRUE(Comparable(Read(BinaryDxf(text))) == expected);
}

INSTANTIATE_TEST_SUITE_P(Samples, DxfTwins,
                         testing::Values("ACadSharp__sample_AC1015_ascii.dxf",
                                         "ACadSharp__sample_AC1032_ascii.dxf",
                                         "ezdxf__acistools_3dsolids.dxf", "sample-files__3Dshapes.dxf"),
                         [](const auto& file) { return "File" + std::to_string(file.index); });

/// Values of the other program's binary file differ from those of its ASCII twin by its rounding alone.
void ExpectClose(const EntityData& binary, const EntityData& text) {
    EXPECT_EQ(binary.geometry.index(), text.geometry.index());
    EXPECT_EQ(binary.layer, text.layer);
    EXPECT_EQ(binary.color, text.color);
    EXPECT_EQ(binary.xdata.size(), text.xdata.size());
    if (const auto* line = std::get_if<LineData>(&text.geometry)) {
        EXPECT_NEAR(std::get<LineData>(binary.geometry).end.x, line->end.x,
                    1e-12 * (1 + std::abs(line->end.x)));
        EXPECT_NEAR(std::get<LineData>(binary.geometry).end.y, line->end.y,
                    1e-12 * (1 + std::abs(line->end.y)));
    }
    if (const auto* circle = std::get_if<CircleData>(&text.geometry)) {
        EXPECT_NEAR(std::get<CircleData>(binary.geometry).radius, circle->radius, 1e-12 * circle->radius);
    }
    if (const auto* body = std::get_if<AcisData>(&text.geometry)) {
        EXPECT_EQ(std::get<AcisData>(binary.geometry).text, body->text);
    }
    if (const auto* words = std::get_if<MTextData>(&text.geometry)) {
        EXPECT_EQ(std::get<MTextData>(binary.geometry).text, words->text);
    }
}

TEST(BinaryDxfSample, HasWhatItsAsciiTwinHas) {
    if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    const auto read = [](const char* form) {
        const std::string name = std::string("ACadSharp__sample_AC1015_") + form + ".dxf";
        return ReadDxf(test::FileBytes(test::SampleFolder() / "dxf" / name), name);
    };
    const DrawingData binary = read("binary"), text = read("ascii");
    EXPECT_EQ(binary.notes.size(), text.notes.size()) << NotesOf(binary);
    EXPECT_EQ(binary.layers.size(), text.layers.size());
    EXPECT_EQ(binary.groups.size(), text.groups.size());
    ASSERT_EQ(binary.blocks.size(), text.blocks.size());
    for (std::size_t b = 0; b < text.blocks.size(); ++b) {
        ASSERT_EQ(binary.blocks[b].entities.size(), text.blocks[b].entities.size()) << text.blocks[b].name;
        for (std::size_t e = 0; e < text.blocks[b].entities.size(); ++e) {
            SCOPED_TRACE(text.blocks[b].name + " entity " + std::to_string(e));
            ExpectClose(binary.blocks[b].entities[e], text.blocks[b].entities[e]);
        }
    }
}

std::vector<std::string> BodiesOf(const DrawingData& data) {
    std::vector<std::string> bodies;
    for (const BlockData& block : data.blocks) {
        for (const EntityData& entity : block.entities) {
            if (const auto* const body = std::get_if<AcisData>(&entity.geometry))
                bodies.push_back(body->text);
        }
    }
    return bodies;
}

const std::string solid = "0 3DSOLID|5 3A|100 AcDbModelerGeometry|290 1";
const std::string region = "|0 REGION|5 3B|100 AcDbModelerGeometry|290 1";
const std::string bodyBytes = "ACIS BinaryFile";
const std::string bodyHex = "41434953204269|310 6E61727946696C65";

std::string Drawing(const std::string& records) {
    return Section("HEADER", "9 $ACADVER|1 AC1027") + Section("ENTITIES", solid + region) +
           Section("ACDSDATA", records) + Groups("0 EOF");
}

std::string BodyRecord(const std::string& handle, const std::string& length = "15") {
    return "0 ACDSRECORD|90 1|2 AcDbDs::ID|280 10|320 " + handle + "|2 ASM_Data|280 15|94 " + length +
           "|310 " + bodyHex;
}

TEST(DxfBodyData, AreJoinedByTheirHandles) {
    const DrawingData data = Read(Drawing("0 ACDSSCHEMA|90 0|1 x|" + BodyRecord("FF") + "|" +
                                          BodyRecord("3b") + "|" + BodyRecord("3A")));
    EXPECT_EQ(BodiesOf(data), (std::vector{bodyBytes, bodyBytes}));
    EXPECT_EQ(NotesOf(data), "");
    EXPECT_EQ(std::get<AcisData>(ModelSpace(data).at(1).geometry).kind, AcisData::Kind::Region);
    const DrawingData binary = Read(BinaryDxf(Drawing(BodyRecord("3A") + "|" + BodyRecord("3B"))));
    EXPECT_EQ(BodiesOf(binary), (std::vector{bodyBytes, bodyBytes}));
}

TEST(DxfBodyData, ThatAreMissingAreToldByHandleAndPlaceAndTheOthersArrive) {
    const DrawingData data = Read(Drawing(BodyRecord("3B")));
    EXPECT_EQ(BodiesOf(data).size(), 1U);
    EXPECT_EQ(
        NotesOf(data),
        "16: 3DSOLID (handle 3A) left out: its binary body (release 2013 and later) was expected in the "
        "section ACDSDATA, in a record (ACDSRECORD) with its handle; a drawing saved as DXF of release "
        "2010, or a STEP file, has it\n");
}

TEST(DxfBodyData, ThatAreDamagedAreTold) {
    for (const char* length : {"16", "2000000000", "many"}) {
        const DrawingData data = Read(Drawing(BodyRecord("3B") + "|" + BodyRecord("3A", length)));
        EXPECT_EQ(BodiesOf(data).size(), 1U);
        EXPECT_NE(NotesOf(data).find("3DSOLID (handle 3A) left out: its binary body is damaged: "),
                  std::string::npos)
            << NotesOf(data);
    }
    const DrawingData data = Read(Drawing(BodyRecord("3B") + "|" + BodyRecord("3A") + "|310 4G"));
    EXPECT_NE(NotesOf(data).find("holds other than pairs of hexadecimal digits"), std::string::npos);
}

TEST(DxfBodyData, OfADrawingAreItsBodies) {
    if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    const auto read = [](const char* name) {
        return ReadDxf(test::FileBytes(test::SampleFolder() / "dxf" / name), name);
    };
    for (const auto& [name, count] :
         {std::pair{"ACadSharp__sample_AC1027_ascii.dxf", 3},
          std::pair{"ACadSharp__sample_AC1032_ascii.dxf", 3}, std::pair{"ezdxf__xref_sphere.dxf", 1},
          std::pair{"sample-files__3Dboxes.dxf", 2}, std::pair{"sample-files__3Dshapes.dxf", 3}}) {
        const std::vector<std::string> bodies = BodiesOf(read(name));
        EXPECT_EQ(bodies.size(), static_cast<std::size_t>(count)) << name;
        for (const std::string& body : bodies) EXPECT_TRUE(acis::IsBinary(body)) << name;
    }
}

}  // namespace
}  // namespace brenvik
