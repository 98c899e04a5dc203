// The messages that the library keeps for its host. What is listed once is not listed again, and
// the list keeps the order in which its texts came.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

namespace KelmoLibs::Localize {

/// The one empty text that stands for "nothing there": GetError on an empty list and LANG without a
/// text both return its address, so that a host can tell a missing text from an empty one.
extern const wchar_t emptyText[1];

class ErrorList {
 public:
  ErrorList() = default;
  ErrorList(const ErrorList&) = delete;  // order_ points into texts_
  ErrorList& operator=(const ErrorList&) = delete;

  /// Appends `text` unless an equal one is listed. Constant cost on average, however long the list.
  /// When memory fails, the list is as before.
  void Append(std::wstring text);

  void Clear() noexcept;

  std::int64_t Count() const noexcept;

  /// Text at `index`, valid until the list changes. Any index outside the list gives the last text,
  /// except the one just past it: that throws std::out_of_range ("invalid vector subscript"). An
  /// empty list gives emptyText for all.
  const wchar_t* At(std::int32_t index) const;

 private:
  std::unordered_set<std::wstring> texts_;
  std::vector<const std::wstring*> order_;  // the set's nodes do not move
};

}  // namespace KelmoLibs::Localize
