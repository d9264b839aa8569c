// SPDX-License-Identifier: Apache-2.0
#include "readers/pdf_page_text.h"

#include <algorithm>

#include "readers/pdf_handles.h"

namespace {

struct Point {
  int x = 0;
  int y = 0;
};

// A page and the size at which it is rendered.
struct RenderedPage {
  FPDF_PAGE page;
  int width;
  int height;

  Point pixel(double x, double y) const {
    Point point;
    FPDF_PageToDevice(page, 0, 0, width, height, 0, x, y, &point.x, &point.y);
    return point;
  }
};

// The advance box of text that does not run along the page's own x axis is empty.
FS_RECTF box_of(FPDF_TEXTPAGE text, int index) {
  FS_RECTF box = {};
  if (FPDFText_GetLooseCharBox(text, index, &box) && box.left != box.right) return box;
  double left = 0.0;
  double right = 0.0;
  double bottom = 0.0;
  double top = 0.0;
  if (!FPDFText_GetCharBox(text, index, &left, &right, &bottom, &top)) return {};
  return {static_cast<float>(left), static_cast<float>(top), static_cast<float>(right),
          static_cast<float>(bottom)};
}

PdfCharacter character_at(const RenderedPage& page, FPDF_TEXTPAGE text, int index) {
  PdfCharacter character;
  character.code = FPDFText_GetUnicode(text, index);
  const FS_RECTF box = box_of(text, index);
  if (box.left == box.right || box.top == box.bottom) return character;
  const Point one = page.pixel(box.left, box.top);
  const Point other = page.pixel(box.right, box.bottom);
  character.left = std::min(one.x, other.x);
  character.right = std::max({one.x, other.x, character.left + 1});
  character.top = std::min(one.y, other.y);
  character.bottom = std::max({one.y, other.y, character.top + 1});
  double x = 0.0;
  double y = 0.0;
  character.baseline = character.bottom;
  if (FPDFText_GetCharOrigin(text, index, &x, &y)) character.baseline = page.pixel(x, y).y;
  return character;
}

}  // namespace

std::vector<PdfCharacter> pdf_page_text(fpdf_document_t__* document, int index, int width,
                                        int height) {
  const pdf::Page page(FPDF_LoadPage(document, index));
  if (page == nullptr) return {};
  const pdf::TextPage text(FPDFText_LoadPage(page.get()));
  if (text == nullptr) return {};
  const RenderedPage rendered{page.get(), width, height};
  std::vector<PdfCharacter> characters;
  const int count = FPDFText_CountChars(text.get());
  for (int i = 0; i < count; ++i) {
    const PdfCharacter character = character_at(rendered, text.get(), i);
    if (character.code != 0) characters.push_back(character);
  }
  return characters;
}
