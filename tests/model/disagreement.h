// The exception of tests that compare the library with its model.
#pragma once

#include <stdexcept>

/// The library and its model differ; what() names the difference.
class Disagreement : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};
