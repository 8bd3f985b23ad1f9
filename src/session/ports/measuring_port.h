// The solid measuring component: given a solid's object id, it finds the three extents.
#pragma once

#include <cstdint>
#include <memory>

namespace brenvik {

class SolidMeasurer {
  public:
    virtual ~SolidMeasurer() = default;
    /// Writes the extents in drawing units and a status; a status above 0 means that they are good. A solid
    /// square to the world axes gives its extents along X, Y and Z, any other its sizes along its own
    /// principal directions. What is no solid gives a status of 0 or less and extents of 0.
    virtual void MeasureSolid(std::int32_t objectId, double& d1, double& d2, double& d3, int& status) = 0;
};

class MeasuringPort {
  public:
    virtual ~MeasuringPort() = default;
    virtual std::unique_ptr<SolidMeasurer> CreateMeasurer() = 0;
};

}  // namespace brenvik
