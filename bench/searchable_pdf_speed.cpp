// SPDX-License-Identifier: Apache-2.0
// searchable_pdf_speed ENGINE_DIRECTORY [PDF]: a searchable PDF of a document with a stand-in
// engine, against what no such program can do without: PDFium rendering the same pages at 200 dots
// per inch, the two copies of each page that reader and engine are owed, and FreeImage encoding it
// as JPEG. By turns; medians. Without PDF a document of 100 scanned pages is made. Exits with 1
// when ours takes more than 1.15 times the processor time.
#include <FreeImage.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "image/pixel_rows.h"
#include "process/MainProcess.h"
#include "process/page_raster.h"
#include "readers/pdfium_api.h"
#include "side_by_side.h"
#include "writers/pdfwriter.h"

namespace {

constexpr int kPages = 100;
constexpr int kRounds = 5;
constexpr int kResolution = 200;
constexpr double kMostRatio = 1.15;

// Lines of strokes in words of ten, with margins: as much to encode as a page of print.
FIBITMAP* scanned_page() {
  FIBITMAP* const page = FreeImage_Allocate(1653, 2338, 24, 0, 0, 0);
  ofd::stamp_resolution(page, kResolution);
  for (unsigned y = 0; y < FreeImage_GetHeight(page); ++y) {
    BYTE* const row = FreeImage_GetScanLine(page, static_cast<int>(y));
    for (unsigned x = 0; x < FreeImage_GetWidth(page); ++x) {
      const bool line = y > 200 && y < 2138 && y % 48 < 24 && x > 150 && x < 1503;
      const bool ink = line && x / 8 % 10 != 0 && (x / 4 * 31 + y / 8 * 17) % 5 < 2;
      std::fill_n(row + std::size_t{3} * x, 3, static_cast<BYTE>(ink ? 40 : 250));
    }
  }
  return page;
}

void write_scan(const std::string& path) {
  FIBITMAP* const page = scanned_page();
  pdfwriter writer;
  if (writer.create_document(path.c_str()) != 0) throw std::runtime_error("cannot write " + path);
  for (int i = 0; i < kPages; ++i) writer.add_page(page, {}, true);
  writer.close_document();
  FreeImage_Unload(page);
}

void write_searchable(const char* engine, const std::string& source, const std::string& target) {
  ofd::MainProcess process{};
  if (process.init_engine(engine) != 0) throw std::runtime_error("no engine");
  process.load_image_document(source.c_str(), kResolution);
  process.set_double_document_filename(target.c_str());
  process.recognize();
  process.free_image_document();
  process.uninit_engine();
}

FPDF_BITMAP render(FPDF_PAGE page, int width, int height) {
  auto* const bitmap = FPDFBitmap_Create(width, height, 1);
  FPDFBitmap_FillRect(bitmap, 0, 0, width, height, 0xFFFFFFFF);
  FPDF_RenderPageBitmap(bitmap, page, 0, 0, width, height, 0, FPDF_PRINTING);
  return bitmap;
}

void copy_and_encode(FPDF_BITMAP bitmap, int width, int height) {
  FIBITMAP* const dib = FreeImage_Allocate(width, height, 24, 0, 0, 0);
  zelk::copy_flipped_without_alpha(FreeImage_GetBits(dib), FreeImage_GetPitch(dib),
                                   static_cast<const unsigned char*>(FPDFBitmap_GetBuffer(bitmap)),
                                   static_cast<std::size_t>(FPDFBitmap_GetStride(bitmap)),
                                   FreeImage_GetWidth(dib), FreeImage_GetHeight(dib));
  FPDFBitmap_Destroy(bitmap);
  zelk::MDIB image;
  ofd::page_to_raster(dib, image);
  FIMEMORY* const memory = FreeImage_OpenMemory(nullptr, 0);
  FreeImage_SaveToMemory(FIF_JPEG, dib, memory, 0);
  FreeImage_CloseMemory(memory);
  FreeImage_Unload(dib);
}

int render_copy_and_encode(const std::string& source) {
  auto* const document = FPDF_LoadDocument(source.c_str(), "");
  const int pages = FPDF_GetPageCount(document);
  for (int i = 0; i < pages; ++i) {
    auto* const page = FPDF_LoadPage(document, i);
    const int width = static_cast<int>(FPDF_GetPageWidth(page) * kResolution / 72);
    const int height = static_cast<int>(FPDF_GetPageHeight(page) * kResolution / 72);
    copy_and_encode(render(page, width, height), width, height);
    FPDF_ClosePage(page);
  }
  FPDF_CloseDocument(document);
  return pages;
}

struct Times {
  std::vector<double> processor;
  std::vector<double> wall;

  template <typename Work>
  void add(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    processor.push_back(bench::secondsOf(work));
    wall.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
};

int compare(const char* engine, const std::string& source, const std::string& target) {
  FPDF_InitLibrary();
  Times ours;
  Times reference;
  int pages = 0;
  for (int round = 0; round < kRounds; ++round) {
    reference.add([&] { pages = render_copy_and_encode(source); });
    ours.add([&] { write_searchable(engine, source, target); });
  }
  const double mine = bench::median(ours.processor);
  const double floor = bench::median(reference.processor);
  const double wall_ratio = bench::median(ours.wall) / bench::median(reference.wall);
  std::printf(
      "%d pages, processor time a page: searchable PDF %.2f ms, rendering, copies and JPEG %.2f "
      "ms, ratio %.3f, at most %.2f; wall time: ratio %.3f\n",
      pages, mine * 1e3 / pages, floor * 1e3 / pages, mine / floor, kMostRatio, wall_ratio);
  return mine / floor <= kMostRatio ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) return 64;
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("zelk-speed-" + std::to_string(getpid()));
  std::filesystem::create_directory(folder);
  std::string source = folder / "scan.pdf";
  int result = 1;
  try {
    if (count > 2) {
      source = arguments[2];
    } else {
      write_scan(source);
    }
    result = compare(arguments[1], source, folder / "searchable.pdf");
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
  }
  std::filesystem::remove_all(folder);
  return result;
}
