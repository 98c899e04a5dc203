// The rule address: addresses of pages and e-mail beside those of the base.
#pragma once

#include "lang/rules/check.h"

namespace KelmoLibs::Lang {

/// Reports an address of the base that the text lacks or has with a typing mistake. A page may be
/// that of another language: "/en/" may become "/de/", and "en.example.org" "de.example.org".
void CheckAddresses(const TextCheck& check);

}  // namespace KelmoLibs::Lang
