#include "host/unreadable_file.h"

#include <utility>

namespace KelmoLibs::Host {

void TellUnreadable(ProblemCode code, const std::string& path, std::string detail,
                    ProblemList* problems) {
  if (problems != nullptr) {
    problems->Append([&] {
      Problem problem;
      problem.code = code;
      problem.severity = ProblemSeverity::kError;
      problem.file = path;
      problem.detail = std::move(detail);
      return problem;
    });
  }
}

bool HasZero(ProblemCode code, const std::string& path, ProblemList* problems) {
  if (path.find('\0') == std::string::npos) {
    return false;
  }
  TellUnreadable(code, path, "the path has a zero in it", problems);
  return true;
}

}  // namespace KelmoLibs::Host
