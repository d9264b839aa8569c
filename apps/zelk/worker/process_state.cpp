// SPDX-License-Identifier: Apache-2.0
#include "worker/process_state.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "exchange/descriptor.h"

namespace cli {
namespace {

constexpr std::size_t kNeededDescriptors = 16;

mode_t current_mask() {
  const mode_t mask = umask(0);
  umask(mask);
  return mask;
}

std::vector<std::string> current_environment() {
  std::vector<std::string> variables;
  for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
    variables.emplace_back(*variable);
  }
  return variables;
}

void set_environment(const std::vector<std::string>& variables) {
  clearenv();
  for (const std::string& variable : variables) {
    const std::size_t equals = variable.find('=');
    if (equals == std::string::npos) continue;
    setenv(variable.substr(0, equals).c_str(), variable.c_str() + equals + 1, 1);
  }
}

bool are_equal(const struct rlimit& first, const struct rlimit& second) {
  return first.rlim_cur == second.rlim_cur && first.rlim_max == second.rlim_max;
}

bool has_descriptors_left() {
  std::array<Descriptor, kNeededDescriptors> copies;
  return std::all_of(copies.begin(), copies.end(), [](Descriptor& copy) {
    copy = Descriptor(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0));
    return copy.is_open();
  });
}

}  // namespace

ProcessState::ProcessState(std::string folder)
    : _folder(std::move(folder)),
      _mask(current_mask()),
      _locale(std::setlocale(LC_ALL, nullptr)),
      _thread_locale(uselocale(nullptr)),
      _environment(current_environment()) {
  for (std::size_t which = 0; which < _limits.size(); ++which) {
    getrlimit(static_cast<__rlimit_resource>(which), &_limits[which]);
  }
  if (chdir(_folder.c_str()) != 0) throw std::runtime_error("the scratch folder is gone");
}

void ProcessState::restore() const {
  if (chdir(_folder.c_str()) != 0) throw std::runtime_error("the scratch folder is gone");
  umask(_mask);
  if (_locale != std::setlocale(LC_ALL, nullptr)) std::setlocale(LC_ALL, _locale.c_str());
  if (_thread_locale != uselocale(nullptr)) uselocale(_thread_locale);
  if (_environment != current_environment()) set_environment(_environment);
  restore_limits();
  if (!has_descriptors_left()) throw std::runtime_error("the engine used up the descriptors");
}

void ProcessState::restore_limits() const {
  for (std::size_t which = 0; which < _limits.size(); ++which) {
    const auto resource = static_cast<__rlimit_resource>(which);
    struct rlimit current = {};
    getrlimit(resource, &current);
    if (!are_equal(current, _limits[which]) && setrlimit(resource, &_limits[which]) != 0) {
      throw std::runtime_error("the engine changed the limits of its process");
    }
  }
}

}  // namespace cli
