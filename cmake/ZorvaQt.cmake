# The dialog plug-in: the ZorvaFeatures module (Qt 6 Widgets, views loaded
# from the bundle's .ui files with QUiLoader), placed inside the bundle folder
# and reached only through dlopen, and zorva-print, the window that loads it.
find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets UiTools Test)

# A small Qt source costs seconds of CPU for the headers alone: every Qt
# target shares one precompiled header.
set(ZORVA_QT_PCH_HEADERS <QtWidgets/QtWidgets> <QtUiTools/QUiLoader> <string> <vector>
    <memory>)

file(GLOB ZORVA_UI_SOURCES CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/src/ui/*.cpp")
add_library(ZorvaFeatures MODULE ${ZORVA_UI_SOURCES})
set_target_properties(ZorvaFeatures PROPERTIES
  AUTOMOC ON
  PREFIX ""
  LIBRARY_OUTPUT_DIRECTORY "${ZORVA_BUILD_BUNDLES}/${ZORVA_BUNDLE_NAME}"
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON)
target_include_directories(ZorvaFeatures PRIVATE "${CMAKE_SOURCE_DIR}/src")
target_link_libraries(ZorvaFeatures PRIVATE zorva_panels zorva_watermarks zorva_jobticket zorva_paper zorva_host
  zorva_core Qt6::Widgets Qt6::UiTools ${CMAKE_DL_LIBS})
target_precompile_headers(ZorvaFeatures PRIVATE ${ZORVA_QT_PCH_HEADERS})
# An external colour-options panel, when one is installed, sits here.
target_compile_definitions(ZorvaFeatures PRIVATE
  ZORVA_INSTALL_PDES="${CMAKE_INSTALL_FULL_LIBDIR}/zorva/PDEs")
# Only the factory and the panel entry points leave the module: its own copy
# of the library stays private, so a host linking a different one never mixes
# the two.
target_link_options(ZorvaFeatures PRIVATE
  "-Wl,--version-script=${CMAKE_SOURCE_DIR}/src/ui/ZorvaFeatures.map" -Wl,--exclude-libs,ALL
  -Wl,--no-undefined)
set_property(TARGET ZorvaFeatures APPEND PROPERTY LINK_DEPENDS
  "${CMAKE_SOURCE_DIR}/src/ui/ZorvaFeatures.map")
# The bundle is assembled afresh when a resource changes; the module goes in
# after it.
add_dependencies(ZorvaFeatures zorva_bundle)
set(ZORVA_MODULE_NAME "ZorvaFeatures.so")
install(TARGETS ZorvaFeatures LIBRARY DESTINATION "${ZORVA_INSTALL_BUNDLES}/${ZORVA_BUNDLE_NAME}")

# zorva-print: loads the module through its factory like any print dialog.
add_executable(zorva-print apps/zorva-print/main.cpp apps/zorva-print/print_window.cpp)
set_target_properties(zorva-print PROPERTIES AUTOMOC ON)
target_include_directories(zorva-print PRIVATE "${CMAKE_SOURCE_DIR}/src")
target_link_libraries(zorva-print PRIVATE zorva_print zorva_core Qt6::Widgets ${CMAKE_DL_LIBS})
target_compile_definitions(zorva-print PRIVATE ZORVA_VERSION="${PROJECT_VERSION}")
target_precompile_headers(zorva-print PRIVATE ${ZORVA_QT_PCH_HEADERS})
add_dependencies(zorva-print ZorvaFeatures)
install(TARGETS zorva-print RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# zorva-print's preview: the user's PDF drawn with Poppler, in a pane laid out
# in PrintPreview.ui (compiled in, since the pane belongs to the program).
pkg_check_modules(POPPLER_QT6 REQUIRED IMPORTED_TARGET poppler-qt6)
set(ZORVA_PREVIEW_SOURCES "${CMAKE_SOURCE_DIR}/apps/zorva-print/preview_pane.cpp"
    "${CMAKE_SOURCE_DIR}/apps/zorva-print/PrintPreview.ui")
target_sources(zorva-print PRIVATE ${ZORVA_PREVIEW_SOURCES})
set_target_properties(zorva-print PROPERTIES AUTOUIC ON)
target_link_libraries(zorva-print PRIVATE PkgConfig::POPPLER_QT6 zorva_watermarks)
