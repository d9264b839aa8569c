// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PDFPRODUCER_PAGE_CONTENT_H
#define ZELK_PDFPRODUCER_PAGE_CONTENT_H

#include <cstdint>
#include <string>
#include <string_view>

#include "pdfproducer/gbk_text.h"

namespace zelk::pdf {

// The content stream of a page: text and images in painting order, in points from the lower left
// corner.
//
// Characters may come one by one, each with a size and a place of its own, and are folded into as
// few operators as show the same page: a character that the one before leads to is just a byte.
class PageContent {
 public:
  void set_fill_color(double red, double green, double blue);
  void set_size(double size) { _wanted_size = quantum(size); }
  // Where the next character is set. Places beyond 10,000,000 points are brought to that distance.
  void move_to(double x, double y);
  // Sets a character and moves on by its width.
  void show(const GbkCharacter& character);
  // Paints the image resource, as it is named in the page's resources, over everything so far.
  void paint_image(std::string_view name, double x, double y, double width, double height);

  // Ends the stream and gives it away.
  std::string finish();

 private:
  // Lengths are whole hundredths of a point, or finer ones for text smaller than a point, so that
  // what is written is what is reckoned with.
  struct Quantum {
    double value = 0;
    int decimals = 2;
    bool operator==(const Quantum&) const = default;
  };

  static Quantum quantum(double size);
  void begin_text();
  void end_text();
  void select_font(const char* resource);
  void place();
  void append(char byte);
  void end_run();

  std::string _content;
  std::string _run;         // strings and adjustments since the last operator
  bool _in_text = false;    // between BT and ET
  bool _in_string = false;  // within a string of the run
  bool _adjusted = false;   // the run holds an adjustment

  Quantum _wanted_size;
  double _wanted_x = 0;
  std::int64_t _wanted_y = 0;  // hundredths of a point, as the two below

  const char* _font = nullptr;
  Quantum _size;
  std::int64_t _line_x = 0;  // where the viewer's text line begins
  std::int64_t _line_y = 0;
  double _pen = 0;  // where the viewer would set the next character
};

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_PAGE_CONTENT_H
