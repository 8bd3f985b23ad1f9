# Writes the header OUTPUT with a text that two builds have in common only if the STEP library of the one fits the
# program of the other: made of the sources that both sides of its door are compiled from, and of FLAVOUR, what else
# decides how they lie in memory. Run as a script, with ROOT, FLAVOUR and OUTPUT.
set(folders src/base platform/drafting_host/solids platform/drafting_host/step platform/drafting_host/step_module)
set(texts "${FLAVOUR}")
foreach(folder IN LISTS folders)
  file(GLOB_RECURSE sources RELATIVE ${ROOT} ${ROOT}/${folder}/*.cpp ${ROOT}/${folder}/*.h)
  list(SORT sources)
  foreach(source IN LISTS sources)
    file(SHA256 ${ROOT}/${source} hash)
    string(APPEND texts " ${source} ${hash}")
  endforeach()
endforeach()
string(SHA256 build "${texts}")
string(SUBSTRING ${build} 0 12 build)
file(WRITE ${OUTPUT} "#pragma once\nnamespace brenvik::step {\n/// Of the program and of its STEP library alike.\n\
inline constexpr const char* StepBuild = \"step build ${build}\";\n}  // namespace brenvik::step\n")
