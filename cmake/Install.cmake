# Installs the library with its header, a pkg-config file and a CMake package
# that gives quill::quill to find_package(quill), and the tool with its manual
# page and shell completions. The install components are the Debian packages
# they end up in (see cmake/Packaging.cmake): the shared library alone
# (runtime), what building against it needs (development), and the tool.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set_target_properties(quill PROPERTIES EXPORT_NAME quill)
install(TARGETS quill EXPORT quillTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

set(QUILL_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/quill)
install(EXPORT quillTargets NAMESPACE quill:: DESTINATION ${QUILL_CMAKE_DIR} COMPONENT development)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/quillConfig.cmake.in
  ${PROJECT_BINARY_DIR}/quillConfig.cmake INSTALL_DESTINATION ${QUILL_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/quillConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/quillConfig.cmake ${PROJECT_BINARY_DIR}/quillConfigVersion.cmake
  DESTINATION ${QUILL_CMAKE_DIR} COMPONENT development)

file(RELATIVE_PATH QUILL_PC_TO_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(${PROJECT_SOURCE_DIR}/cmake/quill.pc.in ${PROJECT_BINARY_DIR}/quill.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/quill.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(TARGET quill_cli)
  include(${PROJECT_SOURCE_DIR}/cmake/InstallTool.cmake)
endif()
