#include "host/formatted_text.h"

#include "host/placeholders.h"

namespace KelmoLibs::Host {
namespace {

// Makes problems of the faults in a text.
class FaultTeller final : public FaultListener {
 public:
  FaultTeller(const View& view, const FoundText& found, ProblemList* problems) noexcept
      : view_(view), found_(found), problems_(problems) {}

  void Tell(const PlaceholderFault& fault) noexcept override {
    try {
      view_.Tell(ProblemOf(Describe(fault)), problems_);
    } catch (...) {
      view_.CountLost(problems_);
    }
  }

 private:
  // The detail outlives the result.
  MetProblem ProblemOf(const std::string& detail) const noexcept {
    MetProblem problem;
    problem.code = ProblemCode::kPlaceholder;
    problem.severity = ProblemSeverity::kError;
    problem.key = found_.record->Key();
    problem.language = found_.language->Id();
    problem.file = *view_.Texts().files[found_.record->file];
    problem.line = found_.record->line;
    problem.detail = detail;
    return problem;
  }

  const View& view_;
  const FoundText& found_;
  ProblemList* problems_;
};

}  // namespace

bool WriteFormatted(const View& view, std::string_view key, const Arguments& arguments,
                    const Argument* count, TextSink& sink, ProblemList* problems) {
  const FoundText found =
      count != nullptr ? view.FindForm(key, PluralCount(*count)) : view.Find(key);
  if (found.record == nullptr) {
    if (!sink.OnlyMeasures()) {
      view.TellMissing(key, problems);
    }
    view.WriteForMissing(key, sink);
    return false;
  }
  FaultTeller teller(view, found, problems);
  const FillOptions options{found.record->hasPercent != 0, view.IsIsolating(), &view.Ids()};
  FillPlaceholders(found.record->Text(), arguments, options, view.Numbers(), sink,
                   sink.OnlyMeasures() ? nullptr : &teller);
  return true;
}

}  // namespace KelmoLibs::Host
