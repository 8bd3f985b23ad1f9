// Drawings by other programs: how much of each arrives, and that it survives being written and read again.
// The host's own "Handle" must be declared before the modeller makes a macro of that word.
#include "drafting_host/dxf/reading/dxf_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>

#include "drafting_host/acis/acis_text.h"
#include "drafting_host/dxf/writing/dxf_writer.h"
#include "support/ezdxf_audit.h"
#include "support/sample_files.h"

namespace brenvik {
namespace {

struct Sample {
    std::string name;
    int solids = 0, regions = 0;
    bool isBinary = false;  ///< Its bodies, as those of release 2013 and later.
};

std::ostream& operator<<(std::ostream& out, const Sample& sample) { return out << sample.name; }

const auto samples = std::to_array<Sample>({{"ACadSharp__sample_AC1015_ascii", 2, 1},
                                            {"ACadSharp__sample_AC1015_binary", 2, 1},
                                            {"ACadSharp__sample_AC1018_ascii", 2, 1},
                                            {"ACadSharp__sample_AC1024_ascii", 2, 1},
                                            {"ACadSharp__sample_AC1027_ascii", 2, 1, true},
                                            {"ACadSharp__sample_AC1032_ascii", 2, 1, true},
                                            {"ezdxf__acistools_3dsolids", 5, 0},
                                            {"ezdxf__torus_r2000", 1, 0},
                                            {"ezdxf__torus_r2007", 1, 0},
                                            {"ezdxf__xref_sphere", 1, 0, true},
                                            {"sample-files__3Dboxes", 2, 0, true},
                                            {"sample-files__3Dshapes", 3, 0, true}});

int BodiesOf(const DrawingData& data, AcisData::Kind kind) {
    int count = 0;
    for (const BlockData& block : data.blocks) {
        for (const EntityData& entity : block.entities) {
            const auto* const body = std::get_if<AcisData>(&entity.geometry);
            if (body != nullptr && body->kind == kind) ++count;
        }
    }
    return count;
}

class DxfSamples : public testing::TestWithParam<Sample> {
  protected:
    void SetUp() override {
        if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
        mName = GetParam().name + ".dxf";
        mText = test::FileBytes(test::SampleFolder() / "dxf" / mName);
        ASSERT_FALSE(mText.empty()) << mName;
    }

    std::string mName, mText;
};

/// What the writer takes: bodies are written from their shapes, as text.
DrawingData WithoutBinaryBodies(DrawingData data) {
    for (BlockData& block : data.blocks) {
        std::erase_if(block.entities, [](const EntityData& entity) {
            const auto* const body = std::get_if<AcisData>(&entity.geometry);
            return body != nullptr && acis::IsBinary(body->text);
        });
    }
    return data;
}

TEST_P(DxfSamples, BodiesArrive) {
    const DrawingData data = ReadDxf(mText, mName);
    EXPECT_EQ(BodiesOf(data, AcisData::Kind::Solid), GetParam().solids);
    EXPECT_EQ(BodiesOf(data, AcisData::Kind::Region), GetParam().regions);
    for (const ReadNote& note : data.notes)
        EXPECT_EQ(note.text.find("left out"), std::string::npos) << note.line << ": " << note.text;
}

TEST_P(DxfSamples, BodiesArriveInClearOrBinary) {
    for (const BlockData& block : ReadDxf(mText, mName).blocks) {
        for (const EntityData& entity : block.entities) {
            const auto* const body = std::get_if<AcisData>(&entity.geometry);
            if (body == nullptr) continue;
            EXPECT_EQ(acis::IsBinary(body->text), GetParam().isBinary);
            if (GetParam().isBinary) continue;
            EXPECT_TRUE(body->text.starts_with("400 ") || body->text.starts_with("700 ") ||
                        body->text.starts_with("20800 ") || body->text.starts_with("21500 "))
                << body->text.substr(0, 60);
            EXPECT_NE(body->text.find("plane-surface"), body->text.find("torus-surface"));
        }
    }
}

/// What goes through a reading and a writing as it stands is told by each reading.
bool IsMetAgain(const ReadNote& note) {
    return note.isKept || note.text.find("binary (SAB") != std::string::npos ||
           note.text.find("that it refers to is left out") != std::string::npos;
}

TEST_P(DxfSamples, WritingReadingAndWritingGivesTheSameBytes) {
    const std::string first = WriteDxf(WithoutBinaryBodies(ReadDxf(mText, mName)));
    DrawingData again = ReadDxf(first, mName);
    // What went through unread is met again.
    for (const ReadNote& note : again.notes) EXPECT_TRUE(IsMetAgain(note)) << note.line << ": " << note.text;
    EXPECT_TRUE(WriteDxf(again) == first);
    const DrawingData once = again;
    EXPECT_TRUE(ReadDxf(WriteDxf(once), mName) == once);
}

/// An entity of dimensions' pictures in some samples has a coordinate that is noise, which is written as 0.
constexpr auto noisyEntities = std::to_array<HandleValue>({0x659, 0xA94});

TEST_P(DxfSamples, EntitiesSurviveWriting) {
    const DrawingData read = WithoutBinaryBodies(ReadDxf(mText, mName));
    const DrawingData again = ReadDxf(WriteDxf(read), mName);
    ASSERT_EQ(read.blocks.size(), again.blocks.size());
    for (std::size_t b = 0; b < read.blocks.size(); ++b) {
        const BlockData& before = read.blocks[b];
        const BlockData& after = again.blocks[b];
        EXPECT_EQ(before.name, after.name);
        ASSERT_EQ(before.entities.size(), after.entities.size()) << before.name;
        for (std::size_t e = 0; e < before.entities.size(); ++e) {
            EntityData expected = before.entities[e];
            if (std::ranges::find(noisyEntities, expected.handle) != noisyEntities.end()) continue;
            // Where a body stands in the file is the one thing that changes.
            if (auto* const body = std::get_if<AcisData>(&expected.geometry))
                body->firstLine = std::get<AcisData>(after.entities[e].geometry).firstLine;
            EXPECT_TRUE(expected == after.entities[e])
                << before.name << " entity " << e << " handle " << before.entities[e].handle;
        }
    }
    EXPECT_TRUE(read.layers == again.layers);
    EXPECT_TRUE(read.groups == again.groups);
}

TEST_P(DxfSamples, EzdxfFindsNothingInTheRewrittenFile) {
    if (!test::HasEzdxf()) GTEST_SKIP() << "ezdxf is not installed for the system's Python";
    const auto path = std::filesystem::path(testing::TempDir()) / ("rewritten_" + mName);
    std::ofstream(path, std::ios::binary) << WriteDxf(WithoutBinaryBodies(ReadDxf(mText, mName)));
    const auto problems = test::AuditWithEzdxf(path);
    EXPECT_FALSE(problems) << *problems;
    std::filesystem::remove(path);
}

std::string TestName(const testing::TestParamInfo<Sample>& sample) {
    std::string name = sample.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, DxfSamples, testing::ValuesIn(samples), TestName);

}  // namespace
}  // namespace brenvik
