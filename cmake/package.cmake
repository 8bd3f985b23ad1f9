# What is installed and where, and the two Debian packages made of it: `brenvik` (the command line program) and
# `brenvik-desktop`. The programs lie together in one folder with the library that they open for STEP files, since
# each looks for the others beside itself; the name that people type is a link to the first.
include(GNUInstallDirs)
set(programs ${CMAKE_INSTALL_LIBDIR}/brenvik)
install(TARGETS brenvik RUNTIME DESTINATION ${programs} COMPONENT program)
install(TARGETS brenvik_step_module LIBRARY DESTINATION ${programs} COMPONENT program)
file(RELATIVE_PATH up /${CMAKE_INSTALL_BINDIR} /${programs}/brenvik)
file(CREATE_LINK ${up} ${CMAKE_BINARY_DIR}/brenvik-link SYMBOLIC)
install(FILES ${CMAKE_BINARY_DIR}/brenvik-link DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME brenvik COMPONENT program)
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright COMPONENT program)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)
install(DIRECTORY samples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)
if(TARGET brenvik-desktop)
  install(TARGETS brenvik-desktop RUNTIME DESTINATION ${programs} COMPONENT desktop)
  install(FILES packaging/brenvik.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT desktop)
  install(FILES packaging/brenvik.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
    COMPONENT desktop)
  install(FILES packaging/brenvik.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages COMPONENT desktop)
  install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/brenvik-desktop RENAME copyright COMPONENT desktop)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME brenvik)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Brenvik <brenvik@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL program)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
# The libraries that the programs are linked with, by the packages that they come from here.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME brenvik)
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION
  "Cut lists and CNC files from drawings of solids\n For cabinet and millwork shops: a drawing of 3D solids goes in (DXF, DWG,\n STEP, SAT); an editable cut list, its exports, and a layered DXF per part\n with work lists for CAM packages come out.")
if(TARGET brenvik-desktop)
  list(APPEND CPACK_COMPONENTS_ALL desktop)
  set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME brenvik-desktop)
  # Beside what it is linked with: how the toolkit reaches the screen, and a driver for machines without a card.
  set(CPACK_DEBIAN_DESKTOP_PACKAGE_DEPENDS "brenvik (= ${PROJECT_VERSION}), qt6-qpa-plugins, libgl1-mesa-dri")
  set(CPACK_COMPONENT_DESKTOP_DESCRIPTION
    "Cut lists and CNC files from drawings of solids, in windows\n The drawing on the screen, the parts as a tree, and the forms of the cut\n list, exports, materials and settings as windows.")
endif()
include(CPack)
