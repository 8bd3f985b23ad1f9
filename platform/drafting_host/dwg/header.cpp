// The variables one by one, and where each goes.
#include "drafting_host/dwg/header.h"

#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "drafting_host/dwg/header_checks.h"
#include "drafting_host/dwg/header_rows.h"
#include "drafting_host/dwg/objects.h"
#include "drafting_host/dwg/table_data.h"
#include "drafting_host/dxf/data/header_variables.h"
#include "drafting_host/dxf/texts/exact_numbers.h"

namespace brenvik::dwg {
namespace {

using namespace header;
using enum header::Kind;

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
        if (mStreams.IsAtLeast(Release::R2007) && mStreams.data.Left() > 0) WalkLateRows();
    }
    /// What is left when all is read; blank where the section ends with the variables.
    std::string Rest() const {
        std::size_t values = mStreams.strings.Left();
        BitReader tail = mStreams.data;
        if (mStreams.IsAtLeast(Release::R2007)) {
            values += mStreams.data.Left();
            tail = mStreams.handles;
        }
        constexpr int junk = 4;  // numbers that nobody reads end the section
        constexpr std::size_t mostBehind = 15;
        try {
            for (int i = 0; i < junk && tail.Left() > mostBehind; ++i) tail.BitShort();
        } catch (const Damage&) {
            // there are too few of them
        }
        values += tail.Left() > mostBehind ? tail.Left() : 0;
        return values == 0 ? "" : std::to_string(values);
    }
    /// Whatever stopped the walk, what was read is there.
    Header Result(Sections& sections) {
        for (std::string& doubt : DropImpossible(mValues)) Note(sections, std::move(doubt));
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
        header.handles = mHandles;
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

    void WalkLateRows() {
        try {
            Walk(LateRows);
        } catch (const Damage&) {
            // They are of no use in part.
            for (const Row& row : LateRows) {
                for (const std::string& name : Split(row.names, ' ')) {
                    mWhole.erase(name);
                    mReals.erase(name);
                }
            }
            throw;
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
                const double days = data.BitLong();
                mReals[name] = {days + data.BitLong() / MillisecondsOfDay};
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
    Values mValues;
    std::map<std::string, int>& mWhole = mValues.whole;
    std::map<std::string, std::vector<double>>& mReals = mValues.reals;
    std::map<std::string, std::string>& mTexts = mValues.texts;
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

/// Who saved the drawing last, which stands among its properties: five texts in front, two behind, three
/// times, and properties of the user's own with their values.
std::string LastSaver(Sections& sections, const Texts& texts) {
    if (sections.summary.empty()) return {};
    constexpr int textsInFront = 5, textsBehind = 2;
    constexpr std::size_t times = 3 * 64, behind = 64;
    BitReader reader(sections.summary);
    const std::size_t sizeOfUnit = texts.IsUnicode() ? 2 : 1;
    const auto next = [&] {
        const std::string bytes = reader.Bytes(reader.Short() * sizeOfUnit);
        return texts.IsUnicode() ? texts.FromUnits(bytes) : texts.FromPage(bytes);
    };
    std::string saver;
    try {
        for (int i = 0; i < textsInFront; ++i) next();
        saver = next();
        for (int i = 0; i < textsBehind; ++i) next();
        reader.Skip(times);
        for (int left = 2 * reader.Short(); left > 0; --left) next();
        if (reader.Left() > behind)
            reader.Fail("their end was expected, " + std::to_string(reader.Left() / 8) + " bytes follow");
        return saver;
    } catch (const Damage& damage) {
        Note(sections, "the drawing's properties may be wrong from byte " + std::to_string(damage.bit / 8) +
                           " on: " + damage.reason);
        return saver;
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
            if (const std::string rest = reader.Rest(); !rest.empty())
                Note(sections, "the drawing's variables end " + rest +
                                   " bits before their section: what was read of them may be wrong");
        } catch (const Damage& damage) {
            Note(sections, "the drawing's variables break off at bit " + std::to_string(damage.bit) + ": " +
                               damage.reason);
        }
        header = reader.Result(sections);
        if (const std::string saver = LastSaver(sections, texts); !saver.empty())
            header.variables.emplace_back("$LASTSAVEDBY", GroupText().Text(1, saver).Take());
    } catch (const Damage& damage) {
        Note(sections, "the drawing's variables can't be read: " + damage.reason);
    }
    return header;
}

}  // namespace brenvik::dwg
