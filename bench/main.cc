/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * velkor-bench [POSTINGS...] measures the library with caches of so many postings, by default
 * 10,000, 100,000 and 1,000,000. Every case and every yardstick runs in a process of its own; a
 * number is the best of some rounds.
 */
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>

#include "bench/cases.h"
#include "bench/measure.h"
#include "bench/posting_data.h"

namespace velkor::bench {
namespace {

/** A directory for the files of the run, removed at its end. */
class WorkDirectory {
public:
  WorkDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "velkor-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
      throw std::runtime_error("cannot make " + pattern);
    path_ = pattern;
  }
  ~WorkDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  WorkDirectory(const WorkDirectory &) = delete;
  WorkDirectory &operator=(const WorkDirectory &) = delete;

  [[nodiscard]] const std::filesystem::path &path() const { return path_; }

private:
  std::filesystem::path path_;
};

/** The measurements for one number of postings. */
class Run {
public:
  Run(const std::filesystem::path &work, std::int32_t postings)
      : place_{(work / std::to_string(postings)).string(), postings},
        rounds_(std::clamp(1'000'000 / postings, 1, 5)) {
    std::filesystem::create_directories(place_.cache());
    write_document();
    text_mebibytes_ =
        static_cast<double>(std::filesystem::file_size(place_.document())) / (1 << 20);
  }

  void measure() const {
    const double compress =
        program({"pigz", "-9", "-p1", "-c", place_.document()}, place_.cache_file());
    const double stream =
        program({"xmllint", "--stream", "--noout", place_.document()}, "/dev/null");
    std::printf("\n%d postings, %.1f MiB of XML\n", place_.postings, text_mebibytes_);
    std::printf("  %-8s %9s  %-24s %9s  %6s  %s\n", "case", "CPU", "yardstick", "CPU", "ratio",
                "peak memory on top");
    print("load", own("load"), "xmllint --stream", stream);
    print("save", own("save"), "pigz -9 -p1", compress);
    print("merge", own("merge"), nullptr, 0);
    const double like = own("like").seconds;
    print("filter", own("filter"), "SQLite LIKE", like);
    print("again", own("again"), "SQLite LIKE", like);
    print("display", own("display"), "copy of the document", own("copy").seconds);
  }

private:
  void write_document() const {
    std::ofstream file(place_.document(), std::ios::binary);
    PostingData data;
    file << "<?xml version=\"1.0\"?>\n<Events>\n";
    for (std::int32_t number = 0; number < place_.postings; ++number)
      file << data.next_element();
    file << "</Events>\n" << std::flush;
    if (!file)
      throw std::runtime_error("cannot write " + place_.document());
  }

  [[nodiscard]] double program(const std::vector<std::string> &arguments,
                               const std::string &output) const {
    double best = run_program(arguments, output);
    for (int round = 1; round < rounds_; ++round)
      best = std::min(best, run_program(arguments, output));
    return best;
  }

  /** Runs a case of this program in a process of its own. */
  [[nodiscard]] Cost own(const std::string &name) const {
    Cost best = run_once(name);
    for (int round = 1; round < rounds_; ++round) {
      const Cost cost = run_once(name);
      best = {std::min(best.seconds, cost.seconds), std::min(best.mebibytes, cost.mebibytes)};
    }
    return best;
  }

  [[nodiscard]] Cost run_once(const std::string &name) const {
    const std::string output = place_.directory + "/result";
    run_program(
        {"/proc/self/exe", "--case", name, place_.directory, std::to_string(place_.postings)},
        output);
    Cost cost;
    std::ifstream(output) >> cost.seconds >> cost.mebibytes;
    return cost;
  }

  void print(const char *name, const Cost &cost, const char *yardstick, double seconds) const {
    std::printf("  %-8s %7.3f s  ", name, cost.seconds);
    if (yardstick != nullptr)
      std::printf("%-24s %7.3f s  %6.2f", yardstick, seconds, cost.seconds / seconds);
    else
      std::printf("%-24s %9s  %6s", "", "", "");
    std::printf("  %.1f MiB (%.2f of the XML)\n", cost.mebibytes, cost.mebibytes / text_mebibytes_);
    std::fflush(stdout);
  }

  Place place_;
  int rounds_;
  double text_mebibytes_ = 0;
};

std::int32_t postings_of(const std::string &argument) {
  const long number = std::strtol(argument.c_str(), nullptr, 10);
  if (number < 100 || number > 10'000'000)
    throw std::runtime_error("not a number of postings from 100 to 10000000: " + argument);
  return static_cast<std::int32_t>(number);
}

void run(const std::vector<std::string> &arguments) {
  if (arguments.size() == 4 && arguments[0] == "--case") {
    const Cost cost = run_case(arguments[1], {arguments[2], postings_of(arguments[3])});
    std::printf("%f %f\n", cost.seconds, cost.mebibytes);
    return;
  }
  std::vector<std::int32_t> sizes;
  std::ranges::transform(arguments, std::back_inserter(sizes), postings_of);
  if (sizes.empty())
    sizes = {10'000, 100'000, 1'000'000};
  for (const std::int32_t postings : sizes) {
    const WorkDirectory work;
    Run(work.path(), postings).measure();
  }
}

}  // namespace
}  // namespace velkor::bench

int main(int count, char **arguments) {
  try {
    velkor::bench::run({arguments + 1, arguments + count});
    return 0;
  } catch (const std::exception &fault) {
    std::fprintf(stderr, "velkor-bench: %s\n", fault.what());
    return 1;
  }
}
