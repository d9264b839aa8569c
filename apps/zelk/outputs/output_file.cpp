// SPDX-License-Identifier: Apache-2.0
#include "outputs/output_file.h"

#include <cerrno>

#include "exchange/error.h"

namespace cli {

OutputFile::OutputFile(const std::string& path)
    : _path(path), _file(std::fopen(path.c_str(), "wbe")) {
  if (!_file) fail();
}

void OutputFile::write(std::string_view bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), _file.get()) != bytes.size()) fail();
}

void OutputFile::finish() {
  if (std::fclose(_file.release()) != 0) fail();
}

void OutputFile::fail() const {
  throw Error(ErrorKind::kOutput, errno, _path);
}

}  // namespace cli
