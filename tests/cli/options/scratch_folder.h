// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_CLI_OPTIONS_SCRATCH_FOLDER_H
#define ZELK_TESTS_CLI_OPTIONS_SCRATCH_FOLDER_H

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

// A test with a folder of its own, which is the working directory meanwhile.
class ScratchFolder : public ::testing::Test {
 protected:
  ScratchFolder() : _before(std::filesystem::current_path()) {
    std::string name = (std::filesystem::temp_directory_path() / "zelk-test-XXXXXX").string();
    _folder = mkdtemp(name.data());
    std::filesystem::current_path(_folder);
  }
  ~ScratchFolder() override {
    std::filesystem::current_path(_before);
    std::filesystem::remove_all(_folder);
  }

  static void make_file(const std::string& path, const std::string& content = "x") {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (!folder.empty()) std::filesystem::create_directories(folder);
    std::ofstream(path, std::ios::binary) << content;
  }

 private:
  std::filesystem::path _before;
  std::filesystem::path _folder;
};

#endif  // ZELK_TESTS_CLI_OPTIONS_SCRATCH_FOLDER_H
