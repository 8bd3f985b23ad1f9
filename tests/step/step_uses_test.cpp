// Uses of shapes and products that differ from others of the same one: mirrored ones, and those with a layer
// or colour of their own; usages that mapped shapes place, and usages that stand for a quantity.
#include <BRepGProp.hxx>
#include <BRepPrimAPI_MakeWedge.hxx>
#include <GProp_GProps.hxx>
#include <array>
#include <gp_Trsf.hxx>
#include <map>

#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/transform.h"
#include "step/nested_assembly.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

/// A body without any symmetry.
TopoDS_Shape Wedge() { return BRepPrimAPI_MakeWedge(100., 40., 20., 10., 3., 60., 15.).Shape(); }

class StepUses : public StepInput {
  protected:
    /// A file that statements are added to.
    class Writer {
      public:
        explicit Writer(std::string content) : mContent(std::move(content)) {}

        std::string Add(const std::string& values) {
            const std::string number = "#" + std::to_string(++mLast);
            mStatements += number + "=" + values + ";\n";
            return number;
        }
        std::string Direction(double x, double y, double z) {
            return Add("DIRECTION('',(" + std::to_string(x) + "," + std::to_string(y) + "," +
                       std::to_string(z) + "))");
        }
        std::string Point(double x, double y, double z) {
            return Add("CARTESIAN_POINT('',(" + std::to_string(x) + "," + std::to_string(y) + "," +
                       std::to_string(z) + "))");
        }
        std::string Placement(double x, double y, double z) {
            return Add("AXIS2_PLACEMENT_3D(''," + Point(x, y, z) + ",$,$)");
        }
        /// Turned a quarter about Z and mirrored: (x, y, z) comes to lie at (y, x, z), moved.
        std::string Mirror(double x, double y, double z) {
            const std::string first = Direction(0, 1, 0), second = Direction(1, 0, 0),
                              third = Direction(0, 0, 1);
            return Add("CARTESIAN_TRANSFORMATION_OPERATOR_3D('','',''," + first + "," + second + "," +
                       Point(x, y, z) + ",1.," + third + ")");
        }
        std::string Product(const std::string& name, const std::string& shape) {
            const std::string product = Add("PRODUCT('','" + name + "','',())");
            const std::string version = Add("PRODUCT_DEFINITION_FORMATION('',''," + product + ")");
            const std::string definition = Add("PRODUCT_DEFINITION('',''," + version + ",$)");
            const std::string named = Add("PRODUCT_DEFINITION_SHAPE('',''," + definition + ")");
            Add("SHAPE_DEFINITION_REPRESENTATION(" + named + "," + shape + ")");
            return definition;
        }
        std::string Usage(const std::string& assembly, const std::string& component) {
            return Add("NEXT_ASSEMBLY_USAGE_OCCURRENCE('','',''," + assembly + "," + component + ",$)");
        }
        void Place(const std::string& usage, const std::string& component, const std::string& assembly,
                   const std::string& transformation) {
            const std::string named = Add("PRODUCT_DEFINITION_SHAPE('',''," + usage + ")");
            const std::string relationship =
                Add("(REPRESENTATION_RELATIONSHIP('',''," + component + "," + assembly +
                    ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" + transformation +
                    ")SHAPE_REPRESENTATION_RELATIONSHIP())");
            Add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + relationship + "," + named + ")");
        }
        void Style(const std::string& item, const std::string& context, const std::string& rgb) {
            const std::string colour =
                Add("FILL_AREA_STYLE_COLOUR(''," + Add("COLOUR_RGB(''," + rgb + ")") + ")");
            const std::string side =
                Add("SURFACE_STYLE_FILL_AREA(" + Add("FILL_AREA_STYLE('',(" + colour + "))") + ")");
            const std::string surface =
                Add("SURFACE_STYLE_USAGE(.BOTH.," + Add("SURFACE_SIDE_STYLE('',(" + side + "))") + ")");
            const std::string styled =
                Add("STYLED_ITEM('',(" + Add("PRESENTATION_STYLE_ASSIGNMENT((" + surface + "))") + ")," +
                    item + ")");
            Add("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(" + styled + ")," + context +
                ")");
        }
        std::string Text() const { return WithData(mContent, mStatements); }

      private:
        std::string mContent, mStatements;
        int mLast = 900000;
    };

    void SetUp() override {
        StepInput::SetUp();
        WriteStep(mPath, std::vector<StepSolid>{{Wedge(), "Wedge", "", "", std::nullopt}});
        mGood = Content();
        // As of another program: names of files written here are taken to the letter, none included.
        for (std::size_t at = mGood.find("'Brenvik "); at != std::string::npos; at = mGood.find("'Brenvik "))
            mGood.replace(at, 9, "'Another ");
        const auto items = ReferencesOf(mGood, "ADVANCED_BREP_SHAPE_REPRESENTATION");
        mOrigin = items.front();
        mContext = items.back();
        mShape = NumberOf(mGood, "ADVANCED_BREP_SHAPE_REPRESENTATION");
        mDefinition = NumberOf(mGood, "PRODUCT_DEFINITION");
    }

    /// Where the wedge comes to lie under a mirror of the writer above.
    static gp_Trsf MirrorTo(double x, double y, double z) {
        gp_Trsf mirror;
        mirror.SetMirror(gp_Ax2(gp::Origin(), gp_Dir(1, -1, 0)));
        mirror.SetTranslationPart(gp_Vec(x, y, z));
        return mirror;
    }

    static gp_Pnt Centre(const TopoDS_Shape& shape) {
        GProp_GProps mass;
        BRepGProp::VolumeProperties(shape, mass);
        return mass.CentreOfMass();
    }

    static void ExpectSame(const TopoDS_Shape& shape, const TopoDS_Shape& wanted) {
        EXPECT_NEAR(solids::Volume(shape), solids::Volume(wanted), 1e-6);
        EXPECT_LT(Centre(shape).Distance(Centre(wanted)), 1e-9);
        const solids::Box one = solids::ExactBox(shape), other = solids::ExactBox(wanted);
        EXPECT_LT(one.min.Distance(other.min) + one.max.Distance(other.max), 1e-9);
    }

    std::string mGood, mOrigin, mContext, mShape, mDefinition;
};

TEST_F(StepUses, AMirroredMappedShapeIsMirrored) {
    Writer writer(mGood);
    const std::string map = writer.Add("REPRESENTATION_MAP(" + mOrigin + "," + mShape + ")");
    const std::string item = writer.Add("MAPPED_ITEM(''," + map + "," + writer.Mirror(700, 5, 0) + ")");
    writer.Product("Other", writer.Add("SHAPE_REPRESENTATION('',(" + item + ")," + mContext + ")"));
    const StepDocument document = Read(writer.Text());
    EXPECT_EQ(NotesOf(document), "");
    ASSERT_EQ(document.solids.size(), 2U);
    EXPECT_EQ(document.solids[1].assembly, "Other");
    ExpectSame(document.solids[0].shape, Wedge());
    ExpectSame(document.solids[1].shape, solids::Transformed(Wedge(), MirrorTo(700, 5, 0)));
}

TEST_F(StepUses, AMirroredComponentIsMirroredAtAnyDepthAndTwiceIsNotAtAll) {
    Writer writer(mGood);
    const auto assembly = [&](const std::string& name) {
        const std::string shape =
            writer.Add("SHAPE_REPRESENTATION('',(" + writer.Placement(0, 0, 0) + ")," + mContext + ")");
        return std::pair(writer.Product(name, shape), shape);
    };
    const auto pair = assembly("Pair"), job = assembly("Job");
    writer.Place(writer.Usage(pair.first, mDefinition), mShape, pair.second, writer.Mirror(1, 2, 3));
    writer.Place(
        writer.Usage(pair.first, mDefinition), mShape, pair.second,
        writer.Add("ITEM_DEFINED_TRANSFORMATION('',''," + mOrigin + "," + writer.Placement(0, 50, 7) + ")"));
    writer.Place(writer.Usage(job.first, pair.first), pair.second, job.second, writer.Mirror(700, 5, 0));
    const StepDocument document = Read(writer.Text());
    EXPECT_EQ(NotesOf(document).find("mirror"), std::string::npos) << NotesOf(document);
    ASSERT_EQ(document.solids.size(), 2U);
    const gp_Trsf outer = MirrorTo(700, 5, 0);
    gp_Trsf moved;
    moved.SetTranslation(gp_Vec(0, 50, 7));
    ExpectSame(document.solids[0].shape, solids::Transformed(Wedge(), outer * MirrorTo(1, 2, 3)));
    ExpectSame(document.solids[1].shape, solids::Transformed(Wedge(), outer * moved));
    for (const StepSolid& part : document.solids) {
        EXPECT_EQ(part.name, "Wedge");
        EXPECT_EQ(part.assembly, "Pair");
    }
}

TEST_F(StepUses, PlacementsThatStandInEachOthersShapesCountByTheirShapesInWhatIsMirroredToo) {
    for (const bool isSwapped : {false, true}) {
        Writer writer(mGood);
        const std::string place = writer.Placement(0, 50, 7);
        const std::string pair = writer.Add("SHAPE_REPRESENTATION('',(" + place + ")," + mContext + ")");
        const std::string job =
            writer.Add("SHAPE_REPRESENTATION('',(" + writer.Placement(0, 0, 0) + ")," + mContext + ")");
        const std::string middle = writer.Product("Pair", pair), outer = writer.Product("Job", job);
        const std::string ends = isSwapped ? place + "," + mOrigin : mOrigin + "," + place;
        writer.Place(writer.Usage(middle, mDefinition), mShape, pair,
                     writer.Add("ITEM_DEFINED_TRANSFORMATION('',''," + ends + ")"));
        writer.Place(writer.Usage(outer, middle), pair, job, writer.Mirror(700, 5, 0));
        const StepDocument document = Read(writer.Text());
        ASSERT_EQ(document.solids.size(), 1U);
        gp_Trsf moved;
        moved.SetTranslation(gp_Vec(0, 50, 7));
        ExpectSame(document.solids[0].shape, solids::Transformed(Wedge(), MirrorTo(700, 5, 0) * moved));
    }
}

TEST_F(StepUses, ALayerOfOneMappedShapeIsThatOnesAlone) {
    Writer writer(mGood);
    const std::string map = writer.Add("REPRESENTATION_MAP(" + mOrigin + "," + mShape + ")");
    std::array<std::string, 2> items;
    for (const int at : {0, 1}) {
        items[at] = writer.Add("MAPPED_ITEM(''," + map + "," + writer.Placement(0, 0, 100 * (at + 1)) + ")");
        writer.Product(at == 0 ? "First" : "Second",
                       writer.Add("SHAPE_REPRESENTATION('',(" + items[at] + ")," + mContext + ")"));
    }
    writer.Add("PRESENTATION_LAYER_ASSIGNMENT('Doors','',(" + items[1] + "))");
    const StepDocument document = Read(writer.Text());
    std::map<std::string, std::string> layers;
    for (const StepSolid& part : document.solids) {
        EXPECT_EQ(part.name, "Wedge");
        layers[part.assembly] = part.layer;
    }
    EXPECT_EQ(layers, (std::map<std::string, std::string>{{"", ""}, {"First", ""}, {"Second", "Doors"}}));
    EXPECT_EQ(NotesOf(document), "");
}

TEST_F(StepUses, AUsageThatAMappedShapePlacesIsAPartOfItsAssembly) {
    Writer writer(mGood);
    const std::string map = writer.Add("REPRESENTATION_MAP(" + mOrigin + "," + mShape + ")");
    std::string items;
    for (const int at : {1, 2, 3})
        items += (at > 1 ? "," : "") +
                 writer.Add("MAPPED_ITEM(''," + map + "," + writer.Placement(0, 0, 100 * at) + ")");
    const std::string job =
        writer.Product("Job", writer.Add("SHAPE_REPRESENTATION('',(" + items + ")," + mContext + ")"));
    writer.Usage(job, mDefinition);
    writer.Usage(job, mDefinition);
    const StepDocument document = Read(writer.Text());
    ASSERT_EQ(document.solids.size(), 3U);
    double heights = 0;
    for (const StepSolid& part : document.solids) {
        EXPECT_EQ(part.name, "Wedge");
        EXPECT_EQ(part.assembly, "Job");
        heights += solids::ExactBox(part.shape).min.Z();
    }
    EXPECT_NEAR(heights, 600, 1e-9);
    EXPECT_EQ(NotesOf(document), "");
}

TEST_F(StepUses, AUsageThatAMappedShapePlacesKeepsItsNameBehindAnotherShape) {
    Writer writer(mGood);
    const std::string shape = writer.Add("SHAPE_REPRESENTATION('',(" + mOrigin + ")," + mContext + ")");
    const std::string body =
        writer.Add("ADVANCED_BREP_SHAPE_REPRESENTATION('',(" + mOrigin + "," +
                   ReferencesOf(mGood, "ADVANCED_BREP_SHAPE_REPRESENTATION").at(1) + ")," + mContext + ")");
    writer.Add("SHAPE_REPRESENTATION_RELATIONSHIP('',''," + shape + "," + body + ")");
    const std::string side = writer.Product("Side", shape);
    const std::string map = writer.Add("REPRESENTATION_MAP(" + mOrigin + "," + body + ")");
    const std::string item = writer.Add("MAPPED_ITEM(''," + map + "," + writer.Placement(0, 0, 100) + ")");
    writer.Usage(
        writer.Product("Job", writer.Add("SHAPE_REPRESENTATION('',(" + item + ")," + mContext + ")")), side);
    const StepDocument document = Read(writer.Text());
    ASSERT_EQ(document.solids.size(), 2U);
    EXPECT_EQ(document.solids[1].name, "Side");
    EXPECT_EQ(document.solids[1].assembly, "Job");
    EXPECT_NEAR(solids::ExactBox(document.solids[1].shape).min.Z(), 100, 1e-9);
}

TEST_F(StepUses, AMappedShapeThatRepeatsAUsageIsPassedOver) {
    Writer writer(mGood);
    const std::string map = writer.Add("REPRESENTATION_MAP(" + mOrigin + "," + mShape + ")");
    const std::string place = writer.Placement(0, 0, 100);
    const std::string item = writer.Add("MAPPED_ITEM(''," + map + "," + place + ")");
    const std::string shape =
        writer.Add("SHAPE_REPRESENTATION('',(" + place + "," + item + ")," + mContext + ")");
    const std::string usage = writer.Usage(writer.Product("Job", shape), mDefinition);
    writer.Place(usage, mShape, shape,
                 writer.Add("ITEM_DEFINED_TRANSFORMATION('',''," + mOrigin + "," + place + ")"));
    const StepDocument document = Read(writer.Text());
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(document.solids[0].assembly, "Job");
    ExpectMentions(NotesOf(document), ", nothing lost: the mapped shape " + item +
                                          " says again what the assembly usage " + usage +
                                          " says: it is passed over");
}

TEST_F(StepUses, AStyledAssemblyColoursItsPartsThatHaveNoColour) {
    Writer writer(mGood);
    const std::string place = writer.Placement(0, 0, 100);
    const std::string shape = writer.Add("SHAPE_REPRESENTATION('',(" + place + ")," + mContext + ")");
    const std::string usage = writer.Usage(writer.Product("Job", shape), mDefinition);
    writer.Place(usage, mShape, shape,
                 writer.Add("ITEM_DEFINED_TRANSFORMATION('',''," + mOrigin + "," + place + ")"));
    writer.Style(shape, mContext, "1.,0.,0.2");
    const StepDocument document = Read(writer.Text());
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_EQ(document.solids[0].color, (Rgb{255, 0, 51}));
    EXPECT_EQ(document.solids[0].assembly, "Job");
    EXPECT_EQ(NotesOf(document), "");
}

TEST_F(StepUses, AStyleOrALayerOfAProductsOwnShapeCountsForTheSolidBehindIt) {
    const std::string own = "," + mShape + ");", defining = "SHAPE_DEFINITION_REPRESENTATION(";
    mGood.replace(mGood.find(own, mGood.find(defining)), own.size(), ",#900001);");
    for (const bool isUsed : {false, true}) {
        for (const bool isBehind : {false, true}) {
            Writer writer(mGood);
            const std::string plain =
                writer.Add("SHAPE_REPRESENTATION('',(" + mOrigin + ")," + mContext + ")");
            writer.Add("SHAPE_REPRESENTATION_RELATIONSHIP('',''," + plain + "," + mShape + ")");
            const std::string& looked = isBehind ? mShape : plain;
            writer.Style(looked, mContext, "1.,0.,0.2");
            writer.Add("PRESENTATION_LAYER_ASSIGNMENT('Oak','',(" + looked + "))");
            if (isUsed) {
                const std::string place = writer.Placement(0, 0, 100);
                const std::string shape =
                    writer.Add("SHAPE_REPRESENTATION('',(" + place + ")," + mContext + ")");
                const std::string usage = writer.Usage(writer.Product("Job", shape), mDefinition);
                writer.Place(usage, plain, shape,
                             writer.Add("ITEM_DEFINED_TRANSFORMATION('',''," + mOrigin + "," + place + ")"));
            }
            const StepDocument document = Read(writer.Text());
            ASSERT_EQ(document.solids.size(), 1U);
            EXPECT_EQ(document.solids[0].name, "Wedge");
            EXPECT_EQ(document.solids[0].color, (Rgb{255, 0, 51})) << isUsed << isBehind;
            EXPECT_EQ(document.solids[0].layer, "Oak") << isUsed << isBehind;
            EXPECT_EQ(NotesOf(document), "") << isUsed << isBehind;
        }
    }
}

TEST_F(StepUses, AProductThatIsOneMappedShapeOfSeveralIsReadOnce) {
    Writer writer(mGood);
    const auto items = ReferencesOf(mGood, "ADVANCED_BREP_SHAPE_REPRESENTATION");
    const auto mapped = [&](const std::string& shape, const std::vector<double>& places) {
        const std::string map = writer.Add("REPRESENTATION_MAP(" + mOrigin + "," + shape + ")");
        std::string all = mOrigin;
        for (const double z : places)
            all += "," + writer.Add("MAPPED_ITEM(''," + map + "," + writer.Placement(0, 0, z) + ")");
        return writer.Add("SHAPE_REPRESENTATION('',(" + all + ")," + mContext + ")");
    };
    const std::string whole = mapped(
        mapped(writer.Add("SHAPE_REPRESENTATION('',(" + items[0] + "," + items[1] + ")," + mContext + ")"),
               {1000, 2000}),
        {100});
    const std::string own = "," + mShape + ");", defining = "SHAPE_DEFINITION_REPRESENTATION(";
    std::string content = writer.Text();
    content.replace(content.find(own, content.find(defining)), own.size(), "," + whole + ");");
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 2U);
    EXPECT_NEAR(solids::ExactBox(document.solids[0].shape).min.Z(), 1100, 1e-9);
    EXPECT_NEAR(solids::ExactBox(document.solids[1].shape).min.Z(), 2100, 1e-9);
    for (const StepSolid& part : document.solids) EXPECT_EQ(part.name, "Wedge");
}

TEST_F(StepUses, AMappedShapeOfMappedShapesKeepsTheProductsName) {
    Writer writer(mGood);
    const auto twice = [&](const std::string& mapped, double distance) {
        const std::string map = writer.Add("REPRESENTATION_MAP(" + mOrigin + "," + mapped + ")");
        const std::string first =
            writer.Add("MAPPED_ITEM(''," + map + "," + writer.Placement(0, 0, distance) + ")");
        const std::string second =
            writer.Add("MAPPED_ITEM(''," + map + "," + writer.Placement(0, 0, 2 * distance) + ")");
        return writer.Add("SHAPE_REPRESENTATION('',(" + mOrigin + "," + first + "," + second + ")," +
                          mContext + ")");
    };
    const auto items = ReferencesOf(mGood, "ADVANCED_BREP_SHAPE_REPRESENTATION");
    const std::string shape =
        writer.Add("SHAPE_REPRESENTATION('',(" + items[0] + "," + items[1] + ")," + mContext + ")");
    const std::string whole = twice(twice(shape, 100), 1000);
    const std::string own = "," + mShape + ");", defining = "SHAPE_DEFINITION_REPRESENTATION(";
    std::string content = writer.Text();
    content.replace(content.find(own, content.find(defining)), own.size(), "," + whole + ");");
    const StepDocument document = Read(content);
    ASSERT_EQ(document.solids.size(), 4U) << NotesOf(document);
    for (const StepSolid& part : document.solids) EXPECT_EQ(part.assembly, "Wedge");
    ExpectMentions(
        NotesOf(document),
        ", nothing lost: 4 part(s) without a name of their own are named after the file, the first "
        "one in \"Wedge\"");
}

TEST_F(StepUses, AUsageOfSeveralPiecesIsAsManyParts) {
    Writer writer(mGood);
    const std::string place = writer.Placement(0, 0, 100);
    const std::string shape = writer.Add("SHAPE_REPRESENTATION('',(" + place + ")," + mContext + ")");
    const std::string job = writer.Product("Job", shape);
    const auto content = [&](const std::string& measure) {
        Writer whole = writer;
        const std::string quantity = whole.Add("MEASURE_WITH_UNIT(" + measure + ",$)");
        const std::string usage = whole.Add(
            "(ASSEMBLY_COMPONENT_USAGE($)NEXT_ASSEMBLY_USAGE_OCCURRENCE()"
            "PRODUCT_DEFINITION_RELATIONSHIP('u','',''," +
            job + "," + mDefinition + ")PRODUCT_DEFINITION_USAGE()QUANTIFIED_ASSEMBLY_COMPONENT_USAGE(" +
            quantity + "))");
        whole.Place(usage, mShape, shape,
                    whole.Add("ITEM_DEFINED_TRANSFORMATION('',''," + mOrigin + "," + place + ")"));
        return whole.Text();
    };
    StepDocument document = Read(content("COUNT_MEASURE(3.)"));
    ASSERT_EQ(document.solids.size(), 3U);
    for (const StepSolid& part : document.solids) EXPECT_EQ(part.assembly, "Job");
    ExpectMentions(NotesOf(document), "stands for 3 pieces: as many parts are listed, in one place");
    document = Read(content("LENGTH_MEASURE(2.5)"));
    EXPECT_EQ(document.solids.size(), 1U);
    ExpectMentions(NotesOf(document), ": the assembly usage ");
    ExpectMentions(NotesOf(document), "stands for a quantity that is no number of pieces");
}

}  // namespace
}  // namespace brenvik::step
