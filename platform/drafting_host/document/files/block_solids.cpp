// Counts first, by block and without placing anything: references in references can show any number.
#include "drafting_host/document/files/block_solids.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <set>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "drafting_host/document/block_content.h"
#include "drafting_host/document/files/block_looks.h"
#include "drafting_host/document/files/drawing_units.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/host_document.h"

namespace brenvik {
namespace {

/// More than any job has; a file of a few lines can show millions.
constexpr std::int64_t MostSolids = 10000;

bool IsSolid(const HostGeometry& geometry) {
    const auto* shape = std::get_if<ShapeData>(&geometry);
    return shape != nullptr && shape->kind == AcisData::Kind::Solid;
}
/// The same without a look at its shape, which may have to be made for that.
bool IsSolid(const HostEntity& entity) { return dynamic_cast<const HostSolid*>(&entity) != nullptr; }

/// Null for an entity that is no reference to a block.
const InsertData* ReferenceIn(const HostEntity& entity) {
    const auto* reference = dynamic_cast<const HostBlockReference*>(&entity);
    return reference == nullptr ? nullptr : &reference->Values();
}

constexpr std::int64_t MostCounted = std::numeric_limits<std::int64_t>::max();

std::int64_t Sum(std::int64_t a, std::int64_t b) { return a > MostCounted - b ? MostCounted : a + b; }
std::int64_t Product(std::int64_t a, std::int64_t b) {
    return b > 0 && a > MostCounted / b ? MostCounted : a * b;
}

std::int64_t PlacesOf(const InsertData& reference) {
    return Product(std::max(1, reference.columns), std::max(1, reference.rows));
}

/// The blocks of a document by name, with how many solids each shows. Goes through a block once, and not by
/// recursion: a file may hold a chain of any length.
class Counter {
  public:
    explicit Counter(const HostDocument& document) {
        for (const auto& block : document.AllBlocks()) {
            const auto [place, fresh] = mBlocks.try_emplace(block->Record().name);
            if (fresh) place->second.block = block.get();
        }
    }

    /// How many solids a reference shows.
    std::int64_t In(const InsertData& reference) {
        const Known* known = Settled(reference.block);
        return known == nullptr ? 0 : Product(PlacesOf(reference), known->count);
    }
    /// How many levels of blocks lie between the reference and its deepest solid.
    int LevelsIn(const InsertData& reference) {
        const Known* known = Settled(reference.block);
        return known == nullptr ? 0 : known->levels;
    }
    const HostBlock& BlockOf(const InsertData& reference) const { return *mBlocks.at(reference.block).block; }

  private:
    enum class State { Untouched, Open, Settled };
    struct Known;
    struct Inner {
        Known* known = nullptr;
        std::int64_t places = 1;
    };
    struct Known {
        const HostBlock* block = nullptr;
        State state = State::Untouched;
        std::int64_t count = 0;
        int levels = 0;
        std::vector<Inner> inner;  ///< The references in the block, while it is open.
        std::size_t next = 0;
    };

    Known* Find(const std::string& name) {
        const auto found = mBlocks.find(name);
        return found == mBlocks.end() ? nullptr : &found->second;
    }

    void Open(Known& known) {
        known.state = State::Open;
        known.levels = 1;
        for (const HostEntity* entity : known.block->Entities()) {
            if (const InsertData* reference = ReferenceIn(*entity)) {
                Known* inner = Find(reference->block);
                if (inner != nullptr) known.inner.push_back({inner, PlacesOf(*reference)});
            } else if (IsSolid(*entity)) {
                known.count = Sum(known.count, 1);
            }
        }
    }

    /// Null for a block that the document doesn't have.
    const Known* Settled(const std::string& name) {
        Known* const wanted = Find(name);
        if (wanted == nullptr || wanted->state == State::Settled) return wanted;
        std::vector<Known*> open{wanted};
        Open(*wanted);
        while (!open.empty()) {
            Known& known = *open.back();
            if (known.next == known.inner.size()) {
                known.state = State::Settled;
                known.inner = {};
                open.pop_back();
                continue;
            }
            const Inner inner = known.inner[known.next];
            if (inner.known->state == State::Untouched) {
                open.push_back(inner.known);
                Open(*inner.known);
                continue;
            }
            ++known.next;
            // A block that is met within itself counts nothing there.
            if (inner.known->state == State::Open || inner.known->count == 0) continue;
            known.count = Sum(known.count, Product(inner.places, inner.known->count));
            known.levels = std::max(known.levels, inner.known->levels + 1);
        }
        return wanted;
    }

    std::map<std::string, Known, LessIgnoreCase> mBlocks;
};

/// A solid as a reference shows it, and how many times as large as in its block.
struct ShownSolid {
    PlacedEntity placed;
    double scale = 1;
    ReferenceLook look;
};

/// Whether a reference puts its block where measuring means something. Beyond it the modeller's tolerances
/// are larger, or its numbers end.
bool IsWithinReach(const InsertData& reference) {
    constexpr double farthest = 1e9, largest = 1e6;
    const auto within = [](const Point3& point, double most) {
        return std::abs(point.x) <= most && std::abs(point.y) <= most && std::abs(point.z) <= most;
    };
    const Point3& scale = reference.scale;
    const double least = std::min({std::abs(scale.x), std::abs(scale.y), std::abs(scale.z)});
    return within(reference.insertion, farthest) && within(scale, largest) && least >= 1 / largest &&
           within({reference.columnSpacing, reference.rowSpacing, 0}, farthest);
}

/// The solids that a reference shows, at their places. Throws Failure as PlacedContent does, and for more
/// than `most` of them, which a block can show that refers to itself.
void Collect(const InsertData& reference, const ReferenceLook& look, Counter& counter, std::int64_t most,
             std::vector<ShownSolid>& solids) {
    if (!IsWithinReach(reference))
        throw host_failure::NotPossible(
            "a reference to the block \"" + reference.block +
            "\" within 1e9 units of the origin, with scales between 1e-6 and 1e6, "
            "was expected");
    const auto wanted = [&](const HostGeometry& geometry) {
        const auto* inner = std::get_if<InsertData>(&geometry);
        return inner != nullptr ? counter.In(*inner) > 0 : IsSolid(geometry);
    };
    for (PlacedEntity& placed : PlacedContent(counter.BlockOf(reference), reference, wanted)) {
        if (const auto* inner = std::get_if<InsertData>(&placed.geometry)) {
            Collect(*inner, LookHandedOn(*placed.source, &look), counter, most, solids);
            continue;
        }
        if (static_cast<std::int64_t>(solids.size()) == most)
            throw host_failure::NotPossible("the block \"" + reference.block + "\" shows itself");
        solids.push_back({std::move(placed), EvenScale(reference).value_or(1), look});
    }
}

/// Takes out what a reference shows, or says why not.
void TakeOut(HostDocument& document, const InsertData& reference, Counter& counter, std::int64_t room,
             ReferenceSolids& told) {
    if (told.count > room) {
        told.reason =
            "expected no more than " + std::to_string(MostSolids) + " in all references of a drawing";
        return;
    }
    if (counter.LevelsIn(reference) > DeepestNesting) {
        told.reason = "expected blocks that are nested no deeper than " + std::to_string(DeepestNesting);
        return;
    }
    std::vector<ShownSolid> solids;
    try {
        Collect(reference, LookHandedOn(*told.reference, nullptr), counter, told.count, solids);
    } catch (const Failure& failure) {
        told.reason = failure.detail().empty() ? failure.description() : failure.detail();
        return;
    }
    for (auto& [placed, scale, look] : solids) {
        HostEntity& made = document.Model().Add(std::move(placed.geometry));
        SetShownLook(made, *placed.source, look);
        made.SetExtendedData(scale == 1 ? placed.source->ExtendedData()
                                        : WithScaledExtents(placed.source->ExtendedData(), scale, made));
        told.taken.push_back(&made);
    }
}

/// Which blocks hold nothing but solids, in references within them too.
class SolidsOnly {
  public:
    explicit SolidsOnly(const HostDocument& document) : mDocument(document) {}

    bool AreAll(const HostEntity& reference) {
        const InsertData* insert = ReferenceIn(reference);
        // Attributes follow a reference as parts of its record.
        const Kept<KeptGroups>& kept = reference.KeptGroupsOfFile();
        return insert != nullptr && (!kept || kept->parts.empty()) && AreAll(insert->block);
    }

  private:
    bool AreAll(const std::string& name) {
        const auto known = mKnown.find(name);
        if (known != mKnown.end()) return known->second;
        // A block inserted into itself adds no solids there.
        mKnown.emplace(name, true);
        const HostBlock* block = mDocument.FindBlock(name);
        bool areAll = block != nullptr && !(block->Record().kept && !block->Record().kept->entities.empty());
        for (std::size_t i = 0; areAll && i < block->Entities().size(); ++i) {
            const HostEntity& entity = *block->Entities()[i];
            areAll = IsSolid(entity) || AreAll(entity);
        }
        return mKnown[name] = areAll;
    }

    const HostDocument& mDocument;
    std::map<std::string, bool, LessIgnoreCase> mKnown;
};

std::vector<ReferenceSolids> Count(const HostDocument& document, Counter& counter) {
    std::vector<ReferenceSolids> references;
    for (HostEntity* entity : document.AllBlocks().front()->Entities()) {
        const InsertData* reference = ReferenceIn(*entity);
        const std::int64_t count = reference == nullptr ? 0 : counter.In(*reference);
        if (count > 0) references.push_back({entity, reference->block, count, {}, {}});
    }
    return references;
}

}  // namespace

std::vector<ReferenceSolids> CountBlockSolids(const HostDocument& document) {
    Counter counter(document);
    std::vector<ReferenceSolids> references = Count(document, counter);
    for (ReferenceSolids& told : references)
        told.reason =
            "expected solids that stand in the drawing itself, as exploding the reference gives them";
    return references;
}

std::vector<ReferenceSolids> TakeOutBlockSolids(HostDocument& document) {
    Counter counter(document);
    std::vector<ReferenceSolids> references = Count(document, counter);
    std::int64_t room = MostSolids;
    for (ReferenceSolids& told : references) {
        const HostGeometry geometry = told.reference->Geometry();
        TakeOut(document, std::get<InsertData>(geometry), counter, room, told);
        room -= static_cast<std::int64_t>(told.taken.size());
    }
    return references;
}

void EraseEmptied(HostDocument& document, const std::vector<ReferenceSolids>& references) {
    SolidsOnly solids(document);
    std::set<const HostEntity*> emptied;
    for (const ReferenceSolids& told : references)
        if (!told.taken.empty() && solids.AreAll(*told.reference)) emptied.insert(told.reference);
    for (const ReferenceSolids& told : references) {
        HostEntity* const entity = told.reference;
        if (!emptied.contains(entity)) continue;
        const bool isLocked = entity->LayerObject().Locked();
        if (isLocked) entity->LayerObject().SetLock(false);
        entity->Delete();
        if (isLocked) entity->LayerObject().SetLock(true);
    }
}

std::vector<SheetSolids> CountSheetSolids(const HostDocument& document) {
    Counter counter(document);
    std::vector<SheetSolids> sheets;
    for (const auto& block : document.AllBlocks()) {
        if (!block->IsPaperSpace()) continue;
        SheetSolids sheet{block->Record().layoutName, 0};
        for (const HostEntity* entity : block->Entities()) {
            const InsertData* reference = ReferenceIn(*entity);
            sheet.count = Sum(sheet.count, reference != nullptr ? counter.In(*reference)
                                           : IsSolid(*entity)   ? 1
                                                                : 0);
        }
        if (sheet.count > 0) sheets.push_back(std::move(sheet));
    }
    return sheets;
}

}  // namespace brenvik
