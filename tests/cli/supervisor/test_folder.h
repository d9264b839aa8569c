// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_CLI_SUPERVISOR_TEST_FOLDER_H
#define ZELK_TESTS_CLI_SUPERVISOR_TEST_FOLDER_H

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>

// A folder of its own for a test, removed at its end.
class TestFolder {
 public:
  TestFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "zelk-test-XXXXXX").string();
    _path = mkdtemp(name.data());
  }
  ~TestFolder() { std::filesystem::remove_all(_path); }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::string& path() const { return _path; }
  std::string path(const std::string& name) const { return _path + "/" + name; }

  std::set<std::string> names() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(_path)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

 private:
  std::string _path;
};

#endif  // ZELK_TESTS_CLI_SUPERVISOR_TEST_FOLDER_H
