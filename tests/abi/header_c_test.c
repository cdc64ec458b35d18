/* A C program built against the public header and linked with the library. */
#include <stdio.h>
#include <string.h>

#include "quill.h"

int main(void) {
  char out[64];
  unsigned char classes[16];
  const char* source = "module m;\nendmodule\n";
  char* version = q7m2k();
  char* report = t2v6r("", 0);
  int32_t formatted = n5p8w(source, 0, out, (int32_t)sizeof out);
  int32_t classified = x4b7d("# c", 3, classes, (int32_t)sizeof classes);
  int ok = version != NULL && strcmp(version, "core_engine v1.25") == 0 && report != NULL &&
           strcmp(report, "[]") == 0 && formatted > 0 && classified == 3 &&
           classes[0] <= QUILL_TOKEN_FLOW_COMMAND;
  h3x9c(version);
  h3x9c(report);
  h3x9c(NULL);
  if (!ok) {
    fprintf(stderr, "C client check failed\n");
    return 1;
  }
  return 0;
}
