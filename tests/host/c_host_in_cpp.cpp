// The host in C as C++.
#include "tests/host/c_host.c"
