#include "lang/commands/lint.h"

#include <algorithm>
#include <array>
#include <set>
#include <system_error>
#include <utility>

#include "lang/commands/page.h"
#include "lang/commands/rules.h"
#include "lang/project/baseline.h"
#include "lang/project/projects.h"
#include "lang/reading/file_bytes.h"
#include "lang/reading/file_names.h"
#include "lang/reading/pattern.h"
#include "lang/rules/check_workspace.h"
#include "lang/rules/usual_mend.h"

namespace KelmoLibs::Lang {
namespace {

namespace fs = std::filesystem;

// The rules whose findings are errors in a release: the user sees a key, nothing or a wrong form.
constexpr std::array<RuleId, 3> kReleaseRules = {RuleId::kMissing, RuleId::kEmpty,
                                                 RuleId::kPluralForm};

// The path as its user would write it in the current folder.
std::string ShownPath(const fs::path& path) {
  std::error_code error;
  const fs::path relative = path.lexically_proximate(fs::current_path(error));
  return GenericName(error ? path : relative);
}

// Precondition: the level is not kOff.
Severity SeverityOf(Level level) noexcept {
  return level == Level::kError     ? Severity::kError
         : level == Level::kWarning ? Severity::kWarning
                                    : Severity::kNote;
}

class LintRun {
 public:
  LintRun(const LintOptions& options, const Texts& texts, TextStyle style,
          const std::function<void(double)>& progress)
      : options_(options), texts_(texts), style_(style), progress_(progress) {
    style_.showsAll = options.showsAll;
  }

  Answer Run() {
    if (!ReadRuleOptions()) {
      return std::move(answer_);
    }
    const std::vector<std::string> paths =
        options_.paths.empty() ? std::vector<std::string>{"."} : options_.paths;
    std::vector<FileProblem> problems;
    std::vector<GivenFile> files = ExpandPaths(paths, problems);
    std::optional<std::string> base = options_.base;
    for (const GivenFile& file : files) {
      const Project* const project = projects_.Of(file.path);
      if (!options_.base && project != nullptr && project->base) {
        const std::string projectsBase = ShownPath(*project->base);
        if (base && *base != projectsBase) {
          Complain(ShownPath(project->path), {"project.other_base", {*base}});
        }
        base = projectsBase;
      }
    }
    for (const Projects::Problem& problem : projects_.Problems()) {
      std::string path = ShownPath(problem.path);
      if (problem.fault.line > 0) {
        path +=
            ':' + std::to_string(problem.fault.line) + ':' + std::to_string(problem.fault.column);
      }
      Complain(path, problem.fault.sentence);
    }
    if (answer_.status != 0) {
      return std::move(answer_);
    }
    base = base ? base : options_.defaultBase;
    const Workspace workspace = ReadWorkspace({std::move(files), base}, problems);
    for (const FileProblem& problem : problems) {
      Complain(problem.path, {problem.reason, {}});
    }
    if (!workspace.files.empty() || options_.format != "text" || options_.html) {
      Check(workspace);
    }
    return std::move(answer_);
  }

 private:
  void Complain(const std::string& path, const Sentence& reason) {
    answer_.error += ProblemLine(path, reason, texts_);
    answer_.status = kStatusWrong;
    problems_.push_back({path, reason});
  }

  // False if an option names no rule or level.
  bool ReadRuleOptions() {
    for (const std::string& given : options_.rules) {
      const std::string_view option = given;
      const std::size_t sign = std::min(option.find('='), option.size());
      const Rule* const rule = FindRule(option.substr(0, sign));
      const std::optional<Level> level =
          FindLevel(option.substr(std::min(sign + 1, option.size())));
      if (rule == nullptr || !level) {
        answer_ = WrongUse("kelmo-lang lint", {"usage.rule", {given}}, texts_);
        return false;
      }
      optionLevels_[static_cast<std::size_t>(rule->id)] = level;
    }
    return true;
  }

  // The level of the rule in a file of the project, which may be null; nothing: as the rule says.
  std::optional<Level> LevelIn(const Project* project, RuleId rule) const {
    const auto index = static_cast<std::size_t>(rule);
    if (optionLevels_[index]) {
      return optionLevels_[index];
    }
    std::optional<Level> level = project != nullptr ? project->levels[index] : std::nullopt;
    const bool isReleaseRule =
        std::find(kReleaseRules.begin(), kReleaseRules.end(), rule) != kReleaseRules.end();
    if (options_.isRelease && isReleaseRule && level != Level::kOff) {
      level = Level::kError;
    }
    return level;
  }

  SettingsOfFiles Settings(const Workspace& workspace) {
    SettingsOfFiles settings;
    settings.settings.clear();
    std::vector<const Project*> owners;  // of each of the settings
    for (const WorkspaceFile& file : workspace.files) {
      const Project* const project = projects_.Of(file.Source().Path());
      projectOf_.push_back(project);
      auto owner = std::find(owners.begin(), owners.end(), project);
      if (owner == owners.end()) {
        RuleSettings& added = settings.settings.emplace_back();
        for (const Rule& rule : AllRules()) {
          if (const auto level = LevelIn(project, rule.id)) {
            added.isOn[static_cast<std::size_t>(rule.id)] = *level != Level::kOff;
          }
        }
        if (project != nullptr) {
          added.limits = project->limits;
        }
        owner = owners.insert(owners.end(), project);
      }
      settings.ofFile.push_back(static_cast<std::uint32_t>(owner - owners.begin()));
    }
    if (settings.settings.empty()) {
      settings.settings.emplace_back();
    }
    return settings;
  }

  // Whether a finding of the rule stays. Gives it the severity of the rule's level.
  bool ApplyLevel(std::uint32_t file, RuleId rule, Severity& severity) const {
    const std::optional<Level> level = LevelIn(projectOf_[file], rule);
    if (!level) {
      return RuleOf(rule).isOnByDefault;
    }
    if (*level != Level::kOff) {
      severity = SeverityOf(*level);
    }
    return *level != Level::kOff;
  }

  bool IsIgnored(const Workspace& workspace, const Finding& finding) {
    const std::uint32_t file = finding.place.file;
    const Project* const project = projectOf_[file];
    const IgnoredFinding* const ignored =
        project != nullptr
            ? project->FindIgnored(workspace.files[file].Source().Path(), finding.rule, finding.key)
            : nullptr;
    if (ignored != nullptr) {
      foundAgain_.insert(ignored);
    }
    return ignored != nullptr;
  }

  // The ignored findings of the checked files that were not found again, though their rule was run.
  void FindStaleIgnored(Report& report) const {
    const auto wasRun = [&](RuleId rule) {
      return std::find(report.rulesNotRun.begin(), report.rulesNotRun.end(), rule) ==
             report.rulesNotRun.end();
    };
    const auto isChecked = [&](const Project& project, const std::string& pattern) {
      const std::vector<WorkspaceFile>& files = report.workspace.files;
      return std::any_of(files.begin(), files.end(), [&](const WorkspaceFile& file) {
        return file.isReported &&
               FitsPattern(NameInProject(file.Source().Path(), project.path), pattern);
      });
    };
    for (const auto& project : projects_.All()) {
      for (const IgnoredFinding& ignored : project->ignored) {
        if (foundAgain_.count(&ignored) == 0 && wasRun(ignored.rule) &&
            LevelIn(project.get(), ignored.rule) != Level::kOff &&
            isChecked(*project, ignored.file)) {
          report.staleIgnored.push_back({"report.stale_ignored",
                                         {ShownPath(project->path), ignored.file, ignored.key,
                                          std::string(RuleOf(ignored.rule).name)}});
        }
      }
    }
  }

  void Check(const Workspace& workspace) {
    const SettingsOfFiles settings = Settings(workspace);
    Findings found = CheckWorkspace(workspace, settings, progress_);
    Report report{workspace, found.Take(), found.Counted(), {}, {}};
    auto& findings = report.findings;
    findings.erase(std::remove_if(findings.begin(), findings.end(),
                                  [&](Finding& finding) {
                                    const std::uint32_t file = finding.place.file;
                                    return !ApplyLevel(file, finding.rule, finding.severity) ||
                                           IsIgnored(workspace, finding);
                                  }),
                   findings.end());
    auto& counted = report.counted;
    counted.erase(std::remove_if(counted.begin(), counted.end(),
                                 [&](CountedFindings& one) {
                                   return !ApplyLevel(one.file, one.rule, one.severity);
                                 }),
                  counted.end());
    AddUsualMends(findings);
    SortFindings(findings);
    FindNotCompared(workspace, settings, report);
    FindStaleIgnored(report);
    if (!CompareWithBaseline(report)) {
      Print(report);
      WriteHtml(report);
    }
  }

  // Notes in the report what was not compared with a base.
  static void FindNotCompared(const Workspace& workspace, const SettingsOfFiles& settings,
                              Report& report) {
    const MergedDictionary* const base = workspace.Base();
    std::vector<bool> isNotRun(kRuleCount);
    for (std::uint32_t i = 0; i < workspace.files.size(); ++i) {
      const WorkspaceFile& file = workspace.files[i];
      if (!file.isReported || !file.dictionary) {
        continue;
      }
      if (base == nullptr) {
        for (const Rule& rule : AllRules()) {
          const auto index = static_cast<std::size_t>(rule.id);
          isNotRun[index] = isNotRun[index] || (rule.needsBase && settings.Of(i).IsOn(rule.id));
        }
      } else if (file.isSetOfItsOwn) {
        report.setsOfTheirOwn.push_back(i);
      }
    }
    for (const Rule& rule : AllRules()) {
      if (isNotRun[static_cast<std::size_t>(rule.id)]) {
        report.rulesNotRun.push_back(rule.id);
      }
    }
    const auto english = workspace.dictionaries.find("en");
    if (base == nullptr && workspace.dictionaries.size() > 1 &&
        english != workspace.dictionaries.end()) {
      report.possibleBase = workspace.files[english->second.Files().front()].Source().Name();
    }
  }

  struct Baseline {
    fs::path path;
    bool mayBeMade = true;
  };

  std::optional<Baseline> FindBaseline() const {
    if (options_.baseline) {
      return Baseline{fs::u8path(*options_.baseline)};
    }
    for (const auto& project : projects_.All()) {
      if (project->baseline) {
        return Baseline{*project->baseline, LeadsInside(*project->baseline, project->path)};
      }
    }
    return std::nullopt;
  }

  // Whether a new file would lie in the folder of the project file, or below it. A project file may
  // come from anybody: it must not make files elsewhere.
  static bool LeadsInside(const fs::path& file, const fs::path& project) {
    std::error_code error;
    const fs::path folder = fs::weakly_canonical(project.parent_path(), error);
    const fs::path inFolder = fs::weakly_canonical(file, error).lexically_relative(folder);
    return !fs::is_symlink(file, error) && !inFolder.empty() && *inFolder.begin() != "..";
  }

  // True if the baseline was written, so that there is nothing to report.
  bool CompareWithBaseline(Report& report) {
    const std::optional<Baseline> baseline = FindBaseline();
    if (!baseline || answer_.status != 0) {
      return false;
    }
    const fs::path* const path = &baseline->path;
    std::error_code error;
    if (!fs::exists(*path, error)) {
      if (!baseline->mayBeMade) {
        Complain(ShownPath(*path), {"baseline.outside", {}});
        return true;
      }
      if (WriteFileBytes(*path, WriteBaseline(report.workspace, report.findings, *path))) {
        Complain(ShownPath(*path), {"problem.unwritable", {}});
        return true;
      }
      answer_.error +=
          LineOf({"baseline.written.#", {std::to_string(report.findings.size()), ShownPath(*path)}},
                 texts_);
      return true;
    }
    const std::optional<std::string> bytes = ReadFileBytes(*path);
    if (!bytes) {
      Complain(ShownPath(*path), {"problem.unreadable", {}});
    } else if (const auto fault =
                   RemoveAccepted(*bytes, report.workspace, *path, report.findings)) {
      Complain(ShownPath(*path), fault->sentence);
    }
    return false;
  }

  FailOn FailsOn() const {
    if (options_.failOn) {
      return FindFailOn(*options_.failOn).value_or(FailOn::kError);
    }
    for (const auto& project : projects_.All()) {
      if (project->failOn) {
        return *project->failOn;
      }
    }
    return FailOn::kError;
  }

  void Print(const Report& report) {
    const std::string& format = options_.format;
    answer_.output = format == "json"     ? JsonReport(report)
                     : format == "sarif"  ? SarifReport(report)
                     : format == "github" ? GithubReport(report)
                                          : TextReport(report, texts_, style_);
    const Summary summary = SummaryOf(report);
    // By FailOn.
    const std::array<std::size_t, 4> failing = {0, summary.All(), summary.errors + summary.warnings,
                                                summary.errors};
    if (answer_.status == 0 && failing[static_cast<std::size_t>(FailsOn())] > 0) {
      answer_.status = kStatusFound;
    }
  }

  void WriteHtml(const Report& report) {
    if (options_.html) {
      for (const PageProblem& problem :
           WritePage(report, problems_, fs::u8path(*options_.html), texts_)) {
        Complain(problem.path, problem.reason);
      }
    }
  }

  const LintOptions& options_;
  const Texts& texts_;
  TextStyle style_;
  const std::function<void(double)>& progress_;
  std::array<std::optional<Level>, kRuleCount> optionLevels_;  // of --rule
  Projects projects_;
  std::vector<const Project*> projectOf_;  // by file
  std::set<const IgnoredFinding*> foundAgain_;
  std::vector<PageProblem> problems_;
  Answer answer_;
};

}  // namespace

Answer Lint(const LintOptions& options, const Texts& texts, TextStyle terminal,
            const std::function<void(double)>& progress) {
  if (options.explained) {
    return ExplainRule(*options.explained, texts, terminal.width);
  }
  return LintRun(options, texts, terminal, progress).Run();
}

}  // namespace KelmoLibs::Lang
