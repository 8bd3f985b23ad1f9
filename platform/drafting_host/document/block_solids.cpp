// Counts first, by block and without placing anything: references in references can show any number.
#include "drafting_host/document/block_solids.h"

#include <algorithm>
#include <map>
#include <optional>

#include "base/failure.h"
#include "base/letter_case.h"
#include "drafting_host/document/block_content.h"
#include "drafting_host/document/host_document.h"

namespace brenvik {
namespace {

/// More than any job has; a file of a few lines can show millions.
constexpr long mostSolids = 10000;

bool IsSolid(const HostGeometry& geometry) {
    const auto* shape = std::get_if<ShapeData>(&geometry);
    return shape != nullptr && shape->kind == AcisData::Kind::Solid;
}

class Counter {
  public:
    explicit Counter(const HostDocument& document) : mDocument(document) {}

    /// How many solids a reference shows; counts beyond mostSolids say no more than that.
    long In(const InsertData& reference) {
        const long places = static_cast<long>(std::max(1, reference.columns)) * std::max(1, reference.rows);
        const long inBlock = InBlock(reference.block);
        return inBlock == 0 ? 0 : Capped(std::min(places, mostSolids + 1) * inBlock);
    }

  private:
    static long Capped(long count) { return std::min(count, mostSolids + 1); }

    long InBlock(const std::string& name) {
        // A block that is met within itself counts nothing there.
        const auto [known, fresh] = mCounts.try_emplace(name, 0);
        const HostBlock* block = fresh ? mDocument.FindBlock(name) : nullptr;
        if (block == nullptr) return known->second;
        long count = 0;
        for (const HostEntity* entity : block->Entities()) {
            const HostGeometry geometry = entity->Geometry();
            const auto* inner = std::get_if<InsertData>(&geometry);
            count = Capped(count + (inner != nullptr ? In(*inner) : IsSolid(geometry) ? 1 : 0));
        }
        return mCounts[name] = count;
    }

    const HostDocument& mDocument;
    std::map<std::string, long, LessIgnoreCase> mCounts;
};

/// The solids that a reference shows, at their places. Throws Failure as PlacedContent does.
void Collect(const HostDocument& document, const InsertData& reference, Counter& counter,
             std::vector<PlacedEntity>& solids) {
    for (PlacedEntity& placed : PlacedContent(document, reference)) {
        const auto* inner = std::get_if<InsertData>(&placed.geometry);
        if (inner != nullptr && counter.In(*inner) > 0) {
            Collect(document, *inner, counter, solids);
        } else if (IsSolid(placed.geometry)) {
            solids.push_back(std::move(placed));
        }
    }
}

/// Nothing where all solids of the reference have become entities, else why none has.
std::optional<std::string> TakeOut(HostDocument& document, const InsertData& reference, Counter& counter) {
    if (counter.In(reference) > mostSolids)
        return "expected a block reference with no more than " + std::to_string(mostSolids);
    std::vector<PlacedEntity> solids;
    try {
        Collect(document, reference, counter, solids);
    } catch (const Failure& failure) {
        return failure.detail().empty() ? failure.description() : failure.detail();
    }
    for (PlacedEntity& placed : solids) {
        HostEntity& made = document.Model().Add(std::move(placed.geometry));
        made.SetLook(placed.source->Look());
        made.SetExtendedData(placed.source->ExtendedData());
    }
    return std::nullopt;
}

/// Calls `take` with each reference that shows solids and their count, and gathers its answers by block.
template <class Take>
std::vector<BlockSolids> ForReferences(const HostDocument& document, Counter& counter, Take&& take) {
    std::vector<InsertData> references;
    for (const HostEntity* entity : document.AllBlocks().front()->Entities()) {
        const HostGeometry geometry = entity->Geometry();
        const auto* reference = std::get_if<InsertData>(&geometry);
        if (reference != nullptr && counter.In(*reference) > 0) references.push_back(*reference);
    }
    std::vector<BlockSolids> blocks;
    for (const InsertData& reference : references) {
        auto block = std::find_if(blocks.begin(), blocks.end(), [&](const BlockSolids& known) {
            return EqualsIgnoreCase(known.block, reference.block);
        });
        if (block == blocks.end()) block = blocks.insert(block, BlockSolids{reference.block, 0, 0, {}});
        const std::optional<std::string> reason = take(reference);
        (reason ? block->left : block->taken) += counter.In(reference);
        if (reason && block->reason.empty()) block->reason = *reason;
    }
    return blocks;
}

}  // namespace

std::vector<BlockSolids> CountBlockSolids(const HostDocument& document) {
    Counter counter(document);
    return ForReferences(document, counter, [](const InsertData&) { return std::optional<std::string>(""); });
}

std::vector<BlockSolids> TakeOutBlockSolids(HostDocument& document) {
    Counter counter(document);
    return ForReferences(document, counter,
                         [&](const InsertData& reference) { return TakeOut(document, reference, counter); });
}

}  // namespace brenvik
