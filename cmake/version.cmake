# The version has one home, the public header; here it is read from there.

# Sets `result` to "major.minor.patch" from the numbers in `header`, and insists that the text in
# the header says the same.
function(qvox_read_version header result)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
  file(READ ${header} text)
  set(parts)
  foreach(part MAJOR MINOR PATCH)
    if(NOT text MATCHES "#define QVOX_VERSION_${part} ([0-9]+)\n")
      message(FATAL_ERROR "${header} does not define QVOX_VERSION_${part}")
    endif()
    list(APPEND parts ${CMAKE_MATCH_1})
  endforeach()
  list(JOIN parts . version)
  if(NOT text MATCHES "#define QVOX_VERSION \"${version}\"\n")
    message(FATAL_ERROR "QVOX_VERSION in ${header} differs from the numbers, ${version}")
  endif()
  set(${result} ${version} PARENT_SCOPE)
endfunction()
