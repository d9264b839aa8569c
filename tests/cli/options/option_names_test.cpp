// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "options/options.h"

namespace {

using Names = std::set<std::string>;

std::string content_of(const std::string& path) {
  std::ifstream file(std::string(ZELK_SOURCE_DIR "/") + path);
  std::ostringstream content;
  content << file.rdbuf();
  EXPECT_NE(content.str(), "") << path;
  return content.str();
}

Names names_in(const std::string& text, const std::string& pattern) {
  const std::regex expression(pattern);
  Names names;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
       ++match) {
    names.insert(match->str(1));
  }
  return names;
}

// The options that the program has, for example "--jobs" and "-j".
Names names_in_help() {
  const char* const words[] = {"zelk", "--help"};
  std::istringstream help(cli::parse_options(2, words).message);
  Names names;
  for (std::string line; std::getline(help, line);) {
    if (!line.starts_with("  -")) continue;
    const std::string flags = line.substr(0, line.find("  ", 2));
    names.merge(names_in(flags, "(--?[a-z][a-z-]*)"));
  }
  return names;
}

TEST(OptionNames, HelpHasThem) {
  const Names names = names_in_help();
  EXPECT_GT(names.size(), 30U);
  for (const char* name : {"--jobs", "-j", "--output", "-o", "--progress", "-h"}) {
    EXPECT_TRUE(names.contains(name)) << name;
  }
}

TEST(OptionNames, ManualPageIsAboutTheSame) {
  std::string options = content_of("docs/zelk.1");
  options = options.substr(options.find("\n.SH OPTIONS"));
  options = options.substr(0, options.find("\n.SH", 1));
  options = std::regex_replace(options, std::regex("\\\\-"), "-");
  std::string tags;
  for (std::smatch tag; std::regex_search(options, tag, std::regex("\n\\.TP\n(.*)\n"));
       options = "\n" + tag.suffix().str()) {
    tags += tag.str(1) + "\n";
  }
  EXPECT_EQ(names_in(tags, "\\\\fB(--?[a-z][a-z-]*)\\\\fR"), names_in_help());
}

TEST(OptionNames, CompletionOffersTheSame) {
  std::string script = content_of("packaging/bash-completion/zelk");
  const size_t start = script.find("options=\"");
  ASSERT_NE(start, std::string::npos);
  script = script.substr(start, script.find('"', start + 9) - start);
  EXPECT_EQ(names_in(script, "(?:[\\s\"])(--?[a-z][a-z-]*)"), names_in_help());
}

}  // namespace
