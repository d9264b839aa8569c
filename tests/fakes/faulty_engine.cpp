// SPDX-License-Identifier: Apache-2.0
// The example engine with one fault, named by FAKE_FAULT in the environment: each breaks one rule
// of engine/qv_engine.h, and only where the check of that rule looks. With STRAY_EXPORT it exports
// a function too many.
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <thread>

// The sound engine's entry points, under other names.
#define qv_init_engine sound_init_engine
#define qv_uninit_engine sound_uninit_engine
#define qv_load_image_file sound_load_image_file
#define qv_set_image_data sound_set_image_data
#define qv_recognize sound_recognize
#define qv_get_lines_num sound_get_lines_num
#define qv_get_line_info_ex sound_get_line_info_ex
#define qv_save_ocrfile sound_save_ocrfile
#define qv_get_result_ex sound_get_result_ex
#define qv_get_result_unicode sound_get_result_unicode
#define qv_get_result_json sound_get_result_json
#include "../../examples/engine/ink_engine.cpp"
#undef qv_init_engine
#undef qv_uninit_engine
#undef qv_load_image_file
#undef qv_set_image_data
#undef qv_recognize
#undef qv_get_lines_num
#undef qv_get_line_info_ex
#undef qv_save_ocrfile
#undef qv_get_result_ex
#undef qv_get_result_unicode
#undef qv_get_result_json

namespace {

const char* const fault = std::getenv("FAKE_FAULT");

bool is(const char* name) {
  return fault != nullptr && std::strcmp(fault, name) == 0;
}

bool asked = false;       // to recognise
bool recognized = false;  // ever
bool image_read = false;  // the current one
bool text_taken = false;  // since it was read
bool noisy_padding = false;
bool forked = false;
int pages = 0;
pid_t started_in = 0;

struct AtExit {
  ~AtExit() {
    if (is("NeedsStop") && started_in != 0) std::abort();
  }
} at_exit;

void* volatile leaked = nullptr;

void leak(std::size_t bytes) {
  leaked = std::malloc(bytes);
  std::memset(leaked, 1, bytes);
}

void say(const char* narrow, const wchar_t* wide) {
  results.text += narrow;
  results.wide += wide;
}

void stay_mapped() {
  Dl_info info;
  if (dladdr(&pages, &info) != 0) dlopen(info.dli_fname, RTLD_NOW | RTLD_NODELETE);
}

// Faults that depend on the raster.
void misread() {
  const auto is_sized = [](int width, int height) {
    return raster.width == width && raster.height == height;
  };
  volatile unsigned char* const rows = const_cast<unsigned char*>(raster.rows);
  if (is("ExitsOn1x1") && is_sized(1, 1)) std::exit(3);
  if (is("HangsOn1x40000") && is_sized(1, 40000)) pause();
  if (is("ReadsBehind40000x1") && is_sized(40000, 1)) (void)rows[raster.line_bytes];
  if (is("ThrowsOnNoise") && is_sized(601, 400)) throw std::runtime_error("noise");
  if (is("WritesToBlack") && is_sized(1001, 700) && raster.bits == 24 && rows[0] == 0) rows[0] = 1;
}

// Faults of the results, once they are there.
void spoil_results() {
  if (results.lines.empty()) return;
  std::vector<OCR_CHAR>& first = results.lines.front();
  if (is("BoxesOutside")) first.front().left = -5;
  if (is("UnevenBottoms")) first.front().bottom += 1;
  if (is("ControlCodes")) first.insert(first.begin(), {0, 0, 1, first.front().bottom, 7, {}});
  if (is("LinesReversed")) std::reverse(results.lines.begin(), results.lines.end());
  if (is("TextWithoutLines")) say("more\n", L"more\n");
  if (is("WideDiffers")) results.wide += L"  ";
  if (is("NotUtf8")) results.text = "\xC0\x80\n";
  if (is("NoLineFeed")) results.text.pop_back(), results.wide.pop_back();
}

void misbehave_on_page() {
  ++pages;
  if (is("LeaksPages")) leak(1 << 17);
  if (is("Prints")) std::puts("recognised a page");
  if (is("IgnoresSignal")) std::signal(SIGUSR2, SIG_IGN);
  if (is("HangsInFork") && getpid() != started_in) pause();
  if (is("Blind")) results = {};
  if (is("ReadsOn") && image_read) say("again\n", L"again\n");
}

// One thread is left however often the engine is started, so that nothing grows beside it.
bool is_single_threaded() {
  const std::filesystem::directory_iterator threads("/proc/self/task");
  return std::distance(begin(threads), end(threads)) == 1;
}

}  // namespace

extern "C" {

QV_EXPORT int qv_init_engine(const char* dll_path) {
  started_in = getpid();
  if (is("NeedsDirectory") && dll_path[0] == '\0') std::abort();
  if (is("LeaksAtStart")) leak(1 << 20);
  if (is("LeavesFileOpen") && open("/dev/null", O_RDONLY) < 0) return 1;
  if (is("LeavesThread") && is_single_threaded()) std::thread([] { pause(); }).detach();
  if (is("StaysMapped")) stay_mapped();
  if (is("ExitHandler")) on_exit([](int, void*) {}, nullptr);
  if (is("FailsAfterFork"))
    pthread_atfork(
        nullptr, [] { forked = true; }, nullptr);
  return sound_init_engine(dll_path);
}

QV_EXPORT void qv_uninit_engine() {
  started_in = 0;
  sound_uninit_engine();
}

QV_EXPORT int qv_load_image_file(const char* image_file, int imgpro) {
  if (is("ReadsNullPath") && image_file[0] == '\0') return 1;
  if (is("LoadsNullPath") && image_file == nullptr) return 0;
  if (!is("LoadsAnything")) return sound_load_image_file(image_file, imgpro);
  raster = {};
  results = {};
  return 0;
}

QV_EXPORT int qv_set_image_data(const unsigned char* image_buffer, int width, int height,
                                int bitcount, int line_bytes, int imgpro) {
  if (is("CrashesOn0x0") && line_bytes == 0) raise(SIGSEGV);
  const Raster before = raster;
  const std::string text = results.text;
  image_read = false;
  const int code = sound_set_image_data(image_buffer, width, height, bitcount, line_bytes, imgpro);
  noisy_padding = code == 0 && line_bytes * 8 > width * bitcount && image_buffer[line_bytes - 1];
  if (is("KeepsImage") && code != 0) raster = before;
  if (is("KeepsText")) results.text = text;
  return code;
}

QV_EXPORT int qv_recognize() {
  if (is("FailsAfterFork") && forked) return 9;
  asked = true;
  if (is("ReadsNothing") && !recognized && raster.rows == nullptr) return 0;
  misread();
  const std::string text = results.text;
  const int code = sound_recognize();
  if (code != 0) return code;
  if (is("ReadsPadding") && noisy_padding) say("noise\n", L"noise\n");
  spoil_results();
  misbehave_on_page();
  if (is("KeepsText") && results.lines.empty()) results.text = text;
  recognized = true;
  image_read = true;
  text_taken = false;
  return code;
}

QV_EXPORT int qv_get_lines_num() {
  return is("AbsurdLines") && recognized ? 200000 : sound_get_lines_num();
}

QV_EXPORT bool qv_get_line_info_ex(int id, OCR_CHAR* char_info, int& char_num) {
  const bool exists = sound_get_line_info_ex(id, char_info, char_num);
  if (is("MoreCharacters") && exists && char_info != nullptr) ++char_num;
  return exists || is("EndlessLines");
}

QV_EXPORT bool qv_save_ocrfile(const char* txt_file_name) {
  return is("SavesNothing") || sound_save_ocrfile(txt_file_name);
}

QV_EXPORT const char* qv_get_result_ex() {
  if (is("TextAtStart") && !asked) return "ready\n";
  if (is("ReadsRasterLater") && image_read && is_ink(0, 0)) return "ink\n";
  if (is("TextOnce") && text_taken) return "";
  text_taken = true;
  return sound_get_result_ex();
}

QV_EXPORT const wchar_t* qv_get_result_unicode() {
  return is("NullText") && !recognized ? nullptr : sound_get_result_unicode();
}

QV_EXPORT int qv_get_result_json(char* json_buffer, int bufferlen) {
  const auto size = static_cast<std::size_t>(bufferlen);
  const bool white = results.lines.empty();
  if (is("FillsJson") && size == 4096) std::memset(json_buffer, ' ', size);
  if (is("OverrunsJson") && size == 16) std::memset(json_buffer, 0, size + 1);
  if (is("FillsOneByte") && size == 1) json_buffer[0] = '1';
  if (size < 4097) return 1;
  if (is("CountsPages")) return std::snprintf(json_buffer, size, "%d", pages);
  if (is(white ? "BrokenWhiteJson" : "BrokenJson")) {
    return std::snprintf(json_buffer, size, "{\"lines\":");
  }
  return sound_get_result_json(json_buffer, bufferlen);
}

#ifdef STRAY_EXPORT
QV_EXPORT int stray_function() {
  return 0;
}
#endif
}
