// Part data on solids: one application for each key, one text in each.
#include <gtest/gtest.h>

#include "core/fakes/fake_platform.h"
#include "parts/mautocad.h"

namespace brenvik {
namespace {

class PartData : public testing::Test {
  protected:
    PartData() { TheSession().AcadDoc = &system.Document(); }
    fakes::LoadedSystem system;
};

TEST_F(PartData, ReadsTheTextBehindTheApplicationName) {
    system.Document().AddEntity("2F").data["MATERIAL"] = "Oak";
    EXPECT_EQ(mAutoCAD::GetPartData("2F", "MATERIAL"), "Oak");
}

TEST_F(PartData, IsBlankForAKeyThatTheSolidDoesNotHave) {
    system.Document().AddEntity("2F");
    EXPECT_EQ(mAutoCAD::GetPartData("2F", "MATERIAL"), "");
    EXPECT_TRUE(system.dialogs.messages.empty());
}

TEST_F(PartData, OfAHandleThatIsGoneSaysNotFoundOncePerKey) {
    system.Document().AddEntity("2F").Delete();
    EXPECT_EQ(mAutoCAD::GetPartData("2F", "MATERIAL"), "");
    EXPECT_EQ(mAutoCAD::GetPartData("2F", "PN"), "");
    EXPECT_EQ(system.Messages(), (std::vector<std::string>{"not found", "not found"}));
}

TEST_F(PartData, OfAHandleThatTheHostRefusesSaysNotFoundToo) {
    system.Document().failOnUnknownHandle = true;
    EXPECT_EQ(mAutoCAD::GetPartData("77", "MATERIAL"), "");
    EXPECT_EQ(system.Messages(), std::vector<std::string>{"not found"});
}

TEST_F(PartData, WithAnApplicationEntryAloneFails) {
    system.Document().AddEntity("2F").bareApplication = "MATERIAL";
    try {
        mAutoCAD::GetPartData("2F", "MATERIAL");
        FAIL() << "there is no item at index 1";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), failure_number::SubscriptOutOfRange);
    }
}

TEST_F(PartData, OfAnotherProgramsNumberIsItsText) {
    system.Document().AddEntity("2F").otherData["PRICE"] = 12.5;
    EXPECT_EQ(mAutoCAD::GetPartData("2F", "PRICE"), "12.5");
}

TEST_F(PartData, OfAPointIsATypeMismatch) {
    system.Document().AddEntity("2F").otherData["PRICE"] = Point3{1, 2, 3};
    EXPECT_THROW(mAutoCAD::GetPartData("2F", "PRICE"), Failure);
}

TEST_F(PartData, IsClearedBeforeItIsSet) {
    fakes::FakeEntity& solid = system.Document().AddEntity("2F");
    mAutoCAD::SetPartData(&solid, "PN", "A-1");
    EXPECT_EQ(solid.writes, (std::vector<std::string>{"PN", "PN=A-1"}));
    EXPECT_EQ(solid.data["PN"], "A-1");
}

TEST_F(PartData, OfABlankValueKeepsTheKey) {
    fakes::FakeEntity& solid = system.Document().AddEntity("2F");
    solid.data["PN"] = "A-1";
    mAutoCAD::SetPartData(&solid, "PN", "");
    EXPECT_TRUE(solid.data.contains("PN"));
    EXPECT_EQ(mAutoCAD::GetPartData("2F", "PN"), "");
}

TEST_F(PartData, IsNotWrittenToNoObject) { EXPECT_NO_THROW(mAutoCAD::SetPartData(nullptr, "PN", "A-1")); }

TEST_F(PartData, LongerThanTheHostTakesFails) {
    fakes::FakeEntity& solid = system.Document().AddEntity("2F");
    EXPECT_NO_THROW(mAutoCAD::SetPartData(&solid, "NOTES", std::string(255, 'x')));
    EXPECT_THROW(mAutoCAD::SetPartData(&solid, "NOTES", std::string(256, 'x')), Failure);
}

}  // namespace
}  // namespace brenvik
