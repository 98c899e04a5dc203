#include "host/unreadable_file.h"

#include <utility>

namespace KelmoLibs::Host {

void TellUnreadable(const std::string& path, std::string detail, ProblemList* problems) {
  if (problems != nullptr) {
    problems->Append([&] {
      Problem problem;
      problem.code = ProblemCode::kCannotRead;
      problem.severity = ProblemSeverity::kError;
      problem.file = path;
      problem.detail = std::move(detail);
      return problem;
    });
  }
}

bool HasZero(const std::string& path, ProblemList* problems) {
  if (path.find('\0') == std::string::npos) {
    return false;
  }
  TellUnreadable(path, "the path has a zero in it", problems);
  return true;
}

}  // namespace KelmoLibs::Host
