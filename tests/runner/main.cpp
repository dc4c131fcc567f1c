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
#include <sstream>

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
      if (++place == count) throw Mistake{0, word + " needs a value"};
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
      throw Mistake{0, "is no option: " + word};
    } else {
      options.files.push_back(word);
    }
  }
  if (options.files.empty() || options.company.empty()) throw Mistake{0, "--company and a file"};
  return options;
}

std::string content_of(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw Mistake{0, path + " cannot be read"};
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

/// From the end to the beginning, so that places before an edit stay what they are.
void rewrite(Text text, std::vector<Edit> edits) {
  std::stable_sort(edits.begin(), edits.end(),
                   [](const Edit& one, const Edit& other) { return one.first > other.first; });
  auto& lines = text.lines;
  for (const Edit& edit : edits) {
    const auto first = lines.begin() + edit.first - 1;
    const auto last = lines.begin() + edit.last;
    if (!edit.lines.empty()) {
      lines.insert(lines.erase(first, last), edit.lines.begin(), edit.lines.end());
      continue;
    }
    const auto found = std::find_if(first, last, [&](const std::string& line) {
      return line.find(edit.from) != std::string::npos;
    });
    if (found == last) throw Mistake{edit.first, "cannot be rewritten: " + edit.from};
    found->replace(found->find(edit.from), edit.from.size(), edit.to);
  }
  std::ofstream file(text.path);
  for (const std::string& line : lines) {
    for (const std::string& piece : wrapped(line)) file << piece << '\n';
  }
}

struct Count {
  int passed = 0, failed = 0;
};

void report(const Text& text, const Scenario& scenario, const Play& play, int line,
            const std::string& what) {
  std::cout << text.path << ':' << line << ": " << scenario.name.text << " (" << play.database
            << ")\n  " << what << '\n';
}

Count perform(const Text& text, const Room& room, Play& play, const Options& options) {
  Count count;
  for (const Scenario& scenario : text.scenarios) {
    if (!options.only.empty() && scenario.name.text != options.only) continue;
    try {
      Stage(room, play).perform(scenario);
      ++count.passed;
      continue;
    } catch (const Difference& difference) {
      report(text, scenario, play, difference.line, difference.what);
    } catch (const Mistake& mistake) {
      report(text, scenario, play, mistake.line, mistake.what);
    }
    ++count.failed;
  }
  return count;
}

Count perform(const std::string& path, const Options& options) {
  const Text text = read_text(path);
  if (text.scenarios.empty()) throw Mistake{0, "holds no scenario"};
  Room room;
  room.define(text);
  const std::string company = content_of(options.company);
  Count all;
  for (const std::string& database : testing::databases()) {
    Play play{database, company, !options.unwatched, options.rewrite};
    const Count count = perform(text, room, play, options);
    all.passed += count.passed;
    all.failed += count.failed;
    if (play.skipped > 0) std::cout << play.skipped << " lines need a watcher and were skipped\n";
    if (!play.edits.empty()) {
      rewrite(text, play.edits);
      std::cout << path << ": " << play.edits.size() << " places rewritten\n";
      break;
    }
  }
  if (all.passed + all.failed == 0) throw Mistake{0, "holds no scenario of that name"};
  if (options.only.empty() && all.failed == 0) room.check_used();
  return all;
}

int run(int argument_count, char** arguments) {
  Count all;
  std::string path = "ombrix_scenarios";
  try {
    const Options options = options_from(argument_count, arguments);
    for (const std::string& file : options.files) {
      path = file;
      const Count count = perform(file, options);
      all.passed += count.passed;
      all.failed += count.failed;
    }
  } catch (const Mistake& mistake) {
    std::cout << path << ':' << mistake.line << ": " << mistake.what << '\n';
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
