// SPDX-License-Identifier: Apache-2.0
// How the engine's library is opened and closed. A program of its own, since it stands between the
// binding and the dynamic loader.
#include <dlfcn.h>

#include <cstdio>

#include "engine/QVOcrEngine.h"
#include "support/ScriptedEngine.h"

namespace {

std::vector<int> flags_of_opens;

}  // namespace

extern "C" {

void* dlopen(const char* path, int flags) noexcept {
  using Open = void* (*)(const char*, int);
  static const auto open = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "dlopen"));
  if (path != nullptr && std::string(path).find("libQVEngine.so") != std::string::npos)
    flags_of_opens.push_back(flags);
  return open(path, flags);
}

int dlclose(void* library) noexcept {
  using Close = int (*)(void*);
  static const auto close = reinterpret_cast<Close>(dlsym(RTLD_NEXT, "dlclose"));
  std::puts("closed");
  return close(library);
}
}

namespace {

std::string printed_by_start(const char* fake) {
  QVOcrEngine engine;
  testing::internal::CaptureStdout();
  EXPECT_LT(engine.init_engine(fake_directory(fake).c_str()), 0);
  return testing::internal::GetCapturedStdout();
}

TEST(QVOcrEngineLoader, BindsEverySymbolAtOnceAndMakesNoneGlobal) {
  QVOcrEngine engine;
  ASSERT_EQ(engine.init_engine(fake_directory("fixed").c_str()), 0);
  EXPECT_EQ(flags_of_opens, std::vector<int>{2});
  EXPECT_EQ(dlsym(RTLD_DEFAULT, "qv_recognize"), nullptr);
  engine.uninit_engine();
}

TEST(QVOcrEngineLoader, ClosesARefusingEngineBeforeItSaysSo) {
  EXPECT_EQ(printed_by_start("refusing"), "closed\n_qv_init_engine errcode: 7 \n");
}

TEST(QVOcrEngineLoader, NamesMissingEntriesBeforeItCloses) {
  EXPECT_EQ(printed_by_start("lacks_qv_recognize"),
            "qv_recognize = NULL\n"
            "dlsym get interface api address is null ERROR, Message((null)).\nclosed\n");
}

}  // namespace
