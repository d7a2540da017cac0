# Run by cpack before it makes the packages: adds what every Debian package holds, and compresses manual pages.

# compress FILE: in place, without its time.
function(compress file)
  execute_process(COMMAND gzip -9 -n ${file} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(sources ${CMAKE_CURRENT_LIST_DIR}/../..)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} key)
  set(share ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share)
  set(documents ${share}/doc/${CPACK_DEBIAN_${key}_PACKAGE_NAME})
  configure_file(${sources}/LICENSE ${documents}/copyright COPYONLY)
  configure_file(${sources}/CHANGELOG.md ${documents}/changelog COPYONLY)
  compress(${documents}/changelog)
  file(GLOB pages ${share}/man/man*/*)
  foreach(page IN LISTS pages)
    compress(${page})
  endforeach()
endforeach()
