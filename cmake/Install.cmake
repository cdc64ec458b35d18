# Installs the library with its header, a pkg-config file and a CMake package
# that gives quill::quill to find_package(quill).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set_target_properties(quill PROPERTIES EXPORT_NAME quill)
install(TARGETS quill EXPORT quillTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(TARGET quill_cli)
  install(TARGETS quill_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

set(QUILL_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/quill)
install(EXPORT quillTargets NAMESPACE quill:: DESTINATION ${QUILL_CMAKE_DIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/quillConfig.cmake.in
  ${PROJECT_BINARY_DIR}/quillConfig.cmake INSTALL_DESTINATION ${QUILL_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/quillConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/quillConfig.cmake ${PROJECT_BINARY_DIR}/quillConfigVersion.cmake
  DESTINATION ${QUILL_CMAKE_DIR})

file(RELATIVE_PATH QUILL_PC_TO_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(${PROJECT_SOURCE_DIR}/cmake/quill.pc.in ${PROJECT_BINARY_DIR}/quill.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/quill.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
