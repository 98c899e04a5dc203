#include "text/file_path.h"

namespace KelmoLibs::Localize {

std::wstring JoinPath(std::wstring_view folder, std::wstring_view fileName) {
  // As long as it will be: one allocation.
  std::wstring path(folder.size() + 1 + fileName.size(), L'\\');
  folder.copy(path.data(), folder.size());
  fileName.copy(path.data() + folder.size() + 1, fileName.size());
  return path;
}

}  // namespace KelmoLibs::Localize
