// The order of the variables, which differs from release to release, as a table; and where each goes.
#include "drafting_host/dwg/header.h"

#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "drafting_host/dxf/exact_numbers.h"
#include "drafting_host/dxf/header_variables.h"

namespace brenvik::dwg {
namespace {

enum class Kind { B, BS, BL, BLL, BD, Point, Flat, Text, Color, Handle, Seed, RC };

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
    {BL, "*4"}, {BL, "*3", R2004}, {BL, "*4"}, {Color, "CECOLOR"}, {Seed, "HANDSEED"},
    {Handle, "CLAYER TEXTSTYLE CELTYPE"}, {Handle, "-", R2007}, {Handle, "*2"}, {BD, "PSVPSCALE", R2000},

    {Point, "PINSBASE PEXTMIN PEXTMAX"}, {Flat, "PLIMMIN PLIMMAX"}, {BD, "PELEVATION"},
    {Point, "PUCSORG PUCSXDIR PUCSYDIR"}, {Handle, "-"}, {Handle, "-", R2000}, {BS, "-", R2000}, {Handle, "-", R2000},
    {Point, "PUCSORGTOP PUCSORGBOTTOM PUCSORGLEFT PUCSORGRIGHT PUCSORGFRONT PUCSORGBACK", R2000},
    {Point, "INSBASE EXTMIN EXTMAX"}, {Flat, "LIMMIN LIMMAX"}, {BD, "ELEVATION"},
    {Point, "UCSORG UCSXDIR UCSYDIR"}, {Handle, "UCSNAME"}, {Handle, "-", R2000}, {BS, "-", R2000},
    {Handle, "-", R2000},
    {Point, "UCSORGTOP UCSORGBOTTOM UCSORGLEFT UCSORGRIGHT UCSORGFRONT UCSORGBACK", R2000},

    {Text, "*2", R2000},
    {B, "*11", R13, R14}, {RC, "*2", R13, R14}, {B, "*2", R13, R14}, {RC, "*3", R13, R14}, {B, "-", R13, R14},
    {RC, "*4", R13, R14}, {BS, "*6", R13, R14}, {Handle, "-", R13, R14},
    {BD, "*9"}, {BD, "*2", R2007}, {BS, "-", R2007}, {Color, "-", R2007}, {B, "*6", R2000}, {BS, "*3", R2000},
    {BS, "-", R2007}, {BD, "*8"}, {Text, "*5", R13, R14}, {BD, "-", R2000}, {B, "-", R2000}, {BS, "-", R2000},
    {B, "*4", R2000}, {Color, "*3"},
    {BS, "*11", R2000}, {B, "*2", R2000}, {BS, "*4", R2000}, {B, "-", R2000}, {BS, "-", R2000}, {B, "-", R2007},
    {B, "-", R2010}, {BD, "-", R2010}, {Text, "-", R2010}, {BD, "-", R2010}, {Text, "-", R2010},
    {Handle, "*5", R2000}, {Handle, "*3", R2007}, {BS, "*2", R2000},

    {Handle, "*9"}, {Handle, "-", R13, R2000},
    {Handle, "GROUPS - -"},
    {BS, "*2", R2000}, {Text, "HYPERLINKBASE -", R2000}, {Handle, "*3", R2000}, {Handle, "*2", R2004},
    {Handle, "-", R2007}, {Handle, "-", R2013},
    {BL, "-", R2000}, {BS, "INSUNITS CEPSNTYPE", R2000},
});
constexpr auto RowsBehindPlotStyle = std::to_array<Row>({
    {Text, "FINGERPRINTGUID VERSIONGUID", R2000},
    {RC, "*6", R2004}, {BS, "*2", R2004}, {RC, "*2", R2004}, {Text, "-", R2004},
    {Handle, "PAPER MODEL"},
});
// clang-format on

/// A linetype style of its own has a handle more behind CEPSNTYPE.
constexpr int NamedPlotStyle = 3;

class HeaderReader {
  public:
    HeaderReader(Streams& streams, DrawingData& data) : mStreams(streams), mDrawing(data) {}

    void Run() {
        Walk(Rows);
        if (mWhole["CEPSNTYPE"] == NamedPlotStyle) NextHandle();
        Walk(RowsBehindPlotStyle);
    }
    /// Whatever stopped the walk, what was read is there.
    Header Result() {
        TakeOver();
        return {mHandles["HANDSEED"], mHandles["CLAYER"], mHandles["UCSNAME"],
                mHandles["GROUPS"],   mHandles["MODEL"],  mHandles["PAPER"]};
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
                return TakeColor();
            case Kind::Handle:
                mHandles[name] = NextHandle();
                return;
            case Seed:
                mHandles[name] = data.Handle().From(0);
                return;
        }
    }

    void TakeColor() {
        BitReader& data = mStreams.data;
        data.BitShort();
        if (!mStreams.IsAtLeast(Release::R2004)) return;
        data.BitLong();
        const unsigned flags = data.Byte();
        if ((flags & 1U) != 0) mStreams.Text();
        if ((flags & 2U) != 0) mStreams.Text();
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
        for (const HeaderVariable& variable : DxfHeaderVariables()) TakeOver(variable);
    }

    /// The kept variables in the form in which DXF has them.
    void TakeOver(const HeaderVariable& variable) {
        const std::string name(variable.name.substr(1));
        std::vector<std::pair<int, std::string>> values;
        if (const auto whole = mWhole.find(name); whole != mWhole.end()) {
            values.emplace_back(variable.code, std::to_string(whole->second));
        } else if (const auto reals = mReals.find(name); reals != mReals.end()) {
            constexpr int angleCode = 50;
            for (std::size_t i = 0; i < reals->second.size(); ++i) {
                const double value = reals->second[i];
                values.emplace_back(variable.code + 10 * static_cast<int>(i),
                                    variable.code == angleCode ? DegreesText(value) : RealText(value));
            }
        } else if (const auto text = mTexts.find(name); text != mTexts.end()) {
            values.emplace_back(variable.code, text->second);
        }
        if (!values.empty()) mDrawing.headerVariables[std::string(variable.name)] = std::move(values);
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
    } catch (const Damage& damage) {
        Note(sections, "the drawing's variables can't be read: " + damage.reason);
    }
    return header;
}

}  // namespace brenvik::dwg
