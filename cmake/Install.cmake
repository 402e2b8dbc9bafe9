# Where everything is installed, and what leads a compiler there. Programs find the library, the
# plug-in and the data from their own place, so that the prefix may be any and may be moved.
include(CMakePackageConfigHelpers)

set(VELKOR_INSTALL_PLUGINDIR ${CMAKE_INSTALL_LIBDIR}/velkor)
set(VELKOR_INSTALL_DATADIR ${CMAKE_INSTALL_DATADIR}/velkor)
set(package_config_directory ${CMAKE_INSTALL_LIBDIR}/cmake/Velkor)
set(pkg_config_directory ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# velkor_relative_path(<variable> <directory> <other>): the way from the one to the other, both
# given as install() takes them.
function(velkor_relative_path variable from to)
  cmake_path(ABSOLUTE_PATH from BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} NORMALIZE)
  cmake_path(ABSOLUTE_PATH to BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} NORMALIZE)
  file(RELATIVE_PATH way ${from} ${to})
  set(${variable} ${way} PARENT_SCOPE)
endfunction()

set(programs ${CMAKE_INSTALL_BINDIR})
velkor_relative_path(VELKOR_LIBRARIES_FROM_PROGRAMS ${programs} ${CMAKE_INSTALL_LIBDIR})
velkor_relative_path(VELKOR_PLUGINS_FROM_PROGRAMS ${programs} ${VELKOR_INSTALL_PLUGINDIR})
velkor_relative_path(VELKOR_DATA_FROM_PROGRAMS ${programs} ${VELKOR_INSTALL_DATADIR})
velkor_relative_path(VELKOR_LOCALE_FROM_PROGRAMS ${programs} ${CMAKE_INSTALL_LOCALEDIR})

# The modules of pkg-config that users of the headers need as well.
set(VELKOR_INTERFACE_MODULES gobject-2.0 libxml-2.0)
velkor_relative_path(VELKOR_PREFIX_FROM_PKGCONFIG ${pkg_config_directory} ${CMAKE_INSTALL_PREFIX})
velkor_relative_path(VELKOR_LIBDIR_FROM_PREFIX ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_LIBDIR})
velkor_relative_path(VELKOR_INCLUDEDIR_FROM_PREFIX ${CMAKE_INSTALL_PREFIX}
                     ${CMAKE_INSTALL_INCLUDEDIR})
string(JOIN " " VELKOR_INTERFACE_MODULES_LINE ${VELKOR_INTERFACE_MODULES})

configure_file(cmake/velkor.pc.in velkor.pc @ONLY)
configure_package_config_file(
  cmake/VelkorConfig.cmake.in VelkorConfig.cmake
  INSTALL_DESTINATION ${package_config_directory}
  PATH_VARS VELKOR_INSTALL_PLUGINDIR VELKOR_INSTALL_DATADIR)
write_basic_package_version_file(VelkorConfigVersion.cmake COMPATIBILITY SameMinorVersion)

# "uninstall" removes what is empty of these, unless it was there before.
set(VELKOR_INSTALL_DIRECTORIES
    ${CMAKE_INSTALL_BINDIR}
    ${CMAKE_INSTALL_INCLUDEDIR}/velkor
    ${VELKOR_INSTALL_PLUGINDIR}
    ${VELKOR_INSTALL_DATADIR}
    ${package_config_directory}
    ${pkg_config_directory}
    ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
    ${CMAKE_INSTALL_DATADIR}/zsh/site-functions
    lib/systemd/user
    ${CMAKE_INSTALL_DATADIR}/applications
    ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
    ${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps
    ${CMAKE_INSTALL_DATADIR}/metainfo
    ${CMAKE_INSTALL_LOCALEDIR}/nl/LC_MESSAGES
    ${CMAKE_INSTALL_MANDIR}/man1
    ${CMAKE_INSTALL_MANDIR}/man5
    ${CMAKE_INSTALL_DOCDIR}/examples
    ${CMAKE_INSTALL_DOCDIR}/html
    ${CMAKE_INSTALL_DOCDIR}/html/reference
    ${CMAKE_INSTALL_DOCDIR}/pictures
    ${CMAKE_INSTALL_DOCDIR}/schemas)
configure_file(cmake/RememberDirectories.cmake.in RememberDirectories.cmake @ONLY)
install(SCRIPT ${PROJECT_BINARY_DIR}/RememberDirectories.cmake)
add_custom_target(
  uninstall
  COMMAND ${CMAKE_COMMAND} -DBUILD=${PROJECT_BINARY_DIR} -P ${PROJECT_SOURCE_DIR}/cmake/Uninstall.cmake
  COMMENT "Removing what the last installation from this build put in place"
  VERBATIM)

install(EXPORT VelkorTargets NAMESPACE Velkor:: DESTINATION ${package_config_directory})
install(FILES ${PROJECT_BINARY_DIR}/VelkorConfig.cmake ${PROJECT_BINARY_DIR}/VelkorConfigVersion.cmake
        DESTINATION ${package_config_directory})
install(FILES ${PROJECT_BINARY_DIR}/velkor.pc DESTINATION ${pkg_config_directory})
install(FILES LICENSE CHANGELOG.md docs/guide.md docs/manual.md docs/server.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/pictures docs/schemas DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES tests/abi/manual_example.c docs/examples/postings.py
        DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
