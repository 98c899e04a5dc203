// Classes of characters, independent of the locale of the host.
#pragma once

namespace KelmoLibs::Localize {

/// Whether `character` has a visible form, as iswgraph answers. On Windows the runtime classifies
/// each half of a surrogate pair alone: neither is graphic. On Linux the system's Unicode tables
/// decide.
bool IsGraphic(wchar_t character) noexcept;

/// Whether `character` is a blank of any kind, as iswblank answers.
bool IsBlank(wchar_t character) noexcept;

}  // namespace KelmoLibs::Localize
