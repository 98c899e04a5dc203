#include "text/file_path.h"

namespace KelmoLibs::Localize {

std::wstring JoinPath(std::wstring_view folder, std::wstring_view fileName) {
  // One allocation: the string has its final length from the start.
  std::wstring path(folder.size() + 1 + fileName.size(), L'\\');
  folder.copy(path.data(), folder.size());
  fileName.copy(path.data() + folder.size() + 1, fileName.size());
  return path;
}

}  // namespace KelmoLibs::Localize
