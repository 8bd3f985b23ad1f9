// A host with a command line, an empty drawing and a record of all that the line tells.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <functional>
#include <string>
#include <vector>

#include "drafting_host/command/commands/built_in_commands.h"
#include "drafting_host/command/session/host_command_line.h"
#include "host/host_fixture.h"

namespace brenvik {

class CommandTest : public ::testing::Test {
  protected:
    CommandTest() {
        application.SetTranscript([this](std::string_view line) { transcript.emplace_back(line); });
    }

    void Type(std::string_view text) { document.SendCommand(text); }

    std::vector<HostEntity*> Entities() {
        const auto entities = document.CurrentSpace().Entities();
        return {entities.begin(), entities.end()};
    }

    HostSolid& Solid(std::size_t position) { return dynamic_cast<HostSolid&>(*Entities().at(position)); }

    HostSolid& BoxAt(const Point3& low, const Point3& high) {
        const Point3 center{(low.x + high.x) / 2, (low.y + high.y) / 2, (low.z + high.z) / 2};
        return dynamic_cast<HostSolid&>(
            *Model().AddBox(center, high.x - low.x, high.y - low.y, high.z - low.z));
    }

    AcadBlock& Model() { return document.ModelSpace(); }
    HostLayer& NewLayer(const std::string& name) {
        return dynamic_cast<HostLayer&>(*document.Layers().Add(name));
    }

    bool Told(std::string_view part) const {
        for (const std::string& line : transcript)
            if (line.find(part) != std::string::npos) return true;
        return false;
    }

    std::vector<std::string> PreviousHandles() {
        std::vector<std::string> handles;
        for (const HostEntity* entity : document.PreviousSelection()) handles.push_back(entity->Handle());
        return handles;
    }

    void ExpectIdle() { EXPECT_EQ(commandLine.Prompt(document), "Command:"); }

    HostApplication application;
    HostCommandLine commandLine{application, FindBuiltInCommand};
    HostDocument& document = application.NewDocument();
    std::vector<std::string> transcript;
};

}  // namespace brenvik
