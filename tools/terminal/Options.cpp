#include "tools/terminal/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <thread>

#include "tools/terminal/ParseNumber.h"

namespace zlibvideo {
CLI::Validator FileNameValidator() {
  return CLI::Validator(
      [](const std::string& name) {
        return name.empty() ? std::string("the name is empty") : std::string();
      },
      "", "file name");
}

CLI::Validator RangeValidator(std::uint64_t min, std::uint64_t max) {
  const std::string range = max == kNoMaximum
                                ? ", " + std::to_string(min) + " or more"
                                : " from " + std::to_string(min) + " to " + std::to_string(max);
  return CLI::Validator(
      [min, max, range](const std::string& text) {
        std::uint64_t number = 0;
        const bool isOctal = text.size() > 1 && text.front() == '0';
        if (!isOctal && ParseNumber(text, min, max, &number)) return std::string();
        return "\"" + text + "\" is not a whole number" + range;
      },
      "", "range");
}

void AddJobsOption(CLI::App* command, const std::string& work, unsigned int* jobs) {
  constexpr unsigned int kMaxJobs = 256;
  *jobs = std::clamp(std::thread::hardware_concurrency(), 1U, kMaxJobs);
  command
      ->add_option("-j,--jobs", *jobs,
                   "Threads that " + work + ", by default\nas many as processors")
      ->check(RangeValidator(1, kMaxJobs))
      ->type_name("N");
}

}  // namespace zlibvideo
