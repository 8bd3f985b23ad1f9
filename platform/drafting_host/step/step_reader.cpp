// Reads a STEP file through the modeller's assembly document and flattens it into solids at their
// places.
#include "drafting_host/step/step_reader.h"

#include <BRep_Tool.hxx>
#include <Interface_CheckIterator.hxx>
#include <Quantity_ColorRGBA.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepShape_ManifoldSolidBrep.hxx>
#include <TColStd_HSequenceOfExtendedString.hxx>
#include <TColStd_SequenceOfAsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/transform.h"
#include "drafting_host/step/body_faults.h"
#include "drafting_host/step/model_faults.h"
#include "drafting_host/step/modeller_session.h"
#include "drafting_host/step/step_notes.h"
#include "drafting_host/step/step_quarantine.h"
#include "drafting_host/step/step_statements.h"
#include "drafting_host/step/step_strings.h"
#include "drafting_host/step/step_text.h"

namespace brenvik::step {
namespace {

std::string Utf8(const TCollection_ExtendedString& text) {
    std::string result(static_cast<std::size_t>(text.LengthOfCString()), '\0');
    char* place = result.data();
    text.ToUTF8CString(place);
    return result;
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

Rgb ScreenColor(const Quantity_ColorRGBA& color) {
    double red = 0, green = 0, blue = 0;
    color.GetRGB().Values(red, green, blue, Quantity_TOC_sRGB);
    const auto byte = [](double part) {
        return static_cast<std::uint8_t>(std::clamp(std::lround(part * 255), 0L, 255L));
    };
    return {byte(red), byte(green), byte(blue)};
}

/// What an instance hands down to the parts in it.
struct Inherited {
    TopLoc_Location place;
    std::string assembly;
    std::string instance;
    std::string layer;
    std::optional<Rgb> color;
};

std::size_t CountOf(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind, TopAbs_ShapeEnum within) {
    std::size_t count = 0;
    for (TopExp_Explorer one(shape, kind, within); one.More(); one.Next()) ++count;
    return count;
}

/// What a shape without a solid is made of: "an open shell of 5 faces".
std::string ContentsOf(const TopoDS_Shape& shape) {
    const auto counted = [](std::size_t count, const char* thing) {
        return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
    };
    const std::size_t faces = CountOf(shape, TopAbs_FACE, TopAbs_SHAPE);
    std::size_t shells = 0, open = 0;
    for (TopExp_Explorer shell(shape, TopAbs_SHELL); shell.More(); shell.Next()) {
        ++shells;
        if (!BRep_Tool::IsClosed(shell.Current())) ++open;
    }
    if (shells > 0) {
        const std::string closed = counted(shells - open, "closed shell");
        const std::string opened = counted(open, "open shell");
        const std::string all = open == 0 ? closed : open == shells ? opened : opened + " and " + closed;
        return "a surface model, " + all + " of " + counted(faces, "face");
    }
    if (faces > 0) return "a surface model of " + counted(faces, "face");
    const std::size_t edges = CountOf(shape, TopAbs_EDGE, TopAbs_SHAPE);
    return edges > 0 ? counted(edges, "curve")
                     : counted(CountOf(shape, TopAbs_VERTEX, TopAbs_SHAPE), "point");
}

class Flattener {
  public:
    /// `toTheLetter` leaves the blanks at the ends of names.
    Flattener(const Handle(TDocStd_Document) & document, const StandIns& texts, bool toTheLetter,
              StepDocument& result)
        : mShapes(XCAFDoc_DocumentTool::ShapeTool(document->Main())),
          mColors(XCAFDoc_DocumentTool::ColorTool(document->Main())),
          mLayers(XCAFDoc_DocumentTool::LayerTool(document->Main())),
          mTexts(texts),
          mToTheLetter(toTheLetter),
          mResult(result) {}

    /// The names of the parts by the shape that they share with their copies.
    const std::map<const Standard_Transient*, std::string>& NamesByShape() const { return mNamesByShape; }

    void Run() {
        TDF_LabelSequence roots;
        mShapes->GetFreeShapes(roots);
        for (const TDF_Label& root : roots) Walk(root, {}, 0);
    }

    /// Tells the products without a solid and what they hold. Of those that hold nothing, `known` have been
    /// told otherwise.
    void NoteWithoutSolid(std::size_t known) {
        for (const auto& [what, times] : mWithoutSolid) {
            mResult.notes.push_back(
                {(times == 1 ? what : std::to_string(times) + " times " + what) + " is passed over"});
        }
        if (mEmpty > known) {
            mResult.notes.push_back(
                {std::to_string(mEmpty - known) + " object(s) without any shape passed over"});
        }
    }

  private:
    std::string NameOf(const TDF_Label& label) const {
        Handle(TDataStd_Name) name;
        if (!label.FindAttribute(TDataStd_Name::GetID(), name)) return {};
        const std::string text = mTexts.TextFor(Utf8(name->Get()));
        return mToTheLetter ? text : Trimmed(text);
    }

    /// A product's name, or its instance's. Where this program named nothing, the modeller makes up the
    /// latter.
    std::string NameOf(const TDF_Label& product, const std::string& instance) const {
        const std::string name = NameOf(product);
        return name.empty() && !mToTheLetter ? instance : name;
    }

    std::string LayerOf(const TDF_Label& label) const {
        Handle(TColStd_HSequenceOfExtendedString) layers;
        if (!mLayers->GetLayers(label, layers) || layers.IsNull() || layers->IsEmpty()) return {};
        return mTexts.TextFor(Utf8(layers->First()));
    }

    std::optional<Rgb> ColorOf(const TDF_Label& label) const {
        Quantity_ColorRGBA color;
        for (const XCAFDoc_ColorType type : {XCAFDoc_ColorSurf, XCAFDoc_ColorGen, XCAFDoc_ColorCurv}) {
            if (mColors->GetColor(label, type, color)) return ScreenColor(color);
        }
        return std::nullopt;
    }

    /// An instance's own layer and colour stand above those of its product.
    static void Overlay(Inherited& inherited, std::string layer, const std::optional<Rgb>& color) {
        if (inherited.layer.empty()) inherited.layer = std::move(layer);
        if (!inherited.color) inherited.color = color;
    }

    void Walk(const TDF_Label& label, Inherited inherited, int depth) {
        // An assembly that holds itself would never end. Real ones are nested a handful deep.
        if (depth > 200) throw InvalidCall("STEP: assemblies are nested deeper than 200");
        Overlay(inherited, LayerOf(label), ColorOf(label));
        TDF_Label product = label;
        if (XCAFDoc_ShapeTool::IsReference(label)) {
            inherited.instance = NameOf(label);
            inherited.place = inherited.place * XCAFDoc_ShapeTool::GetLocation(label);
            XCAFDoc_ShapeTool::GetReferredShape(label, product);
            Overlay(inherited, LayerOf(product), ColorOf(product));
        }
        if (!XCAFDoc_ShapeTool::IsAssembly(product)) {
            AddPart(product, inherited);
            return;
        }
        inherited.assembly = NameOf(product, inherited.instance);
        TDF_LabelSequence components;
        XCAFDoc_ShapeTool::GetComponents(product, components);
        for (const TDF_Label& component : components) Walk(component, inherited, depth + 1);
    }

    void AddPart(const TDF_Label& product, const Inherited& inherited) {
        const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(product);
        const std::string name = NameOf(product, inherited.instance);
        if (shape.IsNull() || !TopExp_Explorer(shape, TopAbs_VERTEX).More()) {
            ++mEmpty;
            return;
        }
        if (!TopExp_Explorer(shape, TopAbs_SOLID).More()) {
            ++mWithoutSolid[(name.empty() ? "a part" : "part \"" + name + "\"") + " without a solid (" +
                            ContentsOf(shape) + ")"];
            return;
        }
        for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next()) {
            StepSolid part{solids::Placed(solid.Current().Moved(inherited.place)), name, inherited.assembly,
                           inherited.layer, inherited.color};
            Refine(product, solid.Current(), part);
            mNamesByShape.emplace(solid.Current().TShape().get(), part.name);
            mResult.solids.push_back(std::move(part));
        }
    }

    /// Layer and colour that stand on the solid or on all its faces alike rather than on the product.
    void Refine(const TDF_Label& product, const TopoDS_Shape& solid, StepSolid& part) const {
        TDF_Label own;
        if (XCAFDoc_ShapeTool::GetShape(product).IsSame(solid)) {
            own = product;
        } else if (mShapes->FindSubShape(product, solid, own)) {
            const std::string name = NameOf(own);
            if (part.name.empty() && !mToTheLetter) part.name = name;
            if (part.layer.empty()) part.layer = LayerOf(own);
            if (const auto color = ColorOf(own)) part.color = color;
        }
        if (!part.color) part.color = CommonFaceColor(product, solid);
        if (part.layer.empty()) part.layer = CommonFaceLayer(product, solid);
    }

    std::optional<Rgb> CommonFaceColor(const TDF_Label& product, const TopoDS_Shape& solid) const {
        std::optional<Rgb> common;
        for (TopExp_Explorer face(solid, TopAbs_FACE); face.More(); face.Next()) {
            TDF_Label label;
            if (!mShapes->FindSubShape(product, face.Current(), label)) return std::nullopt;
            const std::optional<Rgb> color = ColorOf(label);
            if (!color || (common && *common != *color)) return std::nullopt;
            common = color;
        }
        return common;
    }

    std::string CommonFaceLayer(const TDF_Label& product, const TopoDS_Shape& solid) const {
        std::string common;
        for (TopExp_Explorer face(solid, TopAbs_FACE); face.More(); face.Next()) {
            TDF_Label label;
            if (!mShapes->FindSubShape(product, face.Current(), label)) return {};
            const std::string layer = LayerOf(label);
            if (layer.empty() || (!common.empty() && common != layer)) return {};
            common = layer;
        }
        return common;
    }

    Handle(XCAFDoc_ShapeTool) mShapes;
    Handle(XCAFDoc_ColorTool) mColors;
    Handle(XCAFDoc_LayerTool) mLayers;
    const StandIns& mTexts;
    bool mToTheLetter;
    StepDocument& mResult;
    std::map<std::string, int> mWithoutSolid;
    std::size_t mEmpty = 0;
    std::map<const Standard_Transient*, std::string> mNamesByShape;
};

void NameTheNameless(StepDocument& document, const std::filesystem::path& path) {
    const auto nameless =
        std::ranges::count_if(document.solids, [](const StepSolid& part) { return part.name.empty(); });
    const std::string stem = path.stem().string();
    int number = 0;
    for (StepSolid& part : document.solids) {
        if (!part.name.empty()) continue;
        ++number;
        part.name = nameless == 1 ? stem : stem + " " + std::to_string(number);
    }
}

std::string UnitOf(STEPControl_Reader& reader) {
    TColStd_SequenceOfAsciiString lengths, angles, solidAngles;
    reader.FileUnits(lengths, angles, solidAngles);
    std::string unit = lengths.IsEmpty() ? "" : lengths.First().ToCString();
    std::ranges::transform(unit, unit.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return unit;
}

void NoteFailedEntities(const STEPControl_Reader& reader, StepDocument& document) {
    const Handle(Transfer_TransientProcess) process = reader.WS()->TransferReader()->TransientProcess();
    if (process.IsNull()) return;
    int failed = 0;
    Interface_CheckIterator checks = process->CheckList(Standard_True);
    for (checks.Start(); checks.More(); checks.Next()) {
        if (checks.Value()->HasFailed()) ++failed;
    }
    if (failed > 0)
        document.notes.push_back({std::to_string(failed) + " entity(s) of the file could not be converted"});
}

Failure NoSolid(const std::filesystem::path& path, const std::string& found) {
    return FormatFailure(path, 0, "at least one solid, " + found);
}

using NamesByShape = std::map<const Standard_Transient*, std::string>;

/// The name of the part that a statement's solids became; nothing where one of them became none. Where the
/// modeller mends a solid it may give several back, gathered in one shape.
std::optional<std::string> PartMadeOf(STEPCAFControl_Reader& reader,
                                      const Handle(Standard_Transient) & statement,
                                      const NamesByShape& names) {
    const Handle(Transfer_TransientProcess) process =
        reader.Reader().WS()->TransferReader()->TransientProcess();
    const TopoDS_Shape shape = TransferBRep::ShapeResult(process, statement);
    std::optional<std::string> part;
    if (shape.IsNull()) return part;
    for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next()) {
        const auto name = names.find(solid.Current().TShape().get());
        if (name == names.end()) return std::nullopt;
        if (!part) part = name->second;
    }
    return part;
}

/// Tells the solids that contradict themselves: they are read, but nobody should trust their sizes.
void NoteBodyFaults(STEPCAFControl_Reader& reader, const std::vector<BodyFault>& faults,
                    const NamesByShape& names, const Statements& text, StepDocument& document) {
    for (const BodyFault& fault : faults) {
        const std::string name = PartMadeOf(reader, fault.solid, names).value_or("");
        const std::string part = name.empty() ? "a part" : "part \"" + name + "\"";
        document.notes.push_back(
            {part + ": " + fault.fault.reason + "; its sizes and operations may be wrong",
             text.LineOf(fault.fault.number)});
    }
}

/// Tells the solids that the file holds and no part of its structure leads to.
void NoteUnlistedSolids(STEPCAFControl_Reader& reader, const Handle(StepData_StepModel) & model,
                        const NamesByShape& names, const Statements& text, StepDocument& document) {
    for (int index = 1; index <= model->NbEntities(); ++index) {
        const Handle(Standard_Transient) entity = model->Value(index);
        if (!entity->IsKind(STANDARD_TYPE(StepShape_ManifoldSolidBrep))) continue;
        if (PartMadeOf(reader, entity, names)) continue;
        const int number = model->IdentLabel(entity);
        document.notes.push_back(
            {"the solid #" + std::to_string(number) + " is left out: no part leads to it",
             text.LineOf(number)});
    }
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
    if (const auto repeated = statements.Repeated()) {
        throw FormatFailure(path, statements.LineAt(repeated->second),
                            "a statement number of its own, #" + std::to_string(repeated->number) +
                                " stands in line " + std::to_string(statements.LineAt(repeated->first)) +
                                " already");
    }
}

/// A file in the modeller's hands, and what it took to get it there.
class Loading {
  public:
    explicit Loading(const std::filesystem::path& path)
        : mPath(path),
          mContent(WithoutMark(ContentOf(path))),
          mStatements(mContent),
          mQuarantine(mStatements) {
        RequireStep(path, mContent);
        RequireSoundFrame(path, mStatements);
        for (const StatementFault& fault : TextFaults(mStatements)) Remove(fault);
        mCodePage = CodePageOf(mContent);
    }

    /// Reads, and where statements are faulty once more without them. A fault can hide another one.
    void Run() {
        constexpr int mostTimes = 8;
        PrepareReading();
        for (int time = 1; Read(), !Sound(); ++time) {
            if (time == mostTimes) throw FormatFailure(mPath, 0, "well-formed STEP statements");
        }
        mBodyFaults = BodyFaults(mModel);
    }

    STEPCAFControl_Reader& Reader() { return *mReader; }
    const Handle(StepData_StepModel) & Model() const { return mModel; }
    const Statements& Text() const { return mStatements; }
    const Quarantine& Taken() const { return mQuarantine; }
    const StandIns& Texts() const { return *mTexts; }
    CodePage Page() const { return mCodePage; }
    const std::vector<BodyFault>& Contradictions() const { return mBodyFaults; }

    /// The failure of a file without a solid: the first fault where there was one.
    [[noreturn]] void RefuseEmpty(const std::vector<StepNote>& notes = {}) const {
        if (!mQuarantine.LostBodies().empty())
            Refuse(mPath, mStatements, mQuarantine.LostBodies().front().fault);
        if (!mQuarantine.LostGeometry().empty())
            Refuse(mPath, mStatements, mQuarantine.LostGeometry().front());
        if (!mBodyFaults.empty()) Refuse(mPath, mStatements, FaultOf(mStatements, mBodyFaults.front().fault));
        const auto told = std::ranges::find_if(notes, &StepNote::lost);
        throw NoSolid(mPath, told == notes.end() ? "the file holds none" : told->text);
    }

  private:
    /// A byte order mark is nothing that the modeller knows.
    static std::string WithoutMark(std::string content) {
        if (content.starts_with("\xEF\xBB\xBF")) content.replace(0, 3, "   ");
        return content;
    }

    void Remove(const StatementFault& fault) {
        if (fault.statement == nullptr || !mQuarantine.Remove(fault)) Refuse(mPath, mStatements, fault);
    }

    void Read() {
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
        std::istringstream plain(mQuarantine.Empty() ? mTexts->PutInto(whole, mCodePage)
                                                     : mTexts->PutInto(mQuarantine.Content(), mCodePage));
        const IFSelect_ReturnStatus status =
            mReader->ChangeReader().ReadStream(mPath.string().c_str(), plain);
        mModel = Handle(StepData_StepModel)::DownCast(mReader->Reader().WS()->Model());
        if (!mModel.IsNull() && mModel->NbEntities() == 0) RefuseEmpty();
        if (status == IFSelect_RetDone && !mModel.IsNull() && !mModel->GlobalCheck()->HasFailed()) return;
        const auto broken = mStatements.BrokenHead();
        throw FormatFailure(mPath, broken ? mStatements.LineAt(*broken) : 0,
                            "well-formed STEP statements (#n = TYPE(...);)");
    }

    /// Takes out what is faulty in the model; true where nothing was.
    bool Sound() {
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
    bool RemoveFalseItems() {
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
    bool IsPaper(int number) const {
        const Statement* statement = mStatements.Find(number);
        return statement != nullptr && RoleIn(mStatements, *statement) == Role::Paperwork;
    }

    std::filesystem::path mPath;
    std::string mContent;
    Statements mStatements;
    Quarantine mQuarantine;
    CodePage mCodePage = CodePage::Utf8;
    std::optional<STEPCAFControl_Reader> mReader;
    std::optional<StandIns> mTexts;
    Handle(StepData_StepModel) mModel;
    std::vector<BodyFault> mBodyFaults;
};

StepDocument Read(const std::filesystem::path& path) {
    Loading file(path);
    file.Run();
    StepDocument document;
    Handle(TDocStd_Document) assembly = new TDocStd_Document("BinXCAF");
    if (!file.Reader().Transfer(assembly)) file.RefuseEmpty();
    document.unit = UnitOf(file.Reader().ChangeReader());
    NoteCodePage(file.Page(), document);
    NoteMendedTexts(file.Texts(), document);
    const bool ownFile = IsWrittenHere(file.Text().Content());
    Flattener parts(assembly, file.Texts(), ownFile, document);
    parts.Run();
    parts.NoteWithoutSolid(file.Taken().LostBodies().size());
    if (document.solids.empty()) file.RefuseEmpty(document.notes);
    NoteQuarantine(file.Taken(), file.Text(), file.Page(), document);
    NoteBodyFaults(file.Reader(), file.Contradictions(), parts.NamesByShape(), file.Text(), document);
    NoteUnlistedSolids(file.Reader(), file.Model(), parts.NamesByShape(), file.Text(), document);
    NoteContradictingUsages(file.Text(), document);
    NoteFailedEntities(file.Reader().Reader(), document);
    NoteTail(file.Text(), document);
    if (!ownFile) NameTheNameless(document, path);
    return document;
}

}  // namespace

StepDocument ReadStep(const std::filesystem::path& path) {
    const std::string what = "reading " + path.string();
    return solids::Guarded(what.c_str(), [&] { return Read(path); });
}

}  // namespace brenvik::step
