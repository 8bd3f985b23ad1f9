// The work layers that a part goes over on its way from a solid to operations, each named by its role.
#pragma once

#include <string_view>

namespace brenvik::layers {

inline constexpr std::string_view BrenvikExplode = "BrenvikExplode";
inline constexpr std::string_view Region = "Region";
inline constexpr std::string_view NextBiggestRegion = "NextBiggestRegion";
inline constexpr std::string_view RegionCopy = "RegionCopy";
inline constexpr std::string_view Regioncopycopy = "regioncopycopy";
inline constexpr std::string_view CircleHold = "circleHold";
inline constexpr std::string_view SolidHold = "SolidHold";
inline constexpr std::string_view LinePv = "linePV";
inline constexpr std::string_view RegionPv = "regionPV";
inline constexpr std::string_view RegionPV2 = "regionPV2";
inline constexpr std::string_view CirclePv = "circlePV";
inline constexpr std::string_view RouteCirclePV = "RouteCirclePV";
inline constexpr std::string_view ThroughRouteCirclePV = "ThroughRouteCirclePV";
inline constexpr std::string_view CircleHold2 = "CircleHold2";
inline constexpr std::string_view RouteCircleHold = "RouteCircleHold";
inline constexpr std::string_view MAXCircleHold = "MAXCircleHold";
inline constexpr std::string_view HorzcircleHold = "HorzcircleHold";
inline constexpr std::string_view MyHorzcircleHold = "MyHorzcircleHold";
inline constexpr std::string_view ArcPv = "arcPV";
inline constexpr std::string_view Border = "Border";
inline constexpr std::string_view Border2 = "Border2";
inline constexpr std::string_view RoutingLayer1 = "RoutingLayer1";
inline constexpr std::string_view RoutingLayer2 = "RoutingLayer2";
inline constexpr std::string_view ThroughxRoute = "ThroughxRoute";
inline constexpr std::string_view DELETE = "DELETE";
inline constexpr std::string_view Zero = "0";

/// Whether the host's projection has made the layer: visible or hidden lines of a viewport.
inline bool OnProjection(std::string_view layer) {
    return layer.starts_with("PV-") || layer.starts_with("PH-");
}

/// Of the outside profile, by which later steps tell it from the paths inside the part.
inline constexpr int OutlineColor = 2;

}  // namespace brenvik::layers
