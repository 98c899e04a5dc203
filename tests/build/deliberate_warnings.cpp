// Must not compile: each marked line is an error of the warning that it names
// (check_warnings.cmake).

int Deliberate(double real, int unused) {  // expect: unused-parameter
  int number = real;                       // expect: float-conversion
  for (int i = 0; i < 2; ++i) {
    int number = i;    // expect: shadow
    if (number = 1) {  // expect: parentheses
      return number;
    }
  }
  int array[number];  // expect: vla
  return sizeof(array) > 4 ? 1 : 0;
}
