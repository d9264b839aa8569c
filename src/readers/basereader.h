// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_BASEREADER_H
#define ZELK_READERS_BASEREADER_H

#include <string>

struct FIBITMAP;

// A page source: turns one document into 24-bit page bitmaps. The defaults describe a document that
// cannot be opened.
//
// The destructor is not virtual, on purpose: readers are deleted as the base class (delete_reader),
// the destructors of derived classes do not run then, and PDFium stays initialised for the life of
// the process. So a reader releases what it holds in free_image, and derived classes have only
// members that need no destructor.
class basereader {
 public:
  // cppcheck-suppress uninitMemberVar ; _resulotion is never read
  basereader() = default;
  ~basereader() = default;
  basereader(const basereader&) = delete;
  basereader& operator=(const basereader&) = delete;

  // Opens the document. `resulotion` is the rendering resolution in dots per inch; only the PDF
  // reader uses it. Returns the page count, 0 on any failure. Called once for a reader.
  virtual int load_image(const char* image_document_file, int resulotion);

  // Page `id`, counted from 0, as a 24-bit bitmap, or null when there is no such page or it cannot
  // be produced. The caller owns the bitmap and releases it with FreeImage_Unload, exactly once.
  virtual FIBITMAP* get_cur_image(int id);

  // Releases what the reader holds of the document. No page may be asked for afterwards.
  virtual void free_image();

  std::string _image_document;  // path of the open document; only tiffreader fills it
  int _page_num = 0;            // pages of the open document; bounds every page index
  int _resulotion;              // declared, never read or written
};

// Deletes a reader as its base class: the base part is destroyed and the storage freed. A plain
// delete through the non-virtual destructor would free the storage with the wrong size.
void delete_reader(basereader* reader);

#endif  // ZELK_READERS_BASEREADER_H
