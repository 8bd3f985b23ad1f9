// What every stretch of a run does to a drawing: typing commands, locking layers, walking the entities of
// one kind, and the numbers of command strings.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

// Layers. Names compare without regard to case, as the host's do.

void LockAllLayers(AcadDocument& drawing);
void UnlockAllLayers(AcadDocument& drawing);
/// Fails for a layer that the drawing doesn't hold.
void LockLayer(AcadDocument& drawing, std::string_view name);
void UnlockLayer(AcadDocument& drawing, std::string_view name);  ///< Fails likewise.
bool LayerExists(AcadDocument& drawing, std::string_view name);  ///< Whether the drawing holds it.

/// While it lives, only the layers named can be worked on: commands that take everything pass the others
/// over. Afterwards every layer is unlocked, so that no step works by what another one has left locked.
class OnlyUnlocked {
  public:
    /// Fails for a layer that the drawing doesn't hold.
    OnlyUnlocked(AcadDocument& drawing, std::initializer_list<std::string_view> layers);
    ~OnlyUnlocked();
    OnlyUnlocked(const OnlyUnlocked&) = delete;
    OnlyUnlocked& operator=(const OnlyUnlocked&) = delete;

  private:
    AcadDocument& mDrawing;
};

/// The other way round: while it lives, these layers are out of the reach of "all". Afterwards they are
/// unlocked.
class Locked {
  public:
    /// Fails for a layer that the drawing doesn't hold.
    Locked(AcadDocument& drawing, std::vector<std::string_view> layers);
    ~Locked();
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

  private:
    AcadDocument& mDrawing;
    std::vector<std::string_view> mLayers;
};

/// The layer of that name, made if need be.
AcadLayer& AddLayer(AcadDocument& drawing, std::string_view name, std::optional<int> color = std::nullopt);

// Entities, in drawing order. Whether a name compares exactly is the caller's business: the run tests layer
// names letter by letter.

/// All entities of model space of one kind, such as AcadCircle, that stand there now.
template <class Kind>
std::vector<Kind*> All(AcadDocument& drawing) {
    std::vector<Kind*> found;
    drawing.ModelSpace().ForEach([&found](AcadEntity& entity) {
        if (auto* kind = dynamic_cast<Kind*>(&entity)) found.push_back(kind);
    });
    return found;
}

/// Those on one layer, the name compared exactly.
template <class Kind>
std::vector<Kind*> AllOn(AcadDocument& drawing, std::string_view layer) {
    std::vector<Kind*> found;
    drawing.ModelSpace().ForEach([&found, layer](AcadEntity& entity) {
        auto* kind = dynamic_cast<Kind*>(&entity);
        if (kind != nullptr && entity.Layer() == layer) found.push_back(kind);
    });
    return found;
}

/// The last solid of model space. Fails with 91 where there is none.
Acad3DSolid& LastSolid(AcadDocument& drawing);

/// Sets of the object model that may be left over from before: deleted if it is there, and made anew.
AcadSelectionSet& FreshSet(AcadDocument& drawing, std::string_view name);

// Numbers and points of command strings.

/// "x,y,z " with each coordinate rounded to 12 decimals.
std::string PointAnswer(const Point3& point);
/// The drawing looked at from above: "-v ", then "t ".
void TopView(AcadDocument& drawing);

/// Half-to-even rounding of all three coordinates.
Point3 Rounded(const Point3& point, int decimals);
/// Closer than 0.0001: what the run takes for the same length.
bool NearlyEqual(double a, double b);
/// The same in all three coordinates.
bool NearlyEqual(const Point3& a, const Point3& b);

}  // namespace brenvik
