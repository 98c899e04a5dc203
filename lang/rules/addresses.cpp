// Rule address: an address of the base that the text lacks or has with a typing mistake. A page may
// be that of another language: "/en/" may become "/de/", and "en.example.org" "de.example.org".
// Tested by addresses_test.cpp.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "lang/rules/check.h"
#include "lang/rules/edit_distance.h"
#include "lang/unicode/ascii.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

bool IsIn(std::string_view signs, char c) noexcept { return signs.find(c) != kNone; }

bool IsInPage(char c) noexcept {
  return IsAsciiLetterOrDigit(c) || IsIn("-._~:/?#[]@!$&*+,;=%", c);
}
bool IsInMail(char c) noexcept { return IsAsciiLetterOrDigit(c) || IsIn("-._+", c); }

// Without the signs that end a sentence.
std::string_view WithoutEnd(std::string_view address) noexcept {
  while (!address.empty() && IsIn(".,;:!?", address.back())) {
    address.remove_suffix(1);
  }
  return address;
}

bool IsScheme(std::string_view word) noexcept {
  return word == "http" || word == "https" || word == "ftp" || word == "Http" || word == "Https";
}

// The first page "https://…" at or behind `at`; empty if there is none.
std::string_view FindPage(std::string_view text, std::size_t at) noexcept {
  constexpr std::string_view kMark = "://";
  for (at = text.find(kMark, at); at != kNone; at = text.find(kMark, at + 1)) {
    std::size_t first = at;
    while (first > 0 && IsAsciiLetterOrDigit(text[first - 1])) {
      --first;
    }
    const std::string_view scheme = text.substr(first, at - first);
    if (!IsScheme(scheme)) {
      continue;
    }
    // Only the name is read before it is known to be one: "http://http://…" must not take long.
    const std::size_t nameStart = at + kMark.size();
    std::size_t end = nameStart;
    while (end < text.size() && text[end] != '/' && IsInPage(text[end])) {
      ++end;
    }
    const bool hasPath = end < text.size() && text[end] == '/';
    const std::string_view host = text.substr(nameStart, end - nameStart);
    const std::string_view name = hasPath ? host : WithoutEnd(host);
    // "http://address:port" and "http://[user@]host.name" are patterns.
    if (name.find('.') == kNone || name.find('[') != kNone) {
      continue;
    }
    while (end < text.size() && IsInPage(text[end])) {
      ++end;
    }
    return WithoutEnd(text.substr(first, end - first));
  }
  return {};
}

// The first e-mail address at or behind `at`; empty if there is none.
std::string_view FindMail(std::string_view text, std::size_t at) noexcept {
  const std::size_t begin = at;
  for (at = text.find('@', at); at != kNone; at = text.find('@', at + 1)) {
    std::size_t first = at;
    while (first > begin && IsInMail(text[first - 1])) {
      --first;
    }
    std::size_t end = at + 1;
    while (end < text.size() && IsInMail(text[end])) {
      ++end;
    }
    const std::string_view mail = WithoutEnd(text.substr(first, end - first));
    const std::size_t sign = at - first;
    if (first < at && mail.size() > sign + 1 && mail.find('.', sign) != kNone) {
      return mail;
    }
  }
  return {};
}

// Takes the next part of an address: what stands before one of the signs that separate parts.
std::string_view TakePart(std::string_view& rest) noexcept {
  const std::size_t length = std::min(rest.find_first_of("/.?#=&_:-"), rest.size());
  const std::string_view part = rest.substr(0, length);
  rest.remove_prefix(std::min(length + 1, rest.size()));
  return part;
}

// The next part that no language may change: codes such as "en" and "www" are left out.
std::string_view TakeFixedPart(std::string_view& rest) noexcept {
  constexpr std::size_t kLongestCode = 2;
  while (!rest.empty()) {
    const std::string_view part = TakePart(rest);
    if (part.size() > kLongestCode && part != "www" && part != "http" && part != "https") {
      return part;
    }
  }
  return {};
}

// Whether two pages differ in language codes or in the domain of a country only.
bool ArePagesAlike(std::string_view base, std::string_view text) noexcept {
  while (true) {
    const std::string_view left = TakeFixedPart(base);
    const std::string_view right = TakeFixedPart(text);
    if (left != right) {
      return false;
    }
    if (left.empty()) {
      return true;
    }
  }
}

// "https://example.org" of "https://example.org/help".
std::string_view HostOf(std::string_view address) noexcept {
  const std::size_t mark = address.find("://");
  return mark == kNone ? address : address.substr(0, address.find('/', mark + 3));
}

using Finder = std::string_view (*)(std::string_view, std::size_t) noexcept;

// Calls `visit(address)` for each address of the text, until it returns true.
template <class Visitor>
bool VisitAddresses(std::string_view text, Finder find, Visitor visit) {
  for (std::string_view address = find(text, 0); !address.empty();) {
    if (visit(address)) {
      return true;
    }
    address = find(text, static_cast<std::size_t>(address.data() + address.size() - text.data()));
  }
  return false;
}

// Reports the first address of the base that the text does not have.
void CheckKind(const TextCheck& check, Finder find) {
  // So that the time stays linear.
  constexpr std::size_t kMost = 16;
  constexpr std::size_t kLongest = 2'000;  // programs take no longer ones
  std::size_t seen = 0;
  std::size_t searched = 0;
  // A page for reports may be the e-mail address of the translators.
  const bool hasAddress = !FindPage(check.Text(), 0).empty() || !FindMail(check.Text(), 0).empty();
  VisitAddresses(check.BaseText(), find, [&](std::string_view base) {
    if (++seen > kMost) {
      return true;
    }
    if (base.size() > kLongest || check.Text().find(base) != kNone) {
      return false;
    }
    if (!hasAddress) {
      check.Add(RuleId::kAddress, Severity::kWarning, check.Text(),
                {"address.missing", {std::string(base)}});
      return true;
    }
    return VisitAddresses(check.Text(), find, [&](std::string_view text) {
      const bool isMistake = IsOneMistake(base, text) || IsOneMistake(HostOf(base), HostOf(text));
      if (!isMistake || ArePagesAlike(base, text) || ArePagesAlike(HostOf(base), HostOf(text))) {
        return false;
      }
      if (++searched > kMost) {
        return true;
      }
      if (check.BaseText().find(text) != kNone) {
        return false;
      }
      check.Add(RuleId::kAddress, Severity::kWarning, text, {"address.other", {std::string(text)}})
          .hint = {"address.hint", {std::string(base)}};
      return true;
    });
  });
}

}  // namespace

void CheckAddresses(const TextCheck& check) {
  if (!check.base || check.Text().empty() || check.Text() == check.BaseText()) {
    return;
  }
  if (check.BaseText().find("://") != kNone) {
    CheckKind(check, FindPage);
  }
  if (check.BaseText().find('@') != kNone) {
    CheckKind(check, FindMail);
  }
}

}  // namespace KelmoLibs::Lang
