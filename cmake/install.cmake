# What `cmake --install` lays down, in three components: runtime (the shared library), dev (headers,
# link libraries, CMake and pkg-config files) and tools (ttr). Nothing holds an absolute path, so the
# tree can be moved.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TokenTemplateResolver)

install(TARGETS TokenTemplateResolver TokenTemplateHandlers EXPORT TokenTemplateResolverTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
install(EXPORT TokenTemplateResolverTargets NAMESPACE TokenTemplateResolver::
  DESTINATION ${package_dir} COMPONENT dev)

configure_package_config_file(cmake/Config.cmake.in TokenTemplateResolverConfig.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(TokenTemplateResolverConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/TokenTemplateResolverConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/TokenTemplateResolverConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT dev)

# install_pkgconfig(NAME DESCRIPTION REQUIRES): one pkg-config file for the library NAME.
function(install_pkgconfig PC_NAME PC_DESCRIPTION PC_REQUIRES)
  file(RELATIVE_PATH PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" PC_PREFIX "${PC_PREFIX}")
  configure_file(cmake/library.pc.in ${PC_NAME}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${PC_NAME}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
endfunction()
install_pkgconfig(TokenTemplateResolver "${PROJECT_DESCRIPTION}" jsoncpp)
install_pkgconfig(TokenTemplateHandlers "Ready-made token handlers for TokenTemplateResolver"
  TokenTemplateResolver)

install(TARGETS ttr RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
install(FILES tool/ttr.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
install(FILES tool/completions/ttr.bash RENAME ttr
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tools)
install(FILES tool/completions/_ttr
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT tools)
install(FILES schema/render-template.schema.json
  DESTINATION ${CMAKE_INSTALL_DATADIR}/ttr/schema COMPONENT tools)
install(DIRECTORY examples/lobby examples/departures examples/menu examples/workshop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/ttr/examples COMPONENT tools)
