// A usage's assembly and component are product definitions; their shapes are those that define them, and
// those that are said to be the same.
#include "drafting_host/step/places/mapped_usages.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

#include "drafting_host/step/places/placement_frames.h"
#include "drafting_host/step/products/usage_tree.h"
#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

/// A component's shape in that of an assembly.
struct Mapped {
    const Statement* item = nullptr;
    const Statement* holder = nullptr;
    int origin = 0, shape = 0, target = 0;
};

class Rewriter {
  public:
    Rewriter(const Statements& statements, std::vector<StepNote>& notes)
        : mStatements(statements), mTree(statements), mAdditions(statements), mNotes(notes) {}

    std::vector<TextEdit> Edits() {
        FindItems();
        std::map<std::pair<int, int>, std::vector<const Usage*>> usages;  // by assembly and component
        for (const Usage& usage : mTree.Usages()) usages[{usage.assembly, usage.component}].push_back(&usage);
        for (const auto& [products, all] : usages) Take(all);
        for (const auto& [shape, origins] : mOrigins) AddItems(shape, origins);
        if (mEdits.empty()) return {};
        TextEdit additions = mAdditions.Edit();
        std::erase(additions.text, '\n');
        mEdits.push_back(std::move(additions));
        return std::move(mEdits);
    }

  private:
    void FindItems() {
        for (const Statement& holder : mStatements.All()) {
            const auto references = mStatements.ReferencesOf(holder);
            if (holder.kind == "SHAPE_DEFINITION_REPRESENTATION" && references.size() > 1)
                mDefining.insert(references[1].number);
            if (!holder.kind.ends_with("SHAPE_REPRESENTATION")) continue;
            for (const Reference& reference : mStatements.ReferencesOf(holder)) {
                const Statement* const item = mStatements.Find(reference.number);
                if (item == nullptr || item->kind != "MAPPED_ITEM") continue;
                const auto ends = mStatements.ReferencesOf(*item);
                const Statement* const map = ends.size() < 2 ? nullptr : mStatements.Find(ends[0].number);
                if (map == nullptr || mStatements.ReferencesOf(*map).size() < 2) continue;
                const auto mapped = mStatements.ReferencesOf(*map);
                mItems[holder.number].push_back(
                    {item, &holder, mapped[0].number, mapped[1].number, ends[1].number});
            }
        }
    }

    /// The usages of one component in one assembly.
    void Take(const std::vector<const Usage*>& usages) {
        std::vector<Mapped> items;
        const std::vector<int> shapes = mTree.ShapesOf(usages.front()->component);
        for (const int holder : mTree.ShapesOf(usages.front()->assembly)) {
            const auto held = mItems.find(holder);
            if (held == mItems.end()) continue;
            for (const Mapped& item : held->second)
                if (std::ranges::find(shapes, item.shape) != shapes.end()) items.push_back(item);
        }
        if (items.empty()) return;
        // A shape that is only said to be the component's isn't known by its name.
        for (Mapped& item : items)
            if (!mDefining.contains(item.shape)) item.shape = shapes.front();
        std::vector<const Usage*> open;
        for (const Usage* usage : usages) {
            if (!usage->isPlaced)
                open.push_back(usage);
            else
                PassOverRepeated(*usage, items);
        }
        for (std::size_t at = 0; at < items.size() && !open.empty(); ++at) {
            // Where there are more items than usages, the last one stands for the rest.
            const bool isFurther = at >= open.size();
            const Usage& usage = *open[std::min(at, open.size() - 1)];
            int number = usage.statement->number;
            if (isFurther) number = mAdditions.Add(ValuesOf(*usage.statement));
            Place(number, items[at]);
        }
    }

    std::string ValuesOf(const Statement& statement) const {
        std::string_view text = TextOf(mStatements, statement);
        text.remove_prefix(text.find('=') + 1);
        text.remove_suffix(1);
        return std::string(text);
    }

    void Place(int usage, const Mapped& item) {
        const std::string shape =
            Shown(mAdditions.Add("PRODUCT_DEFINITION_SHAPE('',''," + Shown(usage) + ")"));
        const Statement* const target = mStatements.Find(item.target);
        const bool isPlacement = target != nullptr && target->kind == "AXIS2_PLACEMENT_3D";
        std::string place = Shown(item.target);
        if (isPlacement) {
            place = Shown(mAdditions.Add("ITEM_DEFINED_TRANSFORMATION('',''," + Shown(item.origin) + "," +
                                         Shown(item.target) + ")"));
            mOrigins[item.shape].insert(item.origin);
        }
        const std::string relationship = Shown(
            mAdditions.Add("(REPRESENTATION_RELATIONSHIP('',''," + Shown(item.shape) + "," +
                           Shown(item.holder->number) + ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" +
                           place + ")SHAPE_REPRESENTATION_RELATIONSHIP())"));
        mAdditions.Add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + relationship + "," + shape + ")");
        Remove(item, isPlacement ? item.target : Origin());
        for (const Statement& look : mStatements.All()) {
            if (!IsLook(look)) continue;
            for (const Reference& reference : mStatements.ReferencesOf(look))
                if (reference.number == item.item->number)
                    mEdits.push_back(ReferenceEdit(mStatements.Content(), reference.place, Shown(usage)));
        }
    }

    /// Takes the item out of its shape, with a placement in its stead, and its statement out of the file.
    void Remove(const Mapped& item, int stead) {
        for (const Reference& reference : mStatements.ReferencesOf(*item.holder))
            if (reference.number == item.item->number)
                mEdits.push_back(ReferenceEdit(mStatements.Content(), reference.place, Shown(stead)));
        // What else names it would be left without it.
        if (IsNamedElsewhere(item)) return;
        const std::string_view text = TextOf(mStatements, *item.item);
        mEdits.push_back({item.item->place, text.size(),
                          std::string(static_cast<std::size_t>(std::ranges::count(text, '\n')), '\n')});
    }

    bool IsNamedElsewhere(const Mapped& item) const {
        return std::ranges::any_of(mStatements.All(), [&](const Statement& statement) {
            if (&statement == item.holder || IsLook(statement)) return false;
            const auto references = mStatements.ReferencesOf(statement);
            return std::ranges::find(references, item.item->number, &Reference::number) != references.end();
        });
    }

    static bool IsLook(const Statement& statement) {
        return statement.kind == "PRESENTATION_LAYER_ASSIGNMENT" || statement.kind.ends_with("STYLED_ITEM");
    }

    int Origin() {
        if (mOrigin == 0)
            mOrigin = mAdditions.Add("AXIS2_PLACEMENT_3D(''," +
                                     Shown(mAdditions.Add("CARTESIAN_POINT('',(0.,0.,0.))")) + ",$,$)");
        return mOrigin;
    }

    /// A placement that shapes are brought together by stands among the items of its shape.
    void AddItems(int number, const std::set<int>& origins) {
        const Statement* const shape = mStatements.Find(number);
        const auto items = mStatements.ReferencesOf(*shape);
        if (items.size() < 2) return;
        for (const int origin : origins) {
            if (std::ranges::find(items, origin, &Reference::number) != items.end()) continue;
            mEdits.push_back({items[0].place, 0, Shown(origin) + ","});
        }
    }

    /// An item that has a placed usage's very place says the same again.
    void PassOverRepeated(const Usage& usage, std::vector<Mapped>& items) {
        const auto place = PlaceOfUsage(usage);
        if (!place) return;
        const auto same = std::ranges::find_if(items, [&](const Mapped& item) {
            const auto from = FrameAt(item.origin), to = FrameAt(item.target);
            return from && to && Combined(*from, *to) == *place;
        });
        if (same == items.end()) return;
        const Statement* const target = mStatements.Find(same->target);
        mNotes.push_back({"the mapped shape " + Shown(same->item->number) +
                              " says again what the assembly usage " + Shown(usage.statement->number) +
                              " says: it is passed over",
                          mStatements.LineAt(same->item->place), false});
        Remove(*same, target->number);
        items.erase(same);
    }

    std::optional<Frame> FrameAt(int number) const {
        const auto place = PlaceOf(mStatements, number);
        return place ? FrameOf(*place) : std::nullopt;
    }

    std::optional<Frame> PlaceOfUsage(const Usage& usage) {
        if (mPlaces.empty()) FindPlaces();
        const auto transformation = mPlaces.find(usage.statement->number);
        const Statement* const pair =
            transformation == mPlaces.end() ? nullptr : mStatements.Find(transformation->second);
        if (pair == nullptr || pair->kind != "ITEM_DEFINED_TRANSFORMATION") return std::nullopt;
        const auto ends = mStatements.ReferencesOf(*pair);
        if (ends.size() < 2) return std::nullopt;
        const auto from = FrameAt(ends[0].number), to = FrameAt(ends[1].number);
        return from && to ? std::optional(Combined(*from, *to)) : std::nullopt;
    }

    void FindPlaces() {
        mPlaces[0] = 0;
        for (const Statement& placing : mStatements.All()) {
            const auto ends = mStatements.ReferencesOf(placing);
            if (placing.kind != "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION" || ends.size() < 2) continue;
            const Statement* const relationship = mStatements.Find(ends[0].number);
            const Statement* const shape = mStatements.Find(ends[1].number);
            if (relationship == nullptr || shape == nullptr || mStatements.ReferencesOf(*shape).empty())
                continue;
            for (const Reference& reference : mStatements.ReferencesOf(*relationship)) {
                const Statement* const one = mStatements.Find(reference.number);
                if (one != nullptr && one->kind == "ITEM_DEFINED_TRANSFORMATION")
                    mPlaces[mStatements.ReferencesOf(*shape)[0].number] = reference.number;
            }
        }
    }

    const Statements& mStatements;
    const UsageTree mTree;
    NewStatements mAdditions;
    std::vector<StepNote>& mNotes;
    std::vector<TextEdit> mEdits;
    std::unordered_map<int, std::vector<Mapped>> mItems;  ///< By the shape that holds them.
    std::set<int> mDefining;                              ///< Shapes that define products.
    std::map<int, std::set<int>> mOrigins;                ///< By shape, the placements that it has to hold.
    std::unordered_map<int, int> mPlaces;                 ///< Of usages, their transformations.
    int mOrigin = 0;
};

}  // namespace

std::string WithPlacedUsages(std::string content, std::vector<StepNote>& notes) {
    if (content.find("MAPPED_ITEM") == content.npos ||
        content.find("NEXT_ASSEMBLY_USAGE_OCCURRENCE") == content.npos)
        return content;
    const Statements statements(content);
    std::vector<TextEdit> edits = Rewriter(statements, notes).Edits();
    return WithEdits(std::move(content), std::move(edits));
}

}  // namespace brenvik::step
