// SPDX-License-Identifier: Apache-2.0
#include "support/Documents.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

ScratchFolder::ScratchFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "zelk-test-XXXXXX").string();
  EXPECT_NE(mkdtemp(pattern.data()), nullptr);
  _folder = pattern;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(_folder, ignored);
}

void write_file(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string read_file(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

FIBITMAP* make_bitmap(unsigned width, unsigned height, unsigned char red) {
  FIBITMAP* const dib =
      FreeImage_Allocate(static_cast<int>(width), static_cast<int>(height), 24, 0, 0, 0);
  for (unsigned y = 0; y < height; ++y) {
    BYTE* pixel = FreeImage_GetScanLine(dib, static_cast<int>(height - 1 - y));
    for (unsigned x = 0; x < width; ++x, pixel += 3) {
      pixel[0] = static_cast<BYTE>(x);
      pixel[1] = static_cast<BYTE>(y);
      pixel[2] = red;
    }
  }
  return dib;
}

bool is_made_bitmap(FIBITMAP* dib, unsigned width, unsigned height, unsigned char red) {
  if (dib == nullptr || FreeImage_GetBPP(dib) != 24) return false;
  if (FreeImage_GetWidth(dib) != width || FreeImage_GetHeight(dib) != height) return false;
  for (unsigned y = 0; y < height; ++y) {
    const BYTE* pixel = FreeImage_GetScanLine(dib, static_cast<int>(height - 1 - y));
    for (unsigned x = 0; x < width; ++x, pixel += 3) {
      if (pixel[0] != static_cast<BYTE>(x) || pixel[1] != static_cast<BYTE>(y) || pixel[2] != red) {
        return false;
      }
    }
  }
  return true;
}

void write_image(const std::string& path, unsigned width, unsigned height, unsigned char red,
                 FREE_IMAGE_FORMAT format) {
  if (format == FIF_UNKNOWN) format = FreeImage_GetFIFFromFilename(path.c_str());
  FIBITMAP* const dib = make_bitmap(width, height, red);
  EXPECT_TRUE(FreeImage_Save(format, dib, path.c_str(), 0)) << path;
  FreeImage_Unload(dib);
}

void write_tiff(const std::string& path, unsigned width, unsigned height, int pages,
                unsigned char first_red) {
  FIMULTIBITMAP* const tiff =
      FreeImage_OpenMultiBitmap(FIF_TIFF, path.c_str(), TRUE, FALSE, TRUE, 0);
  for (int page = 0; page < pages; ++page) {
    FIBITMAP* const dib = make_bitmap(width, height, static_cast<unsigned char>(first_red + page));
    FreeImage_AppendPage(tiff, dib);
    FreeImage_Unload(dib);
  }
  EXPECT_TRUE(FreeImage_CloseMultiBitmap(tiff, TIFF_NONE));
}

void write_pdf(const std::string& path, const std::vector<PdfPage>& pages) {
  std::map<std::size_t, std::string> objects;
  std::string kids;
  for (std::size_t page = 0; page < pages.size(); ++page) {
    const std::size_t number = 3 + 2 * page;
    kids += std::to_string(number) + " 0 R ";
    if (pages[page].media_box.empty()) continue;
    objects[number] = "<< /Type /Page /Parent 2 0 R /MediaBox [" + pages[page].media_box +
                      "] /Contents " + std::to_string(number + 1) + " 0 R >>";
    objects[number + 1] = "<< /Length " + std::to_string(pages[page].content.size()) +
                          " >>\nstream\n" + pages[page].content + "\nendstream";
  }
  objects[1] = "<< /Type /Catalog /Pages 2 0 R >>";
  objects[2] =
      "<< /Type /Pages /Kids [" + kids + "] /Count " + std::to_string(pages.size()) + " >>";

  std::string pdf = "%PDF-1.7\n";
  std::string trailer = "<< /Size " + std::to_string(3 + 2 * pages.size()) + " /Root 1 0 R >>";
  std::string table = "0 1\n0000000000 65535 f \n";
  for (const auto& [number, body] : objects) {
    char entry[32];
    std::snprintf(entry, sizeof entry, "%010zu 00000 n \n", pdf.size());
    table += std::to_string(number) + " 1\n" + entry;
    pdf += std::to_string(number) + " 0 obj\n" + body + "\nendobj\n";
  }
  const std::string start = std::to_string(pdf.size());
  write_file(
      path, pdf + "xref\n" + table + "trailer\n" + trailer + "\nstartxref\n" + start + "\n%%EOF\n");
}
