// What every entity of the host keeps to: erased objects answer with failures, locked layers refuse
// changes, copies are objects of their own.
#include "host_fixture.h"

namespace brenvik {
namespace {

using EntityLife = HostTest;

TEST_F(EntityLife, HandlesAreUpperHexadecimalAndUnique) {
    AcadLine* first = Model().AddLine({0, 0, 0}, {1, 0, 0});
    AcadLine* second = Model().AddLine({0, 0, 0}, {1, 0, 0});
    EXPECT_NE(first->Handle(), second->Handle());
    EXPECT_EQ(first->Handle().find_first_not_of("0123456789ABCDEF"), std::string::npos);
    EXPECT_EQ(document.HandleToObject(first->Handle()), static_cast<AcadObject*>(first));
}

TEST_F(EntityLife, HandleToObjectGivesNothingForErasedUnknownAndBadHandles) {
    AcadLine* line = Model().AddLine({0, 0, 0}, {1, 0, 0});
    const std::string handle = line->Handle();
    line->Delete();
    EXPECT_EQ(document.HandleToObject(handle), nullptr);
    EXPECT_EQ(document.HandleToObject("FFFFFF"), nullptr);
    EXPECT_EQ(document.HandleToObject("no handle"), nullptr);
    EXPECT_EQ(document.HandleToObject(""), nullptr);
}

TEST_F(EntityLife, AnErasedEntityAnswersEveryUseWithAFailure) {
    AcadCircle* circle = Model().AddCircle({0, 0, 0}, 1);
    circle->Delete();
    std::vector<std::int16_t> types;
    std::vector<XDataValue> values;
    const std::vector<std::function<void()>> uses{
        [&] { circle->Handle(); },
        [&] { circle->ObjectID(); },
        [&] { circle->Layer(); },
        [&] { circle->SetLayer("0"); },
        [&] { circle->Visible(); },
        [&] { circle->SetVisible(true); },
        [&] { circle->Color(); },
        [&] {
            circle->Move({}, {1, 0, 0});
        },
        [&] { circle->Copy(); },
        [&] {
            circle->Mirror({}, {1, 0, 0});
        },
        [&] { circle->GetBoundingBox(); },
        [&] { circle->GetXData("A", types, values); },
        [&] { SetText(*circle, "A", "b"); },
        [&] { circle->Delete(); },
        [&] { circle->Update(); },
        [&] { circle->Highlight(true); },
        [&] { circle->Radius(); },
        [&] { circle->Center(); },
    };
    for (const auto& use : uses) EXPECT_EQ(FailureOf(use).number(), host_failure_number::WasErased);
}

TEST_F(EntityLife, ErasedEntitiesLeaveTheWalkAndTheCount) {
    AcadLine* first = Model().AddLine({0, 0, 0}, {1, 0, 0});
    Model().AddCircle({0, 0, 0}, 1);
    AcadArc* third = Model().AddArc({0, 0, 0}, 1, 0, 1);
    first->Delete();
    EXPECT_EQ(Model().Count(), 2);
    EXPECT_EQ(NamesIn(Model()), (std::vector<std::string>{"AcDbCircle", "AcDbArc"}));
    EXPECT_EQ(Model().Item(1), static_cast<AcadEntity*>(third));
    EXPECT_EQ(FailureOf([&] { Model().Item(2); }).number(), host_failure_number::KeyNotFound);
    EXPECT_EQ(FailureOf([&] { Model().Item(-1); }).number(), host_failure_number::KeyNotFound);
}

TEST_F(EntityLife, AWalkSeesWhatStoodThereAtItsStart) {
    Model().AddLine({0, 0, 0}, {1, 0, 0});
    AcadLine* doomed = Model().AddLine({0, 0, 0}, {2, 0, 0});
    int visits = 0;
    Model().ForEach([&](AcadEntity& entity) {
        ++visits;
        entity.Copy();
        if (visits == 1) doomed->Delete();
    });
    EXPECT_EQ(visits, 1);
    EXPECT_EQ(Model().Count(), 2);
}

TEST_F(EntityLife, ALockedLayerRefusesEveryChangeAndAllowsReading) {
    NewLayer("Parts").SetLock(true);
    Acad3DSolid* solid = Model().AddBox({0, 0, 0}, 1, 2, 3);
    SetText(*solid, "PARTNAME", "Door");
    solid->SetLayer("parts");
    const std::vector<std::function<void()>> changes{
        [&] { solid->SetLayer("0"); },
        [&] { solid->SetVisible(false); },
        [&] { solid->SetColor(3); },
        [&] { solid->SetLinetype("Continuous"); },
        [&] { solid->SetLinetypeScale(2); },
        [&] {
            solid->Move({}, {1, 0, 0});
        },
        [&] { solid->Rotate({}, 1); },
        [&] {
            solid->Rotate3D({}, {0, 0, 1}, 1);
        },
        [&] { solid->ScaleEntity({}, 2); },
        [&] { solid->Delete(); },
        [&] { SetText(*solid, "PARTNAME", "Side"); },
    };
    for (const auto& change : changes)
        EXPECT_EQ(FailureOf(change).number(), host_failure_number::OnLockedLayer);
    EXPECT_EQ(solid->Layer(), "Parts");
    EXPECT_TRUE(solid->Visible());
    EXPECT_EQ(TextOf(*solid, "PARTNAME"), "Door");
    EXPECT_NEAR(solid->Volume(), 6, 1e-12);
    ExpectBox(solid->GetBoundingBox(), {-0.5, -1, -1.5}, {0.5, 1, 1.5});
    solid->Highlight(true);
    solid->Update();
    EXPECT_EQ(solid->Copy()->Layer(), "Parts");
}

TEST_F(EntityLife, UnlockingALayerAllowsTheChangeAgain) {
    HostLayer& layer = NewLayer("Parts");
    AcadLine* line = Model().AddLine({0, 0, 0}, {1, 0, 0});
    line->SetLayer("Parts");
    layer.SetLock(true);
    layer.SetLock(false);
    line->SetVisible(false);
    layer.SetLock(true);
    EXPECT_FALSE(line->Visible());
}

TEST_F(EntityLife, ACopyCarriesLookAndExtendedDataAndHasAHandleOfItsOwn) {
    NewLayer("Doors");
    Acad3DSolid* solid = Model().AddBox({0, 0, 0}, 1, 2, 3);
    solid->SetLayer("Doors");
    solid->SetColor(5);
    solid->SetVisible(false);
    SetText(*solid, "PARTNAME", "T\xC3\xBCr");
    auto* copy = dynamic_cast<Acad3DSolid*>(solid->Copy());
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy->Handle(), solid->Handle());
    EXPECT_NE(copy->ObjectID(), solid->ObjectID());
    EXPECT_EQ(copy->Layer(), "Doors");
    EXPECT_EQ(copy->Color(), 5);
    EXPECT_FALSE(copy->Visible());
    EXPECT_EQ(TextOf(*copy, "PARTNAME"), "T\xC3\xBCr");
    EXPECT_EQ(copy->Volume(), solid->Volume());
    copy->Move({0, 0, 0}, {10, 0, 0});
    ExpectBox(solid->GetBoundingBox(), {-0.5, -1, -1.5}, {0.5, 1, 1.5});
}

TEST_F(EntityLife, LookIsChecked) {
    AcadLine* line = Model().AddLine({0, 0, 0}, {1, 0, 0});
    EXPECT_EQ(line->Color(), 256);
    EXPECT_EQ(line->Linetype(), "ByLayer");
    EXPECT_EQ(FailureOf([&] { line->SetColor(257); }).number(), host_failure_number::InvalidArgument);
    EXPECT_EQ(FailureOf([&] { line->SetColor(-1); }).number(), host_failure_number::InvalidArgument);
    EXPECT_EQ(FailureOf([&] { line->SetLinetype("Dotted"); }).number(), host_failure_number::KeyNotFound);
    EXPECT_EQ(FailureOf([&] { line->SetLinetypeScale(0); }).number(), host_failure_number::InvalidArgument);
    EXPECT_EQ(FailureOf([&] { line->SetLayer("Nowhere"); }).number(), host_failure_number::KeyNotFound);
    line->SetColor(0);
    EXPECT_EQ(line->Color(), 0);
}

TEST_F(EntityLife, NewEntitiesStandOnTheCurrentLayer) {
    document.SetActiveLayer(NewLayer("Work"));
    EXPECT_EQ(Model().AddLine({0, 0, 0}, {1, 0, 0})->Layer(), "Work");
}

TEST_F(EntityLife, BadNumbersAreRefused) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(FailureOf([&] {
                  Model().AddLine({none, 0, 0}, {});
              }).number(),
              host_failure_number::InvalidArgument);
    EXPECT_EQ(FailureOf([&] { Model().AddCircle({}, 0); }).number(), host_failure_number::InvalidArgument);
    EXPECT_EQ(FailureOf([&] { Model().AddCircle({}, -1); }).number(), host_failure_number::InvalidArgument);
    EXPECT_EQ(FailureOf([&] { Model().AddBox({}, 1, 0, 1); }).number(), host_failure_number::InvalidArgument);
    AcadLine* line = Model().AddLine({0, 0, 0}, {1, 0, 0});
    EXPECT_EQ(FailureOf([&] { line->ScaleEntity({}, 0); }).number(), host_failure_number::InvalidArgument);
    EXPECT_EQ(FailureOf([&] { line->ScaleEntity({}, -1); }).number(), host_failure_number::InvalidArgument);
    EXPECT_EQ(FailureOf([&] {
                  line->Move({}, {none, 0, 0});
              }).number(),
              host_failure_number::InvalidArgument);
    EXPECT_EQ(FailureOf([&] {
                  line->Rotate3D({1, 1, 1}, {1, 1, 1}, 1);
              }).number(),
              host_failure_number::InvalidArgument);
    ExpectExact(line->EndPoint(), {1, 0, 0});
}

TEST_F(EntityLife, WalkingAndErasingTenThousandIsLinear) {
    for (int i = 0; i < 10000; ++i) Model().AddLine({0, 0, 0}, {1.0 * i, 1, 0});
    int visible = 0;
    for (int round = 0; round < 100; ++round)
        Model().ForEach([&](AcadEntity& entity) { visible += entity.Visible() ? 1 : 0; });
    EXPECT_EQ(visible, 1000000);
    Model().ForEach([](AcadEntity& entity) { entity.Delete(); });
    EXPECT_EQ(Model().Count(), 0);
}

}  // namespace
}  // namespace brenvik
