// The calls of a host from the load of the library to its unload, in the order that hosts use. The
// programs that call this are linked to the library, or load it.
#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/support/host_test.h"

/// `Functions` has the nine functions under their names. `textOf(value, tolerance, code)` is the
/// text of a value, with the symbol of its unit, by the library's classes; "none" if no unit has
/// the code.
template <class Functions, class TextOf>
void ExpectWholeCallOrder(const Functions& host, const ScratchFolder& folder, TextOf textOf) {
  folder.Write(L"LANG\\ru-val.txt", "ru\tRussian\n10001\tm\tname of the meter\n10002\n");
  folder.Write(L"LANG\\en.txt", "en English\nmenu.file\tFile\nmenu.exit\tExit\n");
  folder.Write(L"LANG\\de.txt", "de Deutsch\nmenu.file\tDatei\nmenu.file\tnoch einmal\n");
  const std::wstring program = folder.HostPath();
  const std::wstring texts = program + L"\\LANG";

  // Loaded: the built-in units exist and nothing is listed.
  EXPECT_EQ(host.GetErrorsCount(), 0);
  EXPECT_STREQ(host.GetError(0), L"");
  EXPECT_EQ(textOf(2.5, 0.01, 10001), L"2.50 \u043C");
  EXPECT_EQ(textOf(5, 1, 30001), L"5 %");
  EXPECT_EQ(textOf(5, 1, 20001), L"5 m2");

  // Started.
  EXPECT_EQ(host.Init(program.c_str(), L"ru"), 0);
  EXPECT_EQ(host.GetErrorsCount(), 0) << "invalid lines are not listed for the host";
  EXPECT_EQ(textOf(2.5, 0.01, 10001), L"2.50 \u043C") << "not the symbol of a language";
  EXPECT_EQ(textOf(5, 1, 30001), L"5 K");
  EXPECT_EQ(textOf(5, 1, 20001), L"none");

  // Texts.
  EXPECT_EQ(host.LoadDictionary(texts.c_str(), L"en.txt"), 0);
  EXPECT_EQ(host.LoadDictionary(texts.c_str(), L"de.txt"), 1);
  EXPECT_EQ(host.LoadDictionary(texts.c_str(), L"fr.txt"), -2);
  EXPECT_EQ(host.UseLanguage(L"en"), 0);
  const wchar_t* const file = host.LANG(L"menu.file");
  EXPECT_STREQ(file, L"File");
  EXPECT_EQ(host.UseLanguage(L"de"), 0);
  EXPECT_STREQ(host.LANG(L"menu.file"), L"Datei");
  EXPECT_STREQ(host.LANG(L"menu.exit"), L"");
  EXPECT_EQ(host.UseLanguage(L"fr"), -1);
  EXPECT_STREQ(file, L"File") << "valid as long as the library";

  // Problems.
  EXPECT_EQ(ReadMessages(host),
            (Messages{
                L"EL101. Key already declared.\nKey: menu.file\nDictionary: " + texts + L"\\de.txt",
                L"EL111. Dictionary file not found\nDictionary: " + texts + L"\\fr.txt",
                L"EL121. Key not found in dictionary\nKey: menu.exit\nDictionary id: menu.exit",
                L"EL112. Dictionary not found\nDictionary id: fr",
            }));
  EXPECT_EQ(host.GetError(-1), ReadMessages(host).back());
  EXPECT_THROW(host.GetError(4), std::out_of_range);
  host.ClearErrors();
  EXPECT_EQ(host.GetErrorsCount(), 0);

  // The calls again.
  EXPECT_EQ(host.Init0(program.c_str()), 0);
  EXPECT_EQ(host.ExportPhyVal(), 0);
  EXPECT_EQ(host.Init(program.c_str(), L"none"), 0);
  EXPECT_EQ(host.GetErrorsCount(), 0);
  EXPECT_EQ(textOf(90, 0.5, 40001), L"90.0 \u00B0");
  EXPECT_EQ(host.UseLanguage(L"en"), 0);
  EXPECT_EQ(host.LANG(L"menu.file"), file) << "the texts stay";
  EXPECT_EQ(host.LoadDictionary(texts.c_str(), L"en.txt"), 2);
}

/// The number of starts (Init, Init0, ExportPhyVal) in these calls.
constexpr int kStartsOfWholeCallOrder = 4;
