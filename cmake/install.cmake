# Headers, libraries, the CMake package and the pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS vekm6 EXPORT vekm6Targets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES LICENSE README.md DESTINATION ${CMAKE_INSTALL_DOCDIR} OPTIONAL)
if(WIN32)
  install(FILES ${CMAKE_BINARY_DIR}/vekm6.def DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/vekm6)
install(EXPORT vekm6Targets NAMESPACE vekm6:: DESTINATION ${package})
configure_package_config_file(cmake/vekm6Config.cmake.in ${CMAKE_BINARY_DIR}/vekm6Config.cmake
                              INSTALL_DESTINATION ${package})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/vekm6ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/vekm6Config.cmake ${CMAKE_BINARY_DIR}/vekm6ConfigVersion.cmake
        DESTINATION ${package})

file(RELATIVE_PATH VEK_PC_UP /p/${CMAKE_INSTALL_LIBDIR}/pkgconfig /p)
configure_file(cmake/vekm6.pc.in ${CMAKE_BINARY_DIR}/vekm6.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/vekm6.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
