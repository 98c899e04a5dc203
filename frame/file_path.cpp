#include "frame/file_path.h"

namespace KelmoLibs::Localize {

std::wstring JoinPath(std::wstring_view folder, std::wstring_view fileName) {
  std::wstring path;
  path.reserve(folder.size() + 1 + fileName.size());
  path += folder;
  path += L'\\';
  path += fileName;
  return path;
}

}  // namespace KelmoLibs::Localize
