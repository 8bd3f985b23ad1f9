// Layers, and the names that tables take.
#include "host_fixture.h"

namespace brenvik {
namespace {

using Layers = HostTest;

TEST_F(Layers, AnEmptyDrawingHasLayerZero) {
    EXPECT_EQ(document.Layers().Count(), 1);
    EXPECT_EQ(document.Layers().Item(0)->Name(), "0");
    EXPECT_EQ(document.ActiveLayer()->Name(), "0");
    EXPECT_EQ(document.Layers().Item("0")->Color(), 7);
}

TEST_F(Layers, NamesCompareWithoutCaseAndStayAsFirstWritten) {
    AcadLayer* layer = document.Layers().Add("T\xC3\xBCren");
    EXPECT_EQ(document.Layers().Add("T\xC3\x9CREN"), layer);
    EXPECT_EQ(document.Layers().Item("t\xC3\xBCren")->Name(), "T\xC3\xBCren");
    EXPECT_EQ(document.Layers().Count(), 2);
}

TEST_F(Layers, ItemFailsForUnknownNamesAndPositions) {
    EXPECT_EQ(FailureOf([&] { document.Layers().Item("Doors"); }).number(), host_failure_number::KeyNotFound);
    EXPECT_EQ(FailureOf([&] { document.Layers().Item(1); }).number(), host_failure_number::KeyNotFound);
    EXPECT_EQ(FailureOf([&] { document.Layers().Item(-1); }).number(), host_failure_number::KeyNotFound);
}

TEST_F(Layers, RefusedNames) {
    for (const char c : std::string("<>/\\\":;?*=|`"))
        EXPECT_THROW(document.Layers().Add(std::string("A") + c), Failure) << c;
    EXPECT_THROW(document.Layers().Add(""), Failure);
    EXPECT_THROW(document.Layers().Add("  "), Failure);
    EXPECT_THROW(document.Layers().Add("A\nB"), Failure);
    EXPECT_THROW(document.Layers().Add(std::string(256, 'x')), Failure);
    EXPECT_NO_THROW(document.Layers().Add(std::string(255, 'x')));
    EXPECT_NO_THROW(document.Layers().Add("DRILL_.375 #5,$-(1)&'!+%@~^{}[]"));
}

TEST_F(Layers, OrderOfMakingIsKept) {
    document.Layers().Add("Z");
    document.Layers().Add("A");
    EXPECT_EQ(document.Layers().Item(1)->Name(), "Z");
    EXPECT_EQ(document.Layers().Item(2)->Name(), "A");
}

TEST_F(Layers, ColorsRunFrom1To255) {
    AcadLayer* layer = document.Layers().Add("A");
    layer->SetColor(255);
    EXPECT_EQ(layer->Color(), 255);
    EXPECT_THROW(layer->SetColor(0), Failure);
    EXPECT_THROW(layer->SetColor(256), Failure);
}

TEST_F(Layers, TheCurrentLayerCantBeFrozenAndAFrozenOneNotMadeCurrent) {
    AcadLayer* layer = document.Layers().Add("A");
    EXPECT_THROW(document.ActiveLayer()->SetFreeze(true), Failure);
    layer->SetFreeze(true);
    EXPECT_TRUE(layer->Freeze());
    EXPECT_THROW(document.SetActiveLayer(*layer), Failure);
    layer->SetFreeze(false);
    document.SetActiveLayer(*layer);
    EXPECT_EQ(document.ActiveLayer(), layer);
    layer->SetLayerOn(false);
    EXPECT_FALSE(layer->LayerOn());
}

TEST_F(Layers, ALayerOfAnotherDrawingCantBeMadeCurrent) {
    HostDocument& other = application.NewDocument();
    AcadLayer* layer = other.Layers().Add("A");
    document.Layers().Add("A");
    EXPECT_THROW(document.SetActiveLayer(*layer), Failure);
}

TEST_F(Layers, PurgeTakesWhatNothingStandsOn) {
    AcadLayer* gone = document.Layers().Add("Empty");
    document.Layers().Add("Used");
    document.SetActiveLayer(*document.Layers().Add("Current"));
    Model().AddLine({0, 0, 0}, {1, 0, 0})->SetLayer("Used");
    document.PurgeAll();
    EXPECT_EQ(document.Layers().Count(), 3);
    EXPECT_THROW(document.Layers().Item("Empty"), Failure);
    EXPECT_EQ(FailureOf([&] { gone->Name(); }).number(), host_failure_number::WasErased);
}

TEST_F(Layers, EntitiesOfALayerShareOneObject) {
    NewLayer("A");
    AcadLine* one = Model().AddLine({0, 0, 0}, {1, 0, 0});
    AcadCircle* other = Model().AddCircle({0, 0, 0}, 1);
    one->SetLayer("a");
    other->SetLayer("A");
    EXPECT_EQ(&HostEntityOf(*one).LayerObject(), &HostEntityOf(*other).LayerObject());
}

}  // namespace
}  // namespace brenvik
