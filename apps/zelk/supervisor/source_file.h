// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_SOURCE_FILE_H
#define ZELK_APPS_SUPERVISOR_SOURCE_FILE_H

#include <string>

#include "exchange/descriptor.h"

namespace cli {

// A file that workers read a document from. The descriptors that they get can only be read from.
class SourceFile {
 public:
  // `keep`: the file that is opened first serves until the end, whatever its name comes to mean;
  // each kept file takes a descriptor.
  SourceFile(std::string path, bool keep) : _path(std::move(path)), _keep(keep) {}

  const std::string& path() const { return _path; }
  // The same content in another file.
  void replace(const std::string& path);
  // A new descriptor, with a place and flags of its own. Throws Error.
  Descriptor open();

 private:
  std::string _path;
  bool _keep;
  Descriptor _kept;
};

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_SOURCE_FILE_H
