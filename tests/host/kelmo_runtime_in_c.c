/* The code of kelmo_runtime.h, compiled as C. */
#define KELMO_RUNTIME_IMPLEMENTATION
#include "kelmo/kelmo_runtime.h"
