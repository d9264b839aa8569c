// SPDX-License-Identifier: Apache-2.0
// The functions of the PDF library that are reached through its function table: result, name
// without its prefix, parameters. A length beside a name string is 0 for text that ends at its zero
// byte.
#ifndef ZELK_PDFPRODUCER_PDF_API_ENTRIES_H
#define ZELK_PDFPRODUCER_PDF_API_ENTRIES_H

// clang-format off
#define ZELK_PDF_API_ENTRIES(X) \
  X(void, activate_item, (PDF* p, int id)) \
  X(int, add_bookmark2, (PDF* p, const char* text, int len, int parent, int open)) \
  X(void, add_launchlink, (PDF* p, double llx, double lly, double urx, double ury, \
    const char* filename)) \
  X(void, add_locallink, (PDF* p, double llx, double lly, double urx, double ury, int page, \
    const char* dest)) \
  X(void, add_nameddest, (PDF* p, const char* name, int len, const char* optlist)) \
  X(void, add_note2, (PDF* p, double llx, double lly, double urx, double ury, \
    const char* contents, int len_contents, const char* title, int len_title, const char* icon, \
    int open)) \
  X(void, add_pdflink, (PDF* p, double llx, double lly, double urx, double ury, \
    const char* filename, int page, const char* dest)) \
  X(int, add_table_cell, (PDF* p, int table, int column, int row, const char* text, int len, \
    const char* optlist)) \
  X(int, add_textflow, (PDF* p, int textflow, const char* text, int len, const char* optlist)) \
  X(void, add_thumbnail, (PDF* p, int image)) \
  X(void, add_weblink, (PDF* p, double llx, double lly, double urx, double ury, const char* url)) \
  X(void, arc, (PDF* p, double x, double y, double r, double alpha, double beta)) \
  X(void, arcn, (PDF* p, double x, double y, double r, double alpha, double beta)) \
  X(void, attach_file2, (PDF* p, double llx, double lly, double urx, double ury, \
    const char* filename, int len_filename, const char* description, int len_description, \
    const char* author, int len_author, const char* mimetype, const char* icon)) \
  X(int, begin_document, (PDF* p, const char* filename, int len, const char* optlist)) \
  X(void, begin_document_callback, (PDF* p, size_t (*writeproc)(PDF* p, void* data, \
    size_t size), const char* optlist)) \
  X(void, begin_font, (PDF* p, const char* fontname, int reserved, double a, double b, \
    double c, double d, double e, double f, const char* optlist)) \
  X(void, begin_glyph, (PDF* p, const char* glyphname, double wx, double llx, double lly, \
    double urx, double ury)) \
  X(int, begin_item, (PDF* p, const char* tag, const char* optlist)) \
  X(void, begin_layer, (PDF* p, int layer)) \
  X(void, begin_page, (PDF* p, double width, double height)) \
  X(void, begin_page_ext, (PDF* p, double width, double height, const char* optlist)) \
  X(int, begin_pattern, (PDF* p, double width, double height, double xstep, double ystep, \
    int painttype)) \
  X(int, begin_template, (PDF* p, double width, double height)) \
  X(int, begin_template_ext, (PDF* p, double width, double height, const char* optlist)) \
  X(void, circle, (PDF* p, double x, double y, double r)) \
  X(void, clip, (PDF* p)) \
  X(void, close, (PDF* p)) \
  X(void, close_image, (PDF* p, int image)) \
  X(void, close_pdi, (PDF* p, int doc)) \
  X(void, close_pdi_document, (PDF* p, int doc)) \
  X(void, close_pdi_page, (PDF* p, int page)) \
  X(void, closepath, (PDF* p)) \
  X(void, closepath_fill_stroke, (PDF* p)) \
  X(void, closepath_stroke, (PDF* p)) \
  X(void, concat, (PDF* p, double a, double b, double c, double d, double e, double f)) \
  X(void, continue_text2, (PDF* p, const char* text, int len)) \
  X(int, create_3dview, (PDF* p, const char* username, int len, const char* optlist)) \
  X(int, create_action, (PDF* p, const char* type, const char* optlist)) \
  X(void, create_annotation, (PDF* p, double llx, double lly, double urx, double ury, \
    const char* type, const char* optlist)) \
  X(int, create_bookmark, (PDF* p, const char* text, int len, const char* optlist)) \
  X(void, create_field, (PDF* p, double llx, double lly, double urx, double ury, \
    const char* name, int len, const char* type, const char* optlist)) \
  X(void, create_fieldgroup, (PDF* p, const char* name, int len, const char* optlist)) \
  X(int, create_gstate, (PDF* p, const char* optlist)) \
  X(void, create_pvf, (PDF* p, const char* filename, int len, const void* data, size_t size, \
    const char* optlist)) \
  X(int, create_textflow, (PDF* p, const char* text, int len, const char* optlist)) \
  X(void, curveto, (PDF* p, double x1, double y1, double x2, double y2, double x3, double y3)) \
  X(int, define_layer, (PDF* p, const char* name, int len, const char* optlist)) \
  X(int, delete_pvf, (PDF* p, const char* filename, int len)) \
  X(void, delete_table, (PDF* p, int table, const char* optlist)) \
  X(void, delete_textflow, (PDF* p, int textflow)) \
  X(void, encoding_set_char, (PDF* p, const char* encoding, int slot, const char* glyphname, \
    int uv)) \
  X(void, end_document, (PDF* p, const char* optlist)) \
  X(void, end_font, (PDF* p)) \
  X(void, end_glyph, (PDF* p)) \
  X(void, end_item, (PDF* p, int id)) \
  X(void, end_layer, (PDF* p)) \
  X(void, end_page, (PDF* p)) \
  X(void, end_page_ext, (PDF* p, const char* optlist)) \
  X(void, end_pattern, (PDF* p)) \
  X(void, end_template, (PDF* p)) \
  X(void, endpath, (PDF* p)) \
  X(void, fill, (PDF* p)) \
  X(int, fill_imageblock, (PDF* p, int page, const char* blockname, int image, \
    const char* optlist)) \
  X(int, fill_pdfblock, (PDF* p, int page, const char* blockname, int contents, \
    const char* optlist)) \
  X(int, fill_textblock, (PDF* p, int page, const char* blockname, const char* text, int len, \
    const char* optlist)) \
  X(void, fill_stroke, (PDF* p)) \
  X(int, findfont, (PDF* p, const char* fontname, const char* encoding, int embed)) \
  X(void, fit_image, (PDF* p, int image, double x, double y, const char* optlist)) \
  X(void, fit_pdi_page, (PDF* p, int page, double x, double y, const char* optlist)) \
  X(const char*, fit_table, (PDF* p, int table, double llx, double lly, double urx, double ury, \
    const char* optlist)) \
  X(const char*, fit_textflow, (PDF* p, int textflow, double llx, double lly, double urx, \
    double ury, const char* optlist)) \
  X(void, fit_textline, (PDF* p, const char* text, int len, double x, double y, \
    const char* optlist)) \
  X(const char*, get_apiname, (PDF* p)) \
  X(const char*, get_buffer, (PDF* p, long* size)) \
  X(const char*, get_errmsg, (PDF* p)) \
  X(int, get_errnum, (PDF* p)) \
  X(void*, get_opaque, (PDF* p)) \
  X(const char*, get_parameter, (PDF* p, const char* key, double modifier)) \
  X(double, get_pdi_value, (PDF* p, const char* key, int doc, int page, int reserved)) \
  X(const char*, get_pdi_parameter, (PDF* p, const char* key, int doc, int page, int reserved, \
    int* len)) \
  X(double, get_value, (PDF* p, const char* key, double modifier)) \
  X(double, info_font, (PDF* p, int font, const char* keyword, const char* optlist)) \
  X(double, info_matchbox, (PDF* p, const char* boxname, int len, int num, const char* keyword)) \
  X(double, info_table, (PDF* p, int table, const char* keyword)) \
  X(double, info_textflow, (PDF* p, int textflow, const char* keyword)) \
  X(double, info_textline, (PDF* p, const char* text, int len, const char* keyword, \
    const char* optlist)) \
  X(void, initgraphics, (PDF* p)) \
  X(void, lineto, (PDF* p, double x, double y)) \
  X(int, load_3ddata, (PDF* p, const char* filename, int len, const char* optlist)) \
  X(int, load_font, (PDF* p, const char* fontname, int len, const char* encoding, \
    const char* optlist)) \
  X(int, load_iccprofile, (PDF* p, const char* profilename, int len, const char* optlist)) \
  X(int, load_image, (PDF* p, const char* imagetype, const char* filename, int len, \
    const char* optlist)) \
  X(int, makespotcolor, (PDF* p, const char* spotname, int reserved)) \
  X(void, moveto, (PDF* p, double x, double y)) \
  X(int, open_CCITT, (PDF* p, const char* filename, int width, int height, int BitReverse, \
    int K, int BlackIs1)) \
  X(int, open_file, (PDF* p, const char* filename)) \
  X(int, open_image, (PDF* p, const char* imagetype, const char* source, const char* data, \
    long length, int width, int height, int components, int bpc, const char* params)) \
  X(int, open_image_file, (PDF* p, const char* imagetype, const char* filename, \
    const char* stringparam, int intparam)) \
  X(void, open_mem, (PDF* p, size_t (*writeproc)(PDF* p, void* data, size_t size))) \
  X(int, open_pdi, (PDF* p, const char* filename, const char* optlist, int len)) \
  X(int, open_pdi_document, (PDF* p, const char* filename, int len, const char* optlist)) \
  X(int, open_pdi_page, (PDF* p, int doc, int pagenumber, const char* optlist)) \
  X(void, place_image, (PDF* p, int image, double x, double y, double scale)) \
  X(void, place_pdi_page, (PDF* p, int page, double x, double y, double sx, double sy)) \
  X(int, process_pdi, (PDF* p, int doc, int page, const char* optlist)) \
  X(void, rect, (PDF* p, double x, double y, double width, double height)) \
  X(void, restore, (PDF* p)) \
  X(void, resume_page, (PDF* p, const char* optlist)) \
  X(void, rotate, (PDF* p, double phi)) \
  X(void, save, (PDF* p)) \
  X(void, scale, (PDF* p, double sx, double sy)) \
  X(void, set_border_color, (PDF* p, double red, double green, double blue)) \
  X(void, set_border_dash, (PDF* p, double black, double white)) \
  X(void, set_border_style, (PDF* p, const char* style, double width)) \
  X(void, setfont, (PDF* p, int font, double fontsize)) \
  X(void, set_gstate, (PDF* p, int gstate)) \
  X(void, set_info2, (PDF* p, const char* key, const char* value, int len)) \
  X(void, set_layer_dependency, (PDF* p, const char* type, const char* optlist)) \
  X(void, set_parameter, (PDF* p, const char* key, const char* value)) \
  X(void, set_text_pos, (PDF* p, double x, double y)) \
  X(void, set_value, (PDF* p, const char* key, double value)) \
  X(void, setcolor, (PDF* p, const char* fstype, const char* colorspace, double c1, double c2, \
    double c3, double c4)) \
  X(void, setdash, (PDF* p, double b, double w)) \
  X(void, setdashpattern, (PDF* p, const char* optlist)) \
  X(void, setflat, (PDF* p, double flatness)) \
  X(void, setlinecap, (PDF* p, int linecap)) \
  X(void, setlinejoin, (PDF* p, int linejoin)) \
  X(void, setlinewidth, (PDF* p, double width)) \
  X(void, setmatrix, (PDF* p, double a, double b, double c, double d, double e, double f)) \
  X(void, setmiterlimit, (PDF* p, double miter)) \
  X(void, setpolydash, (PDF* p, const float* dasharray, int length)) \
  X(int, shading, (PDF* p, const char* shtype, double x0, double y0, double x1, double y1, \
    double c1, double c2, double c3, double c4, const char* optlist)) \
  X(int, shading_pattern, (PDF* p, int shading, const char* optlist)) \
  X(void, shfill, (PDF* p, int shading)) \
  X(void, show2, (PDF* p, const char* text, int len)) \
  X(int, show_boxed, (PDF* p, const char* text, double left, double top, double width, \
    double height, const char* mode, const char* feature)) \
  X(void, show_xy2, (PDF* p, const char* text, int len, double x, double y)) \
  X(void, skew, (PDF* p, double alpha, double beta)) \
  X(double, stringwidth2, (PDF* p, const char* text, int len, int font, double fontsize)) \
  X(void, stroke, (PDF* p)) \
  X(void, suspend_page, (PDF* p, const char* optlist)) \
  X(void, translate, (PDF* p, double tx, double ty)) \
  X(const char*, utf16_to_utf8, (PDF* p, const char* utf16string, int len, int* size)) \
  X(const char*, utf32_to_utf16, (PDF* p, const char* utf32string, int len, \
    const char* ordering, int* size)) \
  X(const char*, utf8_to_utf16, (PDF* p, const char* utf8string, const char* ordering, \
    int* size)) \
  X(void, xshow, (PDF* p, const char* text, int len, const double* xadvancelist))

// clang-format on

#endif  // ZELK_PDFPRODUCER_PDF_API_ENTRIES_H
