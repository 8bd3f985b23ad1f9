// A use T of a mirrored thing, with S for the mirror across the YZ plane: what stands in it gets the places
// S T S, which are plain ones, and only the solids at the end are mirrored.
#include "drafting_host/step/places/own_uses.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <utility>

#include "drafting_host/step/places/place_operators.h"
#include "drafting_host/step/places/placement_frames.h"
#include "drafting_host/step/places/use_index.h"
#include "drafting_host/step/texts/statement_roles.h"
#include "drafting_host/step/texts/step_text.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

/// Raised where uses hold themselves or come to more than any drawing has.
struct TooMany {};

/// What a copy hands down to what it holds.
struct Within {
    std::vector<int> chain;  ///< From inside out.
    bool isMirrored = false;
    int depth = 0;
    int owner = 0;  ///< Of the shape that is mapped there.

    Within In(int number, bool mirrors) const {
        Within inner{{number}, isMirrored != mirrors, depth + 1, owner};
        inner.chain.insert(inner.chain.end(), chain.begin(), chain.end());
        return inner;
    }
};

using Copies = std::map<int, int>;  ///< Of shapes, by the shape.

Frame Mirrored(Frame frame) {
    frame.at[0] = -frame.at[0];
    frame.axes[2][0] = -frame.axes[2][0];
    for (const std::size_t across : {1, 2}) frame.axes[0][across] = -frame.axes[0][across];
    return frame;
}

class Copier {
  public:
    explicit Copier(const Statements& statements)
        : mStatements(statements), mIndex(statements), mAdditions(statements) {}

    OwnUses Run(std::string content) {
        for (const Statement& statement : mStatements.All()) {
            if (statement.kind == "NEXT_ASSEMBLY_USAGE_OCCURRENCE") TakeUsage(statement);
            if (statement.kind.ends_with("REPRESENTATION")) TakeShape(statement);
        }
        const bool hasCopies = !mEdits.empty();
        RedirectLooks();
        if (mEdits.empty()) return {std::move(content), std::move(mSolids), 0};
        if (hasCopies) {
            RemoveUnused();
            mEdits.push_back(mAdditions.Edit());
        }
        return {WithEdits(std::move(content), std::move(mEdits)), std::move(mSolids), mEmptied};
    }

  private:
    /// A usage differs by a look of its own, or of a shape of its assembly, and by a mirroring place.
    void TakeUsage(const Statement& usage) {
        const auto ends = mStatements.ReferencesOf(usage);
        const UsagePlace* const place = mIndex.PlaceOf(usage.number);
        if (ends.size() < 2 || place == nullptr) return;
        Within outside;
        if (mIndex.HasLook(usage.number)) outside.chain.push_back(usage.number);
        for (const int shape : mIndex.ShapesOf(ends[0].number))
            if (mIndex.HasLook(shape)) outside.chain.push_back(shape);
        const auto operated = PlaceOfOperator(mStatements, place->transformation);
        const bool mirrors = operated && operated->mirrors;
        if (outside.chain.empty() && !mirrors) return;
        Copies shapes;
        outside.isMirrored = mirrors;
        const int component = CopyProduct(ends[1].number, outside, shapes);
        if (component == 0 || !shapes.contains(place->component)) return;
        Redirect(ends[1], component);
        mRedirected.push_back(&usage);
        for (const Reference& reference : mStatements.ReferencesOf(*place->relationship)) {
            if (reference.number == place->component) Redirect(reference, shapes[place->component]);
            if (reference.number == place->transformation && mirrors)
                Redirect(reference, AddPair(Frame(), operated->frame));
        }
    }

    void TakeShape(const Statement& shape) {
        const bool hasLook = mIndex.HasLook(shape.number);
        for (const Reference& reference : mStatements.ReferencesOf(shape)) {
            const Statement* const item = mStatements.Find(reference.number);
            if (item == nullptr) continue;
            if (hasLook && IsSolid(item->kind)) TakeSolid(*item, {shape.number});
            if (item->kind == "MAPPED_ITEM") TakeMapped(*item, hasLook ? shape.number : 0);
        }
        if (hasLook && !mIndex.ProductsOf(shape.number).empty()) TakeTied(shape.number);
    }

    void TakeSolid(const Statement& solid, std::vector<int> shapes) {
        for (const int shape : shapes) mFirst.emplace(shape, solid.number);
        shapes.insert(shapes.begin(), solid.number);
        mSolids.push_back({solid.number, solid.number, std::move(shapes), false, 0});
    }

    /// The look of a product's shape counts for the solids of those that are said to be the same.
    void TakeTied(int looked) {
        std::set<int> seen{looked};
        std::vector<int> open{looked};
        while (!open.empty()) {
            const int one = open.back();
            open.pop_back();
            for (const Statement* tie : mIndex.TiesOf(one)) {
                const auto ends = mStatements.ReferencesOf(*tie);
                const int other = ends[0].number == one ? ends[1].number : ends[0].number;
                const Statement* const shape = mStatements.Find(other);
                if (shape == nullptr || !mIndex.ProductsOf(other).empty() || !seen.insert(other).second)
                    continue;
                open.push_back(other);
                for (const Reference& item : mStatements.ReferencesOf(*shape))
                    if (const Statement* const solid = mStatements.Find(item.number);
                        solid != nullptr && IsSolid(solid->kind))
                        TakeSolid(*solid, {other, looked});
            }
        }
    }

    void TakeMapped(const Statement& item, int lookedShape) {
        const auto ends = mStatements.ReferencesOf(item);
        if (ends.size() < 2 || !mTaken.insert(item.number).second) return;
        const auto operated = PlaceOfOperator(mStatements, ends[1].number);
        const bool mirrors = operated && operated->mirrors;
        const Statement* const map = mStatements.Find(ends[0].number);
        const auto mapped = map == nullptr ? std::span<const Reference>() : mStatements.ReferencesOf(*map);
        // The modeller loses the name of the product that another one's shape is mapped into.
        const bool isOwned = mapped.size() > 1 && !mIndex.ProductsOf(mapped[1].number).empty();
        if (!mIndex.HasLook(item.number) && lookedShape == 0 && !mirrors && !isOwned) return;
        Within outside;
        if (lookedShape != 0) outside.chain.push_back(lookedShape);
        const auto values = MapAndTarget(item, outside);
        if (!values) return;
        Redirect(ends[0], values->first);
        Redirect(ends[1], values->second);
    }

    /// A copy of a mapped item's map and its target.
    std::optional<std::pair<int, int>> MapAndTarget(const Statement& item, const Within& outside) {
        const auto ends = mStatements.ReferencesOf(item);
        const Statement* const map = ends.size() < 2 ? nullptr : mStatements.Find(ends[0].number);
        if (map == nullptr || mStatements.ReferencesOf(*map).size() < 2) return std::nullopt;
        const auto mapped = mStatements.ReferencesOf(*map);
        const auto operated = PlaceOfOperator(mStatements, ends[1].number);
        Within inside = outside.In(item.number, operated && operated->mirrors);
        const std::vector<int>& owners = mIndex.ProductsOf(mapped[1].number);
        if (!owners.empty()) inside.owner = owners.front();
        Copies copies;
        const int shape = CopyShape(mapped[1].number, inside, copies);
        if (shape == 0) return std::nullopt;
        const int origin = Turned(mapped[0].number, inside.isMirrored);
        const int copy = Add("REPRESENTATION_MAP(" + Shown(origin) + "," + Shown(shape) + ")");
        return std::pair(copy, Turned(ends[1].number, outside.isMirrored));
    }

    /// A placement, or what stands for an operator that mirrors, within what is mirrored or not.
    int Turned(int number, bool isMirrored) {
        if (const auto operated = PlaceOfOperator(mStatements, number)) {
            if (!isMirrored && !operated->mirrors) return number;
            return AddFrame(isMirrored ? Mirrored(operated->frame) : operated->frame);
        }
        const auto place = isMirrored ? PlaceOf(mStatements, number) : std::nullopt;
        const auto frame = place ? FrameOf(*place) : std::nullopt;
        return frame ? AddFrame(Mirrored(*frame)) : number;
    }

    int CopyShape(int number, const Within& within, Copies& copies) {
        constexpr int deepest = 200;
        const Statement* const shape = mStatements.Find(number);
        if (shape == nullptr) return 0;
        if (within.depth > deepest) throw TooMany();
        if (const auto known = copies.find(number); known != copies.end()) return known->second;
        Within inside = within;
        if (mIndex.HasLook(number)) inside.chain.insert(inside.chain.begin(), number);
        std::map<std::size_t, int> others;
        for (const Reference& reference : mStatements.ReferencesOf(*shape)) {
            const Statement* const item = mStatements.Find(reference.number);
            if (item == nullptr) continue;
            if (IsSolid(item->kind)) others[reference.place] = CopySolid(*item, inside);
            if (item->kind != "MAPPED_ITEM") continue;
            const auto values = MapAndTarget(*item, inside);
            if (values)
                others[reference.place] =
                    Add("MAPPED_ITEM(''," + Shown(values->first) + "," + Shown(values->second) + ")");
        }
        const int copy = AddCopy(*shape, others);
        copies[number] = copy;
        for (const Statement* tie : mIndex.TiesOf(number)) CopyTie(*tie, number, inside, copies);
        return copy;
    }

    /// Shapes that another product has as its own end the way.
    void CopyTie(const Statement& tie, int shape, const Within& within, Copies& copies) {
        const auto ends = mStatements.ReferencesOf(tie);
        const int other = ends[0].number == shape ? ends[1].number : ends[0].number;
        if (copies.contains(other) || !mIndex.ProductsOf(other).empty()) return;
        if (CopyShape(other, within, copies) == 0) return;
        AddCopy(tie, {{ends[0].place, copies[ends[0].number]}, {ends[1].place, copies[ends[1].number]}});
    }

    int CopySolid(const Statement& solid, const Within& within) {
        OwnSolid own{AddCopy(solid, {}), solid.number, {solid.number}, within.isMirrored, within.owner};
        own.chain.insert(own.chain.end(), within.chain.begin(), within.chain.end());
        for (const int number : within.chain) mFirst.emplace(number, own.number);
        mSolids.push_back(std::move(own));
        return mSolids.back().number;
    }

    /// A definition, its version and its product, with the shapes and the usages in it.
    int CopyProduct(int number, const Within& within, Copies& shapes) {
        const Statement* const definition = mStatements.Find(number);
        const auto copy = definition == nullptr ? 0 : CopyChain(*definition, 0);
        if (copy == 0) return 0;
        for (const int shape : mIndex.ShapesOf(number)) {
            const int own = CopyShape(shape, within, shapes);
            const int named = Add("PRODUCT_DEFINITION_SHAPE('',''," + Shown(copy) + ")");
            Add("SHAPE_DEFINITION_REPRESENTATION(" + Shown(named) + "," + Shown(own) + ")");
        }
        Within inside = within;
        for (const int shape : mIndex.ShapesOf(number))
            if (mIndex.HasLook(shape)) inside.chain.insert(inside.chain.begin(), shape);
        for (const Statement* usage : mIndex.UsagesIn(number)) CopyUsage(*usage, copy, inside, shapes);
        return copy;
    }

    int CopyChain(const Statement& statement, int depth) {
        constexpr int longest = 3;
        const auto references = mStatements.ReferencesOf(statement);
        if (statement.kind == "PRODUCT") return AddCopy(statement, {});
        const Statement* const next = references.empty() ? nullptr : mStatements.Find(references[0].number);
        if (next == nullptr || depth == longest) return 0;
        const int copy = CopyChain(*next, depth + 1);
        return copy == 0 ? 0 : AddCopy(statement, {{references[0].place, copy}});
    }

    void CopyUsage(const Statement& usage, int assembly, const Within& within, const Copies& holders) {
        const auto ends = mStatements.ReferencesOf(usage);
        const UsagePlace* const place = mIndex.PlaceOf(usage.number);
        if (place == nullptr || !holders.contains(place->assembly)) return;
        const auto operated = PlaceOfOperator(mStatements, place->transformation);
        Within inside = within.In(usage.number, operated && operated->mirrors);
        inside.owner = 0;
        Copies shapes;
        const int component = CopyProduct(ends[1].number, inside, shapes);
        if (component == 0 || !shapes.contains(place->component)) return;
        const int copy = AddCopy(usage, {{ends[0].place, assembly}, {ends[1].place, component}});
        const int named = Add("PRODUCT_DEFINITION_SHAPE('',''," + Shown(copy) + ")");
        std::map<std::size_t, int> others;
        for (const Reference& reference : mStatements.ReferencesOf(*place->relationship)) {
            if (reference.number == place->component) others[reference.place] = shapes[place->component];
            if (reference.number == place->assembly) others[reference.place] = holders.at(place->assembly);
            if (reference.number == place->transformation)
                others[reference.place] = TurnedPair(*place, within.isMirrored);
        }
        const int relationship = AddCopy(*place->relationship, others);
        Add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + Shown(relationship) + "," + Shown(named) + ")");
    }

    /// The order says whose placement is whose: those added here stand in no shape.
    int TurnedPair(const UsagePlace& place, bool isMirrored) {
        const int number = place.transformation;
        if (const auto operated = PlaceOfOperator(mStatements, number)) {
            if (!isMirrored && !operated->mirrors) return number;
            return AddPair(Frame(), isMirrored ? Mirrored(operated->frame) : operated->frame);
        }
        const Statement* const pair = mStatements.Find(number);
        const auto ends = pair == nullptr ? std::span<const Reference>() : mStatements.ReferencesOf(*pair);
        if (!isMirrored || ends.size() < 2) return number;
        int first = ends[0].number, second = ends[1].number;
        if (AreSwapped(mStatements, place.component, place.assembly, first, second)) std::swap(first, second);
        return AddCopy(*pair, {{ends[0].place, Turned(first, true)}, {ends[1].place, Turned(second, true)}});
    }

    int Add(const std::string& values) {
        constexpr int most = 500000;
        if (++mCount > most) throw TooMany();
        return mAdditions.Add(values);
    }

    int AddFrame(const Frame& frame) {
        const auto values = [](const Vector& v) {
            return "('',(" + RealText(v[0]) + "," + RealText(v[1]) + "," + RealText(v[2]) + "))";
        };
        const int at = Add("CARTESIAN_POINT" + values(frame.at));
        const int axis = Add("DIRECTION" + values(frame.axes[2]));
        const int along = Add("DIRECTION" + values(frame.axes[0]));
        return Add("AXIS2_PLACEMENT_3D(''," + Shown(at) + "," + Shown(axis) + "," + Shown(along) + ")");
    }

    int AddPair(const Frame& first, const Frame& second) {
        const int from = AddFrame(first), to = AddFrame(second);
        return Add("ITEM_DEFINED_TRANSFORMATION('',''," + Shown(from) + "," + Shown(to) + ")");
    }

    /// A copy of a statement with other references at some places.
    int AddCopy(const Statement& statement, const std::map<std::size_t, int>& others) {
        const std::string_view text = TextOf(mStatements, statement);
        const std::size_t start = statement.place + text.find('=') + 1;
        std::string values(text.substr(start - statement.place, statement.end - 1 - start));
        std::vector<TextEdit> edits;
        for (const auto& [place, number] : others) {
            TextEdit edit = ReferenceEdit(mStatements.Content(), place, Shown(number));
            edit.place -= start;
            edits.push_back(std::move(edit));
        }
        return Add(WithEdits(std::move(values), std::move(edits)));
    }

    void Redirect(const Reference& reference, int number) {
        mEdits.push_back(ReferenceEdit(mStatements.Content(), reference.place, Shown(number)));
    }

    /// A product of which all usages have copies would be a part that stands in no assembly. Without its
    /// shape it is none, and what it is made of goes the same way.
    void RemoveUnused() {
        std::map<int, int> left;                              // usages, by component
        std::map<int, std::vector<const Statement*>> places;  // by usage
        std::map<int, std::vector<const Statement*>> shapes;  // by definition
        const auto firstOf = [&](int number) {
            const Statement* const statement = mStatements.Find(number);
            const bool isEmpty = statement == nullptr || mStatements.ReferencesOf(*statement).empty();
            return isEmpty ? 0 : mStatements.ReferencesOf(*statement)[0].number;
        };
        for (const Statement& statement : mStatements.All()) {
            const auto ends = mStatements.ReferencesOf(statement);
            if (ends.size() < 2) continue;
            if (statement.kind == "NEXT_ASSEMBLY_USAGE_OCCURRENCE") ++left[ends[1].number];
            if (statement.kind == "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION")
                places[firstOf(ends[1].number)].push_back(&statement);
            if (statement.kind == "SHAPE_DEFINITION_REPRESENTATION")
                shapes[firstOf(ends[0].number)].push_back(&statement);
        }
        std::vector<const Statement*> open = mRedirected;
        std::set<const Statement*> gone(open.begin(), open.end());
        while (!open.empty()) {
            const int component = mStatements.ReferencesOf(*open.back())[1].number;
            open.pop_back();
            if (--left[component] > 0) continue;
            ++mEmptied;
            for (const Statement* shape : shapes[component]) Remove(*shape);
            for (const Statement* usage : mIndex.UsagesIn(component)) {
                for (const Statement* place : places[usage->number]) Remove(*place);
                if (gone.insert(usage).second) open.push_back(usage);
            }
        }
    }

    void Remove(const Statement& statement) {
        mEdits.push_back({statement.place, statement.end - statement.place, ""});
    }

    /// The modeller is given no looks of usages: they name a solid of theirs.
    void RedirectLooks() {
        for (const Statement& look : mStatements.All()) {
            for (const Reference& target : LookTargets(mStatements, look)) {
                const auto first = mFirst.find(target.number);
                if (first != mFirst.end()) Redirect(target, first->second);
            }
        }
    }

    const Statements& mStatements;
    const UseIndex mIndex;
    NewStatements mAdditions;
    std::vector<TextEdit> mEdits;
    std::vector<OwnSolid> mSolids;
    std::vector<const Statement*> mRedirected;  ///< Usages of copies.
    std::set<int> mTaken;                       ///< Mapped items.
    std::map<int, int> mFirst;                  ///< The first own solid of what a chain names.
    int mCount = 0;
    std::size_t mEmptied = 0;
};

}  // namespace

bool HasOwnUses(const Statements& statements) {
    return std::ranges::any_of(statements.All(), [&](const Statement& statement) {
        if (statement.kind == "MAPPED_ITEM") return true;
        if (const auto operated = PlaceOfOperator(statements, statement.number);
            operated && operated->mirrors)
            return true;
        return std::ranges::any_of(LookTargets(statements, statement), [&](const Reference& target) {
            const Statement* const item = statements.Find(target.number);
            return item != nullptr && (item->kind == "NEXT_ASSEMBLY_USAGE_OCCURRENCE" ||
                                       item->kind.ends_with("SHAPE_REPRESENTATION"));
        });
    });
}

OwnUses WithOwnUses(std::string content) {
    const Statements statements(content);
    try {
        return Copier(statements).Run(content);
    } catch (const TooMany&) {
        // Files that hold themselves are refused where the modeller has read them.
        return {std::move(content), {}, 0};
    }
}

}  // namespace brenvik::step
