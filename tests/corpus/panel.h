// A panel and its truth: a board, and all that is taken out of it, as plain shapes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "corpus/figure.h"
#include "session/ports/host_interface.h"

namespace brenvik::corpus {

/// What is taken out: all over a shape between two heights, but for an island in it.
struct Recess {
    Shape shape;
    double low = 0, high = 0;
    std::optional<Shape> island = {};
};

/// A bore from an edge, level.
struct EdgeBore {
    double x = 0, y = 0, z = 0;     ///< Its mouth.
    double alongX = 0, alongY = 0;  ///< Into the board, of length 1.
    double depth = 0, diameter = 0;
};

struct Panel {
    double length = 0, width = 0, thickness = 0;
    std::vector<Recess> recesses;
    std::vector<EdgeBore> bores;
    std::vector<std::string> words;  ///< What a person would call it, one for each feature.

    void Pocket(const Shape& shape, double depth) { Take(shape, thickness - depth, thickness); }
    void PocketBelow(const Shape& shape, double depth) { Take(shape, 0, depth); }
    void Window(const Shape& shape) { Take(shape, 0, thickness); }
    void Take(const Shape& shape, double low, double high) { recesses.push_back({shape, low, high}); }
    std::string Text() const;
};

/// The other hand: X runs from the other end.
Panel Mirrored(const Panel& panel);

/// As a solid with its corner at the origin.
Acad3DSolid& BuildSolid(const Panel& panel, AcadBlock& space);

/// Asks whether there is wood at a place.
class Truth {
  public:
    explicit Truth(const Panel& panel);
    bool HasWood(double x, double y, double z) const;
    /// Whether a wall, a floor or a face is as near as that.
    bool IsNearBorder(double x, double y, double z, double distance) const;

    const Panel& Of() const { return mPanel; }
    /// The shapes of recesses and their islands.
    const std::vector<Figure>& Figures() const { return mFigures; }

  private:
    struct Prism {
        std::size_t figure = 0;
        std::optional<std::size_t> island;
        double low = 0, high = 0;
    };
    const Panel& mPanel;
    std::vector<Figure> mFigures;
    std::vector<Prism> mPrisms;
};

/// Of a bore at a place: how far along it, how far from its axis.
struct BorePlace {
    double along = 0, across = 0;
};
BorePlace PlaceIn(const EdgeBore& bore, double x, double y, double z);
bool Takes(const EdgeBore& bore, double x, double y, double z);
bool IsNearWall(const EdgeBore& bore, double x, double y, double z, double distance);

}  // namespace brenvik::corpus
