// Two that should do the same do not.
#pragma once

#include <stdexcept>

/// Thrown where the library and its model differ: says in what.
class Disagreement : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};
