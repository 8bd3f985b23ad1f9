// A library of materials in memory, and materials to fill it with.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "base/text.h"
#include "core/fakes/fake_platform.h"
#include "session/session.h"
#include "settings/materials.h"

namespace brenvik {

/// One material as the file has it, all values filled.
inline std::string Material(const std::string& key, const std::string& lineEnd = "\n") {
    std::string text = "material=" + key + "\ngrain=1\ndirection=cC\n";
    text += "tool1=T1\ntool1dia=12.7\ntool1ss=18000\ntool1fs=7500\n";
    text += "tool2=2\ntool2dia=9.53\ntool2ss=17000\ntool2fs=6000\n";
    text += "tool3=3\ntool3dia=6.35\ntool3ss=16000\ntool3fs=4000\n";
    return ReplaceAll(text, "\n", lineEnd);
}

inline std::string Replaced(const std::string& text, const std::string& part, const std::string& by) {
    EXPECT_NE(text.find(part), std::string::npos) << part;
    return ReplaceAll(text, part, by);
}

/// Three bits numbered 1 to 3 of these diameters.
inline MaterialRecord Bits(double first, double second, double third) {
    MaterialRecord material;
    material.material = "18 mdf";
    material.tools = {MaterialTool{"1", first, "S1", "F1"}, MaterialTool{"2", second, "S2", "F2"},
                      MaterialTool{"3", third, "S3", "F3"}};
    return material;
}

class MaterialTest : public testing::Test {
  protected:
    MaterialTest() { TheSession().InstallFolder = "C:\\Brenvik\\"; }

    void UseLibrary(const std::string& content) { system.files.contents[LibraryPath] = content; }
    std::string Library() { return system.files.contents[LibraryPath]; }
    std::string Backup() { return system.files.contents["C:\\Brenvik\\materials.bak"]; }

    static constexpr const char* LibraryPath = "C:\\Brenvik\\materials.txt";
    const std::string OakPly = Material("19.05 Red Oak Ply");
    fakes::LoadedSystem system;
    MaterialRecord record;
};

}  // namespace brenvik
