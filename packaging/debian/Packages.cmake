# The Debian packages that cpack makes, one for each component. The preset `debian` builds them for Debian's folders.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The Mova authors <mova@example.org>")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL runtime development command)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# What the Debian packages alone hold.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/documents.cmake)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libmova${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libmova-dev)
set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME mova)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION video)

# The others need the libraries of the same build. Besides, each depends on what the libraries that it links come from.
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_COMMAND_DEPENDS runtime)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers)

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(about "Mova reads a caption or subtitle file, finds out by itself which of more than
forty formats it is in, and writes any other of them.")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "converter for closed-caption and subtitle files - libraries
${about}
.
This package holds the shared libraries.")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "converter for closed-caption and subtitle files - development
${about}
.
This package holds what programs that use the library are compiled with.")
set(CPACK_DEBIAN_COMMAND_DESCRIPTION "converter for closed-caption and subtitle files
${about}
.
This package holds the command, its manual page, and its completions for bash,
fish and zsh.")

include(CPack)
