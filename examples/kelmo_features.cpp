// The sections of docs/kelmo.md, each as a function.
#include <iostream>
#include <kelmo/kelmo.hpp>
#include <string>
#include <string_view>

namespace {

using kelmo::arg;
using kelmo::count;

// A view of one dictionary, which is in memory.
kelmo::View ViewOf(std::string_view dictionary) {
  kelmo::Loader loader;
  loader.add_memory(dictionary, "en.txt");
  return {loader.finish(), {"en"}};
}

void Placeholders() {
  const kelmo::View view = ViewOf(R"(en English
by.position  {0}, then {1}, then {0} again
by.name      {name} lives in {city}
format       |{0:8.2f}|{0:+.1f}|{0:<8.0f}|{0:*^8.1f}|{0:.2e}|
integer      |{0:5}|{0:05}|{0:+d}|
braces       {{0} is written with two braces
)");
  std::cout << view.tr("by.position", "A", "B") << '\n'
            << view.tr("by.name", arg("city", "Åbo"), arg("name", "Anna")) << '\n'
            << view.tr("format", 3.14159) << '\n'
            << view.tr("integer", 42) << '\n'
            << view.tr("braces", "nothing") << '\n'
            << view.tr("braces") << '\n';  // without arguments: as it stands
}

void Percent() {
  kelmo::LoadOptions options;
  options.percent = true;
  kelmo::Loader loader;
  loader.add_memory("en English\ncopied %1 of %2 files, {0} too\n", "en.txt", options);
  const kelmo::View view(loader.finish(), {"en"});
  std::cout << view.tr("copied", 3, 5) << '\n';
}

void Plurals() {
  const kelmo::View view = ViewOf(R"(en English
files.=0     No files
files.one    {count} file in {folder}
files.other  {count} files in {folder}
meters.one   {count} meter
meters.other {count} meters
)");
  for (const int files : {0, 1, 5}) {
    std::cout << view.tr("files", count(files), arg("folder", "C:")) << '\n';
  }
  std::cout << view.tr("meters", count(1)) << ", " << view.tr("meters", count(1.0, 1)) << '\n';
}

void PluralsOfALanguage() {
  kelmo::Loader loader;
  loader.add_memory(R"(ru Русский
files.one    {count} файл
files.few    {count} файла
files.many   {count} файлов
files.other  {count} файла
)",
                    "ru.txt");
  const kelmo::View view(loader.finish(), {"ru"});
  for (const int files : {1, 3, 5, 21}) {
    std::cout << view.tr("files", count(files)) << '\n';
  }
}

void Fallback() {
  kelmo::Loader loader;
  loader.add_memory("en English\nok OK\nquit Quit\nhelp Help\n", "en.txt");
  loader.add_memory("de Deutsch\nok OK\nquit Beenden\n", "de.txt");
  loader.add_memory("de-AT Deutsch (Österreich)\nok Passt\n", "de-AT.txt");
  const kelmo::View view(loader.finish(), {"de-AT", "de", "en"});
  for (const char* const key : {"ok", "quit", "help"}) {
    if (const auto text = view.find(key)) {
      std::cout << text->text << " (" << text->file << ", line " << text->line << ")\n";
    }
  }
}

void Override() {
  kelmo::LoadOptions own;
  own.is_override = true;  // files that are loaded later may repeat its keys
  own.optional = true;     // it need not exist
  kelmo::Problems problems;
  kelmo::Loader loader;
  loader.add_folder("no such folder", problems, own);
  loader.add_memory("en English\npump Unit 7\nvlave Tap\nalarms Call us\n", "customer/en.txt",
                    problems, own);
  loader.add_memory("en English\npump Pump\nvalve Valve\nalarms.one Alarm\nalarms.other Alarms\n",
                    "program/en.txt", problems);
  const kelmo::View view(loader.finish(problems), {"en"});  // tells what overrides nothing
  std::cout << view.tr("pump") << ", " << view.tr("valve") << '\n';
  for (const kelmo::Problem& problem : problems) {
    std::cout << problem.text << '\n';
  }
}

void Missing() {
  kelmo::Loader loader;
  loader.add_memory("en English\nempty\n", "en.txt");
  const kelmo::Texts texts = loader.finish();
  for (const kelmo::Missing missing :
       {kelmo::Missing::key, kelmo::Missing::nothing, kelmo::Missing::marked}) {
    kelmo::ViewOptions options;
    options.languages = {"en"};
    options.missing = missing;
    const kelmo::View view(texts, options);
    std::cout << '"' << view.tr("menu.file") << "\"\n";
  }
  const kelmo::View view(texts, {"en"});
  std::cout << (view.find("empty") ? "there" : "missing") << ", "
            << (view.find("menu.file") ? "there" : "missing") << '\n';
}

void AllProblems() {
  kelmo::Problems problems;
  kelmo::Loader loader;
  loader.add_file("no such file.txt", problems);
  loader.add_memory("en English\nsize {0:q} mm\nsize {0} mm\nwhere {place}\n", "en.txt", problems);
  kelmo::ViewOptions options;
  options.languages = {"fr", "en"};
  options.problem_limit = 100;  // without it, lookups record nothing
  const kelmo::View view(loader.finish(), options, problems);
  std::cout << view.tr("size", 5) << ", " << view.tr("where", "here") << ", " << view.tr("color")
            << '\n';
  view.take_problems(problems);
  for (const kelmo::Problem& problem : problems) {
    if (problem.code != KELMO_PROBLEM_CANNOT_READ) {  // its text has the system's reason
      std::cout << problem.text << '\n';
    }
  }
}

void Lenient() {
  const std::string_view saved = "en English\nfirst Caf\xE9 du coin\nlines One\\nTwo\n";
  for (const bool isLenient : {false, true}) {
    kelmo::LoadOptions options;
    options.lenient = isLenient;
    kelmo::Problems problems;
    kelmo::Loader loader;
    loader.add_memory(saved, "en.txt", problems, options);
    const kelmo::View view(loader.finish(), {"en"});
    std::cout << view.tr("first") << '\n' << view.tr("lines") << '\n';
    for (const kelmo::Problem& problem : problems) {
      std::cout << problem.text << '\n';
    }
  }
}

void Numbers() {
  kelmo::Loader loader;
  loader.add_memory("en English\nprice {0} or {0:.2f}\n", "en.txt");
  loader.add_memory("de Deutsch\nprice {0} oder {0:.2f}\n", "de.txt");
  const kelmo::Texts texts = loader.finish();
  std::cout << kelmo::View(texts, {"en"}).tr("price", 12345.5) << '\n'
            << kelmo::View(texts, {"de"}).tr("price", 12345.5) << '\n';

  kelmo::ViewOptions options;
  options.languages = {"de"};
  options.numbers = kelmo::number_format_of_language("de-CH");  // German words, Swiss numbers
  if (options.numbers) {
    options.numbers->is_grouped = 1;
  }
  std::cout << kelmo::View(texts, options).tr("price", 12345.5) << '\n';

  if (const auto format = kelmo::number_format_of_language("fi")) {
    std::cout << kelmo::print(kelmo::number(0.5, 3), *format) << '\n';  // without a text
  }

  if (auto format = kelmo::number_format_of_user()) {
    format->is_grouped = 1;  // otherwise without groups
    std::cout << kelmo::print(500, *format) << '\n';
  }
}

void Utf16() {
  kelmo::LoadOptions options;
  options.utf16 = true;
  kelmo::Loader loader;
  loader.add_memory("en English\npump Pump \xF0\x9F\x92\xA7\n", "en.txt", options);
  const kelmo::View view(loader.finish(), {"en"});
  const std::optional<kelmo::Text> pump = view.find("pump");
  std::cout << pump->text.size() << " bytes, " << pump->utf16.size() << " units of UTF-16\n";
}

void Lists() {
  kelmo::Loader loader;
  loader.add_memory("en English\nok OK\n", "en.txt");
  loader.add_memory("de Deutsch\nok Gut\n", "de.txt");
  const kelmo::Texts texts = loader.finish();
  const auto languages = texts.languages();
  for (std::size_t i = 0; i < languages.size(); ++i) {
    std::cout << languages.at(i).id << ": " << languages.at(i).name << '\n';
    for (const kelmo::Text& entry : texts.entries(i)) {
      std::cout << "  " << entry.key << " = " << entry.text << '\n';
    }
  }
}

void Print(const char* title, void (*section)()) {
  std::cout << "-- " << title << '\n';
  section();
}

}  // namespace

int main() try {
  Print("placeholders", Placeholders);
  Print("placeholders with a percent sign", Percent);
  Print("plurals", Plurals);
  Print("plurals of a language", PluralsOfALanguage);
  Print("fallback", Fallback);
  Print("override", Override);
  Print("missing keys", Missing);
  Print("problems", AllProblems);
  Print("lenient", Lenient);
  Print("numbers", Numbers);
  Print("UTF-16", Utf16);
  Print("lists", Lists);
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
