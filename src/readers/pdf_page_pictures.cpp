// SPDX-License-Identifier: Apache-2.0
#include "readers/pdf_page_pictures.h"

#include <bitset>
#include <string>

#include "readers/pdf_handles.h"

namespace {

constexpr int kDeepestForm = 16;

std::string last_filter(FPDF_PAGEOBJECT picture) {
  const int count = FPDFImageObj_GetImageFilterCount(picture);
  char name[32] = "";
  if (count > 0) FPDFImageObj_GetImageFilter(picture, count - 1, name, sizeof name);
  return name;
}

std::string data_of(FPDF_PAGEOBJECT picture) {
  std::string data(FPDFImageObj_GetImageDataRaw(picture, nullptr, 0), '\0');
  FPDFImageObj_GetImageDataRaw(picture, data.data(), data.size());
  return data;
}

bool has_area(FPDF_PAGEOBJECT picture) {
  float left = 0.0F;
  float bottom = 0.0F;
  float right = 0.0F;
  float top = 0.0F;
  return FPDFPageObj_GetBounds(picture, &left, &bottom, &right, &top) && left < right &&
         bottom < top;
}

// Data of white pixels repeats a few codes.
bool holds_more_than_white(const std::string& data) {
  constexpr std::size_t kMostOfWhite = 64;
  std::bitset<256> values;
  for (const char byte : data) values.set(static_cast<unsigned char>(byte));
  return values.count() > kMostOfWhite;
}

// Of a picture that is white on the page.
bool is_unreadable(FPDF_PAGEOBJECT picture) {
  const pdf::Bitmap bitmap(FPDFImageObj_GetBitmap(picture));
  if (bitmap == nullptr) return true;
  const std::string filter = last_filter(picture);
  return (filter == "JBIG2Decode" || filter == "CCITTFaxDecode") &&
         holds_more_than_white(data_of(picture));
}

// Of JPEG data as it is; other filters around it hide its end.
bool is_cut(FPDF_PAGEOBJECT picture) {
  if (FPDFImageObj_GetImageFilterCount(picture) != 1) return false;
  if (last_filter(picture) != "DCTDecode") return false;
  const std::string data = data_of(picture);
  return data.starts_with("\xFF\xD8") && data.rfind("\xFF\xD9") == std::string::npos;
}

void look_at(FPDF_PAGEOBJECT object, bool is_white, int depth, PdfPictureLosses& losses) {
  const int type = FPDFPageObj_GetType(object);
  if (type == FPDF_PAGEOBJ_FORM && depth < kDeepestForm) {
    const int count = FPDFFormObj_CountObjects(object);
    for (int i = 0; i < count; ++i) {
      look_at(FPDFFormObj_GetObject(object, static_cast<unsigned long>(i)), is_white, depth + 1,
              losses);
    }
  }
  if (type != FPDF_PAGEOBJ_IMAGE || !has_area(object)) return;
  losses.has_unreadable = losses.has_unreadable || (is_white && is_unreadable(object));
  losses.has_cut = losses.has_cut || is_cut(object);
}

}  // namespace

PdfPictureLosses pdf_picture_losses(fpdf_document_t__* document, int index, bool is_white) {
  PdfPictureLosses losses;
  const pdf::Page page(FPDF_LoadPage(document, index));
  if (page == nullptr) return losses;
  const int count = FPDFPage_CountObjects(page.get());
  for (int i = 0; i < count; ++i) {
    look_at(FPDFPage_GetObject(page.get(), i), is_white, 0, losses);
  }
  return losses;
}
