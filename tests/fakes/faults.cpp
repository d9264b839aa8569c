// SPDX-License-Identifier: Apache-2.0
#include "fakes/faults.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr int kLastDescriptor = 1023;

std::string in_folder(const char* name) {
  const char* const folder = std::getenv("FAKE_FOLDER");
  return std::string(folder == nullptr ? "." : folder) + "/" + name;
}

void crash() {
  volatile int* nowhere = nullptr;
  *nowhere = 1;
}

void allocate() {
  for (;;) {
    const std::size_t size = std::size_t{64} << 20;
    char* const memory = static_cast<char*>(std::malloc(size));
    if (memory == nullptr) crash();
    std::memset(memory, 1, size);
  }
}

// As a C++ library that catches nothing: most of what it takes is never touched.
void reserve() noexcept {
  for (;;) std::memset(new char[std::size_t{64} << 20], 1, 1);
}

void scribble() {
  const std::string garbage(100, '\xA5');
  for (int descriptor = 0; descriptor <= kLastDescriptor; ++descriptor) {
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    static_cast<void>(!write(descriptor, garbage.data(), garbage.size()));
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
  }
}

void print() {
  const std::string line(1000, 'x');
  for (int count = 0; count < 1000; ++count) {
    std::puts(line.c_str());
    std::fputs(line.c_str(), stderr);
  }
  std::fflush(stdout);
}

void crash_once() {
  const int created = open(in_folder("crashed").c_str(), O_CREAT | O_EXCL | O_WRONLY, 0600);
  if (created >= 0) crash();
}

bool can_open(const char* name, int flags) {
  const int file = open(in_folder(name).c_str(), flags, 0600);
  if (file >= 0) close(file);
  return file >= 0;
}

bool can_run_a_program() {
  const pid_t child = fork();
  if (child == 0) {
    execl("/bin/true", "true", nullptr);
    _exit(1);
  }
  int status = 1;
  waitpid(child, &status, 0);
  return status == 0;
}

// 0 when none of these faults is asked for.
int break_out(int page_width) {
  const auto result = [](bool succeeded) { return succeeded ? 71 : 70; };
  if (has_fault("socket", page_width)) return result(socket(AF_INET, SOCK_STREAM, 0) >= 0);
  if (has_fault("exec", page_width)) return result(can_run_a_program());
  if (has_fault("spy", page_width)) return result(can_open("secret", O_RDONLY));
  if (has_fault("litter", page_width)) return result(can_open("litter", O_WRONLY | O_CREAT));
  if (has_fault("signal", page_width)) return result(kill(getppid(), 0) == 0);
  return 0;
}

}  // namespace

bool has_fault(const char* name, int page_width) {
  const char* const listed = std::getenv("FAKE_FAULTS");
  if (listed == nullptr) return false;
  const std::string wanted = "," + std::string(name) + "@" + std::to_string(page_width) + ",";
  return ("," + std::string(listed) + ",").find(wanted) != std::string::npos;
}

int commit_faults(int page_width) {
  if (has_fault("crash", page_width)) crash();
  if (has_fault("hang", page_width)) {
    for (;;) pause();
  }
  if (has_fault("allocate", page_width)) allocate();
  if (has_fault("reserve", page_width)) reserve();
  if (has_fault("print", page_width)) print();
  if (has_fault("scribble", page_width)) scribble();
  if (has_fault("close", page_width)) {
    for (int descriptor = 0; descriptor <= kLastDescriptor; ++descriptor) close(descriptor);
  }
  if (has_fault("exit", page_width)) std::exit(0);
  if (has_fault("once", page_width)) crash_once();
  if (const int code = break_out(page_width)) return code;
  return has_fault("refuse", page_width) ? 5 : 0;
}
