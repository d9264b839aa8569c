// SPDX-License-Identifier: Apache-2.0
// The methods that forward to the library.
#include "writers/pdflib.h"

#include "writers/pdflib_call.h"

using pdflib_call::length_of;
using pdflib_call::string_of;

// ---- document ----
int PDFlib::begin_document(const std::string& filename, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_begin_document, filename, 0, optlist);
}
void PDFlib::begin_document_callback(WriteProc writeproc, const std::string& optlist) {
  forward(&PDFlib_api::PDF_begin_document_callback, writeproc, optlist);
}
void PDFlib::end_document(const std::string& optlist) {
  forward(&PDFlib_api::PDF_end_document, optlist);
}
int PDFlib::open_file(const std::string& filename) {
  return forward(&PDFlib_api::PDF_open_file, filename);
}
void PDFlib::open_mem(WriteProc writeproc) {
  forward(&PDFlib_api::PDF_open_mem, writeproc);
}
void PDFlib::close() {
  forward(&PDFlib_api::PDF_close);
}
const char* PDFlib::get_buffer(long* size) {
  return forward(&PDFlib_api::PDF_get_buffer, size);
}
void PDFlib::create_pvf(const std::string& filename, const void* data, std::size_t size,
                        const std::string& optlist) {
  forward(&PDFlib_api::PDF_create_pvf, filename, 0, data, size, optlist);
}
int PDFlib::delete_pvf(const std::string& filename) {
  return forward(&PDFlib_api::PDF_delete_pvf, filename, 0);
}
void PDFlib::set_info(const std::string& key, const std::string& value) {
  forward(&PDFlib_api::PDF_set_info2, key, value, length_of(value));
}
int PDFlib::begin_item(const std::string& tag, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_begin_item, tag, optlist);
}
void PDFlib::activate_item(int id) {
  forward(&PDFlib_api::PDF_activate_item, id);
}
void PDFlib::end_item(int id) {
  forward(&PDFlib_api::PDF_end_item, id);
}

// ---- page, pattern and template ----
void PDFlib::begin_page_ext(double width, double height, const std::string& optlist) {
  forward(&PDFlib_api::PDF_begin_page_ext, width, height, optlist);
}
void PDFlib::end_page_ext(const std::string& optlist) {
  forward(&PDFlib_api::PDF_end_page_ext, optlist);
}
void PDFlib::begin_page(double width, double height) {
  forward(&PDFlib_api::PDF_begin_page, width, height);
}
void PDFlib::end_page() {
  forward(&PDFlib_api::PDF_end_page);
}
void PDFlib::suspend_page(const std::string& optlist) {
  forward(&PDFlib_api::PDF_suspend_page, optlist);
}
void PDFlib::resume_page(const std::string& optlist) {
  forward(&PDFlib_api::PDF_resume_page, optlist);
}
int PDFlib::begin_pattern(double width, double height, double xstep, double ystep, int painttype) {
  return forward(&PDFlib_api::PDF_begin_pattern, width, height, xstep, ystep, painttype);
}
void PDFlib::end_pattern() {
  forward(&PDFlib_api::PDF_end_pattern);
}
int PDFlib::begin_template(double width, double height) {
  return forward(&PDFlib_api::PDF_begin_template, width, height);
}
int PDFlib::begin_template_ext(double width, double height, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_begin_template_ext, width, height, optlist);
}
void PDFlib::end_template() {
  forward(&PDFlib_api::PDF_end_template);
}
void PDFlib::add_thumbnail(int image) {
  forward(&PDFlib_api::PDF_add_thumbnail, image);
}

// ---- font ----
int PDFlib::load_font(const std::string& fontname, const std::string& encoding,
                      const std::string& optlist) {
  return forward(&PDFlib_api::PDF_load_font, fontname, 0, encoding, optlist);
}
int PDFlib::findfont(const std::string& fontname, const std::string& encoding, int embed) {
  return forward(&PDFlib_api::PDF_findfont, fontname, encoding, embed);
}
void PDFlib::setfont(int font, double fontsize) {
  forward(&PDFlib_api::PDF_setfont, font, fontsize);
}
void PDFlib::begin_font(const std::string& fontname, double a, double b, double c, double d,
                        double e, double f, const std::string& optlist) {
  forward(&PDFlib_api::PDF_begin_font, fontname, 0, a, b, c, d, e, f, optlist);
}
void PDFlib::end_font() {
  forward(&PDFlib_api::PDF_end_font);
}
void PDFlib::begin_glyph(const std::string& glyphname, double wx, double llx, double lly,
                         double urx, double ury) {
  forward(&PDFlib_api::PDF_begin_glyph, glyphname, wx, llx, lly, urx, ury);
}
void PDFlib::end_glyph() {
  forward(&PDFlib_api::PDF_end_glyph);
}
void PDFlib::encoding_set_char(const std::string& encoding, int slot, const std::string& glyphname,
                               int uv) {
  forward(&PDFlib_api::PDF_encoding_set_char, encoding, slot, glyphname, uv);
}
double PDFlib::info_font(int font, const std::string& keyword, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_info_font, font, keyword, optlist);
}

// ---- text ----
void PDFlib::show(const std::string& text) {
  forward(&PDFlib_api::PDF_show2, text, length_of(text));
}
void PDFlib::show_xy(const std::string& text, double x, double y) {
  forward(&PDFlib_api::PDF_show_xy2, text, length_of(text), x, y);
}
void PDFlib::continue_text(const std::string& text) {
  forward(&PDFlib_api::PDF_continue_text2, text, length_of(text));
}
void PDFlib::xshow(const std::string& text, const double* xadvancelist) {
  forward(&PDFlib_api::PDF_xshow, text, length_of(text), xadvancelist);
}
int PDFlib::show_boxed(const std::string& text, double left, double top, double width,
                       double height, const std::string& mode, const std::string& feature) {
  return forward(&PDFlib_api::PDF_show_boxed, text, left, top, width, height, mode, feature);
}
double PDFlib::stringwidth(const std::string& text, int font, double fontsize) {
  return forward(&PDFlib_api::PDF_stringwidth2, text, length_of(text), font, fontsize);
}
void PDFlib::set_text_pos(double x, double y) {
  forward(&PDFlib_api::PDF_set_text_pos, x, y);
}
void PDFlib::fit_textline(const std::string& text, double x, double y, const std::string& optlist) {
  forward(&PDFlib_api::PDF_fit_textline, text, length_of(text), x, y, optlist);
}
double PDFlib::info_textline(const std::string& text, const std::string& keyword,
                             const std::string& optlist) {
  return forward(&PDFlib_api::PDF_info_textline, text, length_of(text), keyword, optlist);
}

// ---- textflow and table ----
int PDFlib::create_textflow(const std::string& text, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_create_textflow, text, length_of(text), optlist);
}
int PDFlib::add_textflow(int textflow, const std::string& text, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_add_textflow, textflow, text, length_of(text), optlist);
}
std::string PDFlib::fit_textflow(int textflow, double llx, double lly, double urx, double ury,
                                 const std::string& optlist) {
  return string_of(forward(&PDFlib_api::PDF_fit_textflow, textflow, llx, lly, urx, ury, optlist));
}
double PDFlib::info_textflow(int textflow, const std::string& keyword) {
  return forward(&PDFlib_api::PDF_info_textflow, textflow, keyword);
}
void PDFlib::delete_textflow(int textflow) {
  forward(&PDFlib_api::PDF_delete_textflow, textflow);
}
int PDFlib::add_table_cell(int table, int column, int row, const std::string& text,
                           const std::string& optlist) {
  return forward(&PDFlib_api::PDF_add_table_cell, table, column, row, text, length_of(text),
                 optlist);
}
std::string PDFlib::fit_table(int table, double llx, double lly, double urx, double ury,
                              const std::string& optlist) {
  return string_of(forward(&PDFlib_api::PDF_fit_table, table, llx, lly, urx, ury, optlist));
}
double PDFlib::info_table(int table, const std::string& keyword) {
  return forward(&PDFlib_api::PDF_info_table, table, keyword);
}
void PDFlib::delete_table(int table, const std::string& optlist) {
  forward(&PDFlib_api::PDF_delete_table, table, optlist);
}
double PDFlib::info_matchbox(const std::string& boxname, int num, const std::string& keyword) {
  return forward(&PDFlib_api::PDF_info_matchbox, boxname, 0, num, keyword);
}

// ---- graphics state and coordinates ----
void PDFlib::save() {
  forward(&PDFlib_api::PDF_save);
}
void PDFlib::restore() {
  forward(&PDFlib_api::PDF_restore);
}
void PDFlib::translate(double tx, double ty) {
  forward(&PDFlib_api::PDF_translate, tx, ty);
}
void PDFlib::scale(double sx, double sy) {
  forward(&PDFlib_api::PDF_scale, sx, sy);
}
void PDFlib::rotate(double phi) {
  forward(&PDFlib_api::PDF_rotate, phi);
}
void PDFlib::skew(double alpha, double beta) {
  forward(&PDFlib_api::PDF_skew, alpha, beta);
}
void PDFlib::concat(double a, double b, double c, double d, double e, double f) {
  forward(&PDFlib_api::PDF_concat, a, b, c, d, e, f);
}
void PDFlib::setmatrix(double a, double b, double c, double d, double e, double f) {
  forward(&PDFlib_api::PDF_setmatrix, a, b, c, d, e, f);
}
void PDFlib::initgraphics() {
  forward(&PDFlib_api::PDF_initgraphics);
}
int PDFlib::create_gstate(const std::string& optlist) {
  return forward(&PDFlib_api::PDF_create_gstate, optlist);
}
void PDFlib::set_gstate(int gstate) {
  forward(&PDFlib_api::PDF_set_gstate, gstate);
}
void PDFlib::setdash(double b, double w) {
  forward(&PDFlib_api::PDF_setdash, b, w);
}
void PDFlib::setdashpattern(const std::string& optlist) {
  forward(&PDFlib_api::PDF_setdashpattern, optlist);
}
void PDFlib::setpolydash(const float* dasharray, int length) {
  forward(&PDFlib_api::PDF_setpolydash, dasharray, length);
}
void PDFlib::setflat(double flatness) {
  forward(&PDFlib_api::PDF_setflat, flatness);
}
void PDFlib::setlinecap(int linecap) {
  forward(&PDFlib_api::PDF_setlinecap, linecap);
}
void PDFlib::setlinejoin(int linejoin) {
  forward(&PDFlib_api::PDF_setlinejoin, linejoin);
}
void PDFlib::setlinewidth(double width) {
  forward(&PDFlib_api::PDF_setlinewidth, width);
}
void PDFlib::setmiterlimit(double miter) {
  forward(&PDFlib_api::PDF_setmiterlimit, miter);
}

// ---- path ----
void PDFlib::moveto(double x, double y) {
  forward(&PDFlib_api::PDF_moveto, x, y);
}
void PDFlib::lineto(double x, double y) {
  forward(&PDFlib_api::PDF_lineto, x, y);
}
void PDFlib::curveto(double x1, double y1, double x2, double y2, double x3, double y3) {
  forward(&PDFlib_api::PDF_curveto, x1, y1, x2, y2, x3, y3);
}
void PDFlib::circle(double x, double y, double r) {
  forward(&PDFlib_api::PDF_circle, x, y, r);
}
void PDFlib::arc(double x, double y, double r, double alpha, double beta) {
  forward(&PDFlib_api::PDF_arc, x, y, r, alpha, beta);
}
void PDFlib::arcn(double x, double y, double r, double alpha, double beta) {
  forward(&PDFlib_api::PDF_arcn, x, y, r, alpha, beta);
}
void PDFlib::rect(double x, double y, double width, double height) {
  forward(&PDFlib_api::PDF_rect, x, y, width, height);
}
void PDFlib::closepath() {
  forward(&PDFlib_api::PDF_closepath);
}
void PDFlib::stroke() {
  forward(&PDFlib_api::PDF_stroke);
}
void PDFlib::closepath_stroke() {
  forward(&PDFlib_api::PDF_closepath_stroke);
}
void PDFlib::fill() {
  forward(&PDFlib_api::PDF_fill);
}
void PDFlib::fill_stroke() {
  forward(&PDFlib_api::PDF_fill_stroke);
}
void PDFlib::closepath_fill_stroke() {
  forward(&PDFlib_api::PDF_closepath_fill_stroke);
}
void PDFlib::clip() {
  forward(&PDFlib_api::PDF_clip);
}
void PDFlib::endpath() {
  forward(&PDFlib_api::PDF_endpath);
}

// ---- colour and shading ----
void PDFlib::setcolor(const std::string& fstype, const std::string& colorspace, double c1,
                      double c2, double c3, double c4) {
  forward(&PDFlib_api::PDF_setcolor, fstype, colorspace, c1, c2, c3, c4);
}
int PDFlib::makespotcolor(const std::string& spotname) {
  return forward(&PDFlib_api::PDF_makespotcolor, spotname, 0);
}
int PDFlib::load_iccprofile(const std::string& profilename, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_load_iccprofile, profilename, 0, optlist);
}
int PDFlib::shading(const std::string& shtype, double x0, double y0, double x1, double y1,
                    double c1, double c2, double c3, double c4, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_shading, shtype, x0, y0, x1, y1, c1, c2, c3, c4, optlist);
}
int PDFlib::shading_pattern(int shading, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_shading_pattern, shading, optlist);
}
void PDFlib::shfill(int shading) {
  forward(&PDFlib_api::PDF_shfill, shading);
}

// ---- image ----
int PDFlib::load_image(const std::string& imagetype, const std::string& filename,
                       const std::string& optlist) {
  return forward(&PDFlib_api::PDF_load_image, imagetype, filename, 0, optlist);
}
int PDFlib::open_image(const std::string& imagetype, const std::string& source, const char* data,
                       long length, int width, int height, int components, int bpc,
                       const std::string& params) {
  return forward(&PDFlib_api::PDF_open_image, imagetype, source, data, length, width, height,
                 components, bpc, params);
}
int PDFlib::open_image_file(const std::string& imagetype, const std::string& filename,
                            const std::string& stringparam, int intparam) {
  return forward(&PDFlib_api::PDF_open_image_file, imagetype, filename, stringparam, intparam);
}
int PDFlib::open_CCITT(const std::string& filename, int width, int height, int BitReverse, int K,
                       int BlackIs1) {
  return forward(&PDFlib_api::PDF_open_CCITT, filename, width, height, BitReverse, K, BlackIs1);
}
void PDFlib::fit_image(int image, double x, double y, const std::string& optlist) {
  forward(&PDFlib_api::PDF_fit_image, image, x, y, optlist);
}
void PDFlib::place_image(int image, double x, double y, double scale) {
  forward(&PDFlib_api::PDF_place_image, image, x, y, scale);
}
void PDFlib::close_image(int image) {
  forward(&PDFlib_api::PDF_close_image, image);
}
int PDFlib::fill_imageblock(int page, const std::string& blockname, int image,
                            const std::string& optlist) {
  return forward(&PDFlib_api::PDF_fill_imageblock, page, blockname, image, optlist);
}
int PDFlib::fill_pdfblock(int page, const std::string& blockname, int contents,
                          const std::string& optlist) {
  return forward(&PDFlib_api::PDF_fill_pdfblock, page, blockname, contents, optlist);
}
int PDFlib::fill_textblock(int page, const std::string& blockname, const std::string& text,
                           const std::string& optlist) {
  return forward(&PDFlib_api::PDF_fill_textblock, page, blockname, text, length_of(text), optlist);
}

// ---- PDF import and queries ----
int PDFlib::open_pdi(const std::string& filename, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_open_pdi, filename, optlist, 0);
}
int PDFlib::open_pdi_document(const std::string& filename, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_open_pdi_document, filename, 0, optlist);
}
void PDFlib::close_pdi(int doc) {
  forward(&PDFlib_api::PDF_close_pdi, doc);
}
void PDFlib::close_pdi_document(int doc) {
  forward(&PDFlib_api::PDF_close_pdi_document, doc);
}
int PDFlib::open_pdi_page(int doc, int pagenumber, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_open_pdi_page, doc, pagenumber, optlist);
}
void PDFlib::close_pdi_page(int page) {
  forward(&PDFlib_api::PDF_close_pdi_page, page);
}
void PDFlib::fit_pdi_page(int page, double x, double y, const std::string& optlist) {
  forward(&PDFlib_api::PDF_fit_pdi_page, page, x, y, optlist);
}
void PDFlib::place_pdi_page(int page, double x, double y, double sx, double sy) {
  forward(&PDFlib_api::PDF_place_pdi_page, page, x, y, sx, sy);
}
int PDFlib::process_pdi(int doc, int page, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_process_pdi, doc, page, optlist);
}
double PDFlib::get_pdi_value(const std::string& key, int doc, int page) {
  return forward(&PDFlib_api::PDF_get_pdi_value, key, doc, page, 0);
}
std::string PDFlib::get_pdi_parameter(const std::string& key, int doc, int page) {
  int size = 0;
  const char* const text = forward(&PDFlib_api::PDF_get_pdi_parameter, key, doc, page, 0, &size);
  return string_of(text);
}
double PDFlib::pcos_get_number(int doc, const std::string& path) {
  return guarded([&] { return PDF_pcos_get_number(p, doc, "%s", path.c_str()); });
}
std::string PDFlib::pcos_get_string(int doc, const std::string& path) {
  return string_of(guarded([&] { return PDF_pcos_get_string(p, doc, "%s", path.c_str()); }));
}
const unsigned char* PDFlib::pcos_get_stream(int doc, int* length, const std::string& optlist,
                                             const std::string& path) {
  return guarded(
      [&] { return PDF_pcos_get_stream(p, doc, length, optlist.c_str(), "%s", path.c_str()); });
}

// ---- interactive elements ----
int PDFlib::create_action(const std::string& type, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_create_action, type, optlist);
}
void PDFlib::create_annotation(double llx, double lly, double urx, double ury,
                               const std::string& type, const std::string& optlist) {
  forward(&PDFlib_api::PDF_create_annotation, llx, lly, urx, ury, type, optlist);
}
int PDFlib::create_bookmark(const std::string& text, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_create_bookmark, text, length_of(text), optlist);
}
void PDFlib::create_field(double llx, double lly, double urx, double ury, const std::string& name,
                          const std::string& type, const std::string& optlist) {
  forward(&PDFlib_api::PDF_create_field, llx, lly, urx, ury, name, 0, type, optlist);
}
void PDFlib::create_fieldgroup(const std::string& name, const std::string& optlist) {
  forward(&PDFlib_api::PDF_create_fieldgroup, name, 0, optlist);
}
void PDFlib::add_nameddest(const std::string& name, const std::string& optlist) {
  forward(&PDFlib_api::PDF_add_nameddest, name, 0, optlist);
}
int PDFlib::add_bookmark(const std::string& text, int parent, int open) {
  return forward(&PDFlib_api::PDF_add_bookmark2, text, length_of(text), parent, open);
}
void PDFlib::add_note(double llx, double lly, double urx, double ury, const std::string& contents,
                      const std::string& title, const std::string& icon, int open) {
  forward(&PDFlib_api::PDF_add_note2, llx, lly, urx, ury, contents, length_of(contents), title,
          length_of(title), icon, open);
}
void PDFlib::attach_file(double llx, double lly, double urx, double ury,
                         const std::string& filename, const std::string& description,
                         const std::string& author, const std::string& mimetype,
                         const std::string& icon) {
  forward(&PDFlib_api::PDF_attach_file2, llx, lly, urx, ury, filename, 0, description,
          length_of(description), author, length_of(author), mimetype, icon);
}
void PDFlib::add_launchlink(double llx, double lly, double urx, double ury,
                            const std::string& filename) {
  forward(&PDFlib_api::PDF_add_launchlink, llx, lly, urx, ury, filename);
}
void PDFlib::add_locallink(double llx, double lly, double urx, double ury, int page,
                           const std::string& dest) {
  forward(&PDFlib_api::PDF_add_locallink, llx, lly, urx, ury, page, dest);
}
void PDFlib::add_pdflink(double llx, double lly, double urx, double ury,
                         const std::string& filename, int page, const std::string& dest) {
  forward(&PDFlib_api::PDF_add_pdflink, llx, lly, urx, ury, filename, page, dest);
}
void PDFlib::add_weblink(double llx, double lly, double urx, double ury, const std::string& url) {
  forward(&PDFlib_api::PDF_add_weblink, llx, lly, urx, ury, url);
}
void PDFlib::set_border_color(double red, double green, double blue) {
  forward(&PDFlib_api::PDF_set_border_color, red, green, blue);
}
void PDFlib::set_border_dash(double black, double white) {
  forward(&PDFlib_api::PDF_set_border_dash, black, white);
}
void PDFlib::set_border_style(const std::string& style, double width) {
  forward(&PDFlib_api::PDF_set_border_style, style, width);
}

// ---- layers and 3D ----
int PDFlib::define_layer(const std::string& name, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_define_layer, name, 0, optlist);
}
void PDFlib::set_layer_dependency(const std::string& type, const std::string& optlist) {
  forward(&PDFlib_api::PDF_set_layer_dependency, type, optlist);
}
void PDFlib::begin_layer(int layer) {
  forward(&PDFlib_api::PDF_begin_layer, layer);
}
void PDFlib::end_layer() {
  forward(&PDFlib_api::PDF_end_layer);
}
int PDFlib::load_3ddata(const std::string& filename, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_load_3ddata, filename, 0, optlist);
}
int PDFlib::create_3dview(const std::string& username, const std::string& optlist) {
  return forward(&PDFlib_api::PDF_create_3dview, username, 0, optlist);
}

// ---- parameters, error information and conversion ----
void PDFlib::set_parameter(const std::string& key, const std::string& value) {
  forward(&PDFlib_api::PDF_set_parameter, key, value);
}
std::string PDFlib::get_parameter(const std::string& key, double modifier) {
  return string_of(forward(&PDFlib_api::PDF_get_parameter, key, modifier));
}
void PDFlib::set_value(const std::string& key, double value) {
  forward(&PDFlib_api::PDF_set_value, key, value);
}
double PDFlib::get_value(const std::string& key, double modifier) {
  return forward(&PDFlib_api::PDF_get_value, key, modifier);
}
std::string PDFlib::get_errmsg() {
  return string_of(forward(&PDFlib_api::PDF_get_errmsg));
}
int PDFlib::get_errnum() {
  return forward(&PDFlib_api::PDF_get_errnum);
}
std::string PDFlib::get_apiname() {
  return string_of(forward(&PDFlib_api::PDF_get_apiname));
}
void* PDFlib::get_opaque() {
  return forward(&PDFlib_api::PDF_get_opaque);
}
std::string PDFlib::utf8_to_utf16(const std::string& utf8string, const std::string& ordering) {
  int size = 0;
  const char* const text = forward(&PDFlib_api::PDF_utf8_to_utf16, utf8string, ordering, &size);
  return string_of(text, size);
}
std::string PDFlib::utf16_to_utf8(const std::string& utf16string) {
  int size = 0;
  const char* const text =
      forward(&PDFlib_api::PDF_utf16_to_utf8, utf16string, length_of(utf16string), &size);
  return string_of(text, size);
}
std::string PDFlib::utf32_to_utf16(const std::string& utf32string, const std::string& ordering) {
  int size = 0;
  const char* const text = forward(&PDFlib_api::PDF_utf32_to_utf16, utf32string,
                                   length_of(utf32string), ordering, &size);
  return string_of(text, size);
}
