// SPDX-License-Identifier: Apache-2.0
#include "options/usage_mistake.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>
#include <vector>

#include "exchange/names.h"

namespace cli {
namespace {

// How many letters have to be changed, added, left out or swapped with their neighbour.
std::size_t distance(std::string_view from, std::string_view to) {
  std::vector<std::vector<std::size_t>> cost(from.size() + 1,
                                             std::vector<std::size_t>(to.size() + 1));
  for (std::size_t i = 0; i <= from.size(); ++i) {
    for (std::size_t j = 0; j <= to.size(); ++j) {
      if (i == 0 || j == 0) {
        cost[i][j] = i + j;
        continue;
      }
      const bool same = from[i - 1] == to[j - 1];
      cost[i][j] =
          std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, cost[i - 1][j - 1] + (same ? 0U : 1U)});
      const bool swapped = i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
      if (swapped) cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
    }
  }
  return cost[from.size()][to.size()];
}

// The option that was meant, "--format"; empty when none is near.
std::string nearest_option(const CLI::App& app, std::string_view written) {
  constexpr std::size_t kNear = 2;
  std::string nearest;
  std::size_t least = kNear + 1;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) {
      const std::string flag = "--" + name;
      const bool is_beginning = written.size() > 4 && flag.starts_with(written);
      const std::size_t steps = is_beginning ? 1 : distance(written, flag);
      if (steps >= least) continue;
      least = steps;
      nearest = flag;
    }
  }
  return nearest;
}

std::string unknown_option(const CLI::App& app) {
  const std::vector<std::string> extras = app.remaining();
  const auto option = std::find_if(extras.begin(), extras.end(), [](const std::string& word) {
    return word.size() > 1 && word.starts_with('-');
  });
  if (option == extras.end()) return "";
  const std::string name = option->substr(0, option->find('='));
  const std::string nearest = name.starts_with("--") ? nearest_option(app, name) : "";
  return fmt::format("there is no option {}{}", name,
                     nearest.empty() ? "" : ", " + nearest + " may be meant");
}

std::string reason_of(const CLI::App& app, const CLI::ParseError& error) {
  std::string text = error.what();
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
    const std::string unknown = unknown_option(app);
    return unknown.empty() ? text : unknown;
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    return text.substr(0, text.find(": ")) +
           (text.ends_with(" missing") ? ": its value is missing" : ": is given more than once");
  }
  return text;
}

}  // namespace

std::string usage_mistake(const CLI::App& app, const CLI::ParseError& error) {
  return line_name(reason_of(app, error)) + "; zelk --help lists the options";
}

}  // namespace cli
