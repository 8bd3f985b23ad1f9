// A STEP file on the disk that a test damages, and what reading it gives.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "base/failure.h"
#include "drafting_host/step/step_reader.h"
#include "solids/parts.h"
#include "step/write_step.h"

namespace brenvik::step {

class StepInput : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        mPath =
            std::filesystem::path(::testing::TempDir()) / ("brenvik_" + std::string(test->name()) + ".step");
    }
    void TearDown() override { std::filesystem::remove(mPath); }

    void Put(const std::string& content) const { std::ofstream(mPath, std::ios::binary) << content; }

    std::string Good() const {
        WriteStep(mPath, std::vector<StepSolid>{
                             {solids::test::Board(600, 400, 18), "Board", "Job", "", std::nullopt}});
        return Content();
    }

    /// The failure's text, or what went wrong instead.
    std::string FailureText() const {
        try {
            ReadStep(mPath);
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "no failure";
    }

    /// The content of the file as it lies there.
    std::string Content() const {
        std::ifstream file(mPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::filesystem::path mPath;
};

inline void ExpectMentions(const std::string& text, const std::string& part) {
    EXPECT_NE(text.find(part), std::string::npos) << text;
}

/// The line (from 1) of a place.
inline std::string LineAt(const std::string& content, std::size_t place) {
    const auto breaks =
        std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(place), '\n');
    return std::to_string(1 + breaks);
}

/// The notes of reading a file, a line each.
inline std::string NotesOf(const StepDocument& document) {
    std::string all;
    for (const StepNote& note : document.notes)
        all += std::to_string(note.line) + (note.lost ? ": " : ", nothing lost: ") + note.text + "\n";
    return all;
}

}  // namespace brenvik::step
