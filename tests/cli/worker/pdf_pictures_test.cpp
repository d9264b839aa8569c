// SPDX-License-Identifier: Apache-2.0
// What is told of pictures on PDF pages that PDFium leaves out.
#include <gtest/gtest.h>

#include "cli/worker/Pictures.h"
#include "support/Documents.h"

namespace {

const std::string kNotShown = "the page holds pictures that cannot be shown";

struct Picture {
  std::string filter;
  std::string data;
  int bits = 1;  // of a grey pixel; 100 x 100 pixels
  std::string more = {};
  std::string area = "72 0 0 72";
  bool is_in_form = false;
};

// Bytes without a pattern: what compressed content looks like.
std::string noise(std::size_t size) {
  std::string bytes;
  std::uint32_t value = 1;
  for (std::size_t i = 0; i < size; ++i) {
    value = value * 1664525 + 1013904223;
    bytes += static_cast<char>(value >> 24);
  }
  return bytes;
}

std::string stream(const std::string& dictionary, const std::string& data) {
  return "<< " + dictionary + " /Length " + std::to_string(data.size()) + " >>\nstream\n" + data +
         "\nendstream";
}

// A page with one picture. PDFium does without the table of objects.
std::string damage_of(const Picture& picture) {
  const std::string paint = "q " + picture.area + " 0 0 cm /Picture Do Q";
  const std::string bodies[] = {
      "<< /Type /Catalog /Pages 2 0 R >>",
      "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
      "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 72 72] /Contents 4 0 R /Resources << /XObject "
      "<< /Picture 5 0 R /Form 6 0 R >> >> >>",
      stream("", picture.is_in_form ? "/Form Do" : paint),
      stream("/Type /XObject /Subtype /Image /Width 100 /Height 100 /ColorSpace /DeviceGray "
             "/BitsPerComponent " +
                 std::to_string(picture.bits) + " /Filter /" + picture.filter + " " + picture.more,
             picture.data),
      stream("/Type /XObject /Subtype /Form /BBox [0 0 72 72] /Resources << /XObject << /Picture 5 "
             "0 R >> >>",
             paint)};
  std::string pdf = "%PDF-1.5\n";
  int number = 0;
  for (const std::string& body : bodies) {
    pdf += std::to_string(++number) + " 0 obj\n" + body + "\nendobj\n";
  }
  const ScratchFolder folder;
  write_file(folder.path("a.pdf"), pdf + "trailer\n<< /Size 7 /Root 1 0 R >>\n%%EOF\n");
  return cli::DocumentPages(folder.path("a.pdf"), {}, "").prepare(0).damage;
}

std::string grey_jpeg() {
  const ScratchFolder folder;
  FIBITMAP* const colours = make_bitmap(100, 100);
  FIBITMAP* const grey = FreeImage_ConvertToGreyscale(colours);
  EXPECT_TRUE(FreeImage_Save(FIF_JPEG, grey, folder.path("a.jpg").c_str(), 75));
  FreeImage_Unload(grey);
  FreeImage_Unload(colours);
  return read_file(folder.path("a.jpg"));
}

TEST(PdfPictures, ThatCannotBeDecodedAreTold) {
  EXPECT_EQ(damage_of({"JPXDecode", noise(300), 8}), kNotShown);
  EXPECT_EQ(damage_of({"DCTDecode", noise(300), 8}), kNotShown);
  EXPECT_EQ(damage_of({"NoSuchDecode", noise(300), 8}), kNotShown);
  EXPECT_EQ(damage_of({"JBIG2Decode", noise(300)}), kNotShown);
}

TEST(PdfPictures, OfFormsAreTold) {
  Picture picture = {"JPXDecode", noise(300), 8};
  picture.is_in_form = true;
  EXPECT_EQ(damage_of(picture), kNotShown);
}

TEST(PdfPictures, WithoutAreaAreNotMissed) {
  Picture picture = {"JPXDecode", noise(300), 8};
  picture.area = "0 0 0 0";
  EXPECT_EQ(damage_of(picture), "");
}

TEST(PdfPictures, ThatAreWhiteAreShown) {
  std::string hexadecimal;
  for (int byte = 0; byte < 1300; ++byte) hexadecimal += "FF";
  EXPECT_EQ(damage_of({"ASCIIHexDecode", hexadecimal + ">"}), "");
  // Each row is as the one above, which is one bit.
  const std::string white_fax = std::string(12, '\xFF') + std::string("\xF0\x01\x00\x10\x00", 5);
  EXPECT_EQ(damage_of({"CCITTFaxDecode", white_fax, 1,
                       "/DecodeParms << /K -1 /Columns 100 /Rows 100 >>"}),
            "");
}

TEST(PdfPictures, WhoseDataIsCutAreTold) {
  const std::string jpeg = grey_jpeg();
  EXPECT_EQ(damage_of({"DCTDecode", jpeg, 8}), "");
  EXPECT_EQ(damage_of({"DCTDecode", jpeg.substr(0, jpeg.size() - 200), 8}),
            "part of a picture on the page is missing (its data has no end)");
}

}  // namespace
