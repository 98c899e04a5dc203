"""tests/units/check_units.py refuses a table of units, names and expressions that are wrong, one thing at a time."""

import shutil
import sys
import unittest

from refusals import TOP, RefusalTest, Row, new_folder

TABLE, GERMAN, ENGLISH = "units/engineering.txt", "units/LANG/de-val.txt", "units/LANG/en-val.txt"
RUSSIAN, PEERS = "units/LANG/ru-val.txt", "peers.tsv"
INCH, FOOT = "10002\t0.0254\t\tin\tinch\n", "10009\t0.3048\t\tft\tfoot\n"
CELSIUS = "18002\t1\t273.15\t°C\tdegree Celsius\t19002\n"
LAST = "40007\t360\t\tr\trevolution\n"

ROWS = (
    # The file
    Row("a byte-order mark", TABLE, "# Engineering units.", "\ufeff# Engineering units.",
        "begins with a byte-order mark"),
    Row("a carriage return", TABLE, INCH, INCH.replace("\n", "\r\n"), "a line does not end with LF"),
    Row("no line end in the last line", TABLE, LAST, LAST[:-1], "a line does not end with LF"),
    Row("no UTF-8", TABLE, INCH, INCH.replace("inch", "inch\udcff"), "engineering.txt: is not UTF-8"),
    Row("the ohm sign in the place of the letter", TABLE, "kΩ", "k\u2126", "is not in its normal form"),
    Row("no table", TABLE, None, None, "engineering.txt: No such file or directory"),
    Row("an empty table", TABLE, None, "\n", "engineering.txt:1: has no units"),
    # Fields
    Row("too few fields", TABLE, INCH, "10002\t0.0254\t\tin\n", "has 4 fields instead of 5 or 6"),
    Row("too many fields", TABLE, CELSIUS, CELSIUS.replace("\n", "\t1\n"), "has 7 fields instead of 5 or 6"),
    Row("two tabs together", TABLE, CELSIUS, CELSIUS.replace("\t273.15", "\t\t273.15"),
        "has 7 fields instead of 5 or 6"),
    Row("an empty symbol", TABLE, INCH, INCH.replace("\tin\t", "\t\t"), "the symbol is empty"),
    Row("a blank at the end of a name", TABLE, INCH, INCH.replace("inch", "inch "),
        "the name begins or ends with a blank"),
    Row("two blanks together", TABLE, "knot\n", "sea  knot\n", "or has two together"),
    Row("a symbol that begins like a number", TABLE, "min⁻¹", "1/min", "the symbol 1/min begins like a number"),
    # Codes
    Row("a code that is no number", TABLE, INCH, INCH.replace("10002", "inch"), "'inch' is not a code"),
    Row("a code with a zero in front", TABLE, INCH, INCH.replace("10002", "010002"), "'010002' is not a code"),
    Row("a code from 100 to 999", TABLE, INCH, INCH.replace("10002", "999"),
        "the code 999 is of no kind from 10 to 99"),
    Row("a kind of three digits", TABLE, INCH, INCH.replace("10002", "100001"), "the code 100001 is of no kind from"),
    Row("the first unit number for hosts", TABLE, INCH, INCH.replace("10002", "10900"), "the code 10900 is for hosts"),
    Row("the last unit number for hosts", TABLE, INCH, INCH.replace("10002", "10999"), "the code 10999 is for hosts"),
    Row("the first code for hosts", TABLE, INCH, INCH.replace("10002", "1000000"), "the code 1000000 is for hosts"),
    Row("a repeated code", TABLE, FOOT, FOOT.replace("10009", "10002"), "the code 10002 stands in another line too"),
    Row("no row of a kind", TABLE, "17000\t\t\tp\tpressure\n", "", "there is no row for the kind of 17001"),
    Row("a kind with a factor", TABLE, "17000\t\t", "17000\t1\t",
        "a kind has a factor, an offset or a unit of differences"),
    Row("another unit under a fixed code", TABLE, INCH, INCH.replace("\tin\t", "\tinch\t"), "the unit 10002 is not in"),
    Row("no base", TABLE, "17001\t1\t", "17001\t2\t", "17001 is no base: a unit with the factor 1 and no offset"),
    # Numbers
    Row("a factor that is no number", TABLE, INCH, INCH.replace("0.0254", "0,0254"),
        "the factor '0,0254' is not a positive"),
    Row("an empty factor", TABLE, INCH, INCH.replace("0.0254", ""), "the factor '' is not a positive number"),
    Row("a negative factor", TABLE, INCH, INCH.replace("0.0254", "-0.0254"), "the factor '-0.0254' is not a positive"),
    Row("the factor 0", TABLE, INCH, INCH.replace("0.0254", "0"), "the factor '0' is not a positive number"),
    Row("a division by 0", TABLE, INCH, INCH.replace("0.0254", "1/0"), "the factor '1/0' is not a positive number"),
    Row("a factor of three numbers", TABLE, INCH, INCH.replace("0.0254", "1/2/3"),
        "the factor '1/2/3' is not a positive"),
    Row("an offset that is no number", TABLE, CELSIUS, CELSIUS.replace("273.15", "zero"),
        "the offset 'zero' is not a number"),
    # Symbols and names
    Row("a repeated symbol", TABLE, FOOT, FOOT.replace("\tft\t", "\tin\t"), "the symbol in is also that of 10002"),
    Row("a repeated name", TABLE, FOOT, FOOT.replace("\tfoot\n", "\tinch\n"), "the name inch is also that of 10002"),
    Row("a repeated symbol of a kind", TABLE, "17000\t\t\tp\t", "17000\t\t\tP\t", "the symbol P is also that of 17000"),
    # Differences
    Row("an offset without a unit of differences", TABLE, CELSIUS, CELSIUS.replace("\t19002", ""),
        "has an offset, but no unit of differences"),
    Row("a temperature without a unit of differences", TABLE, "kelvin\t19001", "kelvin",
        "the units of the kind 18 have differences of several kinds"),
    Row("a unit of differences with another factor", TABLE, CELSIUS, CELSIUS.replace("19002", "19003"),
        "the unit of differences 19003 has another factor"),
    Row("a unit of differences of the same kind", TABLE, CELSIUS, CELSIUS.replace("19002", "18001"),
        "the unit of differences is of the same kind"),
    Row("a unit of differences that does not exist", TABLE, CELSIUS, CELSIUS.replace("19002", "19005"),
        "the unit of differences 19005 does not exist"),
    Row("a unit of differences that is a point too", TABLE, "19002\t1\t\t°C\tdegree Celsius (difference)\n",
        "19002\t1\t\t°C\tdegree Celsius (difference)\t20001\n", "the unit of differences 19002 is not linear"),
    Row("a unit of differences that is no code", TABLE, CELSIUS, CELSIUS.replace("19002", "K"),
        "the unit of differences: 'K' is not a code"),
    # Languages
    Row("a missing language", RUSSIAN, None, None, "LANG: has other files than those of de, en, fi, fr, ru"),
    Row("an added file", "units/LANG/val.txt", None, "", "LANG: has other files than those of"),
    Row("the id of another language", GERMAN, "de Deutsch", "en Deutsch",
        "de-val.txt:1: is not the id de and one word"),
    Row("a name of two words", GERMAN, "de Deutsch", "de Neues Deutsch", "de-val.txt:1: is not the id de and one word"),
    Row("an empty first line", GERMAN, "de Deutsch", "\nde Deutsch", "de-val.txt:1: is not the id de and one word"),
    Row("an empty file of a language", GERMAN, None, "\n", "de-val.txt:1: is not the id de and one word"),
    Row("a missing name", GERMAN, "10002\tin\tZoll\n", "", "de-val.txt:1: there is no name for 10002"),
    Row("a missing name of a kind", GERMAN, "17000\tp\tDruck\n", "", "de-val.txt:1: there is no name for 17000"),
    Row("a repeated row of a language", GERMAN, "10009\tft\tFuß", "10002\tft\tFuß", "10002 stands in another line too"),
    Row("a name of no unit", GERMAN, "10002\tin\tZoll\n", "10002\tin\tZoll\n10014\tfm\tFaden\n",
        "10014 is not in the table"),
    Row("too few fields of a language", GERMAN, "10002\tin\tZoll\n", "10002\tZoll\n", "has 2 fields instead of 3"),
    Row("a repeated symbol in a language", GERMAN, "10009\tft\tFuß", "10009\tin\tFuß",
        "de-val.txt:11: the symbol in is also that of 10002"),
    Row("a repeated name in a language", GERMAN, "10009\tft\tFuß", "10009\tft\tZoll",
        "the name Zoll is also that of 10002"),
    Row("an empty name in a language", GERMAN, "10002\tin\tZoll\n", "10002\tin\t\n", "the name is empty"),
    Row("a Latin letter in a Russian word", RUSSIAN, "миллиметр ртутного столба", "миллиметр ртутногo столба",
        "mixes Latin and Cyrillic letters in a word"),
    Row("another English name than in the table", ENGLISH, "10002\tin\tinch\n", "10002\tin\tinches\n",
        "the table has another symbol or name for 10002"),
    # The other programs
    Row("a wrong factor", TABLE, INCH, INCH.replace("0.0254", "0.0273"),
        "according to UDUNITS-2, inch has the factor 0.0254, not 0.0273"),
    Row("a factor with too few digits", TABLE, "101325/760", "133.3223684210",
        "according to GNU units, torr has the factor 133.3223684210526"),
    Row("a wrong offset", TABLE, CELSIUS, CELSIUS.replace("273.15", "273.16"),
        "according to GNU units, tempC gives 273.15 of the base unit at 0, not 273.16"),
    Row("a wrong offset of degrees Fahrenheit", TABLE, "2298.35/9", "2298.45/9",
        "according to UDUNITS-2, degF gives 255.37"),
    Row("a unit that UDUNITS-2 does not know", PEERS, "10002\tinch\t", "10002\tzoll\t", "UDUNITS-2 does not know zoll"),
    Row("a unit that GNU units does not know", PEERS, "\tinch\tinch\n", "\tinch\tzollzoll\n",
        "GNU units does not know zollzoll"),
    Row("a unit that no program knows", PEERS, "10002\tinch\tinch\n", "10002\t\t\n", "no program knows 10002"),
    Row("a unit without a row", PEERS, "10002\tinch\tinch\n", "", "peers.tsv:1: there is no row for 10002"),
    Row("a repeated row", PEERS, "10009\tfoot", "10002\tfoot", "the code 10002 stands in another line too"),
    Row("a row of no unit", PEERS, "10009\tfoot", "10014\tfoot", "10014 is not in the table"),
    Row("too few expressions", PEERS, "10002\tinch\tinch\n", "10002\tinch\n", "has 2 fields instead of 3"),
    Row("an expression of another kind", PEERS, "10002\tinch\t", "10002\tpound\t",
        "according to UDUNITS-2, pound is of another kind than the base unit"),
    Row("a function in the place of a unit", PEERS, "\tinch\tinch\n", "\tinch\ttempC\n", "answers to"),
    Row("an expression with an offset", PEERS, "19001\tK\t", "19001\tdegC\t", "degC has an offset"),
    Row("a base unit that a program does not know", PEERS, "17001\tPa\t", "17001\t\t",
        "cannot be compared: the program does not know the base unit"),
)


def write_units(folder):
    shutil.copytree(TOP / "units", folder / "units")
    shutil.copy(TOP / "tests/units/peers.tsv", folder)


def command(folder):
    return [sys.executable, "-B", TOP / "tests/units/check_units.py", folder / "units", folder / PEERS]


class Units(RefusalTest):
    def test_each_difference_is_refused(self):
        self.refuses_each(write_units, command, ROWS)

    def test_a_missing_program_is_refused(self):
        with new_folder(write_units) as folder:
            self.refuses("there is no program udunits2", ["env", f"PATH={folder}", *command(folder)])


if __name__ == "__main__":
    unittest.main()
