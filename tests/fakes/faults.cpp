// SPDX-License-Identifier: Apache-2.0
#include "fakes/faults.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <clocale>
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

// What is the process's own, and so that of all later pages.
void spoil_process(int page_width) {
  if (has_fault("descriptors", page_width)) {
    while (open("/dev/null", O_RDONLY) >= 0) continue;
  }
  if (has_fault("folder", page_width)) static_cast<void>(!chdir("/"));
  if (has_fault("umask", page_width)) umask(0777);
  if (has_fault("locale", page_width)) std::setlocale(LC_ALL, "C.UTF-8");
  if (has_fault("environment", page_width)) setenv("QV_LANGUAGES", "spoilt", 1);
  if (has_fault("limits", page_width)) {
    const struct rlimit nothing = {0, 0};
    setrlimit(RLIMIT_FSIZE, &nothing);
    setrlimit(RLIMIT_NOFILE, &nothing);
  }
}

// Leaves a process behind that nothing but its environment ties to this one.
void leave_daemon() {
  if (const pid_t child = fork(); child != 0) {
    if (child > 0) waitpid(child, nullptr, 0);
    return;
  }
  setsid();
  if (fork() == 0) {
    for (int descriptor = 0; descriptor <= kLastDescriptor; ++descriptor) close(descriptor);
    if (chdir("/") == 0) sleep(600);
  }
  _exit(0);
}

void leave_child() {
  if (fork() == 0) {
    sleep(600);
    _exit(0);
  }
}

void replace_document() {
  std::rename(in_folder("other.pdf").c_str(), in_folder("document.pdf").c_str());
}

void shrink_document() {
  static_cast<void>(!truncate(in_folder("document.pdf").c_str(), 100));
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
  if (has_fault("paint", page_width))
    std::printf(
        "\x1b[2J\aGr\xc3\xb6\xc3\x9f"
        "e\n");
  if (has_fault("scribble", page_width)) scribble();
  if (has_fault("close", page_width)) {
    for (int descriptor = 0; descriptor <= kLastDescriptor; ++descriptor) close(descriptor);
  }
  if (has_fault("exit", page_width)) std::exit(0);
  if (has_fault("once", page_width)) crash_once();
  spoil_process(page_width);
  if (has_fault("daemon", page_width)) leave_daemon();
  if (has_fault("child", page_width)) leave_child();
  if (has_fault("replace", page_width)) replace_document();
  if (has_fault("shrink", page_width)) shrink_document();
  return has_fault("refuse", page_width) ? 5 : 0;
}
