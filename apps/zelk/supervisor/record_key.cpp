// SPDX-License-Identifier: Apache-2.0
#include "supervisor/record_key.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

namespace cli {
namespace {

std::filesystem::path seen_from(const std::string& folder, const std::string& path) {
  std::error_code ignored;
  const auto plain = [&](const std::string& name) {
    return std::filesystem::absolute(name, ignored).lexically_normal();
  };
  return plain(path).lexically_relative(plain(folder));
}

}  // namespace

std::string place_of(const InputDocument& document, const std::string& folder) {
  if (document.targets.empty()) return "";
  return seen_from(folder, document.targets.front().path).replace_extension().string();
}

std::string order_text(const InputDocument& document, const std::vector<int>& pages,
                       bool page_break, const std::string& folder) {
  std::string text = page_break ? "page-break\n" : "";
  for (const InputDocument::Target& target : document.targets) {
    text += fmt::format("{} {}\n", static_cast<int>(target.format),
                        seen_from(folder, target.path).string());
  }
  for (const int page : pages) text += fmt::format(" {}", page);
  return digest_of_text(text);
}

}  // namespace cli
