// A panel can lie in its files in eight ways; the one that fits best is the one that is judged.
#include "corpus/file_checker.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/number_text.h"
#include "base/numbers.h"

namespace brenvik::corpus {

namespace {

/// Places in files have six decimals, depths in names five; rounds in chords stray by a few thousandths.
constexpr double Stray = 0.02;
/// How far off a wall it is asked on both sides, which is what a wall may miss by.
constexpr double Beside = 0.05;

/// One operation in the frame of the file's first side, with its top face at the thickness.
struct Cut {
    std::optional<Figure> figure;
    double low = 0, high = 0;
    double bit = 0;  ///< Of a route that clears no more than that along its line; 0 for the rest.
    std::optional<EdgeBore> bore;

    bool Takes(double x, double y, double z) const {
        if (bore) return corpus::Takes(*bore, x, y, z);
        if (z <= low || z >= high || !figure->Contains({x, y})) return false;
        return bit == 0 || figure->DistanceToRim({x, y}) <= bit;
    }
    bool IsNear(double x, double y, double z) const {
        if (bore) return IsNearWall(*bore, x, y, z, Stray);
        if (std::abs(z - low) < Stray || std::abs(z - high) < Stray) return true;
        if (!figure->MayBeNear({x, y}, Stray)) return false;
        const double rim = figure->DistanceToRim({x, y});
        return rim < Stray || (bit > 0 && std::abs(rim - bit) < Stray);
    }
};

std::string PlaceText(double x, double y, double z) {
    const auto number = [](double value) { return NumberToText(RoundHalfEven(value, 2)); };
    return "at " + number(x) + "," + number(y) + "," + number(z);
}

/// The number behind a mark of a name, up to the next one.
double Field(std::string_view name, std::string_view mark) {
    const std::size_t at = name.find(mark);
    if (at == std::string_view::npos) return 0;
    const std::size_t from = at + mark.size();
    std::string text(name.substr(from, name.find('_', from) - from));
    std::ranges::replace(text, 'p', '.');
    return LenientNumber(text);
}

class Blank {
  public:
    Blank(double thickness, Findings& findings) : mThickness(thickness), mFindings(findings) {}

    void Gather(const std::vector<Drawn>& file, bool second) {
        if (!second) FindSize(file);
        for (const Drawn& drawn : file) Take(drawn, second);
    }

    bool HasWood(double x, double y, double z) const {
        // A part of several pieces has an outline for each; wood is what lies in one of them on either side.
        const auto within = [&](bool second) {
            bool any = false, has = false;
            for (std::size_t i = 0; i < mOutlines.size(); ++i) {
                if (mOfSecond[i] != second) continue;
                has = true;
                any = any || mOutlines[i].Contains({x, y});
            }
            return any || !has;
        };
        return within(false) && within(true) &&
               std::ranges::none_of(mCuts, [&](const Cut& cut) { return cut.Takes(x, y, z); });
    }
    bool IsNear(double x, double y, double z) const {
        return std::ranges::any_of(mOutlines,
                                   [&](const Figure& outline) {
                                       return outline.DistanceToRim({x, y}) < Stray;
                                   }) ||
               std::ranges::any_of(mCuts, [&](const Cut& cut) { return cut.IsNear(x, y, z); });
    }
    const std::vector<Cut>& Cuts() const { return mCuts; }
    const std::vector<Figure>& Outlines() const { return mOutlines; }
    double Length() const { return mLength; }
    double Width() const { return mWidth; }

  private:
    static Shape ShapeOf(const Drawn& drawn) {
        if (drawn.kind == "AcDbCircle")
            return Circle(drawn.points.front().x, drawn.points.front().y, drawn.diameter);
        Shape shape;
        const double turn = drawn.normal.z < 0 ? -1 : 1;
        for (std::size_t i = 0; i < drawn.points.size(); ++i)
            shape.push_back({turn * drawn.points[i].x, drawn.points[i].y, turn * drawn.bulges[i]});
        return shape;
    }

    void FindSize(const std::vector<Drawn>& file) {
        for (const Drawn& sheet : file) {
            if (!sheet.layer.starts_with("PL_")) continue;
            for (const Point3& corner : sheet.points) {
                mLength = std::max(mLength, corner.x);
                mWidth = std::max(mWidth, corner.y);
            }
        }
    }

    /// From a side's own frame, where the top face lies at 0.
    void Lay(Cut& cut, const Shape& shape, double depth, bool second) const {
        Shape laid = shape;
        if (second)
            for (ShapeCorner& corner : laid) {
                corner.y = mWidth - corner.y;
                corner.bulge = -corner.bulge;
            }
        cut.figure.emplace(laid);
        cut.low = second ? 0 : mThickness - depth;
        cut.high = second ? depth : mThickness;
    }

    void TakeBore(const Drawn& drawn, bool second) {
        const Point3& mouth = drawn.points.front();
        const double turn = second ? -1 : 1;
        mCuts.push_back({});
        mCuts.back().bore = EdgeBore{mouth.x,
                                     second ? mWidth - mouth.y : mouth.y,
                                     second ? -mouth.z : mThickness + mouth.z,
                                     -drawn.normal.x,
                                     -turn * drawn.normal.y,
                                     -drawn.thickness,
                                     drawn.diameter};
    }

    void Take(const Drawn& drawn, bool second) {
        const std::string& name = drawn.layer;
        if (name.starts_with("PL_")) return;
        const bool level = std::abs(std::abs(drawn.normal.z) - 1) < 1e-9;
        if (drawn.kind == "AcDbCircle" && !level && name.size() >= 4 && name[0] == 'H')
            return TakeBore(drawn, second);
        const double depth = -drawn.thickness * drawn.normal.z;
        if (!level || !drawn.closed || depth <= 0 || std::abs(drawn.points.front().z) > Stray)
            mFindings.faults.push_back(name + " is no operation from the top face down");
        if (!level || std::abs(Field(name, "_Z") - std::abs(drawn.thickness)) > Stray)
            mFindings.faults.push_back(name + " lies by " + NumberToText(drawn.thickness) + " deep");
        Cut cut;
        Lay(cut, ShapeOf(drawn), std::abs(drawn.thickness), second);
        if (name.starts_with("OT_")) {
            mOutlines.push_back(std::move(*cut.figure));
            mOfSecond.push_back(second);
            return;
        }
        if (name.starts_with("RT_") && depth < mThickness - Stray) cut.bit = Field(name, "_D");
        if (name.starts_with("VD_") && std::abs(Field(name, "_T_D") - drawn.diameter) > Stray)
            mFindings.faults.push_back(name + " is " + NumberToText(drawn.diameter) + " wide");
        mCuts.push_back(std::move(cut));
    }

    double mThickness;
    Findings& mFindings;
    double mLength = 0, mWidth = 0;
    std::vector<Figure> mOutlines;
    std::vector<bool> mOfSecond;  ///< Of each outline, whether the second side's file has it.
    std::vector<Cut> mCuts;
};

/// One of the eight ways.
struct Way {
    bool turnedOver = false;
    int quarters = 0;
    double length = 0, width = 0, thickness = 0;  ///< Of the panel in its own frame.

    Point3 ToFile(const Point3& at) const {
        Point3 to = turnedOver ? Point3{at.x, width - at.y, thickness - at.z} : at;
        double across = width, along = length;
        for (int quarter = 0; quarter < quarters; ++quarter) {
            to = {across - to.y, to.x, to.z};
            std::swap(across, along);
        }
        return to;
    }
    Point3 ToPanel(const Point3& at) const {
        Point3 to = at;
        double along = quarters % 2 == 0 ? length : width, across = quarters % 2 == 0 ? width : length;
        for (int quarter = 0; quarter < quarters; ++quarter) {
            to = {to.y, along - to.x, to.z};
            std::swap(across, along);
        }
        return turnedOver ? Point3{to.x, width - to.y, thickness - to.z} : to;
    }
};

void AddMiddles(std::vector<double>& values) {
    std::ranges::sort(values);
    std::vector<double> middles;
    for (std::size_t i = 0; i + 1 < values.size(); ++i)
        if (values[i + 1] - values[i] > 2 * Stray) middles.push_back((values[i] + values[i + 1]) / 2);
    values = std::move(middles);
}

void AddLevels(const EdgeBore& bore, std::vector<double>& levels) {
    for (const double share : {-1.0, -0.6, 0.0, 0.6, 1.0})
        levels.push_back(bore.z + share * bore.diameter / 2);
}

/// Where it is asked, in the frame of the panel.
class Places {
  public:
    Places(const Truth& truth, const Blank& blank, const Way& way) : mWay(way) {
        const Panel& panel = truth.Of();
        mXs = {-2, 0, panel.length, panel.length + 2};
        mYs = {-2, 0, panel.width, panel.width + 2};
        mLevels = {0, panel.thickness};
        for (const Recess& recess : panel.recesses) mLevels.insert(mLevels.end(), {recess.low, recess.high});
        for (const Figure& figure : truth.Figures()) Add(figure, false);
        for (const EdgeBore& bore : panel.bores) Add(bore);
        for (const Figure& outline : blank.Outlines()) Add(outline, true);
        for (const Cut& cut : blank.Cuts()) {
            if (cut.figure) {
                Add(*cut.figure, true);
                mLevels.push_back(way.ToPanel({0, 0, cut.low}).z);
                mLevels.push_back(way.ToPanel({0, 0, cut.high}).z);
            } else {
                Add(OfPanel(*cut.bore));
            }
        }
        for (double& level : mLevels) level = std::clamp(level, 0.0, panel.thickness);
        AddMiddles(mXs);
        AddMiddles(mYs);
        AddMiddles(mLevels);
    }

    template <class Ask>
    void ForEach(const Ask& ask) const {
        for (const double z : mLevels) {
            for (const double x : mXs)
                for (const double y : mYs) ask(Point3{x, y, z});
            for (const Spot& spot : mBeside) ask(Point3{spot.x, spot.y, z});
        }
        for (const Point3& place : mInBores) ask(place);
    }

  private:
    EdgeBore OfPanel(const EdgeBore& bore) const {
        const Point3 mouth = mWay.ToPanel({bore.x, bore.y, bore.z});
        const Point3 inside = mWay.ToPanel({bore.x + bore.alongX, bore.y + bore.alongY, bore.z});
        return {mouth.x, mouth.y, mouth.z, inside.x - mouth.x, inside.y - mouth.y, bore.depth, bore.diameter};
    }
    Spot ToPanel(const Spot& spot) const {
        const Point3 place = mWay.ToPanel({spot.x, spot.y, 0});
        return {place.x, place.y};
    }

    void Add(const Figure& figure, bool ofFile) {
        for (const Spot& corner : {figure.Low(), figure.High()}) {
            const Spot at = ofFile ? ToPanel(corner) : corner;
            mXs.push_back(at.x);
            mYs.push_back(at.y);
        }
        // The corners of long rounds would make a grid finer than it has to be.
        const std::size_t step = std::max<std::size_t>(1, figure.Corners().size() / 6);
        for (std::size_t i = 0; i < figure.Corners().size(); i += step) {
            const Spot at = ofFile ? ToPanel(figure.Corners()[i]) : figure.Corners()[i];
            mXs.push_back(at.x);
            mYs.push_back(at.y);
        }
        for (const double distance : {Beside, 0.5, 3.0})
            for (const Spot& spot : figure.Beside(distance)) mBeside.push_back(ofFile ? ToPanel(spot) : spot);
    }

    void Add(const EdgeBore& bore) {
        AddLevels(bore, mLevels);
        for (const double along : {Beside, bore.depth / 2, bore.depth - Beside, bore.depth + Beside})
            for (const double turn : {0.0, 0.9, 1.9, 3.0, 4.1, 5.2})
                for (const double off : {-bore.diameter / 2, -Beside, Beside}) {
                    const double across = (bore.diameter / 2 + off) * std::cos(turn);
                    mInBores.push_back({bore.x + along * bore.alongX - across * bore.alongY,
                                        bore.y + along * bore.alongY + across * bore.alongX,
                                        bore.z + (bore.diameter / 2 + off) * std::sin(turn)});
                }
    }

    const Way& mWay;
    std::vector<double> mXs, mYs, mLevels;
    std::vector<Spot> mBeside;
    std::vector<Point3> mInBores;
};

struct Count {
    int stands = 0, cutInto = 0;
    std::string standing, gone;
    bool Exact() const { return stands == 0 && cutInto == 0; }
    /// A feature that is missing has many more places than a part that lies another way round has.
    bool operator<(const Count& other) const {
        return cutInto != other.cutInto ? cutInto < other.cutInto : stands < other.stands;
    }
};

Count Compare(const Truth& truth, const Blank& blank, const Way& way) {
    Count count;
    Places(truth, blank, way).ForEach([&](const Point3& place) {
        const bool wanted = truth.HasWood(place.x, place.y, place.z);
        const Point3 at = way.ToFile(place);
        if (wanted == blank.HasWood(at.x, at.y, at.z)) return;
        if (truth.IsNearBorder(place.x, place.y, place.z, Stray) || blank.IsNear(at.x, at.y, at.z)) return;
        std::string& text = wanted ? count.gone : count.standing;
        if (text.empty()) text = PlaceText(place.x, place.y, place.z);
        ++(wanted ? count.cutInto : count.stands);
    });
    return count;
}

/// At some of the places alone, and without a look at what is near.
int Misfit(const Truth& truth, const Blank& blank, const Way& way) {
    constexpr int lookedAt = 29;
    int misfit = 0, place = 0;
    Places(truth, blank, way).ForEach([&](const Point3& inPanel) {
        if (++place % lookedAt != 0) return;
        const Point3 at = way.ToFile(inPanel);
        const bool wanted = truth.HasWood(inPanel.x, inPanel.y, inPanel.z);
        if (wanted != blank.HasWood(at.x, at.y, at.z)) misfit += wanted ? 5 : 1;
    });
    return misfit;
}

/// The ways that the sheet allows, those that fit best first.
std::vector<Way> WaysOf(const Truth& truth, const Blank& blank) {
    const Panel& panel = truth.Of();
    std::vector<std::pair<int, Way>> ways;
    for (const bool turnedOver : {false, true})
        for (int quarters = 0; quarters < 4; ++quarters) {
            const double length = quarters % 2 == 0 ? panel.length : panel.width;
            if (std::abs(length - blank.Length()) > 1) continue;
            const Way way{turnedOver, quarters, panel.length, panel.width, panel.thickness};
            ways.emplace_back(Misfit(truth, blank, way), way);
        }
    std::ranges::stable_sort(ways, {}, [](const auto& way) { return way.first; });
    std::vector<Way> sorted;
    for (const auto& [misfit, way] : ways)
        if (misfit <= 2 * ways.front().first + 30) sorted.push_back(way);
    return sorted;
}

}  // namespace

std::string Findings::Text() const {
    std::string text;
    if (!standing.empty()) text += "wood stands " + standing + "; ";
    if (!gone.empty()) text += "cut into " + gone + "; ";
    for (const std::string& fault : faults) text += fault + "; ";
    return text;
}

Findings CheckFiles(const Panel& panel, const std::vector<Drawn>& first,
                    const std::optional<std::vector<Drawn>>& second) {
    Findings findings;
    Blank blank(panel.thickness, findings);
    blank.Gather(first, false);
    if (second) blank.Gather(*second, true);
    if (blank.Outlines().empty()) findings.faults.emplace_back("there is no outline");
    const Truth truth(panel);
    std::optional<Count> best;
    for (const Way& way : WaysOf(truth, blank)) {
        const Count count = Compare(truth, blank, way);
        if (!best || count < *best) best = count;
        if (best->Exact()) return findings;
    }
    if (!best) {
        findings.faults.emplace_back("the sheet isn't the panel's");
        return findings;
    }
    findings.standing = best->standing;
    findings.gone = best->gone;
    return findings;
}

}  // namespace brenvik::corpus
