// The whole contents of a byte source or an error list.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frame/error_list.h"
#include "frame/messages.h"
#include "text/byte_source.h"

/// Reads to the end with a buffer of `bufferBytes`.
inline std::string ReadAll(KelmoLibs::Localize::ByteSource& source, std::size_t bufferBytes) {
  std::string buffer(bufferBytes, '#');
  std::string all;
  while (const std::size_t count = source.Read(buffer.data(), buffer.size())) {
    all.append(buffer, 0, count);
  }
  return all;
}

inline std::wstring TextOf(const KelmoLibs::Localize::Message& message) {
  std::wstring text(TextLength(message), L'#');
  FormatTo(text.data(), message);
  return text;
}

inline std::vector<std::wstring> ReadAll(const KelmoLibs::Localize::ErrorList& list) {
  std::vector<std::wstring> texts;
  for (std::int32_t i = 0; i < list.Count(); ++i) {
    texts.emplace_back(list.At(i));
  }
  return texts;
}
