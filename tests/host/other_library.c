/* A library that is not the one a program was made for. It has only kelmo_version, which returns
 * OTHER_VERSION, or nothing of kelmo without that macro. */
#ifdef OTHER_VERSION

#define KELMO_BUILDING
#include "kelmo/kelmo.h"

uint32_t kelmo_version(void) { return OTHER_VERSION; }

#else

#ifdef _WIN32
#define EXPORTED __declspec(dllexport)
#else
#define EXPORTED
#endif

EXPORTED int other_function(void);
int other_function(void) { return 0; }

#endif
