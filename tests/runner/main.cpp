// Plays scenario files on each database:
//
//   ombrix_scenarios --company FILE [--only NAME] [--rewrite] [--unwatched] FILE...
//
// --rewrite puts what was seen in place of what was expected, for a person to read in the diff.
// --unwatched plays as a face without a watcher would, and says how many lines it skipped.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>

#include "runner/stage.h"

namespace ombrix::scenarios {
namespace {

struct Options {
  std::vector<std::string> files;
  std::string company, only;
  bool rewrite = false, unwatched = false;
};

Options options_from(int count, char** arguments) {
  Options options;
  for (int place = 1; place < count; ++place) {
    const std::string word = arguments[place];
    const auto next = [&] {
      if (++place == count) throw Finding{word + " needs a value"};
      return std::string(arguments[place]);
    };
    if (word == "--company") {
      options.company = next();
    } else if (word == "--only") {
      options.only = next();
    } else if (word == "--rewrite") {
      options.rewrite = true;
    } else if (word == "--unwatched") {
      options.unwatched = true;
    } else if (word.starts_with("--")) {
      throw Finding{"is no option: " + word};
    } else {
      options.files.push_back(word);
    }
  }
  if (options.files.empty() || options.company.empty()) throw Finding{"--company and a file"};
  return options;
}

/// Puts each edit into its lines, a line that became longer into several.
void rewrite(const Text& text, const std::vector<Edit>& edits) {
  std::vector<std::vector<std::string>> lines;  // what became of each
  for (const std::string& line : text.lines) lines.push_back({line});
  for (const Edit& edit : edits) {
    const auto first = lines.begin() + edit.first - 1, end = lines.begin() + edit.last;
    const auto holds = [&](const auto& now) {
      return now.size() == 1 && now[0].find(edit.from) != std::string::npos;
    };
    auto place = edit.lines.empty() ? std::find_if(first, end, holds) : end;
    if (place == end) {
      std::string all(first->front(), 0, first->front().find_first_not_of(' '));
      for (auto line = first; line != end; line->clear(), ++line) {
        for (const auto& part : *line) all += without_comment(part) + (line + 1 == end ? "" : " ");
      }
      place = first;
      *place = edit.lines.empty() ? std::vector{all} : edit.lines;
    }
    if (!edit.lines.empty()) continue;
    if (!holds(*place)) throw Finding{"cannot be rewritten: " + edit.from, edit.first};
    std::string& line = place->front();
    line.replace(line.find(edit.from), edit.from.size(), edit.to);
  }
  std::ofstream file(text.path);
  for (const auto& now : lines) {
    for (const std::string& line : now) {
      for (const std::string& piece : wrapped(line)) file << piece << '\n';
    }
  }
}

struct Count {
  int passed = 0, failed = 0;
};

Count perform(const Text& text, const Room& room, Play& play, const std::string& only) {
  Count count;
  for (const Scenario& scenario : text.scenarios) {
    if (!only.empty() && scenario.name.text != only) continue;
    try {
      Stage(room, play).perform(scenario);
      ++count.passed;
    } catch (const Finding& finding) {
      std::cout << text.path << ':' << finding.line << ": " << scenario.name.text << " ("
                << play.database << ")\n  " << finding.what << '\n';
      ++count.failed;
    }
  }
  return count;
}

Count perform(const std::string& path, const Options& options) {
  const Text text = read_text(path);
  if (text.scenarios.empty()) throw Finding{"holds no scenario"};
  const Room room(text);
  const std::string company = content_of(options.company);
  Count all;
  for (const std::string& database : testing::databases()) {
    Play play{database, company, !options.unwatched, options.rewrite};
    const Count count = perform(text, room, play, options.only);
    all.passed += count.passed;
    all.failed += count.failed;
    if (play.skipped > 0) std::cout << play.skipped << " lines need a watcher and were skipped\n";
    if (!play.edits.empty()) {
      rewrite(text, play.edits);
      std::cout << path << ": " << play.edits.size() << " places rewritten\n";
      break;
    }
  }
  if (all.passed + all.failed == 0) throw Finding{"holds no scenario of that name"};
  if (options.only.empty() && all.failed == 0) room.check_used();
  return all;
}

/// A file that cannot be played at all is one more that failed.
Count report(const std::string& path, const Options& options) {
  try {
    return perform(path, options);
  } catch (const Finding& finding) {
    std::cout << path << ':' << finding.line << ": " << finding.what << '\n';
    return {0, 1};
  }
}

int run(int argument_count, char** arguments) {
  Count all;
  try {
    const Options options = options_from(argument_count, arguments);
    for (const std::string& path : options.files) {
      const Count count = report(path, options);
      all.passed += count.passed;
      all.failed += count.failed;
    }
  } catch (const Finding& finding) {
    std::cout << finding.what << '\n';
    ++all.failed;
  }
  testing::drop_databases();
  std::cout << all.passed << " passed, " << all.failed << " failed\n";
  return all.failed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace ombrix::scenarios

int main(int count, char** arguments) {
  return ombrix::scenarios::run(count, arguments);
}
