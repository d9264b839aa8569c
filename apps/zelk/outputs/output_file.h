// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OUTPUTS_OUTPUT_FILE_H
#define ZELK_APPS_OUTPUTS_OUTPUT_FILE_H

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace cli {

// A file that is written from its start. Every operation throws Error naming the file
// when it fails.
class OutputFile {
 public:
  explicit OutputFile(const std::string& path);

  void write(std::string_view bytes);
  // Hands everything to the system. What is not finished may lack its end.
  void finish();

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  [[noreturn]] void fail() const;

  std::string _path;
  std::unique_ptr<std::FILE, Close> _file;
};

}  // namespace cli

#endif  // ZELK_APPS_OUTPUTS_OUTPUT_FILE_H
