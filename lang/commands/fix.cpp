#include "lang/commands/fix.h"

#include <algorithm>

#include "lang/commands/mended_bytes.h"
#include "lang/reading/file_bytes.h"
#include "lang/reading/file_names.h"
#include "lang/report/line_diff.h"
#include "lang/report/visible_text.h"
#include "platform/replace_file.h"

namespace KelmoLibs::Lang {
namespace {

class Fixing {
 public:
  Fixing(const FixOptions& options, const Texts& texts) : options_(options), texts_(texts) {}

  Answer Run() {
    if (options_.from && !(encoding_ = FindEncoding(*options_.from))) {
      SayOf(*options_.from, {"fix.unknown_encoding", {Names()}}, kStatusWrong);
      return answer_;
    }
    std::vector<FileProblem> problems;
    for (const GivenFile& file : ExpandPaths(options_.paths, problems)) {
      FixFile(file.path);
    }
    for (const FileProblem& problem : problems) {
      SayOf(problem.path, {problem.reason, {}}, kStatusWrong);
    }
    return answer_;
  }

 private:
  static std::string Names() {
    std::string names;
    for (const std::string& name : EncodingNames()) {
      names += (names.empty() ? "" : ", ") + name;
    }
    return names;
  }

  void SayOf(const std::string& name, const Sentence& sentence, int status) {
    std::string& stream = status == kStatusWrong ? answer_.error : answer_.output;
    stream += VisibleText(name) + ": " + VisibleText(texts_.Say(sentence)) + '\n';
    answer_.status = std::max(answer_.status, status);
  }

  void FixFile(const std::filesystem::path& path) {
    const std::string name = GenericName(path);
    const std::optional<std::string> bytes = ReadFileBytes(path);
    if (!bytes) {
      SayOf(name, {ReadProblem(path), {}}, kStatusWrong);
      return;
    }
    const MendedBytes mended = MendBytes(*bytes, encoding_);
    if (!mended.doubt.IsEmpty() && mended.refusal.IsEmpty() && !options_.isForced) {
      SayOf(name, mended.doubt, kStatusFound);
      return;
    }
    if (!mended.refusal.IsEmpty()) {
      SayOf(name, mended.refusal, kStatusFound);
    }
    if (!mended.changes.empty() && !Write(path, name, *bytes, mended)) {
      return;
    }
    for (const Sentence& left : mended.left) {
      SayOf(name, left, kStatusFound);
    }
    if (mended.changes.empty() && mended.left.empty() && mended.refusal.IsEmpty()) {
      SayOf(name, {"fix.nothing", {}}, 0);
    }
  }

  bool Write(const std::filesystem::path& path, const std::string& name, const std::string& bytes,
             const MendedBytes& mended) {
    if (options_.isDiff) {
      answer_.output += LineDiff(name, bytes, mended.bytes);
      answer_.status = std::max(answer_.status, kStatusFound);
    } else if (const std::error_code error = ReplaceFileBytes(
                   path, mended.bytes, [&] { return ReadFileBytes(path) == bytes; })) {
      const bool isChanged = error == std::errc::operation_canceled;
      SayOf(
          name,
          isChanged ? Sentence{"fix.changed", {}} : Sentence{"fix.not_written", {error.message()}},
          kStatusWrong);
      return false;
    }
    for (const Sentence& change : mended.changes) {
      SayOf(name, change, 0);
    }
    return true;
  }

  const FixOptions& options_;
  const Texts& texts_;
  std::optional<NamedEncoding> encoding_;
  Answer answer_;
};

}  // namespace

Answer Fix(const FixOptions& options, const Texts& texts) { return Fixing(options, texts).Run(); }

}  // namespace KelmoLibs::Lang
