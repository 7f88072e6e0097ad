#ifndef ZLIBVIDEO_TESTS_TOOL_TOOLFIXTURE_H
#define ZLIBVIDEO_TESTS_TOOL_TOOLFIXTURE_H

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace zlibvideo {

struct Outcome {
  int status = 0;
  std::string text;  // standard output and standard error
};

/// A script, and the begin of the program's message.
using Refusal = std::pair<std::string, std::string>;

/// A folder of its own for each test, and the program run in it by a shell.
class ToolFixture : public testing::Test {
 protected:
  ToolFixture() {
    std::string name = testing::TempDir() + "zlibvideo-XXXXXX";
    if (mkdtemp(name.data()) != nullptr) fFolder = name;
  }
  ~ToolFixture() override { std::filesystem::remove_all(fFolder); }

  /// `script` may call `zlibvideo`.
  Outcome Run(const std::string& script) const {
    const std::string command = "exec 2>&1; cd '" + fFolder.string() + "'; zlibvideo() { '" +
                                ZLIBVIDEO_PROGRAM + "' \"$@\"; }; " + script;
    Outcome outcome;
    std::FILE* pipe = popen(command.c_str(), "r");
    for (int c = 0; (c = std::fgetc(pipe)) != EOF;) outcome.text += static_cast<char>(c);
    outcome.status = WEXITSTATUS(pclose(pipe));
    return outcome;
  }
  std::string Path(const std::string& name) const { return (fFolder / name).string(); }
  std::string ReadFile(const std::string& name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  /// Names of all files below the folder.
  std::set<std::string> Files() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(fFolder)) {
      if (!entry.is_directory()) names.insert(entry.path().lexically_relative(fFolder).string());
    }
    return names;
  }
  /// Every script must end with status 1 and a message, and must leave all files as they were.
  void ExpectRefusals(const std::vector<Refusal>& refusals) const {
    const auto contents = [this] {
      std::map<std::string, std::string> all;
      for (const std::string& name : Files()) all[name] = ReadFile(name);
      return all;
    };
    const auto before = contents();
    for (const auto& [script, complaint] : refusals) {
      const Outcome outcome = Run(script);
      EXPECT_EQ(1, outcome.status) << script;
      EXPECT_EQ(0u, outcome.text.find("zlibvideo: " + complaint)) << script << outcome.text;
      EXPECT_TRUE(contents() == before) << script;
    }
  }

  std::filesystem::path fFolder;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TESTS_TOOL_TOOLFIXTURE_H
