# What a user's system gets beyond the library: manual pages made from the
# programs' own --help, the desktop entry and icon of zorva-print, and the
# Debian package (CPack) with the machine-wide data folder.
find_program(ZORVA_HELP2MAN help2man)
if(ZORVA_HELP2MAN)
  set(ZORVA_MAN_DIR "${CMAKE_BINARY_DIR}/man")
  set(ZORVA_MAN_PAGES)
  # program, NAME line
  set(ZORVA_MAN_zorva "zorva \\- prepare print jobs for the Zorva production printer")
  set(ZORVA_MAN_zorva-print "zorva-print \\- set up a print job in the Zorva features dialog")
  foreach(program zorva zorva-print)
    if(TARGET ${program})
      add_custom_command(OUTPUT "${ZORVA_MAN_DIR}/${program}.1"
        COMMAND ${CMAKE_COMMAND} -E make_directory "${ZORVA_MAN_DIR}"
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
                "ZORVA_BUNDLE_PATH=${ZORVA_BUILD_BUNDLES}"
                "${CMAKE_SOURCE_DIR}/scripts/make-manpage" "$<TARGET_FILE:${program}>"
                "${ZORVA_MAN_DIR}/${program}.1" "${ZORVA_MAN_${program}}"
        DEPENDS ${program} "${CMAKE_SOURCE_DIR}/scripts/make-manpage"
        COMMENT "Manual page of ${program}")
      list(APPEND ZORVA_MAN_PAGES "${ZORVA_MAN_DIR}/${program}.1")
    endif()
  endforeach()
  add_custom_target(zorva_man ALL DEPENDS ${ZORVA_MAN_PAGES})
  install(FILES ${ZORVA_MAN_PAGES} DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
else()
  message(STATUS "help2man not found: no manual pages")
endif()

if(TARGET zorva-print)
  install(FILES data/zorva-print.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
  install(FILES data/zorva-print.svg
    DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
endif()

# The examples the README walks through, for users of the package.
install(FILES examples/job-settings.plist examples/job-ticket-settings.plist
              examples/zorva-qm4400.ppd
  DESTINATION "${CMAKE_INSTALL_DOCDIR}/examples")
install(DIRECTORY examples/link DESTINATION "${CMAKE_INSTALL_DOCDIR}/examples")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zorva)
set(CPACK_PACKAGE_VENDOR "Zorva print features")
set(CPACK_PACKAGE_CONTACT "Zorva print features <zorva@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
  "Job settings and JOTF job tickets for Zorva production colour printers")
set(CPACK_PACKAGE_DESCRIPTION
  "The zorva tool, the zorva-print dialog with the ZorvaFeatures plug-in, and libzorva with its headers.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
# The package tools find the runtime libraries the programs link.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
  "${CMAKE_SOURCE_DIR}/packaging/postinst;${CMAKE_SOURCE_DIR}/packaging/postrm")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
