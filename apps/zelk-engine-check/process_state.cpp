// SPDX-License-Identifier: Apache-2.0
#include "process_state.h"

#include <fmt/format.h>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace engine_check {
namespace {

int entries_in(const char* folder) {
  const std::filesystem::directory_iterator entries(folder);
  return static_cast<int>(std::distance(begin(entries), end(entries)));
}

std::string signal_settings() {
  std::string text;
  for (int signal = 1; signal < SIGRTMAX; ++signal) {
    struct sigaction action = {};
    if (sigaction(signal, nullptr, &action) != 0) continue;
    const auto handler = reinterpret_cast<std::size_t>(action.sa_handler);
    if (handler != 0) text += fmt::format(" {}={:x}", signal, handler);
  }
  return text;
}

}  // namespace

long resident_kib() {
  malloc_trim(0);
  std::ifstream file("/proc/self/statm");
  long total = 0;
  long resident = 0;
  file >> total >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

int thread_count() {
  return entries_in("/proc/self/task");
}

int descriptor_count() {
  return entries_in("/proc/self/fd");
}

bool is_mapped(const std::string& path) {
  const std::string real = std::filesystem::canonical(path).string();
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    if (line.ends_with(" " + real)) return true;
  }
  return false;
}

std::string host_settings() {
  const mode_t mask = umask(0);
  umask(mask);
  std::string text = fmt::format("directory {}, locale {}, mask {:o}, signals{}, environment",
                                 std::filesystem::current_path().string(),
                                 std::setlocale(LC_ALL, nullptr), mask, signal_settings());
  for (char** variable = environ; *variable != nullptr; ++variable) {
    text += fmt::format(" {}", *variable);
  }
  return text;
}

std::string standard_output() {
  std::fflush(stdout);
  std::string text(1 << 16, '\0');
  const ssize_t count = pread(STDOUT_FILENO, text.data(), text.size(), 0);
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return text;
}

}  // namespace engine_check
