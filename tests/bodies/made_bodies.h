// Bodies as shops and their programs make them, by the hundred: rounded, lofted, swept, threaded, turned,
// with free faces, open ones, and bodies whose edges lie off their faces as those of other programs do.
#pragma once

#include <TopoDS_Shape.hxx>

#include <random>
#include <string>
#include <vector>

namespace brenvik::acis::testing {

/// Numbers for one body; the same seed gives the same numbers on every machine.
class Dice {
  public:
    explicit Dice(unsigned seed) : mEngine(seed) {}
    double Between(double low, double high);
    int Whole(int low, int high);
    bool Coin() { return Whole(0, 1) == 1; }

  private:
    std::mt19937 mEngine;
};

/// A way of making bodies. A null shape is one that the modeller could not make.
struct BodyFamily {
    const char* name;
    TopoDS_Shape (*make)(Dice& dice);
    bool quick;  ///< Made and read within a tenth of a second.
};

const std::vector<BodyFamily>& BodyFamilies();

/// The body with its edges off their faces, or its vertices off their edges, by up to `gap`, and tolerances
/// that own up to it, as files of other programs have them.
TopoDS_Shape Loosened(const TopoDS_Shape& shape, double gap, Dice& dice);

struct MadeBody {
    std::string name;
    TopoDS_Shape shape;
    bool sound =
        false;  ///< The modeller itself finds nothing wrong with it, but for edges loosened on purpose.
};

/// One body of a family; the name tells family and seed.
MadeBody Make(const BodyFamily& family, unsigned seed);

}  // namespace brenvik::acis::testing
