// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/Producer.h"
#include "pdfproducer/Tools.h"
#include "pdfproducer/pdfium_text.h"

namespace {

// A document opened for the length of a scope; null when PDFium does not open it.
class OpenDocument {
 public:
  explicit OpenDocument(const std::string& path) {
    FPDF_InitLibrary();
    document = FPDF_LoadDocument(path.c_str(), "");
  }
  ~OpenDocument() {
    FPDF_CloseDocument(document);
    FPDF_DestroyLibrary();
  }
  OpenDocument(const OpenDocument&) = delete;
  OpenDocument& operator=(const OpenDocument&) = delete;

  FPDF_DOCUMENT document = nullptr;
};

}  // namespace

int pdfium_pages(const std::string& path) {
  const OpenDocument opened(path);
  return opened.document == nullptr ? -1 : FPDF_GetPageCount(opened.document);
}

std::vector<PlacedCharacter> pdfium_characters(const std::string& path, int page) {
  std::vector<PlacedCharacter> characters;
  const OpenDocument opened(path);
  const FPDF_PAGE loaded = FPDF_LoadPage(opened.document, page);
  const FPDF_TEXTPAGE text = FPDFText_LoadPage(loaded);
  for (int i = 0; i < FPDFText_CountChars(text); ++i) {
    PlacedCharacter character;
    character.code = static_cast<char16_t>(FPDFText_GetUnicode(text, i));
    character.size = FPDFText_GetFontSize(text, i);
    FPDFText_GetCharOrigin(text, i, &character.x, &character.y);
    characters.push_back(character);
  }
  FPDFText_ClosePage(text);
  FPDF_ClosePage(loaded);
  return characters;
}

std::string pdfium_text(const std::string& path, int page) {
  std::string text;
  for (const PlacedCharacter& character : pdfium_characters(path, page)) {
    text += to_utf8(character.code);
  }
  return text;
}

std::vector<unsigned char> pdfium_pixels(const std::string& path, int width, int height) {
  const OpenDocument opened(path);
  const FPDF_PAGE page = FPDF_LoadPage(opened.document, 0);
  const FPDF_BITMAP bitmap = FPDFBitmap_Create(width, height, 0);
  FPDFBitmap_FillRect(bitmap, 0, 0, width, height, 0xFFFFFFFF);
  FPDF_RenderPageBitmap(bitmap, page, 0, 0, width, height, 0, FPDF_PRINTING);
  const auto* const pixels = static_cast<unsigned char*>(FPDFBitmap_GetBuffer(bitmap));
  const auto size =
      static_cast<std::size_t>(FPDFBitmap_GetStride(bitmap)) * static_cast<std::size_t>(height);
  std::vector<unsigned char> copy(pixels, pixels + size);
  FPDFBitmap_Destroy(bitmap);
  FPDF_ClosePage(page);
  return copy;
}
