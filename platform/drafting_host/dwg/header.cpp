// The order of the variables, which differs from release to release, as a table; and where each goes.
#include "drafting_host/dwg/header.h"

#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "drafting_host/dwg/objects.h"
#include "drafting_host/dwg/table_data.h"
#include "drafting_host/dxf/data/header_variables.h"
#include "drafting_host/dxf/texts/exact_numbers.h"

namespace brenvik::dwg {
namespace {

enum class Kind { B, BS, BL, BLL, BD, Point, Flat, Text, Color, Handle, Seed, RC, Date };

struct Row {
    Kind kind;
    std::string_view names;  ///< One value for each, "-" for one that nobody reads; "*n" n such values.
    Release first = Release::R13, last = Release::R2018;
};

using enum Kind;
using enum Release;

// clang-format off
constexpr auto Rows = std::to_array<Row>({
    {BLL, "-", R2013},
    {BD, "*4"}, {Text, "*4"}, {BL, "*2"}, {BS, "-", R13, R14}, {Handle, "-", R13, R2000},
    {B, "DIMASO DIMSHO"}, {B, "-", R13, R14}, {B, "PLINEGEN ORTHOMODE REGENMODE FILLMODE QTEXTMODE PSLTSCALE LIMCHECK"},
    {B, "-", R13, R14}, {B, "-", R2004}, {B, "USRTIMER SKPOLY ANGDIR SPLFRAME"}, {B, "*2", R13, R14},
    {B, "MIRRTEXT WORLDVIEW"}, {B, "-", R13, R14}, {B, "TILEMODE PLIMCHECK VISRETAIN"}, {B, "-", R13, R14},
    {B, "DISPSILH PELLIPSE"},
    {BS, "PROXYGRAPHICS"}, {BS, "-", R13, R14}, {BS, "TREEDEPTH LUNITS LUPREC AUNITS AUPREC"}, {BS, "-", R13, R14},
    {BS, "ATTMODE"}, {BS, "-", R13, R14}, {BS, "PDMODE"}, {BS, "-", R13, R14}, {BL, "*3", R2004},
    {BS, "USERI1 USERI2 USERI3 USERI4 USERI5 SPLINESEGS SURFU SURFV SURFTYPE SURFTAB1 SURFTAB2 SPLINETYPE "
         "SHADEDGE SHADEDIF UNITMODE MAXACTVP ISOLINES CMLJUST TEXTQLTY"},
    {BD, "LTSCALE TEXTSIZE TRACEWID SKETCHINC FILLETRAD THICKNESS ANGBASE PDSIZE PLINEWID USERR1 USERR2 USERR3 USERR4 "
         "USERR5 CHAMFERA CHAMFERB CHAMFERC CHAMFERD FACETRES CMLSCALE CELTSCALE"},
    {Text, "MENU"},
    {Date, "TDUCREATE TDUUPDATE"}, {BL, "*3", R2004}, {Date, "TDINDWG TDUSRTIMER"}, {Color, "CECOLOR"}, {Seed, "HANDSEED"},
    {Handle, "CLAYER TEXTSTYLE CELTYPE"}, {Handle, "-", R2007}, {Handle, "DIMSTYLE CMLSTYLE"}, {BD, "PSVPSCALE", R2000},

    {Point, "PINSBASE PEXTMIN PEXTMAX"}, {Flat, "PLIMMIN PLIMMAX"}, {BD, "PELEVATION"},
    {Point, "PUCSORG PUCSXDIR PUCSYDIR"}, {Handle, "PUCSNAME"}, {Handle, "PUCSORTHOREF", R2000},
    {BS, "PUCSORTHOVIEW", R2000}, {Handle, "PUCSBASE", R2000},
    {Point, "PUCSORGTOP PUCSORGBOTTOM PUCSORGLEFT PUCSORGRIGHT PUCSORGFRONT PUCSORGBACK", R2000},
    {Point, "INSBASE EXTMIN EXTMAX"}, {Flat, "LIMMIN LIMMAX"}, {BD, "ELEVATION"},
    {Point, "UCSORG UCSXDIR UCSYDIR"}, {Handle, "UCSNAME"}, {Handle, "UCSORTHOREF", R2000},
    {BS, "UCSORTHOVIEW", R2000}, {Handle, "UCSBASE", R2000},
    {Point, "UCSORGTOP UCSORGBOTTOM UCSORGLEFT UCSORGRIGHT UCSORGFRONT UCSORGBACK", R2000},

    {Text, "DIMPOST DIMAPOST", R2000},
    {B, "DIMTOL DIMLIM DIMTIH DIMTOH DIMSE1 DIMSE2 DIMALT DIMTOFL DIMSAH DIMTIX DIMSOXD", R13, R14},
    {RC, "DIMALTD DIMZIN", R13, R14}, {B, "DIMSD1 DIMSD2", R13, R14}, {RC, "DIMTOLJ DIMJUST DIMFIT", R13, R14},
    {B, "DIMUPT", R13, R14}, {RC, "DIMTZIN DIMALTZ DIMALTTZ DIMTAD", R13, R14},
    {BS, "DIMUNIT DIMAUNIT DIMDEC DIMTDEC DIMALTU DIMALTTD", R13, R14}, {Handle, "DIMTXSTY", R13, R14},
    {BD, "DIMSCALE DIMASZ DIMEXO DIMDLI DIMEXE DIMRND DIMDLE DIMTP DIMTM"}, {BD, "DIMFXL DIMJOGANG", R2007},
    {BS, "DIMTFILL", R2007}, {Color, "DIMTFILLCLR", R2007},
    {B, "DIMTOL DIMLIM DIMTIH DIMTOH DIMSE1 DIMSE2", R2000}, {BS, "DIMTAD DIMZIN DIMAZIN", R2000},
    {BS, "DIMARCSYM", R2007}, {BD, "DIMTXT DIMCEN DIMTSZ DIMALTF DIMLFAC DIMTVP DIMTFAC DIMGAP"},
    {Text, "DIMPOST DIMAPOST DIMBLK DIMBLK1 DIMBLK2", R13, R14}, {BD, "DIMALTRND", R2000}, {B, "DIMALT", R2000},
    {BS, "DIMALTD", R2000}, {B, "DIMTOFL DIMSAH DIMTIX DIMSOXD", R2000}, {Color, "DIMCLRD DIMCLRE DIMCLRT"},
    {BS, "DIMADEC DIMDEC DIMTDEC DIMALTU DIMALTTD DIMAUNIT DIMFRAC DIMLUNIT DIMDSEP DIMTMOVE DIMJUST", R2000},
    {B, "DIMSD1 DIMSD2", R2000}, {BS, "DIMTOLJ DIMTZIN DIMALTZ DIMALTTZ", R2000}, {B, "DIMUPT", R2000},
    {BS, "DIMATFIT", R2000}, {B, "DIMFXLON", R2007},
    {B, "DIMTXTDIRECTION", R2010}, {BD, "-", R2010}, {Text, "-", R2010}, {BD, "-", R2010}, {Text, "-", R2010},
    {Handle, "DIMTXSTY DIMLDRBLK DIMBLK DIMBLK1 DIMBLK2", R2000}, {Handle, "DIMLTYPE DIMLTEX1 DIMLTEX2", R2007},
    {BS, "DIMLWD DIMLWE", R2000},

    {Handle, "*9"}, {Handle, "-", R13, R2000},
    {Handle, "GROUPS - -"},
    {BS, "*2", R2000}, {Text, "HYPERLINKBASE STYLESHEET", R2000}, {Handle, "*3", R2000}, {Handle, "*2", R2004},
    {Handle, "-", R2007}, {Handle, "-", R2013},
    {BL, "FLAGS", R2000}, {BS, "INSUNITS CEPSNTYPE", R2000},
});
constexpr auto RowsBehindPlotStyle = std::to_array<Row>({
    {Text, "FINGERPRINTGUID VERSIONGUID", R2000},
    {RC, "SORTENTS INDEXCTL HIDETEXT XCLIPFRAME DIMASSOC HALOGAP", R2004}, {BS, "OBSCOLOR INTERSECTIONCOLOR", R2004},
    {RC, "OBSLTYPE INTERSECTIONDISPLAY", R2004}, {Text, "PROJECTNAME", R2004},
    {Handle, "PAPER MODEL"},
});
/// What was added since, which no drawing depends on.
constexpr auto LateRows = std::to_array<Row>({
    {Handle, "*3"}, {B, "CAMERADISPLAY"}, {BL, "*2"}, {BD, "- STEPSPERSEC STEPSIZE 3DDWFPREC LENSLENGTH CAMERAHEIGHT"},
    {RC, "SOLIDHIST SHOWHIST"}, {BD, "PSOLWIDTH PSOLHEIGHT LOFTANG1 LOFTANG2 LOFTMAG1 LOFTMAG2"}, {BS, "LOFTPARAM"},
    {RC, "LOFTNORMALS"}, {BD, "LATITUDE LONGITUDE NORTHDIRECTION"}, {BL, "TIMEZONE"},
    {RC, "LIGHTGLYPHDISPLAY TILEMODELIGHTSYNCH DWFFRAME DGNFRAME"}, {B, "REALWORLDSCALE"}, {Color, "INTERFERECOLOR"},
    {Handle, "*3"}, {RC, "CSHADOW"}, {BD, "SHADOWPLANELOCATION"},
});
// clang-format on

/// Variables that a drawing keeps as text alone, by the codes of their values.
struct TextVariable {
    int code;
    std::string_view names;
};
constexpr auto TextVariables = std::to_array<TextVariable>({
    {10, "EXTMIN EXTMAX PEXTMIN PEXTMAX"},
    {1, "DIMPOST DIMAPOST STYLESHEET PROJECTNAME"},
    {40,
     "DIMSCALE DIMASZ DIMEXO DIMDLI DIMEXE DIMRND DIMDLE DIMTP DIMTM DIMFXL DIMJOGANG DIMTXT DIMCEN DIMTSZ "
     "DIMALTF DIMLFAC DIMTVP DIMTFAC DIMGAP DIMALTRND STEPSPERSEC STEPSIZE 3DDWFPREC LENSLENGTH CAMERAHEIGHT "
     "PSOLWIDTH PSOLHEIGHT LOFTANG1 LOFTANG2 LOFTMAG1 LOFTMAG2 LATITUDE LONGITUDE NORTHDIRECTION "
     "SHADOWPLANELOCATION"},
    {62, "INTERFERECOLOR"},
    {70,
     "DIMASO DIMSHO DIMTOL DIMLIM DIMTIH DIMTOH DIMSE1 DIMSE2 DIMALT DIMTOFL DIMSAH DIMTIX DIMSOXD DIMALTD "
     "DIMZIN DIMSD1 DIMSD2 DIMTOLJ DIMJUST DIMFIT DIMUPT DIMTZIN DIMALTZ DIMALTTZ DIMTAD DIMUNIT DIMAUNIT "
     "DIMDEC DIMTDEC DIMALTU DIMALTTD DIMTFILL DIMTFILLCLR DIMAZIN DIMARCSYM DIMCLRD DIMCLRE DIMCLRT DIMADEC "
     "DIMFRAC DIMLUNIT DIMDSEP DIMTMOVE DIMATFIT DIMFXLON DIMTXTDIRECTION DIMLWD DIMLWE UCSORTHOVIEW "
     "PUCSORTHOVIEW OBSCOLOR INTERSECTIONCOLOR LOFTPARAM TIMEZONE"},
    {280,
     "SORTENTS INDEXCTL HIDETEXT DIMASSOC HALOGAP OBSLTYPE INTERSECTIONDISPLAY SOLIDHIST SHOWHIST "
     "LOFTNORMALS LIGHTGLYPHDISPLAY TILEMODELIGHTSYNCH DWFFRAME DGNFRAME CSHADOW"},
    {290, "EXTNAMES PSTYLEMODE CAMERADISPLAY REALWORLDSCALE"},
    {380, "CEPSNTYPE"},
});

/// Variables that name an entry of a table.
struct NamingVariable {
    int code;
    Header::Table table;
    std::string_view names;
};
constexpr auto NamingVariables = std::to_array<NamingVariable>({
    {7, Header::Table::Styles, "TEXTSTYLE DIMTXSTY"},
    {6, Header::Table::Linetypes, "CELTYPE DIMLTYPE DIMLTEX1 DIMLTEX2"},
    {1, Header::Table::Blocks, "DIMLDRBLK DIMBLK DIMBLK1 DIMBLK2"},
    {2, Header::Table::Ucs, "UCSBASE UCSORTHOREF PUCSNAME PUCSBASE PUCSORTHOREF"},
});

/// With a plot style of its own, one more handle follows CEPSNTYPE.
constexpr int NamedPlotStyle = 3;

class HeaderReader {
  public:
    HeaderReader(Streams& streams, DrawingData& data) : mStreams(streams), mDrawing(data) {}

    void Run() {
        Walk(Rows);
        if (mWhole["CEPSNTYPE"] == NamedPlotStyle) NextHandle();
        Walk(RowsBehindPlotStyle);
        if (mStreams.IsAtLeast(Release::R2007)) WalkLateRows();
    }
    /// Whatever stopped the walk, what was read is there.
    Header Result() {
        TakeOver();
        Header header{mHandles["HANDSEED"], mHandles["CLAYER"], mHandles["UCSNAME"],  mHandles["GROUPS"],
                      mHandles["MODEL"],    mHandles["PAPER"],  mHandles["DIMSTYLE"], mHandles["CMLSTYLE"]};
        for (const TextVariable& row : TextVariables) {
            for (const std::string& name : Split(row.names, ' ')) {
                GroupText groups;
                for (const auto& [code, value] : ValuesOf(name, row.code)) groups.Text(code, value);
                if (std::string text = groups.Take(); !text.empty())
                    header.variables.emplace_back("$" + name, std::move(text));
            }
        }
        if (const auto frame = mWhole.find("XCLIPFRAME"); frame != mWhole.end()) {
            // A frame that shows and isn't plotted came with release 2010.
            GroupText groups;
            if (mStreams.IsAtLeast(Release::R2010))
                groups.Whole(280, frame->second);
            else
                groups.Whole(290, frame->second == 1 ? 1 : 0);
            header.variables.emplace_back("$XCLIPFRAME", groups.Take());
        }
        for (const NamingVariable& row : NamingVariables) {
            for (const std::string& name : Split(row.names, ' ')) {
                if (const auto handle = mHandles.find(name); handle != mHandles.end())
                    header.references.push_back({"$" + name, row.code, row.table, handle->second});
            }
        }
        return header;
    }

  private:
    template <std::size_t Size>
    void Walk(const std::array<Row, Size>& table) {
        for (const Row& row : table) {
            if (mStreams.release < row.first || mStreams.release > row.last) continue;
            if (row.names.starts_with("*")) {
                for (int left = std::stoi(std::string(row.names.substr(1))); left > 0; --left)
                    Take(row.kind, "-");
                continue;
            }
            for (const std::string& name : Split(row.names, ' ')) Take(row.kind, name);
        }
    }

    /// Other writers end before them.
    void WalkLateRows() {
        try {
            Walk(LateRows);
        } catch (const Damage&) {
            for (const Row& row : LateRows) {
                for (const std::string& name : Split(row.names, ' ')) {
                    mWhole.erase(name);
                    mReals.erase(name);
                }
            }
        }
    }

    HandleValue NextHandle() {
        BitReader& reader = mStreams.IsAtLeast(Release::R2007) ? mStreams.handles : mStreams.data;
        return reader.Handle().From(0);
    }

    void Take(Kind kind, const std::string& name) {
        BitReader& data = mStreams.data;
        switch (kind) {
            case B:
                mWhole[name] = data.Bit() ? 1 : 0;
                return;
            case BS:
                mWhole[name] = data.BitShort();
                return;
            case BL:
                mWhole[name] = data.BitLong();
                return;
            case RC:
                mWhole[name] = data.Byte();
                return;
            case BLL:
                data.BitLongLong();
                return;
            case BD:
                mReals[name] = {data.BitReal()};
                return;
            case Point: {
                const Point3 point = data.BitPoint();
                mReals[name] = {point.x, point.y, point.z};
                return;
            }
            case Flat: {
                const Point3 point = data.FlatPoint();
                mReals[name] = {point.x, point.y};
                return;
            }
            case Text:
                mTexts[name] = mStreams.Text();
                return;
            case Color:
                mWhole[name] = IndexOf(ReadRecordColor(mStreams));
                return;
            case Date: {
                constexpr double millisecondsOfDay = 86400000;
                const double days = data.BitLong();
                mReals[name] = {days + data.BitLong() / millisecondsOfDay};
                return;
            }
            case Kind::Handle:
                mHandles[name] = NextHandle();
                return;
            case Seed:
                mHandles[name] = data.Handle().From(0);
                return;
        }
    }

    void TakeOver() {
        mDrawing.insertUnits = mWhole["INSUNITS"];
        const auto point = [this](const char* name, Point3 standard) {
            const auto found = mReals.find(name);
            if (found == mReals.end()) return standard;
            return Point3{found->second[0], found->second[1], found->second[2]};
        };
        mDrawing.ucs.origin = point("UCSORG", {});
        mDrawing.ucs.xAxis = point("UCSXDIR", {1, 0, 0});
        mDrawing.ucs.yAxis = point("UCSYDIR", {0, 1, 0});
        TakeFlags();
        for (const HeaderVariable& variable : DxfHeaderVariables()) {
            auto values = ValuesOf(std::string(variable.name.substr(1)), variable.code);
            if (!values.empty()) mDrawing.headerVariables[std::string(variable.name)] = std::move(values);
        }
    }

    /// Several variables in one number.
    void TakeFlags() {
        const auto found = mWhole.find("FLAGS");
        if (found == mWhole.end()) return;
        const auto flags = static_cast<unsigned>(found->second);
        mWhole["CELWEIGHT"] = LineweightOf(flags & 0x1FU);
        mWhole["ENDCAPS"] = static_cast<int>((flags >> 5U) & 3U);
        mWhole["JOINSTYLE"] = static_cast<int>((flags >> 7U) & 3U);
        mWhole["LWDISPLAY"] = (flags & 0x200U) == 0 ? 1 : 0;
        mWhole["XEDIT"] = (flags & 0x400U) == 0 ? 1 : 0;
        mWhole["EXTNAMES"] = (flags & 0x800U) != 0 ? 1 : 0;
        mWhole["PSTYLEMODE"] = (flags & 0x2000U) != 0 ? 1 : 0;
        mWhole["OLESTARTUP"] = (flags & 0x4000U) != 0 ? 1 : 0;
    }

    /// A variable's values in the form in which DXF has them; none where the file lacks it.
    std::vector<std::pair<int, std::string>> ValuesOf(const std::string& name, int code) const {
        std::vector<std::pair<int, std::string>> values;
        if (const auto whole = mWhole.find(name); whole != mWhole.end()) {
            values.emplace_back(code, std::to_string(whole->second));
        } else if (const auto reals = mReals.find(name); reals != mReals.end()) {
            constexpr int angleCode = 50;
            for (std::size_t i = 0; i < reals->second.size(); ++i) {
                const double value = reals->second[i];
                values.emplace_back(code + 10 * static_cast<int>(i),
                                    code == angleCode ? DegreesText(value) : RealText(value));
            }
        } else if (const auto text = mTexts.find(name); text != mTexts.end()) {
            values.emplace_back(code, text->second);
        }
        return values;
    }

    Streams& mStreams;
    DrawingData& mDrawing;
    std::map<std::string, int> mWhole;
    std::map<std::string, std::vector<double>> mReals;
    std::map<std::string, std::string> mTexts;
    std::map<std::string, HandleValue> mHandles;
};

/// A text of the template's own, then 0 for inches or 1 for millimetres.
int MeasurementOf(const Sections& sections) {
    if (sections.measurement.empty()) return 0;
    try {
        BitReader reader(sections.measurement);
        const std::size_t length = reader.Short();
        reader.Skip(length * (sections.release >= Release::R2007 ? 16 : 8));
        return reader.Short() == 1 ? 1 : 0;
    } catch (const Damage&) {
        return 0;
    }
}

}  // namespace

namespace {

/// Who saved the drawing last, which stands among its properties behind five other texts.
std::string LastSaver(const Sections& sections, const Texts& texts) {
    if (sections.summary.empty()) return {};
    constexpr int textsInFront = 5;
    try {
        BitReader reader(sections.summary);
        const std::size_t sizeOfUnit = texts.IsUnicode() ? 2 : 1;
        for (int i = 0; i < textsInFront; ++i) reader.Skip(reader.Short() * sizeOfUnit * 8);
        const std::string bytes = reader.Bytes(reader.Short() * sizeOfUnit);
        return texts.IsUnicode() ? texts.FromUnits(bytes) : texts.FromPage(bytes);
    } catch (const Damage&) {
        return {};
    }
}

}  // namespace

Header ReadHeader(Sections& sections, const Texts& texts, DrawingData& data) {
    data.measurement = MeasurementOf(sections);
    Header header;
    try {
        const Frame frame = FrameOf(sections.header, HeaderMark, sections.release, sections.maintenance);
        if (frame.sumIsWrong) Note(sections, "the checksum of the drawing's variables is wrong");
        Streams streams = StreamsOfFrame(frame, sections.release, texts);
        HeaderReader reader(streams, data);
        try {
            reader.Run();
        } catch (const Damage& damage) {
            Note(sections, "the drawing's variables break off at bit " + std::to_string(damage.bit) + ": " +
                               damage.reason);
        }
        header = reader.Result();
        if (const std::string saver = LastSaver(sections, texts); !saver.empty())
            header.variables.emplace_back("$LASTSAVEDBY", GroupText().Text(1, saver).Take());
    } catch (const Damage& damage) {
        Note(sections, "the drawing's variables can't be read: " + damage.reason);
    }
    return header;
}

}  // namespace brenvik::dwg
