/* Writes the job ticket of a settings property list to standard output. */
#include <stdio.h>
#include <zorva/jobticket/jotf_c_api.h>

int main(int argc, char** argv) {
  static char settings[1 << 20];
  FILE* in = argc == 2 ? fopen(argv[1], "rb") : NULL;
  if (!in) return 2;
  size_t length = fread(settings, 1, sizeof settings, in);
  fclose(in);
  return zorva_jotf_write_xml(settings, length, stdout) == ZORVA_JOTF_OK ? 0 : 1;
}
