// The objects behind the handles of kelmo.h, and what all C functions share.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include "host/c_arguments.h"
#include "host/loader.h"
#include "host/problem_list.h"
#include "host/unit_loader.h"
#include "host/unit_set.h"
#include "host/view.h"
#include "kelmo/kelmo.h"

namespace KelmoLibs::Host {

// ---- Owners

/// The last member of an object: in no cache line of the members in front of it. Lookups read those,
/// and would be slower while another thread adds and removes owners.
struct Owners {
  static constexpr std::size_t kCacheLineBytes = 64;
  std::array<std::byte, kCacheLineBytes> apart;  // never used
  std::atomic<std::size_t> count{1};
};

template <class Object>
Object* Retain(Object* object) noexcept {
  if (object != nullptr) {
    object->owners.count.fetch_add(1, std::memory_order_relaxed);
  }
  return object;
}

template <class Object>
void Destroy(Object* object) noexcept {
  const std::unique_ptr<Object> owner(object);
}

template <class Object>
void Release(Object* object) noexcept {
  if (object != nullptr && object->owners.count.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    Destroy(object);
  }
}

}  // namespace KelmoLibs::Host

struct kelmo_problems {
  KelmoLibs::Host::ProblemList list;
};

struct kelmo_loader {
  KelmoLibs::Host::Loader loader;
};

struct kelmo_texts {
  KelmoLibs::Host::TextCollection texts;
  KelmoLibs::Host::Owners owners;
};

struct kelmo_view {
  struct Releaser {
    void operator()(kelmo_texts* released) const noexcept { KelmoLibs::Host::Release(released); }
  };

  kelmo_view(kelmo_texts* itsTexts, const KelmoLibs::Host::ViewOptions& options,
             KelmoLibs::Host::ProblemList* problems)
      : texts(KelmoLibs::Host::Retain(itsTexts)), view(itsTexts->texts, options, problems) {}

  const std::unique_ptr<kelmo_texts, Releaser> texts;
  const KelmoLibs::Host::View view;
  KelmoLibs::Host::Owners owners;
};

struct kelmo_units_loader {
  KelmoLibs::Host::UnitLoader loader;
};

struct kelmo_units {
  kelmo_units(const KelmoLibs::Host::UnitCollection& collection,
              KelmoLibs::Host::ProblemList* problems)
      : set(collection, problems) {}

  const KelmoLibs::Host::UnitSet set;
  KelmoLibs::Host::Owners owners;
};

namespace KelmoLibs::Host {

// ---- Arguments

/// Copies the options of the caller, who may know fewer or more fields, over `known`, which has the
/// default values. Null is allowed. False if they are too small.
template <class Options>
bool Take(const Options* given, Options& known) noexcept {
  if (given == nullptr) {
    return true;
  }
  if (!IsLargeEnough(given)) {
    return false;
  }
  std::memcpy(&known, given, std::min<std::size_t>(given->size, sizeof known));
  return true;
}

/// Copies `value` to a struct of the caller, as much of it as the caller knows. Precondition: the
/// caller's struct is large enough.
template <class Struct>
void Give(Struct value, Struct* result) noexcept {
  value.size = result->size;
  std::memcpy(result, &value, std::min<std::size_t>(result->size, sizeof value));
}

inline kelmo_string Give(std::string_view text) noexcept { return {text.data(), text.size()}; }

/// The languages of a view; none if there is no view.
inline const LanguageChain& LanguagesOf(const kelmo_view* view) noexcept {
  return view != nullptr ? view->view.Ids() : kNoLanguages;
}

/// Whether a kind that a search is limited to exists. 0: it is not limited.
inline bool IsKnownKind(const UnitSet& units, std::int32_t kind) noexcept {
  return kind == 0 || units.FindKind(kind) != nullptr;
}

inline ProblemList* ListOf(kelmo_problems* problems) noexcept {
  return problems != nullptr ? &problems->list : nullptr;
}

// ---- Results

/// Calls `body`, which returns a status or throws.
template <class Body>
kelmo_status Guard(Body body) noexcept {
  try {
    return body();
  } catch (...) {
    return KELMO_OUT_OF_MEMORY;  // the core throws nothing else: std::length_error is that too
  }
}

/// Makes an object with `make`, which returns a std::unique_ptr, and gives it to the caller.
template <class Object, class Maker>
kelmo_status Make(Object** result, Maker make) noexcept {
  if (result == nullptr) {
    return KELMO_INVALID_ARGUMENT;
  }
  return Guard([&] {
    *result = make().release();
    return KELMO_OK;
  });
}

inline void GiveSize(std::size_t size, std::size_t* needed) noexcept {
  if (needed != nullptr) {
    *needed = size;
  }
}

}  // namespace KelmoLibs::Host
