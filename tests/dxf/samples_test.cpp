// Drawings by other programs: how much of each arrives, and that it survives being written and read again.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>

#include "base/failure.h"
#include "drafting_host/dxf/dxf_reader.h"
#include "drafting_host/dxf/dxf_writer.h"
#include "support/ezdxf_audit.h"
#include "support/sample_files.h"

namespace brenvik {
namespace {

struct Sample {
    std::string name;
    int solids = 0, regions = 0;
    int refusedBodies = 0;
};

std::ostream& operator<<(std::ostream& out, const Sample& sample) { return out << sample.name; }

const auto samples = std::to_array<Sample>({{"ACadSharp__sample_AC1015_ascii", 2, 1, 0},
                                            {"ACadSharp__sample_AC1018_ascii", 2, 1, 0},
                                            {"ACadSharp__sample_AC1024_ascii", 2, 1, 0},
                                            {"ACadSharp__sample_AC1027_ascii", 0, 0, 3},
                                            {"ezdxf__acistools_3dsolids", 5, 0, 0},
                                            {"ezdxf__torus_r2000", 1, 0, 0},
                                            {"ezdxf__torus_r2007", 1, 0, 0},
                                            {"ezdxf__xref_sphere", 0, 0, 1},
                                            {"sample-files__3Dboxes", 0, 0, 2},
                                            {"sample-files__3Dshapes", 0, 0, 3}});

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

TEST_P(DxfSamples, BodiesArriveOrAreRefusedByName) {
    const DrawingData data = ReadDxf(mText, mName);
    EXPECT_EQ(BodiesOf(data, AcisData::Kind::Solid), GetParam().solids);
    EXPECT_EQ(BodiesOf(data, AcisData::Kind::Region), GetParam().regions);
    const auto refused = std::count_if(data.notes.begin(), data.notes.end(), [](const ReadNote& note) {
        return note.line > 0 && note.dataLost && note.text.find("binary (SAB") != std::string::npos;
    });
    EXPECT_EQ(refused, GetParam().refusedBodies);
}

TEST_P(DxfSamples, BodiesArriveInClear) {
    for (const BlockData& block : ReadDxf(mText, mName).blocks) {
        for (const EntityData& entity : block.entities) {
            const auto* const body = std::get_if<AcisData>(&entity.geometry);
            if (body == nullptr) continue;
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
    const std::string first = WriteDxf(ReadDxf(mText, mName));
    DrawingData again = ReadDxf(first, mName);
    // What went through unread is met again.
    for (const ReadNote& note : again.notes) EXPECT_TRUE(IsMetAgain(note)) << note.line << ": " << note.text;
    EXPECT_TRUE(WriteDxf(again) == first);
    const DrawingData once = again;
    EXPECT_TRUE(ReadDxf(WriteDxf(once), mName) == once);
}

/// An entity of dimensions' pictures in some samples has a coordinate that is noise, which is written as 0.
constexpr HandleValue NoisyEntity = 0x659;

TEST_P(DxfSamples, EntitiesSurviveWriting) {
    const DrawingData read = ReadDxf(mText, mName);
    const DrawingData again = ReadDxf(WriteDxf(read), mName);
    ASSERT_EQ(read.blocks.size(), again.blocks.size());
    for (std::size_t b = 0; b < read.blocks.size(); ++b) {
        const BlockData& before = read.blocks[b];
        const BlockData& after = again.blocks[b];
        EXPECT_EQ(before.name, after.name);
        ASSERT_EQ(before.entities.size(), after.entities.size()) << before.name;
        for (std::size_t e = 0; e < before.entities.size(); ++e) {
            EntityData expected = before.entities[e];
            if (expected.handle == NoisyEntity) continue;
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
    std::ofstream(path, std::ios::binary) << WriteDxf(ReadDxf(mText, mName));
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

TEST(DxfBinarySample, IsRefusedByName) {
    if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    const std::string name = "ACadSharp__sample_AC1015_binary.dxf";
    const std::string text = test::FileBytes(test::SampleFolder() / "dxf" / name);
    try {
        ReadDxf(text, name);
        FAIL() << "a binary DXF was read";
    } catch (const Failure& failure) {
        EXPECT_NE(failure.detail().find(name), std::string::npos);
        EXPECT_NE(failure.detail().find("binary DXF"), std::string::npos);
    }
}

}  // namespace
}  // namespace brenvik
