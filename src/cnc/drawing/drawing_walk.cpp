// Layers, selection sets and command numbers of a part drawing.
#include "cnc/drawing/drawing_walk.h"

#include <cmath>
#include <utility>

#include "base/failure.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"

namespace brenvik {

namespace {

constexpr double SamePlace = 0.0001;
constexpr int CommandDecimals = 12;

void SetAllLocks(AcadDocument& drawing, bool lock) {
    AcadLayers& layers = drawing.Layers();
    const int count = layers.Count();
    for (int i = 0; i < count; ++i) layers.Item(i)->SetLock(lock);
}

}  // namespace

void LockAllLayers(AcadDocument& drawing) { SetAllLocks(drawing, true); }

void UnlockAllLayers(AcadDocument& drawing) { SetAllLocks(drawing, false); }

void LockLayer(AcadDocument& drawing, std::string_view name) { drawing.Layers().Item(name)->SetLock(true); }

void UnlockLayer(AcadDocument& drawing, std::string_view name) {
    drawing.Layers().Item(name)->SetLock(false);
}

bool LayerExists(AcadDocument& drawing, std::string_view name) {
    return Skip([&] { drawing.Layers().Item(name); });
}

OnlyUnlocked::OnlyUnlocked(AcadDocument& drawing, std::initializer_list<std::string_view> layers)
    : mDrawing(drawing) {
    LockAllLayers(drawing);
    for (const std::string_view layer : layers) UnlockLayer(drawing, layer);
}

OnlyUnlocked::~OnlyUnlocked() {
    Skip([&] { UnlockAllLayers(mDrawing); });
}

Locked::Locked(AcadDocument& drawing, std::vector<std::string_view> layers)
    : mDrawing(drawing), mLayers(std::move(layers)) {
    for (const std::string_view layer : mLayers) LockLayer(mDrawing, layer);
}

Locked::~Locked() {
    for (const std::string_view layer : mLayers) Skip([&] { UnlockLayer(mDrawing, layer); });
}

AcadLayer& AddLayer(AcadDocument& drawing, std::string_view name, std::optional<int> color) {
    AcadLayer& layer = *drawing.Layers().Add(name);
    if (color) layer.SetColor(*color);
    return layer;
}

Acad3DSolid& LastSolid(AcadDocument& drawing) {
    Acad3DSolid* last = nullptr;
    drawing.ModelSpace().ForEach([&last](AcadEntity& entity) {
        if (auto* solid = dynamic_cast<Acad3DSolid*>(&entity)) last = solid;
    });
    if (last == nullptr) throw ObjectNotSet();
    return *last;
}

AcadSelectionSet& FreshSet(AcadDocument& drawing, std::string_view name) {
    Skip([&] { drawing.SelectionSets().Item(name)->Delete(); });
    return *drawing.SelectionSets().Add(name);
}

std::string PointAnswer(const Point3& point) {
    const auto number = [](double value) {
        return Trim(NumberToText(RoundHalfEven(value, CommandDecimals)));
    };
    return number(point.x) + "," + number(point.y) + "," + number(point.z) + " ";
}

void TopView(AcadDocument& drawing) {
    drawing.SendCommand("-v ");
    drawing.SendCommand("t ");
}

Point3 Rounded(const Point3& point, int decimals) {
    return {RoundHalfEven(point.x, decimals), RoundHalfEven(point.y, decimals),
            RoundHalfEven(point.z, decimals)};
}

bool NearlyEqual(double a, double b) { return std::abs(a - b) < SamePlace; }

bool NearlyEqual(const Point3& a, const Point3& b) {
    return NearlyEqual(a.x, b.x) && NearlyEqual(a.y, b.y) && NearlyEqual(a.z, b.z);
}

}  // namespace brenvik
