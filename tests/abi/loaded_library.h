// The quill shared library loaded at run time, as a host loads it: dlopen and
// dlsym of the five exported entry points.
#ifndef QUILL_TESTS_ABI_LOADED_LIBRARY_H_
#define QUILL_TESTS_ABI_LOADED_LIBRARY_H_

#include <dlfcn.h>

#include <string>

#include "quill.h"

namespace quill_abi {

struct LoadedLibrary {
  void* handle = nullptr;
  std::string error;
  decltype(&n5p8w) format = nullptr;
  decltype(&t2v6r) lint = nullptr;
  decltype(&x4b7d) highlight = nullptr;
  decltype(&q7m2k) version = nullptr;
  decltype(&h3x9c) release = nullptr;

  bool Complete() const {
    return format != nullptr && lint != nullptr && highlight != nullptr && version != nullptr && release != nullptr;
  }
};

template <typename Function>
Function Resolve(void* handle, const char* name, std::string* error) {
  void* symbol = dlsym(handle, name);
  if (symbol == nullptr) error->append(std::string("missing symbol ") + name + "; ");
  return reinterpret_cast<Function>(symbol);
}

// Loads the library at `path` with local symbol binding. The handle is never
// closed: the library keeps per-thread state of its own.
inline LoadedLibrary LoadLibrary(const std::string& path) {
  LoadedLibrary library;
  library.handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library.handle == nullptr) {
    const char* message = dlerror();
    library.error = message != nullptr ? message : "dlopen failed";
    return library;
  }
  library.format = Resolve<decltype(&n5p8w)>(library.handle, "n5p8w", &library.error);
  library.lint = Resolve<decltype(&t2v6r)>(library.handle, "t2v6r", &library.error);
  library.highlight = Resolve<decltype(&x4b7d)>(library.handle, "x4b7d", &library.error);
  library.version = Resolve<decltype(&q7m2k)>(library.handle, "q7m2k", &library.error);
  library.release = Resolve<decltype(&h3x9c)>(library.handle, "h3x9c", &library.error);
  return library;
}

// The library as built, loaded once for the whole test binary.
inline const LoadedLibrary& Quill() {
  static const LoadedLibrary library = LoadLibrary(QUILL_LIBRARY_PATH);
  return library;
}

}  // namespace quill_abi

#endif  // QUILL_TESTS_ABI_LOADED_LIBRARY_H_
