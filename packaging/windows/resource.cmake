# keelview_resource(TARGET DESCRIPTION): icon, version and manifest of a program for Windows.
enable_language(RC)
function(keelview_resource PROGRAM_NAME PROGRAM_DESCRIPTION)
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${PROGRAM_NAME}.rc)
  configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/program.rc.in ${resource} @ONLY)
  target_sources(${PROGRAM_NAME} PRIVATE ${resource})
endfunction()
