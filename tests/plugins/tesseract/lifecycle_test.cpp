// SPDX-License-Identifier: Apache-2.0
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <sstream>

#include "plugins/tesseract/EngineLibrary.h"

extern "C" {
int omp_get_max_active_levels(void);
void omp_set_max_active_levels(int levels);
}

namespace {

namespace fs = std::filesystem;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
constexpr bool kSanitized = false;
#endif

auto entries(const char* folder) {
  return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}
auto threads() {
  return entries("/proc/self/task");
}
auto open_files() {
  return entries("/proc/self/fd");
}

// Resident memory in KiB.
long memory() {
  std::ifstream file("/proc/self/statm");
  long total = 0;
  long resident = 0;
  file >> total >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

TEST(DefaultEngineLifecycle, FiftyStartsLeaveNoThreadNoFileAndNoMemoryBehind) {
  setenv("QV_LANGUAGES", "eng", 1);
  const TestRaster page = test_picture("english.tif");
  const auto run_once = [&] {
    EngineLibrary engine;
    ASSERT_EQ(engine.start(), 0);
    ASSERT_FALSE(read(engine, page).empty());
    engine.uninit_engine();
  };
  for (int i = 0; i < 10; ++i) run_once();
  const auto files = open_files();
  const long settled = memory();
  for (int i = 0; i < 40; ++i) run_once();
  unsetenv("QV_LANGUAGES");
  EXPECT_EQ(threads(), 1);
  EXPECT_EQ(open_files(), files);
  // 40 engines that are not freed would take more than 400 MB. Sanitizers keep freed memory.
  if (!kSanitized) {
    EXPECT_LT(memory() - settled, 20 * 1024);
  }
}

TEST(DefaultEngineLifecycle, StartingWhileStartedRestarts) {
  EngineLibrary engine;
  ASSERT_EQ(engine.start(), 0);
  const std::string text = read(engine, test_picture("english.tif"));
  ASSERT_EQ(engine.start(), 0);
  EXPECT_STREQ(engine.get_result_ex(), "");
  EXPECT_NE(engine.recognize(), 0);
  EXPECT_EQ(read(engine, test_picture("english.tif")), text);
  engine.uninit_engine();
}

TEST(DefaultEngineLifecycle, AFailedStartWhileStartedStops) {
  EngineLibrary engine;
  ASSERT_EQ(engine.start(), 0);
  setenv("QV_LANGUAGES", "tlh", 1);
  EXPECT_NE(engine.start(), 0);
  unsetenv("QV_LANGUAGES");
  EXPECT_NE(set_image(engine, white_page(100, 100)), 0);
}

TEST(DefaultEngineLifecycle, StoppingTwiceIsHarmless) {
  EngineLibrary engine;
  ASSERT_EQ(engine.start(), 0);
  engine.uninit_engine();
  engine.uninit_engine();
  EXPECT_NE(engine.recognize(), 0);
}

TEST(DefaultEngineLifecycle, TheHostsOpenMpSettingIsRestoredAndNoThreadIsStarted) {
  omp_set_max_active_levels(3);
  {
    EngineLibrary engine;
    ASSERT_EQ(engine.start(), 0);
    EXPECT_EQ(omp_get_max_active_levels(), 3);
    ASSERT_FALSE(read(engine, test_picture("zh-mixed-serif-200.jpg")).empty());
    EXPECT_EQ(omp_get_max_active_levels(), 3);
    EXPECT_EQ(threads(), 1);
    set_image(engine, TestRaster{});
    EXPECT_NE(engine.recognize(), 0);
    engine.uninit_engine();
  }
  EXPECT_EQ(omp_get_max_active_levels(), 3);
  EXPECT_EQ(threads(), 1);
}

TEST(DefaultEngineLifecycle, AProcessThatExitsWithoutStoppingExitsCleanly) {
  const auto leave = [](bool close) {
    auto* engine = new EngineLibrary;
    const bool fine = engine->start() == 0 && !read(*engine, test_picture("english.tif")).empty();
    if (close) delete engine;
    std::exit(fine ? 0 : 9);
  };
  EXPECT_EXIT(leave(false), testing::ExitedWithCode(0), "");
  // What a closed library has not freed is a leak to a sanitizer, and rightly so.
  if (!kSanitized) {
    EXPECT_EXIT(leave(true), testing::ExitedWithCode(0), "");
  }
}

// The output of a command, line by line.
std::set<std::string> lines_of(const std::string& command) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::set<std::string> lines;
  std::array<char, 512> line{};
  while (std::fgets(line.data(), line.size(), pipe.get()) != nullptr) {
    std::string text = line.data();
    text.erase(text.find_last_not_of('\n') + 1);
    lines.insert(text);
  }
  return lines;
}

TEST(DefaultEngineLibrary, ExportsTheElevenEntryPointsAndNothingElse) {
  const std::set<std::string> expected = {
      "qv_get_line_info_ex",   "qv_get_lines_num",  "qv_get_result_ex",   "qv_get_result_json",
      "qv_get_result_unicode", "qv_init_engine",    "qv_load_image_file", "qv_recognize",
      "qv_save_ocrfile",       "qv_set_image_data", "qv_uninit_engine"};
  EXPECT_EQ(
      lines_of("nm -D --defined-only --format=just-symbols " ZELK_TEST_ENGINE_DIR "libQVEngine.so"),
      expected);
}

TEST(DefaultEngineLibrary, IsUnloadedWhenItIsClosed) {
  { const EngineLibrary engine; }
  EXPECT_EQ(dlopen(ZELK_TEST_ENGINE_DIR "libQVEngine.so", RTLD_NOW | RTLD_NOLOAD), nullptr);
}

}  // namespace
