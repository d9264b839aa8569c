// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_SUPPORT_SCRIPTEDENGINE_H
#define ZELK_TESTS_SUPPORT_SCRIPTEDENGINE_H

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/fake_engine.h"

// Directory of a stand-in engine, ending in "/".
inline std::string fake_directory(const std::string& name) {
  return std::string(ZELK_TEST_FAKES) + "/" + name + "/";
}

// Holds a scripted stand-in engine open, with a fresh script, while a test drives it through the
// code under test.
class ScriptedEngine {
 public:
  explicit ScriptedEngine(const std::string& name = "scripted") : directory(fake_directory(name)) {
    _library = dlopen((directory + "libQVEngine.so").c_str(), RTLD_NOW);
    EXPECT_NE(_library, nullptr) << dlerror();
    script = reinterpret_cast<FakeEngine* (*)()>(dlsym(_library, "fake_engine"))();
    *script = FakeEngine();
    script->calls = &calls;
  }
  ~ScriptedEngine() {
    *script = FakeEngine();
    dlclose(_library);
  }
  ScriptedEngine(const ScriptedEngine&) = delete;
  ScriptedEngine& operator=(const ScriptedEngine&) = delete;

  const std::string directory;
  FakeEngine* script = nullptr;
  std::vector<std::string> calls;

 private:
  void* _library = nullptr;
};

inline OCR_CHAR ocr_char(char16_t code, std::int64_t left = 0, std::int64_t top = 0,
                         std::int64_t right = 10, std::int64_t bottom = 20) {
  return {left, top, right, bottom, code, {}};
}

// A page with one line of one-letter records for its text.
inline FakePage fake_page(const std::string& text, const std::string& json = "{}") {
  FakePage page;
  page.lines.emplace_back();
  for (const char letter : text)
    page.lines.back().push_back(ocr_char(static_cast<unsigned char>(letter)));
  page.text = text;
  page.wide = std::wstring(text.begin(), text.end());
  page.json = json;
  return page;
}

#endif  // ZELK_TESTS_SUPPORT_SCRIPTEDENGINE_H
