// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PDFPRODUCER_DOCUMENT_H
#define ZELK_PDFPRODUCER_DOCUMENT_H

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "pdfproducer/jpeg_header.h"
#include "pdfproducer/object_file.h"
#include "pdfproducer/page_content.h"
#include "pdfproducer/page_tree.h"
#include "pdfproducer/text_font.h"

namespace zelk::pdf {

// A PDF document in the making. Each page goes to the file when it ends; without finish() the file
// never appears. Failures are thrown as Error.
class Document {
 public:
  // Throws Error (kOutput) when the file cannot be created.
  explicit Document(const std::string& name) : _name(name), _file(name), _pages(_file) {}

  const std::string& name() const { return _name; }
  // True when a page has ended.
  bool has_pages() const { return !_pages.empty(); }
  // Drops a page that is still open, completes the file and puts it in its place. A PDF must have
  // pages.
  void finish();

  // Handle of the one font, always 0.
  int load_font();

  // Starts a page of the given size in points; a size of 0 is to be set by fit_image. Other sides
  // are written as at least 0.0001 and at most 10,000,000. A page that is still open is dropped
  // with the images opened on it.
  void begin_page(double width, double height);
  bool page_is_open() const { return _page != nullptr; }

  // The next five need an open page.
  void set_fill_color(double red, double green, double blue);
  void set_font(int font, double size);
  void show(std::string_view text, double x, double y);
  // Paints an image in its natural size with its lower left corner at (x, y). The page's upper
  // right corner becomes the image's.
  void fit_image(int image, double x, double y);
  // Throws when the page has no size; it then stays open.
  void end_page();

  // Takes a copy of a JPEG and returns the lowest handle that is free. Throws Error (kImage) for
  // data that cannot be placed.
  int open_image(std::string_view jpeg);
  void close_image(int image);

 private:
  struct Image {
    JpegHeader header;
    std::string jpeg;  // until it is in the file
    int number = 0;    // in the file; 0 while no page that shows the image has ended
  };

  struct Page {
    double width = 0;
    double height = 0;
    PageContent content;
    bool has_font = false;
    TextFont::Used used;
    std::vector<std::shared_ptr<Image>> images;  // /I0, /I1 ... in its resources
    std::vector<std::weak_ptr<Image>> opened;    // on this page
  };

  void drop_page();
  std::shared_ptr<Image>& image_at(int handle);
  void write_image(Image& image);
  QPDFObjectHandle resources(const Page& page);

  std::string _name;
  ObjectFile _file;
  PageTree _pages;
  std::unique_ptr<Page> _page;
  std::vector<std::shared_ptr<Image>> _images;  // by handle, null where one was closed
  bool _has_font = false;
  std::unique_ptr<GbkDecoder> _decoder;
  int _fonts = 0;  // number of the dictionary that names the font resources, 0 without text
  TextFont::Used _used;
};

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_DOCUMENT_H
