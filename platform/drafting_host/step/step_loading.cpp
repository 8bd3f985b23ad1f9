// What the modeller can't be given it would fall over, follow without end, or read half of. The text shows
// most of it beforehand; the rest shows in the model.
#include "drafting_host/step/step_loading.h"

#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string_view>
#include <unordered_set>

#include "base/byte_order_mark.h"
#include "drafting_host/step/looks/double_looks.h"
#include "drafting_host/step/looks/look_targets.h"
#include "drafting_host/step/models/model_faults.h"
#include "drafting_host/step/places/mapped_usages.h"
#include "drafting_host/step/places/part_places.h"
#include "drafting_host/step/places/place_operators.h"
#include "drafting_host/step/places/related_shapes.h"
#include "drafting_host/step/places/step_units.h"
#include "drafting_host/step/products/distant_shapes.h"
#include "drafting_host/step/products/double_relations.h"
#include "drafting_host/step/products/mesh_shapes.h"
#include "drafting_host/step/products/plain_usages.h"
#include "drafting_host/step/products/product_shapes.h"
#include "drafting_host/step/products/shared_solids.h"
#include "drafting_host/step/products/step_externals.h"
#include "drafting_host/step/products/step_notes.h"
#include "drafting_host/step/products/usage_tree.h"
#include "drafting_host/step/text_faults.h"
#include "drafting_host/step/texts/data_sections.h"
#include "drafting_host/step/texts/long_statements.h"
#include "drafting_host/step/texts/modeller_session.h"
#include "drafting_host/step/texts/plain_forms.h"
#include "drafting_host/step/texts/step_text.h"

namespace brenvik::step {
namespace {

Failure NoSolid(const std::filesystem::path& path, const std::string& found) {
    return FormatFailure(path, 0, "at least one solid, " + found);
}

[[noreturn]] void Refuse(const std::filesystem::path& path, const Statements& statements,
                         const StatementFault& fault) {
    throw FormatFailure(path, statements.LineAt(fault.place), fault.expected);
}

StatementFault FaultOf(const Statements& statements, const ModelFault& fault) {
    const Statement* statement = statements.Find(fault.number);
    return {statement, statement == nullptr ? 0 : statement->place,
            "a sound statement #" + std::to_string(fault.number) + " (" + fault.reason + ")"};
}

/// Text as the modeller can take it, but for single statements.
void RequireSoundFrame(const std::filesystem::path& path, const Statements& statements) {
    if (!statements.End()) {
        throw FormatFailure(path, statements.LineAt(statements.Content().size()),
                            "\"END-ISO-10303-21;\", the file ends before it is complete");
    }
    if (const auto place = statements.BrokenData()) {
        throw FormatFailure(path, statements.LineAt(*place),
                            "well-formed STEP statements (#n = TYPE(...);), found \"" +
                                LineForMessage(statements.Content(), *place) + "\"");
    }
    if (const auto place = TooDeep(statements)) {
        throw FormatFailure(path, statements.LineAt(*place),
                            "at most " + std::to_string(DeepestBrackets) + " brackets in each other");
    }
    if (const auto repeated = statements.Repeated()) {
        throw FormatFailure(path, statements.LineAt(repeated->second),
                            "a statement number of its own, #" + std::to_string(repeated->number) +
                                " stands in line " + std::to_string(statements.LineAt(repeated->first)) +
                                " already");
    }
}

/// Assemblies in assemblies multiply: a small file can show more parts than any machine has room for.
void RequireBoundedTree(const std::filesystem::path& path, const Statements& statements, CodePage codePage) {
    constexpr std::uint64_t most = 100000;  // boards of six faces take 1.6 GB
    const UsageTree::Size whole = UsageTree(statements).Whole();
    if (whole.ends <= most) return;
    const std::string name = ProductName(statements, whole.root, codePage);
    throw FormatFailure(path, statements.LineOf(whole.root),
                        "at most " + std::to_string(most) + " parts, found " + std::to_string(whole.ends) +
                            " in the assembly " +
                            (name.empty() ? "#" + std::to_string(whole.root) : "\"" + name + "\""));
}

/// A byte order mark is nothing that the modeller knows.
std::string WithoutMark(std::string content) {
    if (content.starts_with(ByteOrderMark))
        content.replace(0, ByteOrderMark.size(), ByteOrderMark.size(), ' ');
    return content;
}

}  // namespace

Loading::Loading(const std::filesystem::path& path, LengthUnit unit)
    : mPath(path),
      mUnit(unit),
      mContent(WithPlacedUsages(WithRelatedShapes(WithPlainUsages(
                                    WithPlainForms(WithoutComments(WithoutMark(ContentOf(path)))), mNotes)),
                                mNotes)),
      mStatements(mContent),
      mContexts(mStatements),
      mQuarantine(mStatements) {
    RequireStep(path, mContent);
    RequireSoundFrame(path, mStatements);
    for (const StatementFault& fault : TextFaults(mStatements)) Remove(fault);
    for (const StatementFault& look : ContextLooks(mStatements, mQuarantine)) Remove(look);
    for (const Statement* name : ExternalNames(mStatements)) mQuarantine.Hide(*name);
    for (const Statement* relation : MeshRelations(mStatements)) mQuarantine.Hide(*relation);
    for (const DoubleRelation& relation : DoubleRelations(mStatements)) mQuarantine.Hide(*relation.statement);
    mCodePage = CodePageOf(mContent);
    RequireBoundedTree(path, mStatements, mCodePage);
}

// A fault can hide another one.
void Loading::Run() {
    constexpr int mostTimes = 8;
    PrepareReading();
    for (int time = 1; Read(), !Sound(); ++time)
        if (time == mostTimes) throw FormatFailure(mPath, 0, "well-formed STEP statements");
    mChecks = CheckBodies(mModel);
}

void Loading::RefuseEmpty(const std::vector<StepNote>& notes) const {
    if (!mQuarantine.LostBodies().empty()) Refuse(mPath, mStatements, mQuarantine.LostBodies().front().fault);
    if (!mQuarantine.LostGeometry().empty()) Refuse(mPath, mStatements, mQuarantine.LostGeometry().front());
    if (!mChecks.faults.empty())
        Refuse(mPath, mStatements, FaultOf(mStatements, mChecks.faults.front().fault));
    const auto told = std::ranges::find_if(notes, &StepNote::lost);
    throw NoSolid(mPath, told == notes.end() ? "the file holds none" : told->text);
}

void Loading::Remove(const StatementFault& fault) {
    if (fault.statement == nullptr || !mQuarantine.Remove(fault)) Refuse(mPath, mStatements, fault);
}

void Loading::Read() {
    mReader.emplace();
    mReader->SetColorMode(Standard_True);
    mReader->SetNameMode(Standard_True);
    mReader->SetLayerMode(Standard_True);
    mReader->SetPropsMode(Standard_False);
    mReader->SetGDTMode(Standard_False);
    mReader->SetMatMode(Standard_False);
    mReader->SetViewMode(Standard_False);
    mTexts.emplace();
    const std::string_view whole = std::string_view(mContent).substr(0, *mStatements.End());
    std::string content = mQuarantine.Empty() ? mTexts->PutInto(whole, mCodePage)
                                              : mTexts->PutInto(mQuarantine.Content(), mCodePage);
    if (HasManySections(mStatements)) content = WithOneSection(std::move(content));
    if (HasLongLists(mStatements)) content = WithoutLongLists(std::move(content));
    if (HasNestedUnits(mStatements)) content = WithDirectUnits(std::move(content));
    if (mContexts.LackUnits()) content = WithUnitsOfLength(std::move(content), mUnit);
    if (HasOwnUses(mStatements)) {
        OwnUses uses = WithOwnUses(std::move(content));
        content = std::move(uses.content);
        mOwnSolids = std::move(uses.solids);
        mEmptiedProducts = uses.emptiedProducts;
    }
    if (HasDistantShapes(mStatements)) content = WithNearShapes(std::move(content));
    if (HasSharedSolids(mStatements)) content = WithOwnSolids(std::move(content));
    if (HasShortOperators(mStatements)) content = WithWholeOperators(std::move(content));
    if (HasIndirectLooks(mStatements)) content = WithDirectLooks(std::move(content));
    if (HasUntiedShapes(mStatements)) content = WithTiedShapes(std::move(content));
    if (HasMisreadPlaces(mStatements)) content = WithPlacesFromTheOrigin(std::move(content));
    std::istringstream plain(std::move(content));
    const IFSelect_ReturnStatus status = mReader->ChangeReader().ReadStream(mPath.string().c_str(), plain);
    mModel = Handle(StepData_StepModel)::DownCast(mReader->Reader().WS()->Model());
    if (!mModel.IsNull() && mModel->NbEntities() == 0) RefuseEmpty();
    if (status == IFSelect_RetDone && !mModel.IsNull() && !mModel->GlobalCheck()->HasFailed()) return;
    const auto broken = mStatements.BrokenHead();
    throw FormatFailure(mPath, broken ? mStatements.LineAt(*broken) : 0,
                        "well-formed STEP statements (#n = TYPE(...);)");
}

/// Removes faulty pieces from the model; true where there were none.
bool Loading::Sound() {
    const Interface_Graph& references = mReader->Reader().WS()->Graph();
    // The modeller counts a representation with a false item for none, and with it all that refers to it.
    if (RemoveFalseItems()) return false;
    bool sound = true;
    for (const ModelFault& fault : Faults(mModel, references)) {
        if (IsPaper(fault.number)) continue;
        Remove(FaultOf(mStatements, fault));
        sound = false;
    }
    if (const auto fault = FarPoint(mModel)) {
        Remove(FaultOf(mStatements, *fault));
        sound = false;
    }
    return sound;
}

/// Takes out of the representations that the modeller reports what is no item; true where there was any.
bool Loading::RemoveFalseItems() {
    bool removed = false;
    std::optional<std::unordered_set<int>> items;
    for (const int number : ReportedStatements(mModel)) {
        const Statement* holder = mStatements.Find(number);
        if (holder == nullptr || RoleIn(mStatements, *holder) != Role::Items) continue;
        if (!items) items = RepresentationItems(mModel);
        for (const Reference& reference : mStatements.ReferencesOf(*holder)) {
            if (!items->contains(reference.number) && mQuarantine.RemoveItem(*holder, reference))
                removed = true;
        }
    }
    return removed;
}

/// What nothing is read from may be as it likes.
bool Loading::IsPaper(int number) const {
    const Statement* statement = mStatements.Find(number);
    return statement != nullptr && RoleIn(mStatements, *statement) == Role::Paperwork;
}

}  // namespace brenvik::step
