#include "tools/decode/OutputFormat.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace zlibvideo {
namespace {

struct FormatName {
  const char* name;
  OutputFormat format;
};

constexpr FormatName kNames[] = {
    {"png", OutputFormat::kPng},   {"bgra", OutputFormat::kBgra}, {"hash", OutputFormat::kHash},
    {"null", OutputFormat::kNull}, {"webp", OutputFormat::kWebp}, {"y4m", OutputFormat::kY4m},
};
/// Extensions that are not the name of a format.
constexpr FormatName kMoreExtensions[] = {
    {"hashes", OutputFormat::kHash},
    {"raw", OutputFormat::kBgra},
};

template <typename Table>
std::optional<OutputFormat> Find(const Table& table, const std::string& name) {
  for (const FormatName& entry : table) {
    if (name == entry.name) return entry.format;
  }
  return std::nullopt;
}

}  // namespace

std::optional<OutputFormat> FormatByName(const std::string& name) {
  return Find(kNames, name);
}

std::optional<OutputFormat> FormatByExtension(const std::string& fileName) {
  std::string extension = std::filesystem::path(fileName).extension().string();
  if (extension.empty()) return std::nullopt;
  extension.erase(0, 1);
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  const std::optional<OutputFormat> format = Find(kNames, extension);
  return format.has_value() ? format : Find(kMoreExtensions, extension);
}

std::string FormatNames() {
  std::string names;
  for (const FormatName& entry : kNames) {
    if (!names.empty()) names += '|';
    names += entry.name;
  }
  return names;
}

}  // namespace zlibvideo
