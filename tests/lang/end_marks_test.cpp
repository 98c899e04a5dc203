// The rules end-mark and full-stop.
#include <gtest/gtest.h>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

TEST(EndMarks, CompareWithTheBase) {
  const TextRow rows[] = {
      // Equal ends.
      {"equal", "de", "Name:", "Name:", ""},
      {"a no-break space in front", "fr", "Name:", u8"Nom\u00A0:", ""},
      {"full-width colon", "zh", "Name:", u8"名称：", ""},
      {"full-width question mark", "zh", "Really?", u8"真的？", ""},
      {"Arabic question mark", "ar", "Really?", u8"حقا؟", ""},
      {"Greek semicolon", "el", "Really?", u8"Αλήθεια;", ""},
      {"Greek question mark", "el", "Really?", u8"Αλήθεια\u037E", ""},
      {"Greek semicolon behind a Latin word and a blank", "el", "Use --install ?",
       u8"Με --install ;", ""},
      {"Greek semicolon of a command", "el", "{ COMMANDS ; }", "{ COMMANDS ; }", ""},
      {"three dots and one character", "de", "Open...", u8"Öffnen…", ""},
      {"six dots", "zh", "Open...", u8"打开……", ""},
      {"question and exclamation", "de", "Really?!", "Wirklich!?", ""},
      {"Khmer colon", "km", "Name:", u8"ឈ្មោះ៖", ""},
      {"mark of direction behind", "ar", "Name:", u8"الاسم:\u200F", ""},
      // Looked through.
      {"quote", "fr", "Open \"%1\"?", u8"Ouvrir « %1 » ?", ""},
      {"quote behind the mark", "de", "It says \"Really?\"", u8"Es heißt „Wirklich?“", ""},
      {"line end", "de", "Name:\\n", "Name:\\n", ""},
      {"closing tag", "de", "<b>Name:</b>", "<b>Name</b>:", ""},
      {"br tag", "de", "Name:<br>", "Name:", ""},
      {"placeholder in angle brackets is none", "de", "Two: <a> <b>", "Zwei <a> <b>", ""},
      {"accelerator behind the mark", "ja", "Save &as...", u8"名前を付けて保存...(&A)", ""},
      // Different ends.
      {"ellipsis behind a question mark", "de", u8"Open…", u8"Öffnen?…", ""},
      {"question mark instead of an ellipsis", "de", u8"Open…", u8"Öffnen?",
       "warning end-mark.no-ellipsis ?"},
      {"lost colon", "de", "Name:", "Name", "warning end-mark.no-colon e"},
      {"added colon", "de", "Name", "Name:", "warning end-mark.surplus :"},
      {"lost question mark", "de", "Really?", "Wirklich.", "warning end-mark.no-question-mark ."},
      {"added question mark", "de", "It is so.", "Ist es so?", "warning end-mark.surplus ?"},
      {"lost ellipsis", "de", u8"Open…", u8"Öffnen", "warning end-mark.no-ellipsis n"},
      {"two dots are no ellipsis", "de", u8"Open…", u8"Öffnen..", "warning end-mark.no-ellipsis ."},
      {"colon instead of an ellipsis", "de", u8"Open…", u8"Öffnen:",
       "warning end-mark.no-ellipsis :"},
      {"ellipsis instead of a question mark", "ja", "Really?", u8"本当に…",
       u8"warning end-mark.no-question-mark …"},
      // Meant otherwise.
      {"Japanese without question mark", "ja", "Delete it?", u8"削除しますか。", ""},
      {"Armenian", "hy", "Delete?", u8"Ջնջե՞լ", ""},
      {"mark in brackets", "ru", "Damaged (try again?)", u8"Повреждён (попробуйте ещё раз)", ""},
      {"mark in brackets added", "vi", "run [arguments]", u8"run [ĐỐI-SỐ …]", ""},
      {"full stop of a sentence before a list", "ja",
       "These pumps can be started with one of the commands:", u8"次のコマンドで起動できます。",
       ""},
      {"full stop of a label", "ja", "Name of the pump:", u8"名前。",
       "warning end-mark.no-colon 。"},
      {"quoted colon", "cs", "`:' expected for the expression",
       u8"v podmíněném výrazu očekávána „:“", ""},
      {"bracketed colon", "fr", "must be followed by colon", u8"doit être suivi de deux points (:)",
       ""},
      {"begin of a sentence", "ja", "The pump depends on", u8"ポンプの依存先:", ""},
      {"begin of a sentence behind every", "ja", "_Save every", u8"保存する間隔(_S):", ""},
      {"points below", "de", "Other files were found, please choose below.",
       u8"Andere Dateien wurden gefunden, bitte wählen Sie:", ""},
      {"points to another place", "de", "Other files were found, please choose.",
       u8"Andere Dateien wurden gefunden, bitte wählen Sie:", "warning end-mark.surplus :"},
      {"indirect question", "de", "Whether the pump should restart.", "Soll die Pumpe neu starten?",
       ""},
      {"guess that asks", "pl", "It stands. Perhaps it is off?", u8"Stoi. Może jest wyłączona.",
       ""},
      {"guess that states", "fr", "Maybe the pump is off.", u8"La pompe est-elle arrêtée ?", ""},
      {"question added as a sentence", "de", "All changes will be lost.",
       u8"Alle Änderungen gehen verloren. Trotzdem fortfahren?", ""},
      {"question added as a Chinese sentence", "zh", "All changes will be lost.",
       u8"所有更改都将丢失。要继续吗？", ""},
      {"Chinese question mark added", "zh", "All changes will be lost.", u8"所有更改都将丢失？",
       u8"warning end-mark.surplus ？"},
      {"question mark added behind an equal number of sentences", "tr",
       "The text was changed.\\nAll changes will be lost.", "Metin değişti.\\nYok sayılsın mı?.",
       "warning end-mark.surplus ?."},
      {"progress", "ja", "Loading %1", u8"%1 を読み込み中…", ""},
      {"label that is no progress", "de", "Setting the date", u8"Datum einstellen…",
       u8"warning end-mark.surplus …"},
      {"open list", "it", "letters, numbers, etc.", "lettere, numeri, ecc...", ""},
      {"no base", "de", "", "Name:", ""},
      {"only a mark", "de", "?", "?", ""},
      {"only blanks and brackets", "de", "()", "( )", ""},
      // Full stops.
      {"lost", "de", "The file was saved.", "Die Datei wurde gespeichert",
       "note full-stop.missing t"},
      {"added", "de", "Save the file", "Die Datei speichern.", "note full-stop.surplus ."},
      {"ideographic", "ja", "The file was saved.", u8"保存しました。", ""},
      {"Hindi", "hi", "The file was saved.", u8"फ़ाइल सहेजी गई।", ""},
      {"Urdu", "ur", "The file was saved.", u8"فائل محفوظ ہو گئی۔", ""},
      {"Thai has none", "th", "The file was saved.", u8"บันทึกแล้ว", ""},
      {"Thai with one", "th", "Save the file", u8"บันทึกไฟล์.", "note full-stop.surplus ."},
      {"exclamation mark instead", "de", "The file was saved.", "Die Datei wurde gespeichert!", ""},
      {"abbreviation", "de", "No.", "Nr", ""},
  };
  ExpectResults(CheckEndMarks, rows);
}

}  // namespace
}  // namespace KelmoLibs::Lang
