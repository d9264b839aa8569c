// SPDX-License-Identifier: Apache-2.0
#include "output.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace cli {
namespace {

// The unfinished file, where a signal handler can reach it.
char unfinished_file[PATH_MAX];

extern "C" void remove_unfinished_file(int signal_number) {
  unlink(unfinished_file);
  raise(signal_number);  // the default action is back in place: the process ends by the signal
}

void remove_on_signal(const std::string& path) {
  if (path.size() >= sizeof unfinished_file) return;
  std::memcpy(unfinished_file, path.c_str(), path.size() + 1);
  struct sigaction action = {};
  action.sa_handler = remove_unfinished_file;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal_number : {SIGHUP, SIGINT, SIGTERM}) {
    struct sigaction current = {};
    sigaction(signal_number, nullptr, &current);
    if (current.sa_handler != SIG_IGN) sigaction(signal_number, &action, nullptr);
  }
}

[[noreturn]] void fail(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

// The permissions that a plain create would leave: those of the file that is replaced, else the
// usual.
mode_t permissions_for(bool exists, const struct stat& existing) {
  if (exists) return existing.st_mode & 07777;
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

int claim_standard_output() {
  const int results = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0) {
    // Standard error is closed. Both numbers must be taken, or the next file opened would get them.
    for (const int standard : {STDOUT_FILENO, STDERR_FILENO}) {
      const int nowhere = open("/dev/null", O_WRONLY);
      dup2(nowhere, standard);
      if (nowhere > STDERR_FILENO) close(nowhere);
    }
  }
  std::setvbuf(stdout, nullptr, _IONBF, 0);  // keeps the order among messages on standard error
  return results;
}

void silence_decoders() {
  using SetHandler = void* (*)(void*);
  for (const char* symbol : {"TIFFSetErrorHandler", "TIFFSetWarningHandler"}) {
    // Found only where the picture library has libtiff below it as a library of its own.
    const auto set_handler = reinterpret_cast<SetHandler>(dlsym(RTLD_DEFAULT, symbol));
    if (set_handler != nullptr) set_handler(nullptr);
  }
}

Output::Output(int descriptor) : _descriptor(descriptor), _path("standard output") {}

Output::Output(const std::string& path) : _path(path) {
  struct stat existing = {};
  const bool exists = stat(path.c_str(), &existing) == 0;
  if (exists && !S_ISREG(existing.st_mode)) {
    _descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (_descriptor < 0) fail(_path);
    return;
  }
  if (exists && access(path.c_str(), W_OK) != 0) fail(_path);

  // A link keeps its place; the file that it names is replaced.
  const std::filesystem::path target =
      exists ? std::filesystem::canonical(path) : std::filesystem::path(path);
  _path = target.string();
  std::string temporary = (target.parent_path() / ".zelk-XXXXXX").string();
  _descriptor = mkostemp(temporary.data(), O_CLOEXEC);
  if (_descriptor < 0) fail(_path);
  _temporary_path = temporary;
  remove_on_signal(_temporary_path);
  if (fchmod(_descriptor, permissions_for(exists, existing)) != 0) fail(_path);
}

Output::~Output() {
  if (_descriptor >= 0) close(_descriptor);
  if (!_temporary_path.empty()) unlink(_temporary_path.c_str());
}

void Output::write(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(_descriptor, text.data(), text.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      fail(_path);
    }
    text.remove_prefix(static_cast<size_t>(written));
  }
}

void Output::finish() {
  if (_temporary_path.empty()) {
    close_descriptor();
    return;
  }
  if (fsync(_descriptor) != 0) fail(_path);
  close_descriptor();
  if (rename(_temporary_path.c_str(), _path.c_str()) != 0) fail(_path);
  _temporary_path.clear();
}

// Some file systems report a full disk only here.
void Output::close_descriptor() {
  const int descriptor = _descriptor;
  _descriptor = -1;
  if (descriptor >= 0 && close(descriptor) != 0) fail(_path);
}

bool same_file(const std::string& first, const std::string& second) {
  std::error_code ignored;
  return std::filesystem::equivalent(first, second, ignored);
}

}  // namespace cli
