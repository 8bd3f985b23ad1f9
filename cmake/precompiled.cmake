# The headers that most files include, read once: a third of the compile time. Sources include what they use
# all the same, which the builds without it prove (the presets `fuzz` and `windows-core`).
option(BRENVIK_PCH "Precompile the standard library's and the modeller's headers" ON)

set(standardHeaders <algorithm> <array> <charconv> <cmath> <filesystem> <fstream> <functional> <iterator> <map>
  <memory> <numbers> <optional> <set> <span> <sstream> <string> <string_view> <unordered_map> <utility> <variant>
  <vector>)
# The host interface comes ahead of the modeller, which makes a macro of the word Handle.
set(modellerHeaders <session/ports/host_interface.h> <drafting_host/document/geometry/modeller_handle.h>
  <BRepAdaptor_Curve.hxx> <BRepAdaptor_Surface.hxx> <BRepBndLib.hxx> <BRepBuilderAPI_MakeEdge.hxx>
  <BRepBuilderAPI_MakeFace.hxx> <BRepBuilderAPI_MakeWire.hxx> <BRepGProp.hxx> <BRepTools.hxx> <BRep_Builder.hxx>
  <BRep_Tool.hxx> <Bnd_Box.hxx> <GProp_GProps.hxx> <Geom_BSplineCurve.hxx> <Geom_BSplineSurface.hxx>
  <Geom_Circle.hxx> <Geom_Line.hxx> <Geom_TrimmedCurve.hxx> <Standard_Failure.hxx> <TColStd_Array1OfReal.hxx>
  <TopExp.hxx> <TopExp_Explorer.hxx> <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
  <TopTools_IndexedMapOfShape.hxx> <TopTools_ListOfShape.hxx> <TopTools_MapOfShape.hxx> <TopoDS.hxx>
  <TopoDS_Compound.hxx> <TopoDS_Edge.hxx> <TopoDS_Face.hxx> <TopoDS_Iterator.hxx> <TopoDS_Shape.hxx>
  <TopoDS_Shell.hxx> <TopoDS_Solid.hxx> <TopoDS_Vertex.hxx> <TopoDS_Wire.hxx> <gp_Ax2.hxx> <gp_Ax3.hxx>
  <gp_Circ.hxx> <gp_Cylinder.hxx> <gp_Dir.hxx> <gp_Elips.hxx> <gp_Lin.hxx> <gp_Pln.hxx> <gp_Pnt.hxx>
  <gp_Trsf.hxx> <gp_Vec.hxx> <gp_XYZ.hxx>)

# One target holds each set; all others reuse its file: brenvik_precompiled(SET HEADER...).
function(brenvik_precompiled set)
  if(NOT BRENVIK_PCH)
    return()
  endif()
  file(WRITE ${CMAKE_BINARY_DIR}/precompiled/${set}.cpp.new "")
  file(COPY_FILE ${CMAKE_BINARY_DIR}/precompiled/${set}.cpp.new ${CMAKE_BINARY_DIR}/precompiled/${set}.cpp ONLY_IF_DIFFERENT)
  add_library(brenvik_precompiled_${set} OBJECT ${CMAKE_BINARY_DIR}/precompiled/${set}.cpp)
  target_link_libraries(brenvik_precompiled_${set} PRIVATE brenvik_flags)
  target_include_directories(brenvik_precompiled_${set} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/platform)
  target_precompile_headers(brenvik_precompiled_${set} PRIVATE ${ARGN})
endfunction()

# brenvik_precompile(TARGET SET): the target's sources start from that set.
function(brenvik_precompile target set)
  if(BRENVIK_PCH)
    target_precompile_headers(${target} REUSE_FROM brenvik_precompiled_${set})
  endif()
endfunction()
