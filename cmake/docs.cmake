# The target `docs`: the reference of the public interface as HTML, in docs/html of the build tree.
if(PROJECT_IS_TOP_LEVEL)
  find_package(Doxygen QUIET)
  if(DOXYGEN_FOUND)
    configure_file(docs/Doxyfile.in docs/Doxyfile @ONLY)
    add_custom_target(
      docs
      COMMAND Doxygen::doxygen ${PROJECT_BINARY_DIR}/docs/Doxyfile
      WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
      COMMENT "Writing the reference to ${PROJECT_BINARY_DIR}/docs/html"
      VERBATIM)
  endif()
endif()
