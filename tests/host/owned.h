// Objects of kelmo.h that end with their scope, for tests in C++.
#pragma once

#include <memory>

#include "kelmo/kelmo.h"

struct KelmoDestroyer {
  void operator()(kelmo_loader* loader) const { kelmo_loader_destroy(loader); }
  void operator()(kelmo_problems* problems) const { kelmo_problems_destroy(problems); }
  void operator()(kelmo_texts* texts) const { kelmo_texts_release(texts); }
  void operator()(kelmo_view* view) const { kelmo_view_release(view); }
};
template <class Object>
using Owned = std::unique_ptr<Object, KelmoDestroyer>;

/// A struct of kelmo.h of this version, with zeroes.
template <class Struct>
Struct Sized() {
  Struct made = {};
  made.size = sizeof made;
  return made;
}
