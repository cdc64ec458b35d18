/* Built against an installed quill, once through pkg-config and once through
 * find_package(quill). */
#include <stdio.h>
#include <string.h>

#include <quill.h>

int main(void) {
  char* version = q7m2k();
  char out[64];
  int32_t n = n5p8w("module m;\nendmodule", 0, out, (int32_t)sizeof out);
  int ok = version != NULL && strcmp(version, "core_engine v1.25") == 0 && n > 0;
  printf("%s %d\n", version ? version : "(null)", (int)n);
  h3x9c(version);
  return ok ? 0 : 1;
}
