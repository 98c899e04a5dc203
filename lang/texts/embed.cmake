# Writes files as arrays of a C++ source: cmake -D FILES=... -D OUTPUT=file.cpp -P embed.cmake
# default_unit_table.txt is the unit table; every other file is a dictionary, named after its language.
set(arrays "")
set(texts "")
foreach(file IN LISTS FILES)
  get_filename_component(name ${file} NAME_WE)
  file(READ ${file} bytes HEX)
  string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
  string(APPEND arrays "constexpr unsigned char ${name}[] = {\n${bytes}};\n\n")
  if(NOT name STREQUAL "default_unit_table")
    string(APPEND texts "      {\"${name}\", View(${name})},\n")
  endif()
endforeach()
file(WRITE ${OUTPUT} "// Written by embed.cmake.
#include \"lang/texts/embedded_texts.h\"

#include <cstddef>

namespace KelmoLibs::Lang {
namespace {

${arrays}template <std::size_t size>
std::string_view View(const unsigned char (&bytes)[size]) noexcept {
  return {reinterpret_cast<const char*>(bytes), size};
}

}  // namespace

const std::vector<EmbeddedText>& EmbeddedTexts() {
  static const std::vector<EmbeddedText> texts = {
${texts}  };
  return texts;
}

std::string_view EmbeddedUnitTable() noexcept { return View(default_unit_table); }

}  // namespace KelmoLibs::Lang
")
