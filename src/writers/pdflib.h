// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_WRITERS_PDFLIB_H
#define ZELK_WRITERS_PDFLIB_H

#include <cstddef>
#include <string>

#include "writers/pdflib_c_api.h"

// One context of the PDF library with its functions as methods, each named for the function that it
// forwards to. The library's errors arrive as PDFlib::Exception; expected failures come back as the
// library reports them (-1 where a handle or a success is due). Nothing is logged or retried.
//
// Strings: names, option lists and keywords end at their first zero byte, and so does the text of
// show_boxed. Other text, contents, titles, descriptions, authors, the value of set_info and the
// strings of utf16_to_utf8 and utf32_to_utf16 are handed over with their length and may hold zero
// bytes; beyond INT_MAX bytes they are cut. String results are copies, empty when the library
// returns no text; pointer results stay the library's and last until the next call.
//
// After an exception only the destructor may be relied on: the document cannot be finished.
// One thread at a time; separate objects are independent. Not copyable.
//
// With a null context every method does nothing and returns 0, 0.0, null or an empty string.
class PDFlib {
 public:
  // An error of the library: see writers/pdflib_exception.h, which hosts have, too.
  class Exception;

  // Shapes of the procedures that the library calls. A null one means the library's own default.
  using AllocProc = void* (*)(PDF* p, std::size_t size, const char* caller);
  using ReallocProc = void* (*)(PDF* p, void* memory, std::size_t size, const char* caller);
  using FreeProc = void (*)(PDF* p, void* memory);
  using WriteProc = std::size_t (*)(PDF* p, void* data, std::size_t size);

  // Makes a context. Throws Exception when the library is not version 7.0 with a table of 1480
  // bytes (before any context is made), when there is no memory, or when the library refuses its
  // first settings; no context is left behind then.
  PDFlib(AllocProc allocproc, ReallocProc reallocproc, FreeProc freeproc, void* opaque);
  // Deletes the context with whatever document is open. An error in there ends the process.
  ~PDFlib() noexcept;
  PDFlib(const PDFlib&) = delete;
  PDFlib& operator=(const PDFlib&) = delete;

  // ---- document ----
  int begin_document(const std::string& filename, const std::string& optlist);
  void begin_document_callback(WriteProc writeproc, const std::string& optlist);
  void end_document(const std::string& optlist);
  int open_file(const std::string& filename);
  void open_mem(WriteProc writeproc);
  void close();
  const char* get_buffer(long* size);
  void create_pvf(const std::string& filename, const void* data, std::size_t size,
                  const std::string& optlist);
  int delete_pvf(const std::string& filename);
  void set_info(const std::string& key, const std::string& value);
  int begin_item(const std::string& tag, const std::string& optlist);
  void activate_item(int id);
  void end_item(int id);

  // ---- page, pattern and template: sizes in points ----
  void begin_page_ext(double width, double height, const std::string& optlist);
  void end_page_ext(const std::string& optlist);
  void begin_page(double width, double height);
  void end_page();
  void suspend_page(const std::string& optlist);
  void resume_page(const std::string& optlist);
  int begin_pattern(double width, double height, double xstep, double ystep, int painttype);
  void end_pattern();
  int begin_template(double width, double height);
  int begin_template_ext(double width, double height, const std::string& optlist);
  void end_template();
  void add_thumbnail(int image);

  // ---- font ----
  int load_font(const std::string& fontname, const std::string& encoding,
                const std::string& optlist);
  int findfont(const std::string& fontname, const std::string& encoding, int embed);
  void setfont(int font, double fontsize);
  void begin_font(const std::string& fontname, double a, double b, double c, double d, double e,
                  double f, const std::string& optlist);
  void end_font();
  void begin_glyph(const std::string& glyphname, double wx, double llx, double lly, double urx,
                   double ury);
  void end_glyph();
  void encoding_set_char(const std::string& encoding, int slot, const std::string& glyphname,
                         int uv);
  double info_font(int font, const std::string& keyword, const std::string& optlist);

  // ---- text: bytes in the encoding of the current font ----
  void show(const std::string& text);
  void show_xy(const std::string& text, double x, double y);
  void continue_text(const std::string& text);
  void xshow(const std::string& text, const double* xadvancelist);
  int show_boxed(const std::string& text, double left, double top, double width, double height,
                 const std::string& mode, const std::string& feature);
  double stringwidth(const std::string& text, int font, double fontsize);
  void set_text_pos(double x, double y);
  void fit_textline(const std::string& text, double x, double y, const std::string& optlist);
  double info_textline(const std::string& text, const std::string& keyword,
                       const std::string& optlist);

  // ---- textflow and table ----
  int create_textflow(const std::string& text, const std::string& optlist);
  int add_textflow(int textflow, const std::string& text, const std::string& optlist);
  std::string fit_textflow(int textflow, double llx, double lly, double urx, double ury,
                           const std::string& optlist);
  double info_textflow(int textflow, const std::string& keyword);
  void delete_textflow(int textflow);
  int add_table_cell(int table, int column, int row, const std::string& text,
                     const std::string& optlist);
  std::string fit_table(int table, double llx, double lly, double urx, double ury,
                        const std::string& optlist);
  double info_table(int table, const std::string& keyword);
  void delete_table(int table, const std::string& optlist);
  double info_matchbox(const std::string& boxname, int num, const std::string& keyword);

  // ---- graphics state and coordinates: angles in degrees ----
  void save();
  void restore();
  void translate(double tx, double ty);
  void scale(double sx, double sy);
  void rotate(double phi);
  void skew(double alpha, double beta);
  void concat(double a, double b, double c, double d, double e, double f);
  void setmatrix(double a, double b, double c, double d, double e, double f);
  void initgraphics();
  int create_gstate(const std::string& optlist);
  void set_gstate(int gstate);
  void setdash(double b, double w);
  void setdashpattern(const std::string& optlist);
  void setpolydash(const float* dasharray, int length);
  void setflat(double flatness);
  void setlinecap(int linecap);
  void setlinejoin(int linejoin);
  void setlinewidth(double width);
  void setmiterlimit(double miter);

  // ---- path ----
  void moveto(double x, double y);
  void lineto(double x, double y);
  void curveto(double x1, double y1, double x2, double y2, double x3, double y3);
  void circle(double x, double y, double r);
  void arc(double x, double y, double r, double alpha, double beta);
  void arcn(double x, double y, double r, double alpha, double beta);
  void rect(double x, double y, double width, double height);
  void closepath();
  void stroke();
  void closepath_stroke();
  void fill();
  void fill_stroke();
  void closepath_fill_stroke();
  void clip();
  void endpath();

  // ---- colour and shading: components from 0 to 1 ----
  void setcolor(const std::string& fstype, const std::string& colorspace, double c1, double c2,
                double c3, double c4);
  int makespotcolor(const std::string& spotname);
  int load_iccprofile(const std::string& profilename, const std::string& optlist);
  int shading(const std::string& shtype, double x0, double y0, double x1, double y1, double c1,
              double c2, double c3, double c4, const std::string& optlist);
  int shading_pattern(int shading, const std::string& optlist);
  void shfill(int shading);

  // ---- image ----
  int load_image(const std::string& imagetype, const std::string& filename,
                 const std::string& optlist);
  int open_image(const std::string& imagetype, const std::string& source, const char* data,
                 long length, int width, int height, int components, int bpc,
                 const std::string& params);
  int open_image_file(const std::string& imagetype, const std::string& filename,
                      const std::string& stringparam, int intparam);
  int open_CCITT(const std::string& filename, int width, int height, int BitReverse, int K,
                 int BlackIs1);
  void fit_image(int image, double x, double y, const std::string& optlist);
  void place_image(int image, double x, double y, double scale);
  void close_image(int image);
  int fill_imageblock(int page, const std::string& blockname, int image,
                      const std::string& optlist);
  int fill_pdfblock(int page, const std::string& blockname, int contents,
                    const std::string& optlist);
  int fill_textblock(int page, const std::string& blockname, const std::string& text,
                     const std::string& optlist);

  // ---- PDF import and queries: a path is taken as it is, never as a format ----
  int open_pdi(const std::string& filename, const std::string& optlist);
  int open_pdi_document(const std::string& filename, const std::string& optlist);
  void close_pdi(int doc);
  void close_pdi_document(int doc);
  int open_pdi_page(int doc, int pagenumber, const std::string& optlist);
  void close_pdi_page(int page);
  void fit_pdi_page(int page, double x, double y, const std::string& optlist);
  void place_pdi_page(int page, double x, double y, double sx, double sy);
  int process_pdi(int doc, int page, const std::string& optlist);
  double get_pdi_value(const std::string& key, int doc, int page);
  std::string get_pdi_parameter(const std::string& key, int doc, int page);
  double pcos_get_number(int doc, const std::string& path);
  std::string pcos_get_string(int doc, const std::string& path);
  const unsigned char* pcos_get_stream(int doc, int* length, const std::string& optlist,
                                       const std::string& path);

  // ---- interactive elements ----
  int create_action(const std::string& type, const std::string& optlist);
  void create_annotation(double llx, double lly, double urx, double ury, const std::string& type,
                         const std::string& optlist);
  int create_bookmark(const std::string& text, const std::string& optlist);
  void create_field(double llx, double lly, double urx, double ury, const std::string& name,
                    const std::string& type, const std::string& optlist);
  void create_fieldgroup(const std::string& name, const std::string& optlist);
  void add_nameddest(const std::string& name, const std::string& optlist);
  int add_bookmark(const std::string& text, int parent, int open);
  void add_note(double llx, double lly, double urx, double ury, const std::string& contents,
                const std::string& title, const std::string& icon, int open);
  void attach_file(double llx, double lly, double urx, double ury, const std::string& filename,
                   const std::string& description, const std::string& author,
                   const std::string& mimetype, const std::string& icon);
  void add_launchlink(double llx, double lly, double urx, double ury, const std::string& filename);
  void add_locallink(double llx, double lly, double urx, double ury, int page,
                     const std::string& dest);
  void add_pdflink(double llx, double lly, double urx, double ury, const std::string& filename,
                   int page, const std::string& dest);
  void add_weblink(double llx, double lly, double urx, double ury, const std::string& url);
  void set_border_color(double red, double green, double blue);
  void set_border_dash(double black, double white);
  void set_border_style(const std::string& style, double width);

  // ---- layers and 3D ----
  int define_layer(const std::string& name, const std::string& optlist);
  void set_layer_dependency(const std::string& type, const std::string& optlist);
  void begin_layer(int layer);
  void end_layer();
  int load_3ddata(const std::string& filename, const std::string& optlist);
  int create_3dview(const std::string& username, const std::string& optlist);

  // ---- parameters, error information and conversion ----
  void set_parameter(const std::string& key, const std::string& value);
  std::string get_parameter(const std::string& key, double modifier);
  void set_value(const std::string& key, double value);
  double get_value(const std::string& key, double modifier);
  std::string get_errmsg();
  int get_errnum();
  std::string get_apiname();
  void* get_opaque();
  std::string utf8_to_utf16(const std::string& utf8string, const std::string& ordering);
  std::string utf16_to_utf8(const std::string& utf16string);
  std::string utf32_to_utf16(const std::string& utf32string, const std::string& ordering);

  // Open to inspection; only the constructor sets them.
  PDF* p = nullptr;
  const PDFlib_api* m_PDFlib_api = nullptr;

 private:
  // Calls `invoke(call)` inside the library's recovery frame and throws the error raised in there.
  void protect(void (*invoke)(void*), void* call);
  // The result of `call`, made inside the recovery frame; its neutral value without a context.
  template <typename Call>
  auto guarded(Call call);
  // The result of an entry of the table, called with the context and the arguments.
  template <typename Entry, typename... Arguments>
  auto forward(Entry PDFlib_api::*entry, const Arguments&... arguments);
};

#include "writers/pdflib_exception.h"  // completes PDFlib

#endif  // ZELK_WRITERS_PDFLIB_H
