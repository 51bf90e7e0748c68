# find_package(ostrel): the programs, and a function that makes their runs part of a build.
#
# OSTREL_PROGRAM is ostrel, of the installation that this file belongs to where it is there.

find_program(OSTREL_PROGRAM ostrel HINTS "${CMAKE_CURRENT_LIST_DIR}/../../../bin" REQUIRED)

# ostrel_optimize(TARGET INPUT.tt2... [OPTIONS WORD...] [OUTPUT_DIRECTORY FOLDER])
#
# Adds TARGET, which every build makes: a run of ostrel for each INPUT that is newer than its result
# or whose options have changed. INPUTs are relative to the source folder. The results
# FOLDER/INPUT.tt3 stand in the property OSTREL_OUTPUTS of TARGET, each with its log beside it
# (INPUT.log); FOLDER is the binary folder unless it is said. A run that fails stops the build, and
# is tried again by the next one.
function(ostrel_optimize target)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "OUTPUT_DIRECTORY" "OPTIONS")
  set(folder "${CMAKE_CURRENT_BINARY_DIR}")
  if(ARG_OUTPUT_DIRECTORY)
    cmake_path(ABSOLUTE_PATH ARG_OUTPUT_DIRECTORY BASE_DIRECTORY "${folder}" OUTPUT_VARIABLE folder)
    file(MAKE_DIRECTORY "${folder}")
  endif()
  set(outputs "")
  foreach(input IN LISTS ARG_UNPARSED_ARGUMENTS)
    cmake_path(ABSOLUTE_PATH input BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
    cmake_path(GET input STEM LAST_ONLY name)
    set(output "${folder}/${name}.tt3")
    # A run that fails leaves its output empty: make removes it, and ninja remembers the failure.
    add_custom_command(OUTPUT "${output}" BYPRODUCTS "${folder}/${name}.log"
      COMMAND "${OSTREL_PROGRAM}" -input "${input}" -output "${output}" -log "${folder}/${name}.log"
              ${ARG_OPTIONS}
      DEPENDS "${input}" "${OSTREL_PROGRAM}" COMMENT "ostrel ${name}.tt3" VERBATIM)
    list(APPEND outputs "${output}")
  endforeach()
  add_custom_target(${target} ALL DEPENDS ${outputs})
  set_target_properties(${target} PROPERTIES OSTREL_OUTPUTS "${outputs}")
endfunction()
