// Features are drawn from a table of kinds and put where there is room; those that touch or overlap are put
// onto one that is there.
#include "corpus/panel_generator.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/number_text.h"
#include "corpus/lot.h"

namespace brenvik::corpus {

namespace {

struct Field {
    double left = 0, front = 0, right = 0, back = 0;
    double MiddleX() const { return (left + right) / 2; }
    double MiddleY() const { return (front + back) / 2; }
    double Length() const { return right - left; }
    double Width() const { return back - front; }
};

/// Radii that bits of a shop leave.
constexpr std::array Radii{6.5, 10.0, 18.5};

class Drawing {
  public:
    explicit Drawing(Lot& numbers) : lot(numbers) {
        constexpr std::array thicknesses{16.0, 18.0, 19.05, 25.0};
        panel.length = lot.Between(450, 1100);
        panel.width = lot.Between(260, 560);
        panel.thickness = lot.OneOf(thicknesses);
    }

    double Depth() { return lot.Between(3, panel.thickness - 4); }
    Shape Rect(const Field& at) const { return Rectangle(at.left, at.front, at.right, at.back); }
    Shape RoundRect(const Field& at) {
        const double radius = lot.OneOf(Radii);
        return Rounded(at.left, at.front, at.right, at.back,
                       std::min({radius, at.Length() / 2 - 1, at.Width() / 2 - 1}));
    }
    void Word(std::string_view what, const Field& at) {
        panel.words.push_back(std::string(what) + " " + NumberToText(at.left) + "," + NumberToText(at.front) +
                              " to " + NumberToText(at.right) + "," + NumberToText(at.back));
    }

    /// A place of this size that nothing has taken yet, a hand's breadth off the edges.
    std::optional<Field> Room(double along, double across, double margin = 30) {
        for (int attempt = 0; attempt < 40; ++attempt) {
            if (panel.length - 2 * margin < along || panel.width - 2 * margin < across) return std::nullopt;
            const double left = lot.Between(margin, panel.length - margin - along);
            const double front = lot.Between(margin, panel.width - margin - across);
            if (const std::optional<Field> room = Claim({left, front, left + along, front + across}))
                return room;
        }
        return std::nullopt;
    }
    /// Exactly this place, if nothing has taken it.
    std::optional<Field> Claim(const Field& at) {
        constexpr double clear = 7;
        const bool taken = std::ranges::any_of(mTaken, [&](const Field& other) {
            return at.left < other.right + clear && at.right > other.left - clear &&
                   at.front < other.back + clear && at.back > other.front - clear;
        });
        if (taken) return std::nullopt;
        mTaken.push_back(at);
        return at;
    }
    const std::vector<Field>& Taken() const { return mTaken; }

    Panel panel;
    Lot& lot;

  private:
    std::vector<Field> mTaken;
};

// The kinds. Each puts one feature where there is room; false where there is none.

bool DrillAt(Drawing& to, double x, double y, double diameter, std::string_view what) {
    const Field at{x - diameter / 2, y - diameter / 2, x + diameter / 2, y + diameter / 2};
    to.Word(what, at);
    return true;
}

bool AddHole(Drawing& to) {
    const double diameter = to.lot.OneOf(std::array{5.0, 8.0, 10.0, 15.0, 20.0, 35.0});
    const std::optional<Field> at = to.Room(diameter, diameter, 10);
    if (!at) return false;
    const Shape circle = Circle(at->MiddleX(), at->MiddleY(), diameter);
    switch (to.lot.Below(3)) {
        case 0:
            to.panel.Window(circle);
            return DrillAt(to, at->MiddleX(), at->MiddleY(), diameter, "through hole");
        case 1:
            to.panel.Pocket(circle, to.Depth());
            return DrillAt(to, at->MiddleX(), at->MiddleY(), diameter, "blind hole");
        default:
            to.panel.PocketBelow(circle, to.Depth());
            return DrillAt(to, at->MiddleX(), at->MiddleY(), diameter, "blind hole below");
    }
}

bool AddCounterbore(Drawing& to) {
    const std::optional<Field> at = to.Room(24, 24, 10);
    if (!at) return false;
    const Shape wide = Circle(at->MiddleX(), at->MiddleY(), to.lot.Between(10, 24));
    to.panel.Window(Circle(at->MiddleX(), at->MiddleY(), to.lot.Between(3, 8)));
    if (to.lot.OneIn(2))
        to.panel.Pocket(wide, to.Depth());
    else
        to.panel.PocketBelow(wide, to.Depth());
    to.Word("counterbore", *at);
    return true;
}

bool AddHinge(Drawing& to) {
    const std::optional<Field> at = to.Room(60, 36, 4);
    if (!at) return false;
    const double x = at->MiddleX(), y = at->front + 17.5;
    to.panel.Pocket(Circle(x, y, 35), 12.5);
    for (const double off : {-22.5, 22.5}) to.panel.Pocket(Circle(x + off, y + 9.5, 8), 11);
    to.Word("hinge cup", *at);
    return true;
}

bool AddPins(Drawing& to) {
    const int count = 3 + to.lot.Below(8);
    const std::optional<Field> at = to.Room(32.0 * (count - 1) + 5, 5, 20);
    if (!at) return false;
    const bool through = to.lot.OneIn(4);
    for (int pin = 0; pin < count; ++pin) {
        const Shape circle = Circle(at->left + 2.5 + 32 * pin, at->MiddleY(), 5);
        if (through)
            to.panel.Window(circle);
        else
            to.panel.Pocket(circle, 12);
    }
    to.Word("row of pins", *at);
    return true;
}

bool AddRecess(Drawing& to) {
    const std::optional<Field> at = to.Room(to.lot.Between(30, 160), to.lot.Between(30, 110));
    if (!at) return false;
    const Shape shape = to.lot.OneIn(2) ? to.Rect(*at) : to.RoundRect(*at);
    if (to.lot.OneIn(3)) {
        to.panel.PocketBelow(shape, to.Depth());
        to.Word("recess below", *at);
    } else {
        to.panel.Pocket(shape, to.Depth());
        to.Word("recess", *at);
    }
    return true;
}

bool AddWindow(Drawing& to) {
    const std::optional<Field> at = to.Room(to.lot.Between(40, 160), to.lot.Between(40, 110));
    if (!at) return false;
    to.panel.Window(to.lot.OneIn(2) ? to.Rect(*at) : to.RoundRect(*at));
    to.Word("window", *at);
    return true;
}

bool AddRoundRecess(Drawing& to) {
    const double diameter = to.lot.Between(36, 90);
    const std::optional<Field> at = to.Room(diameter, diameter);
    if (!at) return false;
    const Shape circle = Circle(at->MiddleX(), at->MiddleY(), diameter);
    switch (to.lot.Below(3)) {
        case 0:
            to.panel.Window(circle);
            to.Word("round window", *at);
            return true;
        case 1:
            to.panel.Pocket(circle, to.Depth());
            to.Word("round recess", *at);
            return true;
        default:
            to.panel.PocketBelow(circle, to.Depth());
            to.Word("round recess below", *at);
            return true;
    }
}

/// From edge to edge, or from one edge to somewhere inside.
bool AddDado(Drawing& to) {
    const double wide = to.lot.Between(6, 22);
    const bool across = to.lot.OneIn(2);
    const double length = across ? to.panel.width : to.panel.length;
    const double place = to.lot.Between(40, (across ? to.panel.length : to.panel.width) - 40 - wide);
    const double end = to.lot.OneIn(3) ? to.lot.Between(80, length - 40) : length + 1;
    const Field wanted = across ? Field{place, -1, place + wide, end} : Field{-1, place, end, place + wide};
    const std::optional<Field> at = to.Claim(wanted);
    if (!at) return false;
    if (to.lot.OneIn(3)) {
        to.panel.PocketBelow(to.Rect(*at), to.Depth());
        to.Word("dado below", *at);
    } else {
        to.panel.Pocket(to.Rect(*at), to.Depth());
        to.Word("dado", *at);
    }
    return true;
}

bool AddRabbet(Drawing& to) {
    const double wide = to.lot.Between(6, 24);
    const Panel& board = to.panel;
    const std::array sides{Field{-1, -1, board.length + 1, wide},
                           Field{-1, board.width - wide, board.length + 1, board.width + 1},
                           Field{-1, -1, wide, board.width + 1},
                           Field{board.length - wide, -1, board.length + 1, board.width + 1}};
    const std::optional<Field> at = to.Claim(to.lot.OneOf(sides));
    if (!at) return false;
    if (to.lot.OneIn(3)) {
        to.panel.PocketBelow(to.Rect(*at), to.Depth());
        to.Word("rabbet below", *at);
    } else {
        to.panel.Pocket(to.Rect(*at), to.Depth());
        to.Word("rabbet", *at);
    }
    return true;
}

bool AddNotch(Drawing& to) {
    const double along = to.lot.Between(30, 90), across = to.lot.Between(30, 110);
    const bool right = to.lot.OneIn(2), back = to.lot.OneIn(2);
    Field wanted{right ? to.panel.length - along : -1, back ? to.panel.width - across : -1,
                 right ? to.panel.length + 1 : along, back ? to.panel.width + 1 : across};
    // Every third one lies in an edge and not at a corner.
    if (to.lot.OneIn(3)) {
        wanted.left = to.lot.Between(100, to.panel.length - 100 - along);
        wanted.right = wanted.left + along;
    }
    const std::optional<Field> at = to.Claim(wanted);
    if (!at) return false;
    to.panel.Window(to.Rect(*at));
    to.Word("notch", *at);
    return true;
}

bool AddEdgeBores(Drawing& to) {
    const double depth = to.lot.Between(12, 40), diameter = to.lot.OneOf(std::array{5.0, 8.0});
    const bool onEnd = to.lot.OneIn(2), far = to.lot.OneIn(2);
    const double edge = onEnd ? to.panel.length : to.panel.width;
    const double along = to.lot.Between(40, (onEnd ? to.panel.width : to.panel.length) - 120);
    const double from = far ? edge - depth : -1, to1 = far ? edge + 1 : depth;
    const Field wanted =
        onEnd ? Field{from, along - 4, to1, along + 68} : Field{along - 4, from, along + 68, to1};
    const std::optional<Field> at = to.Claim(wanted);
    if (!at) return false;
    const double way = far ? -1 : 1, mouth = far ? edge : 0;
    for (const double off : {0.0, 64.0})
        to.panel.bores.push_back(
            onEnd ? EdgeBore{mouth, along + off, to.panel.thickness / 2, way, 0, depth, diameter}
                  : EdgeBore{along + off, mouth, to.panel.thickness / 2, 0, way, depth, diameter});
    to.Word("edge bores", *at);
    return true;
}

bool AddRoundedCorners(Drawing& to) {
    const double radius = to.lot.Between(20, 60), length = to.panel.length;
    const std::optional<Field> at = to.Claim({-1, -1, radius, radius});
    if (!at || !to.Claim({length - radius, -1, length + 1, radius})) return false;
    const double quarter = std::tan(std::acos(-1.0) / 8);
    // What lies outside of the rounds.
    to.panel.Window({{-1, -1}, {radius, -1}, {radius, 0, -quarter}, {0, radius}, {-1, radius}});
    to.panel.Window({{length + 1, -1},
                     {length + 1, radius},
                     {length, radius, -quarter},
                     {length - radius, 0},
                     {length - radius, -1}});
    to.Word("rounded corners", *at);
    return true;
}

bool AddKeyhole(Drawing& to) {
    const std::optional<Field> at = to.Room(14, 30);
    if (!at) return false;
    const double x = at->MiddleX(), y = at->front + 7, depth = to.Depth();
    to.panel.Pocket(Circle(x, y, 14), depth);
    to.panel.Pocket(Rectangle(x - 3.5, y, x + 3.5, at->back), depth);
    to.Word("keyhole", *at);
    return true;
}

/// The floor of a one-piece door, or with a raised field in it.
bool AddDoor(Drawing& to) {
    const double frame = to.lot.Between(45, 80);
    const std::optional<Field> at = to.Claim({frame, frame, to.panel.length - frame, to.panel.width - frame});
    if (!at) return false;
    const double depth = to.lot.Between(4, to.panel.thickness / 2);
    const Shape shape = to.lot.OneIn(2) ? to.Rect(*at) : to.RoundRect(*at);
    to.panel.Pocket(shape, depth);
    to.Word("door", *at);
    if (to.lot.OneIn(2)) return true;
    const double inset = to.lot.Between(20, 40);
    to.panel.recesses.back().island =
        Rectangle(at->left + inset, at->front + inset, at->right - inset, at->back - inset);
    to.panel.words.back() += " with a raised field";
    return true;
}

bool AddHalfLap(Drawing& to) {
    const double end = to.lot.Between(to.panel.length / 4, to.panel.length * 0.6);
    const std::optional<Field> at = to.Claim({-1, -1, end, to.panel.width + 1});
    if (!at) return false;
    to.panel.Pocket(to.Rect(*at), to.panel.thickness / 2);
    to.Word("half lap", *at);
    return true;
}

struct Kind {
    std::string_view name;
    bool (*add)(Drawing&);
    int most;  ///< On one panel.
};
constexpr auto Kinds = std::to_array<Kind>({{"hole", AddHole, 6},
                                            {"counterbore", AddCounterbore, 3},
                                            {"hinge", AddHinge, 2},
                                            {"pins", AddPins, 3},
                                            {"recess", AddRecess, 3},
                                            {"window", AddWindow, 2},
                                            {"round recess", AddRoundRecess, 3},
                                            {"dado", AddDado, 4},
                                            {"rabbet", AddRabbet, 2},
                                            {"notch", AddNotch, 2},
                                            {"edge bores", AddEdgeBores, 4},
                                            {"rounded corners", AddRoundedCorners, 1},
                                            {"keyhole", AddKeyhole, 2},
                                            {"door", AddDoor, 1},
                                            {"half lap", AddHalfLap, 1}});

void Fill(Drawing& to, int features) {
    for (int feature = 0; feature < features; ++feature)
        Kinds[static_cast<std::size_t>(to.lot.Below(Kinds.size()))].add(to);
}

// Features onto features.

Field FieldNear(Drawing& to, const Field& at) {
    const double x = at.left + to.lot.Between(0, at.Length()), y = at.front + to.lot.Between(0, at.Width());
    return {x - to.lot.Between(8, 50), y - to.lot.Between(8, 50), x + to.lot.Between(8, 50),
            y + to.lot.Between(8, 50)};
}

Field WithinBoard(const Drawing& to, Field at) {
    at.left = std::clamp(at.left, 0.0, to.panel.length);
    at.right = std::clamp(at.right, 0.0, to.panel.length);
    at.front = std::clamp(at.front, 0.0, to.panel.width);
    at.back = std::clamp(at.back, 0.0, to.panel.width);
    return at;
}

/// A hole whose rim or centre comes onto a wall of what lies at a place.
void DrillOntoWall(Drawing& to, const Field& at, bool tangent) {
    const double diameter = to.lot.OneOf(std::array{5.0, 8.0, 10.0, 15.0, 35.0});
    const double off = tangent ? diameter / 2 : 0;
    double x = at.MiddleX(), y = at.back + off;
    if (to.lot.OneIn(2)) {
        x = at.right + off;
        y = at.MiddleY();
    }
    if (x < 5 || x > to.panel.length - 5) x = at.left - off;
    if (y < 5 || y > to.panel.width - 5) y = at.front - off;
    const Shape circle = Circle(x, y, diameter);
    if (to.lot.OneIn(3))
        to.panel.Window(circle);
    else
        to.panel.Pocket(circle, to.Depth());
    DrillAt(to, x, y, diameter, tangent ? "hole beside" : "hole on a wall");
}

void Abut(Drawing& to, const Field& at) {
    const double along = to.lot.Between(20, 60);
    const Field beside{at.right, at.front, std::min(at.right + along, to.panel.length - 10), at.back};
    if (beside.Length() < 15 || beside.Width() < 6) return DrillOntoWall(to, at, true);
    to.panel.Pocket(to.Rect(beside), to.Depth());
    to.Word("recess against a wall", beside);
}

void Cross(Drawing& to, const Field& at) {
    const double wide = to.lot.Between(8, 20);
    const Field dado = to.lot.OneIn(2)
                           ? Field{at.MiddleX() - wide / 2, -1, at.MiddleX() + wide / 2, to.panel.width + 1}
                           : Field{-1, at.MiddleY() - wide / 2, to.panel.length + 1, at.MiddleY() + wide / 2};
    if (to.lot.OneIn(3))
        to.panel.PocketBelow(to.Rect(dado), to.Depth());
    else
        to.panel.Pocket(to.Rect(dado), to.Depth());
    to.Word("dado across", dado);
}

void Touch(Drawing& to, const Field& at) {
    switch (to.lot.Below(3)) {
        case 0:
            return DrillOntoWall(to, at, true);
        case 1:
            return Abut(to, at);
        default:
            return DrillOntoWall(to, at, false);
    }
}

void Overlap(Drawing& to, const Field& at) {
    const Field near = WithinBoard(to, FieldNear(to, at));
    switch (to.lot.Below(6)) {
        case 0:
            return Cross(to, at);
        case 1:
            to.panel.PocketBelow(to.Rect(near), to.Depth());
            return to.Word("recess below across", near);
        case 2:
            to.panel.Window(to.Rect(near));
            return to.Word("window across", near);
        case 3:
            to.panel.Pocket(Circle(near.MiddleX(), near.MiddleY(), 35), to.Depth());
            return to.Word("cup across", near);
        case 4:
            to.panel.Window(Circle(near.MiddleX(), near.MiddleY(), 8));
            return to.Word("hole across", near);
        default:
            to.panel.Pocket(to.RoundRect(near), to.Depth());
            return to.Word("recess across", near);
    }
}

}  // namespace

DrawnPanel DrawPanel(Contacts contacts, std::uint32_t number) {
    Lot lot(number * 4 + static_cast<std::uint32_t>(contacts));
    Drawing drawing(lot);
    DrawnPanel drawn;
    if (contacts == Contacts::OneKind) {
        const Kind& kind = Kinds[number % Kinds.size()];
        drawn.kind = kind.name;
        for (int feature = 1 + lot.Below(kind.most); feature > 0; --feature) kind.add(drawing);
    } else {
        Fill(drawing, contacts == Contacts::Apart ? 4 + lot.Below(8) : 2 + lot.Below(4));
        const std::vector<Field> there = drawing.Taken();
        for (const Field& at : there) {
            if (contacts == Contacts::Touching && lot.OneIn(2)) Touch(drawing, WithinBoard(drawing, at));
            if (contacts == Contacts::Overlapping && lot.OneIn(2)) Overlap(drawing, WithinBoard(drawing, at));
        }
    }
    drawn.panel = lot.OneIn(3) ? Mirrored(drawing.panel) : drawing.panel;
    return drawn;
}

}  // namespace brenvik::corpus
