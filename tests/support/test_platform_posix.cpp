#include "tests/support/test_platform.h"

const bool textModeEndsAtControlZ = false;

void TurnOffErrorDialogs() {}
