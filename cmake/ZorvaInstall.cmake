# libzorva for other programs: one shared library (versioned soname) and one
# static archive, both made from the subsystems' own objects (nothing is
# compiled twice), the public headers under include/zorva/, a pkg-config file
# and an exported CMake package (find_package(Zorva) gives Zorva::zorva).
include(CMakePackageConfigHelpers)

get_property(ZORVA_ALL_SUBSYSTEMS GLOBAL PROPERTY ZORVA_SUBSYSTEMS)
set(ZORVA_LIBRARY_OBJECTS)
foreach(subsystem IN LISTS ZORVA_ALL_SUBSYSTEMS)
  list(APPEND ZORVA_LIBRARY_OBJECTS "$<TARGET_OBJECTS:${subsystem}>")
endforeach()
# What the subsystems link besides each other.
set(ZORVA_LIBRARY_DEPENDENCIES)
foreach(subsystem IN LISTS ZORVA_ALL_SUBSYSTEMS)
  get_target_property(dependencies ${subsystem} INTERFACE_LINK_LIBRARIES)
  foreach(dependency IN LISTS dependencies)
    if(dependency AND NOT dependency MATCHES "^zorva_")
      list(APPEND ZORVA_LIBRARY_DEPENDENCIES "${dependency}")
    endif()
  endforeach()
endforeach()
list(REMOVE_DUPLICATES ZORVA_LIBRARY_DEPENDENCIES)

add_library(zorva_shared SHARED ${ZORVA_LIBRARY_OBJECTS})
set_target_properties(zorva_shared PROPERTIES
  OUTPUT_NAME zorva
  EXPORT_NAME zorva
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR})
target_link_libraries(zorva_shared PRIVATE ${ZORVA_LIBRARY_DEPENDENCIES})
target_link_options(zorva_shared PRIVATE -Wl,--no-undefined)
target_include_directories(zorva_shared INTERFACE
  "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>"
  "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zorva>")
add_library(Zorva::zorva ALIAS zorva_shared)

add_library(zorva_static STATIC ${ZORVA_LIBRARY_OBJECTS})
set_target_properties(zorva_static PROPERTIES OUTPUT_NAME zorva)

# The headers a program needs to build tickets and write or read job tickets,
# with everything they include.
set(ZORVA_PUBLIC_HEADERS
  core/plist_io.h core/print_session.h core/status.h core/ticket.h core/ticket_keys.h core/value.h
  jobticket/device_profile.h jobticket/jotf_c_api.h jobticket/jotf_export.h
  jobticket/jotf_import.h jobticket/jotf_summary.h model/stock.h)
foreach(header IN LISTS ZORVA_PUBLIC_HEADERS)
  get_filename_component(folder "${header}" DIRECTORY)
  install(FILES "src/${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/zorva/${folder}"
          COMPONENT Development)
endforeach()

install(TARGETS zorva_shared EXPORT ZorvaTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Runtime NAMELINK_COMPONENT Development)
install(TARGETS zorva_static ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Development)
# The archive carries the build's debug information (some 70 MB); programs
# linking it want the code only.
if(CMAKE_STRIP)
  install(CODE "execute_process(COMMAND \"${CMAKE_STRIP}\" --strip-debug
    \"\$ENV{DESTDIR}${CMAKE_INSTALL_FULL_LIBDIR}/libzorva.a\")" COMPONENT Development)
endif()
install(EXPORT ZorvaTargets NAMESPACE Zorva:: FILE ZorvaTargets.cmake
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/Zorva" COMPONENT Development)
configure_package_config_file(cmake/ZorvaConfig.cmake.in
  "${CMAKE_CURRENT_BINARY_DIR}/ZorvaConfig.cmake"
  INSTALL_DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/Zorva")
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/ZorvaConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/ZorvaConfig.cmake"
              "${CMAKE_CURRENT_BINARY_DIR}/ZorvaConfigVersion.cmake"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/Zorva" COMPONENT Development)
configure_file(cmake/zorva.pc.in "${CMAKE_CURRENT_BINARY_DIR}/zorva.pc" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/zorva.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT Development)
