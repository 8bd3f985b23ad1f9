// The work layers that a part goes over on its way from a solid to operations, each named by its role.
#pragma once

#include <array>
#include <string_view>

namespace brenvik::layers {

inline constexpr std::string_view BrenvikExplode = "BrenvikExplode";
inline constexpr std::string_view Region = "Region";
inline constexpr std::string_view NextBiggestRegion = "NextBiggestRegion";
inline constexpr std::string_view RegionCopy = "RegionCopy";
inline constexpr std::string_view RegionCopyCopy = "regioncopycopy";
inline constexpr std::string_view CircleHold = "circleHold";
inline constexpr std::string_view SolidHold = "SolidHold";
/// Nothing is put on this one and on `circlePV`: they are made, and swept, with the others.
inline constexpr std::string_view LinePv = "linePV";
inline constexpr std::string_view RegionPv = "regionPV";
inline constexpr std::string_view RegionPv2 = "regionPV2";
inline constexpr std::string_view CirclePv = "circlePV";
inline constexpr std::string_view RouteCirclePv = "RouteCirclePV";
inline constexpr std::string_view ThroughRouteCirclePv = "ThroughRouteCirclePV";
inline constexpr std::string_view CircleHold2 = "CircleHold2";
inline constexpr std::string_view RouteCircleHold = "RouteCircleHold";
inline constexpr std::string_view MaxCircleHold = "MAXCircleHold";
inline constexpr std::string_view HorzCircleHold = "HorzcircleHold";
inline constexpr std::string_view MyHorzCircleHold = "MyHorzcircleHold";
inline constexpr std::string_view ArcPv = "arcPV";
inline constexpr std::string_view Border = "Border";
inline constexpr std::string_view Border2 = "Border2";
inline constexpr std::string_view RoutingLayer1 = "RoutingLayer1";
inline constexpr std::string_view RoutingLayer2 = "RoutingLayer2";
inline constexpr std::string_view ThroughXRoute = "ThroughxRoute";
inline constexpr std::string_view Delete = "DELETE";
/// The layer of every drawing, where trial objects are made.
inline constexpr std::string_view Zero = "0";

/// All layers but `Zero`.
inline constexpr auto All = std::to_array<std::string_view>({BrenvikExplode,
                                                             Region,
                                                             NextBiggestRegion,
                                                             RegionCopy,
                                                             RegionCopyCopy,
                                                             CircleHold,
                                                             SolidHold,
                                                             LinePv,
                                                             RegionPv,
                                                             RegionPv2,
                                                             CirclePv,
                                                             RouteCirclePv,
                                                             ThroughRouteCirclePv,
                                                             CircleHold2,
                                                             RouteCircleHold,
                                                             MaxCircleHold,
                                                             HorzCircleHold,
                                                             MyHorzCircleHold,
                                                             ArcPv,
                                                             Border,
                                                             Border2,
                                                             RoutingLayer1,
                                                             RoutingLayer2,
                                                             ThroughXRoute,
                                                             Delete});

/// What the names of the layers begin with that the host's projection makes: visible and hidden lines of a
/// viewport.
inline constexpr auto ProjectionPrefixes = std::to_array<std::string_view>({"PV-", "PH-"});

/// Whether the host's projection has made the layer.
inline bool OnProjection(std::string_view layer) {
    return layer.starts_with(ProjectionPrefixes[0]) || layer.starts_with(ProjectionPrefixes[1]);
}

/// The colour of the outside profile, by which later steps know it from the paths inside the part.
inline constexpr int OutlineColor = 2;
/// The colours of what else a part's file holds. Paths that stop inside the part go by their layer.
inline constexpr int CutOutColor = 1, HoleColor = 4, SheetColor = 7;
/// Of an edge bore that is a circle, and of the rectangle that stands for one.
inline constexpr int BoreColor = 8, BoreRectangleColor = 15;

}  // namespace brenvik::layers
