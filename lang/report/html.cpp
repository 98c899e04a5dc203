#include "lang/report/html.h"

#include "lang/report/visible_text.h"

namespace KelmoLibs::Lang {
namespace {

// Stand around an argument while the sentence is formed. VisibleText leaves neither in a text.
constexpr char kArgumentStart = '\x02';
constexpr char kArgumentEnd = '\x03';

constexpr std::string_view kIsolate = "<bdi dir=\"auto\">";
constexpr std::string_view kEndIsolate = "</bdi>";

std::string Escaped(std::string_view text) {
  std::string html;
  html.reserve(text.size());
  for (const char character : text) {
    switch (character) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      case '\'':
        html += "&#39;";
        break;
      default:
        html += character;
    }
  }
  return html;
}

}  // namespace

std::string HtmlOf(std::string_view text) { return Escaped(VisibleText(text)); }

std::string HtmlOfSource(std::string_view bytes) {
  std::string html;
  while (!bytes.empty()) {
    const std::string_view character = TakeCharacter(bytes);
    const std::string visible = VisibleText(character);
    if (visible == character) {
      html += Escaped(visible);
    } else {
      html += "<i>" + Escaped(visible) + "</i>";
    }
  }
  return html;
}

std::string HtmlOf(const Sentence& sentence, const Texts& texts) {
  Sentence marked{sentence.key, {}};
  const bool isPlural = !sentence.key.empty() && sentence.key.back() == '#';
  for (const std::string& argument : sentence.arguments) {
    const bool isNumber = isPlural && marked.arguments.empty();  // selects the form
    const std::string visible = VisibleText(argument);
    marked.arguments.push_back(isNumber ? visible : kArgumentStart + visible + kArgumentEnd);
  }
  std::string html;
  for (const char character : Escaped(texts.Say(marked))) {
    if (character == kArgumentStart) {
      html += kIsolate;
    } else if (character == kArgumentEnd) {
      html += kEndIsolate;
    } else {
      html += character;
    }
  }
  return html;
}

std::string Isolated(std::string_view text) {
  return std::string(kIsolate) + HtmlOf(text) + std::string(kEndIsolate);
}

}  // namespace KelmoLibs::Lang
