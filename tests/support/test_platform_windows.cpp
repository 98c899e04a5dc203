#include <windows.h>

#include "tests/support/test_platform.h"

const bool textModeEndsAtControlZ = true;

void TurnOffErrorDialogs() {
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}
