# Debian packages built with CPack (`cpack -G DEB` in a build folder), one per
# install component:
#   libquill1     the shared library (runtime)
#   libquill-dev  header, pkg-config file, CMake package, libquill.so (development)
#   quill         the tool, its manual page and completions (tool)
# The packages install under /usr. The -dev package and the tool need the
# library of exactly their own version; dpkg-shlibdeps adds the rest (libc,
# libstdc++, PCRE2 and whatever the tool links).
set(CPACK_PACKAGE_NAME quill)
set(CPACK_PACKAGE_VENDOR quill)
set(CPACK_PACKAGE_CONTACT "quill developers <quill@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_GENERATOR DEB)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
if(TARGET quill_cli)
  list(APPEND CPACK_COMPONENTS_ALL tool)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

set(_quill_library_dependency "libquill1 (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libquill1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
string(CONCAT CPACK_COMPONENT_RUNTIME_DESCRIPTION
  "Verilog formatter and linter, constraint and Tcl highlighter (library)\n"
  "The shared library that editors load: five C entry points that format and\n"
  "lint Verilog and classify the bytes of FPGA constraint and Tcl files for\n"
  "colouring.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libquill-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${_quill_library_dependency}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_ARCHITECTURE all)
string(CONCAT CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "Verilog formatter and linter, constraint and Tcl highlighter (development)\n"
  "The C header quill.h, a pkg-config file and a CMake package\n"
  "(find_package(quill)) for building programs that link the quill library.")
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME quill)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${_quill_library_dependency}")
string(CONCAT CPACK_COMPONENT_TOOL_DESCRIPTION
  "Verilog formatter and linter, constraint and Tcl highlighter (command line)\n"
  "The quill command formats, lints and highlights files and folders for\n"
  "terminals and CI jobs, and quill lsp serves the Language Server Protocol to\n"
  "editors. With a manual page and bash, zsh and fish completions.")

# dpkg-shlibdeps (packages dpkg-dev and file) computes the other dependencies
# from the programs and libraries. It finds libquill.so.1 for the tool in the
# build tree, where no package owns it, hence the explicit dependency above.
# The library package ships a shlibs file, so that packages built against it
# get their dependency on it computed too.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/core_engine)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

include(CPack)
