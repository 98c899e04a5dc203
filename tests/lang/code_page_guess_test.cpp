// How often the guess of a code page is right, with texts as dictionaries have them.
#include "lang/unicode/code_page_guess.h"

#include <gtest/gtest.h>

#include <array>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "lang/unicode/ascii.h"
#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {
namespace {

struct Sample {
  std::string_view language;
  std::vector<CodePage> pages;
  std::vector<std::string_view> texts;
};

const std::vector<CodePage> kCyrillicPages = {CodePage::kWindows1251, CodePage::kCp866,
                                              CodePage::kKoi8R};
const std::vector<CodePage> kWesternPages = {CodePage::kWindows1252};
const std::vector<CodePage> kCentralPages = {CodePage::kWindows1250};

const std::vector<Sample> kSamples = {
    {"ru",
     kCyrillicPages,
     {"Сохранить", "Открыть файл", "Выход", "Насос включён", "Температура слишком высокая",
      "Ошибка чтения", "Да", "Отмена", "ФАЙЛ НЕ НАЙДЕН", "Справка о программе", "Вид", "шаг",
      "Давление на входе", "Щит управления", "Объём, м"}},
    {"uk",
     kCyrillicPages,
     {"Зберегти", "Вийти з програми", "Насос увiмкнено", "Помилка читання", "Так", "Скасувати",
      "Температура занадто висока", "Довiдка", "Налаштування", "Тиск на входi", "Увага!"}},
    {"bg",
     kCyrillicPages,
     {"Запис", "Отваряне на файл", "Изход", "Помпата е включена", "Грешка при четене", "Отказ",
      "Настройки", "Температурата е твърде висока", "Помощ", "Въведете стойност"}},
    {"fr",
     kWesternPages,
     {"Fichier enregistré", "Paramètres", "À propos", "Température trop élevée", "Démarrer",
      "Échec de la lecture", "Arrêt", "Aperçu", "Où ?", "Êtes-vous sûr ?", "Clé", "Reçu à 10 h"}},
    {"de",
     kWesternPages,
     {"Öffnen", "Schließen", "Übernehmen", "Datei gelöscht", "Größe", "Lädt…", "ÄNDERN", "Zurück",
      "Für alle", "Maß", "Füllstand zu hoch"}},
    {"es",
     kWesternPages,
     {"Configuración", "Sí", "Año", "¿Guardar?", "Tamaño de página", "Atrás", "Último", "Válvula",
      "No se encontró", "¡Listo!"}},
    {"pt",
     kWesternPages,
     {"Configuração", "Não", "Salvar alterações?", "Olá", "Válvula", "Início", "Você", "Opções",
      "Temperatura máxima", "Conexão"}},
    {"cs",
     kCentralPages,
     {"Uložit", "Otevřít soubor", "Příliš vysoká teplota", "Zrušit", "Konec", "Nápověda",
      "Čerpadlo", "Chyba čtení", "Ano, přepsat", "Šířka"}},
    {"pl",
     kCentralPages,
     {"Zapisz zmiany", "Otwórz", "Wyjście", "Błąd odczytu", "Zamknąć?", "Wartość", "Łączenie",
      "Ciśnienie", "Szerokość", "Usuń plik"}},
};

std::string Encode(CodePage page, std::string_view utf8) {
  std::string bytes;
  VisitCodePoints(utf8, [&](char32_t character, std::string_view) {
    bytes += ByteOf(page, character).value_or('?');
    return true;
  });
  return bytes;
}

enum Answer : std::size_t { kRight, kOneOfTwo, kNone, kWrong };

// A guess that gives the same letters is right whatever its name.
Answer Judge(CodePage page, const std::vector<std::string_view>& lines, std::string_view language) {
  const std::optional<CodePageGuess> guess = GuessCodePage(lines, language);
  if (!guess) {
    return kNone;
  }
  const auto isRight = [&](CodePage guessed) {
    return std::all_of(lines.begin(), lines.end(), [&](std::string_view line) {
      return Utf8FromCodePage(guessed, line) == Utf8FromCodePage(page, line);
    });
  };
  if (!guess->other) {
    return isRight(guess->page) ? kRight : kWrong;
  }
  return isRight(guess->page) || isRight(*guess->other) ? kOneOfTwo : kWrong;
}

struct Share {
  std::array<std::size_t, 4> counts = {};
  std::size_t total = 0;

  void Count(Answer answer) {
    ++counts[answer];
    ++total;
  }
  std::string Text() const {
    return std::to_string(counts[kRight]) + " right, " + std::to_string(counts[kOneOfTwo]) +
           " one of two, " + std::to_string(counts[kNone]) + " none, " +
           std::to_string(counts[kWrong]) + " wrong of " + std::to_string(total);
  }
};

template <class Visitor>
void ForEachSample(Visitor visit) {
  for (const Sample& sample : kSamples) {
    for (const CodePage page : sample.pages) {
      std::vector<std::string> bytes;
      for (const std::string_view text : sample.texts) {
        if (!IsAscii(text)) {
          bytes.push_back("some.key\t" + Encode(page, text));
        }
      }
      visit(sample, page, std::vector<std::string_view>(bytes.begin(), bytes.end()));
    }
  }
}

TEST(CodePageGuess, IsRightForWholeFiles) {
  ForEachSample([](const Sample& sample, CodePage page,
                   const std::vector<std::string_view>& lines) {
    EXPECT_EQ(Judge(page, lines, sample.language), kRight) << sample.language << CodePageName(page);
    EXPECT_EQ(Judge(page, lines, ""), kRight) << sample.language << CodePageName(page);
  });
}

TEST(CodePageGuess, IsRightForMostSingleTextsAndNeverWrongWithTheLanguage) {
  Share known;
  Share unknown;
  ForEachSample(
      [&](const Sample& sample, CodePage page, const std::vector<std::string_view>& lines) {
        for (const std::string_view line : lines) {
          known.Count(Judge(page, {line}, sample.language));
          unknown.Count(Judge(page, {line}, ""));
          if (const Answer answer = Judge(page, {line}, sample.language); answer >= kNone) {
            std::cout << sample.language << ' ' << CodePageName(page) << ' '
                      << Utf8FromCodePage(page, line) << ": "
                      << (answer == kNone ? "none" : "wrong") << '\n';
          }
        }
      });
  std::cout << "language known: " << known.Text() << "\nunknown: " << unknown.Text() << '\n';
  EXPECT_EQ(known.counts[kWrong], 0U);
  EXPECT_GE(known.counts[kRight] * 100, known.total * 95);
  EXPECT_LE(unknown.counts[kWrong] * 100, unknown.total * 5);
}

TEST(CodePageGuess, SaysNothingOfLanguagesWithOtherCodePages) {
  EXPECT_FALSE(GuessCodePage({"k \xC1\xF0\xEF\xE8\xDE\xEA\xE5\xF5\xF3\xE7"}, "el"));
  EXPECT_FALSE(GuessCodePage({"k \x8F\xB0\x95\xDB\x81\x42"}, "ja"));
}

TEST(CodePageGuess, SaysNothingOfBytesThatAreNoWords) {
  EXPECT_FALSE(GuessCodePage({}, "ru"));
  EXPECT_FALSE(GuessCodePage({"plain"}, "fr"));
  EXPECT_FALSE(GuessCodePage({"enregistr\xC3"}, "fr"));  // the first half of a letter of UTF-8
}

TEST(DamagedUtf8, IsToldFromCodePages) {
  struct Row {
    const char* name;
    std::string_view line;
    bool isDamaged;
  };
  const Row rows[] = {
      {"a letter is cut", "k Param\u00E8tres enregistr\xC3", true},
      {"Cyrillic, cut at the end", "k \u041F\u0440\u0438\u0432\u0435\xD1", true},
      {"windows-1252", "k Param\xE8tres enregistr\xE9s", false},
      {"windows-1252, with two bytes that happen to be UTF-8", "k CAF\xC9\xBB pr\xE9par\xE9",
       false},
      {"cp866, with letters that happen to be UTF-8", "k \x8E\xE2\xA2\xA0\xE0\xEF\xAD\xA5", false},
      {"windows-1251", "k \xCF\xF0\xE8\xE2\xE5\xF2", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(IsDamagedUtf8(row.line), row.isDamaged) << row.name;
  }
}

}  // namespace
}  // namespace KelmoLibs::Lang
