// SPDX-License-Identifier: Apache-2.0
// pdfproducer_memory [PAGES...]: peak memory of the embedded PDF producer writing documents of so
// many pages, 50 and 5,000 unless told, each in a process of its own. Exits with 1 when the last
// one takes more than 1.5 times the memory of the first.
#include <FreeImage.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "pdfproducer/pdf_api.h"

namespace {

constexpr const char* kWrite = "--write";  // how the program calls itself
constexpr double kMostRatio = 1.5;
constexpr int kCharacters = 2000;

std::string page_image() {
  FIBITMAP* const page = FreeImage_Allocate(1653, 2338, 24, 0, 0, 0);
  for (unsigned y = 0; y < FreeImage_GetHeight(page); ++y) {
    BYTE* const row = FreeImage_GetScanLine(page, static_cast<int>(y));
    for (unsigned x = 0; x < FreeImage_GetLine(page); ++x) row[x] = static_cast<BYTE>(x * y / 512);
  }
  FreeImage_SetDotsPerMeterX(page, 7874);
  FreeImage_SetDotsPerMeterY(page, 7874);
  FIMEMORY* const memory = FreeImage_OpenMemory(nullptr, 0);
  FreeImage_SaveToMemory(FIF_JPEG, page, memory, 0);
  BYTE* bytes = nullptr;
  DWORD size = 0;
  FreeImage_AcquireMemory(memory, &bytes, &size);
  std::string jpeg(reinterpret_cast<const char*>(bytes), size);
  FreeImage_CloseMemory(memory);
  FreeImage_Unload(page);
  return jpeg;
}

void write_page(const PDFlib_api& api, PDF* p, const std::string& jpeg, int page) {
  api.PDF_load_font(p, "STSong-Light", 0, "GB-EUC-H", "");
  api.PDF_begin_page_ext(p, 0, 0, "");
  api.PDF_setcolor(p, "fill", "rgb", 0, 0, 0, 0);
  for (int i = 0; i < kCharacters; ++i) {
    const int line = i / 40;
    const int ideograph = (i * 7 + page * 13) % 3000;
    const char gbk[] = {static_cast<char>(0xB0 + ideograph / 90),
                        static_cast<char>(0xA1 + ideograph % 90), '\0'};
    api.PDF_setfont(p, 0, 10.5 + line % 3);
    api.PDF_show_xy2(p, gbk, 2, 40 + i % 40 * 12.7, 800 - line * 14.0);
  }
  const int image = api.PDF_open_image(p, "jpeg", "memory", jpeg.data(),
                                       static_cast<long>(jpeg.size()), 1653, 2338, 3, 8, "");
  api.PDF_fit_image(p, image, 0, 0, "adjustpage");
  api.PDF_close_image(p, image);
  api.PDF_end_page_ext(p, "");
}

int write_document(const std::string& path, int pages, const std::string& jpeg) {
  const PDFlib_api& api = *PDF_get_api();
  PDF* const p = api.PDF_new2(nullptr, nullptr, nullptr, nullptr, nullptr);
  if (setjmp(pdf_jbuf(p)->jbuf) == 0) {
    if (api.PDF_begin_document(p, path.c_str(), 0, "") == 0) {
      for (int page = 0; page < pages; ++page) write_page(api, p, jpeg, page);
      api.PDF_end_document(p, "");
    }
  }
  const bool failed = pdf_catch(p) != 0 || PDF_get_errnum(p) != 0;
  if (failed) std::fprintf(stderr, "%s\n", PDF_get_errmsg(p));
  api.PDF_delete(p);
  return failed ? 1 : 0;
}

std::string contents(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

// Peak resident memory in kilobytes of a fresh process that writes so many pages; 0 when it failed.
long peak_of(const char* program, int pages, const std::string& image, std::size_t image_size) {
  const std::string path = image + ".pdf";
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    const std::string count = std::to_string(pages);
    execl(program, program, kWrite, count.c_str(), image.c_str(), path.c_str(), nullptr);
    _exit(1);
  }
  int status = 0;
  rusage usage = {};
  wait4(child, &status, 0, &usage);
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  std::error_code none;
  const auto size = std::filesystem::file_size(path, none);
  std::filesystem::remove(path, none);
  std::printf("%5d pages: peak %6ld KB, %.2f ms a page, %ju bytes a page beside the image\n", pages,
              usage.ru_maxrss, seconds.count() * 1e3 / pages,
              size / static_cast<unsigned>(pages) - image_size);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? usage.ru_maxrss : 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 5 && std::string(arguments[1]) == kWrite) {
    return write_document(arguments[4], std::stoi(arguments[2]), contents(arguments[3]));
  }
  std::vector<int> lengths{50, 5000};
  if (count > 1) lengths.clear();
  for (int i = 1; i < count; ++i) lengths.push_back(std::max(1, std::stoi(arguments[i])));
  const std::string image =
      std::filesystem::temp_directory_path() / ("zelk-memory-" + std::to_string(getpid()) + ".jpg");
  const std::string jpeg = page_image();
  std::ofstream(image, std::ios::binary) << jpeg;
  std::vector<long> peaks(lengths.size());
  std::transform(lengths.begin(), lengths.end(), peaks.begin(),
                 [&](int pages) { return peak_of(arguments[0], pages, image, jpeg.size()); });
  std::filesystem::remove(image);
  if (std::find(peaks.begin(), peaks.end(), 0) != peaks.end()) return 1;
  const double ratio = static_cast<double>(peaks.back()) / static_cast<double>(peaks.front());
  std::printf("image %zu bytes, ratio %.2f, at most %.2f\n", jpeg.size(), ratio, kMostRatio);
  return ratio <= kMostRatio ? 0 : 1;
}
