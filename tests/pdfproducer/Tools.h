// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_PDFPRODUCER_TOOLS_H
#define ZELK_TESTS_PDFPRODUCER_TOOLS_H

#include <string>
#include <vector>

// What programs that nobody here wrote make of a PDF.

struct Outcome {
  int status = -1;     // exit status, or 128 and the signal
  std::string output;  // standard output and errors
};

// Runs a command of the shell.
Outcome run(const std::string& command);

// The complaint of `qpdf --check`; empty when there is none, not even a warning.
std::string qpdf_complaint(const std::string& path);
// One object as qpdf prints it, for example "trailer" or "3"; streams come uncompressed.
std::string qpdf_object(const std::string& path, const std::string& object);
// A page's content stream, uncompressed; pages count from 1.
std::string page_content(const std::string& path, int page = 1);
// The data of the first image of a page, as it is in the file.
std::string page_image(const std::string& path, int page = 1);
// The text of all pages as poppler and MuPDF's programs give it.
std::string poppler_text(const std::string& path);
// The value of a line of `pdfinfo`, for example "Pages" or "Page size".
std::string pdfinfo(const std::string& path, const std::string& key);

struct PlacedCharacter {
  char16_t code = 0;
  double x = 0;  // origin, points
  double y = 0;
  double size = 0;  // of the font
};

// The characters of a page (counted from 0) as PDFium finds them, blanks and line ends that it
// makes up included.
std::vector<PlacedCharacter> pdfium_characters(const std::string& path, int page = 0);
// Their text, in UTF-8.
std::string pdfium_text(const std::string& path, int page = 0);
// The first page as PDFium paints it: blue, green, red and alpha of each pixel, the top row first.
std::vector<unsigned char> pdfium_pixels(const std::string& path, int width, int height);
// Number of pages that PDFium counts; -1 when it does not open the file.
int pdfium_pages(const std::string& path);

#endif  // ZELK_TESTS_PDFPRODUCER_TOOLS_H
