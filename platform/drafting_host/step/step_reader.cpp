// Reads a STEP file through the modeller's assembly document and flattens it into solids at their
// places.
#include "drafting_host/step/step_reader.h"

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
        if (mWithoutSolid > 0) {
            mResult.notes.push_back({std::to_string(mWithoutSolid) +
                                     " object(s) without a solid (surfaces, wires, points) passed over"});
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
        if (shape.IsNull() || !TopExp_Explorer(shape, TopAbs_SOLID).More()) {
            ++mWithoutSolid;
            return;
        }
        const std::string name = NameOf(product, inherited.instance);
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
    int mWithoutSolid = 0;
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

void NoteCodePage(CodePage codePage, StepDocument& document) {
    switch (codePage) {
        case CodePage::Utf8:
            return;
        case CodePage::Cyrillic:
            document.notes.push_back({"names read as code page 1251", 0, false});
            return;
        case CodePage::Western:
            document.notes.push_back({"names read as code page 1252", 0, false});
            return;
    }
}

Failure NoSolid(const std::filesystem::path& path) {
    return FormatFailure(path, 0, "at least one solid, the file holds none");
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
                    const NamesByShape& names, const StatementLines& lines, StepDocument& document) {
    for (const BodyFault& fault : faults) {
        const std::string name = PartMadeOf(reader, fault.solid, names).value_or("");
        const std::string part = name.empty() ? "a part" : "part \"" + name + "\"";
        document.notes.push_back(
            {part + ": " + fault.fault.reason + "; its sizes and operations may be wrong",
             lines.Of(fault.fault.number)});
    }
}

/// Tells the solids that the file holds and no part of its structure leads to.
void NoteUnlistedSolids(STEPCAFControl_Reader& reader, const Handle(StepData_StepModel) & model,
                        const NamesByShape& names, const StatementLines& lines, StepDocument& document) {
    for (int index = 1; index <= model->NbEntities(); ++index) {
        const Handle(Standard_Transient) entity = model->Value(index);
        if (!entity->IsKind(STANDARD_TYPE(StepShape_ManifoldSolidBrep))) continue;
        if (PartMadeOf(reader, entity, names)) continue;
        const int number = model->IdentLabel(entity);
        document.notes.push_back(
            {"the solid #" + std::to_string(number) + " is left out: no part leads to it", lines.Of(number)});
    }
}

[[noreturn]] void RefuseStatement(const std::filesystem::path& path, std::string_view content,
                                  const ModelFault& fault) {
    throw FormatFailure(path, LineOfStatement(content, fault.number),
                        "a sound statement #" + std::to_string(fault.number) + " (" + fault.reason + ")");
}

/// The modeller gives up without a place; the text tells it. It refuses a file without any statement too, and
/// that one is not damaged.
[[noreturn]] void RefuseUnsound(const std::filesystem::path& path, std::string_view content, bool empty) {
    if (const std::size_t line = BrokenLine(content); line > 0) {
        throw FormatFailure(
            path, line,
            "well-formed STEP statements (#n = TYPE(...);), found \"" + LineForMessage(content, line) + "\"");
    }
    if (empty) throw NoSolid(path);
    if (const auto repeated = FirstRepeatedStatement(content)) {
        throw FormatFailure(path, repeated->line,
                            "a statement number of its own, #" + std::to_string(repeated->number) +
                                " stands in line " + std::to_string(repeated->firstLine) + " already");
    }
    if (const auto lost = FirstLostReference(content)) {
        throw FormatFailure(path, lost->line,
                            "a statement #" + std::to_string(lost->number) + ", the file has none");
    }
    throw FormatFailure(path, 0, "well-formed STEP statements (#n = TYPE(...);)");
}

StepDocument Read(const std::filesystem::path& path) {
    const std::string content = ContentOf(path);
    RequireWholeStep(path, content);
    if (const std::size_t line = OverlongNumberLine(content); line > 0)
        throw FormatFailure(path, line, "statement numbers up to " + std::to_string(highestStatement));
    if (const int edge = NestedOrientedEdge(content); edge > 0) {
        throw FormatFailure(path, LineOfStatement(content, edge), "an oriented edge that holds an edge");
    }
    const CodePage codePage = CodePageOf(content);
    PrepareReading();
    STEPCAFControl_Reader reader;
    reader.SetColorMode(Standard_True);
    reader.SetNameMode(Standard_True);
    reader.SetLayerMode(Standard_True);
    reader.SetPropsMode(Standard_False);
    reader.SetGDTMode(Standard_False);
    reader.SetMatMode(Standard_False);
    reader.SetViewMode(Standard_False);
    StandIns texts;
    std::istringstream plain(texts.PutInto(content, codePage));
    const IFSelect_ReturnStatus status = reader.ChangeReader().ReadStream(path.string().c_str(), plain);
    const Handle(StepData_StepModel) model =
        Handle(StepData_StepModel)::DownCast(reader.Reader().WS()->Model());
    const bool sound = status == IFSelect_RetDone && !model.IsNull() && !model->GlobalCheck()->HasFailed();
    if (!sound) RefuseUnsound(path, content, !model.IsNull() && model->NbEntities() == 0);
    if (const auto fault = FirstFault(model, reader.Reader().WS()->Graph())) {
        RefuseStatement(path, content, *fault);
    }
    if (const auto fault = FarPoint(model)) RefuseStatement(path, content, *fault);
    const std::vector<BodyFault> bodyFaults = BodyFaults(model);
    StepDocument document;
    if (StylesAreFaulty(model)) {
        reader.SetColorMode(Standard_False);
        reader.SetLayerMode(Standard_False);
        document.notes.push_back({"colours and layers passed over, their statements are damaged"});
    }
    Handle(TDocStd_Document) assembly = new TDocStd_Document("BinXCAF");
    if (model->NbEntities() == 0 || !reader.Transfer(assembly)) throw NoSolid(path);
    document.unit = UnitOf(reader.ChangeReader());
    NoteCodePage(codePage, document);
    const bool ownFile = IsWrittenHere(content);
    Flattener parts(assembly, texts, ownFile, document);
    parts.Run();
    const StatementLines lines(content);
    NoteBodyFaults(reader, bodyFaults, parts.NamesByShape(), lines, document);
    NoteUnlistedSolids(reader, model, parts.NamesByShape(), lines, document);
    NoteFailedEntities(reader.Reader(), document);
    if (document.solids.empty()) {
        if (!bodyFaults.empty()) RefuseStatement(path, content, bodyFaults.front().fault);
        throw NoSolid(path);
    }
    if (!ownFile) NameTheNameless(document, path);
    return document;
}

}  // namespace

StepDocument ReadStep(const std::filesystem::path& path) {
    const std::string what = "reading " + path.string();
    return solids::Guarded(what.c_str(), [&] { return Read(path); });
}

}  // namespace brenvik::step
