// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PDFPRODUCER_TEXT_FONT_H
#define ZELK_PDFPRODUCER_TEXT_FONT_H

#include <cstdint>
#include <map>

#include "pdfproducer/gbk_text.h"
#include "pdfproducer/object_file.h"

namespace zelk::pdf {

// Font of the text layer: STSong-Light, not embedded, which every viewer replaces by a font of its
// own for simplified Chinese. Han characters are 1 em wide, ASCII half of that.
//
// Two font resources show the same glyphs: one in GB-EUC-H, and, since that encoding lacks them,
// one in GBK-EUC-H for the characters that GBK added.
class TextFont {
 public:
  static constexpr const char* kName = "STSong-Light";
  static constexpr const char* kEncoding = "GB-EUC-H";

  // Which characters a page shows.
  class Used {
   public:
    void add(const GbkCharacter& character);
    void add(const Used& other);
    bool empty() const { return _gb2312.empty() && _extension.empty(); }

   private:
    friend class TextFont;
    std::map<std::uint16_t, char16_t> _gb2312;
    std::map<std::uint16_t, char16_t> _extension;
  };

  static const char* resource_name(GbkPlane plane);
  static double width(const GbkCharacter& character);  // in em

  // Adds the font resources for the characters used, with their maps to Unicode, and the dictionary
  // under the given number that names them.
  static void write(ObjectFile& file, int resources, const Used& used);
};

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_TEXT_FONT_H
