#include <kelmo/kelmo.h>
#include <stdio.h>
#include <stdlib.h>

/* Ends the program at a failure. */
static void check(kelmo_status status) {
  if (status < 0) {
    fprintf(stderr, "kelmo: %s\n", kelmo_status_name(status));
    exit(1);
  }
}

static void print(const kelmo_units* units, const kelmo_quantity* quantity, const char* end) {
  char text[64] = "";
  check(kelmo_quantity_print(units, NULL, quantity, NULL, text, sizeof text, NULL));
  printf("%s%s", text, end);
}

int main(void) {
  const int32_t kilopascal = 17003; /* its code in the file */
  kelmo_units_loader* loader = NULL;
  kelmo_units* units = NULL;
  kelmo_quantity pressure;
  check(kelmo_units_loader_create(KELMO_UNITS_NONE, &loader));
  check(kelmo_units_loader_add_file(loader, "../units/engineering.txt", KELMO_ZERO_TERMINATED,
                                    KELMO_UNITS_FILE, NULL));
  check(kelmo_units_loader_finish(loader, &units, NULL));
  check(kelmo_quantity_read(units, NULL, "12.5 bar", KELMO_ZERO_TERMINATED, NULL, &pressure, NULL));
  print(units, &pressure, " = ");
  check(kelmo_quantity_convert(units, &pressure, 1, kilopascal, &pressure));
  print(units, &pressure, "\n");
  kelmo_units_release(units);
  kelmo_units_loader_destroy(loader);
  return 0;
}
