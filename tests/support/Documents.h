// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_SUPPORT_DOCUMENTS_H
#define ZELK_TESTS_SUPPORT_DOCUMENTS_H

#include <FreeImage.h>

#include <filesystem>
#include <string>
#include <vector>

// A folder that is gone at the end of the test.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  // Path of a file in the folder.
  std::string path(const std::string& name) const { return (_folder / name).string(); }

 private:
  std::filesystem::path _folder;
};

void write_file(const std::string& path, const std::string& bytes);
std::string read_file(const std::string& path);

// A 24-bit bitmap in which every pixel tells its place: blue is x, green is y counted from the top,
// red is `red`, each modulo 256.
FIBITMAP* make_bitmap(unsigned width, unsigned height, unsigned char red = 7);

// True when `dib` is a 24-bit bitmap as make_bitmap makes it.
bool is_made_bitmap(FIBITMAP* dib, unsigned width, unsigned height, unsigned char red = 7);

// Writes make_bitmap's picture in the format of the path's extension, or in the one given.
void write_image(const std::string& path, unsigned width, unsigned height, unsigned char red = 7,
                 FREE_IMAGE_FORMAT format = FIF_UNKNOWN);

// Writes a TIFF whose n-th page is make_bitmap(width, height, first_red + n).
void write_tiff(const std::string& path, unsigned width, unsigned height, int pages,
                unsigned char first_red = 1);

struct PdfPage {
  std::string media_box = "0 0 612 792";
  std::string content;
};

// Writes a PDF. A page whose media box is empty is left out of the file while the page tree still
// names it.
void write_pdf(const std::string& path, const std::vector<PdfPage>& pages);

#endif  // ZELK_TESTS_SUPPORT_DOCUMENTS_H
