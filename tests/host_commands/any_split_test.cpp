// The same text gives the same drawing and the same transcript, however it is spread over calls.
#include <random>

#include "command_fixture.h"

namespace brenvik {
namespace {

/// All of a drawing that commands change, as one text.
std::string Picture(HostDocument& document) {
    std::string picture;
    const auto put = [&](const Point3& p) {
        for (const double value : {p.x, p.y, p.z}) picture += std::to_string(value) + " ";
    };
    for (const HostEntity* entity : document.CurrentSpace().Entities()) {
        picture += entity->Handle() + " " + entity->Layer() + " ";
        const Box3 box = entity->GetBoundingBox();
        put(box.min);
        put(box.max);
        if (const auto* solid = dynamic_cast<const HostSolid*>(entity))
            picture += std::to_string(solid->Volume());
        picture += "\n";
    }
    for (const HostLayer* layer : document.LayerTable().All()) picture += layer->Name() + ";";
    for (const Point3& p : document.ActiveUCS()) put(p);
    for (const HostEntity* entity : document.PreviousSelection()) picture += entity->Handle() + ",";
    return picture;
}

class AnySplit : public ::testing::TestWithParam<const char*> {};

TEST_P(AnySplit, GivesTheSameDrawingAndTranscript) {
    const std::string text = GetParam();
    const auto outcome = [&](const std::function<std::size_t()>& nextLength) {
        HostApplication application;
        HostCommandLine commandLine(application, FindBuiltInCommand);
        std::string told;
        application.SetTranscript([&](std::string_view line) { told += std::string(line) + "\n"; });
        HostDocument& document = application.NewDocument();
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t length = std::min(nextLength(), text.size() - at);
            document.SendCommand(std::string_view(text).substr(at, length));
            at += length;
        }
        return Picture(document) + told + commandLine.Prompt(document);
    };
    const std::string whole = outcome([] { return std::string::npos; });
    EXPECT_EQ(outcome([] { return 1u; }), whole);
    std::mt19937 random(7);
    for (int round = 0; round < 5; ++round) EXPECT_EQ(outcome([&] { return 1 + random() % 9; }), whole);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, AnySplit,
    ::testing::Values("box 0,0,0 10,20,30 move all  0,0,0 5,5,5 ",
                      "box\r\n0,0,0\r\n10,20\r\n30\r\n\r\nerase\r\nall\r\n\r\n",
                      "box 0,0,0 10,10,10 box 5,5,5 20,20,20 union all  slice all  yz 7,0,0 b ",
                      "-layer n \"Bank left\" s \"Bank left\" \rbox 0,0,0 1,1,1 select (handent \"100\")  ",
                      "ucs x 90 cylinder 0,0,0 d 10 20 rotate3d l  z  45 copy p  m 0,0,0 5,0,0 9,0,0  ",
                      "box 0,0,0 nonsense 5,5\x1b zoom e what is this 'zoom ", "solidedit f",
                      "osnapcoord 9 1 box 0,0,0 'osmode 0 1,1,1 "));

}  // namespace
}  // namespace brenvik
