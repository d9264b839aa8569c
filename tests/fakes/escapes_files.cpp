// SPDX-License-Identifier: Apache-2.0
#include <dirent.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/xattr.h>
#include <utime.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

#include "fakes/escapes.h"

namespace {

const std::string secret = in_fake_folder("secret");

bool can_open(const std::string& path, int flags) {
  const int file = open(path.c_str(), flags, 0600);
  if (file >= 0) close(file);
  return file >= 0;
}

// The descriptor that the document is read from; -1 when there is none.
int document_descriptor() {
  struct stat wanted = {};
  stat(in_fake_folder("document.pdf").c_str(), &wanted);
  for (int descriptor = 3; descriptor < 1024; ++descriptor) {
    struct stat info = {};
    if (fstat(descriptor, &info) == 0 && info.st_ino == wanted.st_ino) return descriptor;
  }
  return -1;
}

std::string document_link() {
  return "/proc/self/fd/" + std::to_string(document_descriptor());
}

bool read_file() {
  return can_open(secret, O_RDONLY);
}

bool list_folder() {
  DIR* const folder = opendir(in_fake_folder(".").c_str());
  if (folder != nullptr) closedir(folder);
  return folder != nullptr;
}

bool create_file() {
  const bool created = can_open(in_fake_folder("litter"), O_WRONLY | O_CREAT);
  unlink(in_fake_folder("litter").c_str());
  return created;
}

bool write_file() {
  return can_open(secret, O_WRONLY);
}

bool rename_file() {
  return rename(secret.c_str(), secret.c_str()) == 0 &&
         rename(secret.c_str(), in_fake_folder("renamed").c_str()) == 0 &&
         rename(in_fake_folder("renamed").c_str(), secret.c_str()) == 0;
}

bool make_folder() {
  return mkdir(in_fake_folder("folder").c_str(), 0700) == 0 &&
         rmdir(in_fake_folder("folder").c_str()) == 0;
}

bool write_document_by_descriptor() {
  return ftruncate(document_descriptor(), 0) == 0 || write(document_descriptor(), "x", 1) == 1;
}

bool open_document_for_writing() {
  return can_open(document_link(), O_WRONLY) || can_open(document_link(), O_RDWR);
}

// A second name of it in the scratch folder, where files may be written.
bool write_document_by_second_name() {
  struct stat wanted = {};
  stat(in_fake_folder("document.pdf").c_str(), &wanted);
  linkat(AT_FDCWD, document_link().c_str(), AT_FDCWD, "second", AT_SYMLINK_FOLLOW);
  bool found = false;
  DIR* const folder = opendir(".");
  while (const dirent* const entry = folder == nullptr ? nullptr : readdir(folder)) {
    found |= entry->d_ino == wanted.st_ino && can_open(entry->d_name, O_WRONLY);
  }
  if (folder != nullptr) closedir(folder);
  unlink("second");
  return found;
}

bool link_file() {
  const std::string other = in_fake_folder("link");
  const bool done = link(secret.c_str(), other.c_str()) == 0 ||
                    symlink(secret.c_str(), other.c_str()) == 0 ||
                    link(secret.c_str(), "link") == 0;
  unlink(other.c_str());
  unlink("link");
  return done;
}

bool truncate_file() {
  struct stat info = {};
  stat(secret.c_str(), &info);
  return truncate(secret.c_str(), info.st_size) == 0;
}

bool change_permissions() {
  struct stat info = {};
  stat(secret.c_str(), &info);
  const mode_t mode = info.st_mode & 07777;
  return chmod(secret.c_str(), mode) == 0 || fchmod(document_descriptor(), mode) == 0 ||
         fchmodat(AT_FDCWD, secret.c_str(), mode, 0) == 0 ||
         syscall(kFchmodat2, AT_FDCWD, secret.c_str(), mode, 0) == 0;
}

bool change_owner() {
  return chown(secret.c_str(), getuid(), getgid()) == 0 ||
         lchown(secret.c_str(), getuid(), getgid()) == 0 ||
         fchown(document_descriptor(), getuid(), getgid()) == 0 ||
         fchownat(AT_FDCWD, secret.c_str(), getuid(), getgid(), 0) == 0;
}

bool change_times() {
  const std::string document = document_link();
  return utimensat(AT_FDCWD, secret.c_str(), nullptr, 0) == 0 ||
         futimens(document_descriptor(), nullptr) == 0 || utime(document.c_str(), nullptr) == 0 ||
         utimes(secret.c_str(), nullptr) == 0 ||
         syscall(SYS_futimesat, AT_FDCWD, secret.c_str(), nullptr) == 0;
}

bool change_attributes() {
  const char* const name = secret.c_str();
  const int document = document_descriptor();
  return let_through(setxattr(name, "user.probe", "1", 1, 0)) ||
         let_through(lsetxattr(name, "user.probe", "1", 1, 0)) ||
         let_through(fsetxattr(document, "user.probe", "1", 1, 0)) ||
         let_through(removexattr(name, "user.probe")) ||
         let_through(lremovexattr(name, "user.probe")) ||
         let_through(fremovexattr(document, "user.probe")) ||
         let_through(syscall(kSetxattrat, AT_FDCWD, name, 0, "user.probe", nullptr, 0));
}

bool change_flags() {
  const int document = document_descriptor();
  int flags = 0;
  struct fsxattr attributes = {};
  return let_through(ioctl(document, FS_IOC_SETFLAGS, &flags)) ||
         let_through(ioctl(document, FS_IOC_FSSETXATTR, &attributes)) ||
         let_through(syscall(kFileSetattr, document, "", nullptr, 0, 0));
}

bool take_lease() {
  const bool taken = fcntl(document_descriptor(), F_SETLEASE, F_RDLCK) == 0;
  if (taken) fcntl(document_descriptor(), F_SETLEASE, F_UNLCK);
  return taken;
}

bool lock_document() {
  const int document = document_descriptor();
  const bool locked = flock(document, LOCK_EX | LOCK_NB) == 0;
  if (locked) flock(document, LOCK_UN);
  struct flock part = {};
  part.l_type = F_RDLCK;
  const bool locked_part =
      fcntl(document, F_SETLK, &part) == 0 || fcntl(document, F_OFD_SETLK, &part) == 0;
  part.l_type = F_UNLCK;
  fcntl(document, F_SETLK, &part);
  fcntl(document, F_OFD_SETLK, &part);
  return locked || locked_part;
}

bool make_pipe_file() {
  const bool made = mkfifo("pipe-file", 0600) == 0;
  unlink("pipe-file");
  return made;
}

bool make_device() {
  const bool made = mknod("device", S_IFCHR | 0600, 0x103) == 0;
  unlink("device");
  return made;
}

// Descriptors that the program was started with; the test leaves its secret open in some.
bool read_inherited() {
  struct stat wanted = {};
  stat(secret.c_str(), &wanted);
  for (int descriptor = 0; descriptor < 1024; ++descriptor) {
    struct stat info = {};
    if (fstat(descriptor, &info) == 0 && info.st_ino == wanted.st_ino) return true;
  }
  return false;
}

bool use_terminal() {
  return can_open("/dev/tty", O_RDWR) || ioctl(STDIN_FILENO, TIOCSTI, "x") == 0 ||
         isatty(STDOUT_FILENO) == 1;
}

bool share_memory() {
  const std::string name = "/dev/shm/zelk-probe-" + std::to_string(getpid());
  const bool opened = can_open(name, O_RDWR | O_CREAT);
  unlink(name.c_str());
  return opened;
}

bool open_queue() {
  const std::string name = "zelk-probe-" + std::to_string(getpid());
  const long queue = syscall(SYS_mq_open, name.c_str(), O_RDWR | O_CREAT, 0600, nullptr);
  if (queue >= 0) syscall(SYS_mq_unlink, name.c_str());
  return queue >= 0;
}

}  // namespace

std::string in_fake_folder(const char* name) {
  const char* const folder = std::getenv("FAKE_FOLDER");
  return std::string(folder == nullptr ? "." : folder) + "/" + name;
}

const std::vector<Escape>& escapes_by_files() {
  using enum WithoutSandbox;
  static const std::vector<Escape> escapes = {
      {"read another file", kPossible, read_file},
      {"list another folder", kPossible, list_folder},
      {"create a file", kPossible, create_file},
      {"open another file for writing", kPossible, write_file},
      {"rename a file", kPossible, rename_file},
      {"make a folder", kPossible, make_folder},
      {"give a file a second name", kPossible, link_file},
      {"truncate a file", kPossible, truncate_file},
      {"write to the document's descriptor", kClosed, write_document_by_descriptor},
      {"open the document for writing", kPossible, open_document_for_writing},
      {"write to the document under a second name", kPossible, write_document_by_second_name},
      {"change a file's permissions", kPossible, change_permissions},
      {"change a file's owner", kPossible, change_owner},
      {"change a file's times", kPossible, change_times},
      {"change a file's extended attributes", kPossible, change_attributes},
      {"change a file's flags", kPossible, change_flags},
      {"take a lease on the document", kPossible, take_lease},
      {"lock the document", kPossible, lock_document},
      {"make a named pipe", kPossible, make_pipe_file},
      {"make a device", kForRoot, make_device},
      {"read descriptors of the caller", kClosed, read_inherited},
      {"use the caller's terminal", kClosed, use_terminal},
      {"share memory by name", kPossible, share_memory},
      {"open a POSIX message queue", kPerhaps, open_queue},
  };
  return escapes;
}
