// SPDX-License-Identifier: Apache-2.0
#include "exchange/error.h"

#include <filesystem>
#include <system_error>

namespace cli {

Error::Error(ErrorKind kind, int number, const std::string& about)
    : std::runtime_error(about + ": " + std::generic_category().message(number)),
      _kind(kind),
      _number(number) {}

std::string sentence_of(const Error& error) {
  switch (error.kind()) {
    case ErrorKind::kInput:
      return std::string("cannot read ") + error.what();
    case ErrorKind::kOutput:
      return std::string("cannot write the output: ") + error.what();
    case ErrorKind::kReaderGone:
      return "";
    case ErrorKind::kSystem:
      break;
  }
  return std::string("cannot start ") + error.what() +
         "; ulimit -a and the limits of the container tell how much is allowed";
}

void make_folders(const std::string& path) {
  std::error_code error;
  std::filesystem::create_directories(path, error);
  if (error) throw Error(ErrorKind::kOutput, error.value(), path);
}

}  // namespace cli
