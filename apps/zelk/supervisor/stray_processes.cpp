// SPDX-License-Identifier: Apache-2.0
#include "supervisor/stray_processes.h"

#include <unistd.h>

#include <charconv>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

namespace cli {
namespace {

bool is_of(const std::filesystem::path& process, std::string_view variable) {
  std::ifstream environment(process / "environ", std::ios::binary);
  for (std::string line; std::getline(environment, line, '\0');) {
    if (!line.starts_with(variable)) continue;
    if (line.size() == variable.size() || line[variable.size()] == '/') return true;
  }
  return false;
}

std::vector<pid_t> processes_of(std::string_view variable) {
  std::vector<pid_t> found;
  std::error_code error;
  for (std::filesystem::directory_iterator entry("/proc", error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    pid_t number = 0;
    const auto [stop, mistake] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (mistake != std::errc() || *stop != '\0' || number == getpid()) continue;
    if (is_of(entry->path(), variable)) found.push_back(number);
  }
  return found;
}

}  // namespace

void end_processes_of(const std::string& scratch) {
  // One that is being ended may just have started another.
  constexpr int kMostRounds = 100;
  constexpr timespec kMoment = {0, 10'000'000};
  const std::string variable = std::string(kScratchVariable) + "=" + scratch;
  for (int round = 0; round < kMostRounds; ++round) {
    const std::vector<pid_t> found = processes_of(variable);
    if (found.empty()) return;
    for (const pid_t process : found) kill(process, SIGKILL);
    nanosleep(&kMoment, nullptr);
  }
}

}  // namespace cli
