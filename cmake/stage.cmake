# The plug-in home as the host sees it: the DLL beside text/, KVconfig/ and tp/.
#
# Included by the main file, it fills <build>/korvane on every build and installs the same tree. Run as a
# script, it makes one staged folder equal to its sources: what differs is copied, what has no source goes.

if(CMAKE_SCRIPT_MODE_FILE)
  # SOURCES  "folder=place|folder=place": the contents of each folder belong into TARGET/place
  string(REPLACE "|" ";" SOURCES "${SOURCES}")
  set(wanted "")
  foreach(source IN LISTS SOURCES)
    string(REPLACE "=" ";" pair "${source}")
    list(GET pair 0 from)
    list(GET pair 1 below)
    file(GLOB_RECURSE files RELATIVE ${from} ${from}/*)
    foreach(name IN LISTS files)
      cmake_path(APPEND below ${name} OUTPUT_VARIABLE place)
      list(APPEND wanted ${place})
      get_filename_component(folder ${TARGET}/${place} DIRECTORY)
      file(MAKE_DIRECTORY ${folder})
      file(COPY_FILE ${from}/${name} ${TARGET}/${place} ONLY_IF_DIFFERENT)
    endforeach()
  endforeach()
  file(GLOB_RECURSE present RELATIVE ${TARGET} ${TARGET}/*)
  # The DLL and what its linker puts beside it stand in the folder itself.
  list(FILTER present INCLUDE REGEX "/")
  list(REMOVE_ITEM present ${wanted})
  list(TRANSFORM present PREPEND ${TARGET}/)
  if(present)
    file(REMOVE ${present})
  endif()
  return()
endif()

set(stage_parts text=text KVconfig=KVconfig tp=tp)
list(TRANSFORM stage_parts PREPEND ${PROJECT_SOURCE_DIR}/)
foreach(part text KVconfig tp)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${part}/ DESTINATION ${part})
endforeach()
install(TARGETS korvane LIBRARY DESTINATION .)

file(GLOB icons CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/icons/*.svg)
find_program(RSVG_CONVERT rsvg-convert)
if(NOT icons)
  message(STATUS "No icon sources: the staged plug-in gets no icons")
elseif(NOT RSVG_CONVERT)
  message(STATUS "rsvg-convert not found: the staged plug-in gets no icons")
else()
  set(icon_folder ${CMAKE_BINARY_DIR}/icons)
  set(icon_stamp ${CMAKE_BINARY_DIR}/icons.stamp)
  set(render ${PROJECT_SOURCE_DIR}/tools/render_icons.sh)
  # The list of names is part of the command, so that a removed icon renders the folder anew.
  list(JOIN icons " " icon_names)
  string(SHA1 icon_names "${icon_names}")
  add_custom_command(OUTPUT ${icon_stamp}
      COMMAND ${CMAKE_COMMAND} -E rm -rf ${icon_folder}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${icon_folder}
      COMMAND ${render} ${PROJECT_SOURCE_DIR}/icons ${icon_folder}
      COMMAND ${CMAKE_COMMAND} -E echo ${icon_names} > ${icon_stamp}
      DEPENDS ${icons} ${render}
      COMMENT "Rendering icons")
  list(APPEND stage_parts ${icon_folder}=text/resource)
  install(DIRECTORY ${icon_folder}/ DESTINATION text/resource)
endif()

list(JOIN stage_parts "|" stage_parts)
add_custom_target(stage ALL
    COMMAND ${CMAKE_COMMAND} "-DSOURCES=${stage_parts}" -DTARGET=${CMAKE_BINARY_DIR}/korvane
        -P ${CMAKE_CURRENT_LIST_FILE}
    DEPENDS ${icon_stamp}
    VERBATIM)
add_dependencies(stage korvane)
