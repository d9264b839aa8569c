// SPDX-License-Identifier: Apache-2.0
#include "writers/pdflib_methods.h"

#include "fakes/fake_pdf_library.h"

namespace {

const char kBytes[] = "bytes";
const float kDashes[] = {1, 2};
const double kAdvances[] = {1, 2};
int int_size;
long long_size;

std::size_t write_nothing(PDF*, void*, std::size_t) {
  return 0;
}

MethodResult described(int result) {
  const auto text = [](int value) { return "int " + std::to_string(value); };
  return {text(result), text(fake_pdf_library().number), text(0)};
}
MethodResult described(double result) {
  const auto text = [](double value) { return "double " + std::to_string(value); };
  return {text(result), text(fake_pdf_library().real), text(0)};
}
MethodResult described(const std::string& result) {
  return {"string " + result, "string " + fake_pdf_library().text, "string "};
}
MethodResult described_pointer(const void* result, const void* answer) {
  return {result == answer    ? "the pointer"
          : result == nullptr ? "null"
                              : "another pointer",
          "the pointer", "null"};
}
MethodResult described(const char* result) {
  return described_pointer(result, fake_pdf_library().text.c_str());
}
MethodResult described(const unsigned char* result) {
  return described_pointer(result, fake_pdf_library().text.c_str());
}
MethodResult described(void* result) {
  return described_pointer(result, fake_pdf_library().opaque);
}

template <typename Call>
MethodResult result_of(Call call) {
  if constexpr (std::is_void_v<decltype(call())>) {
    call();
    return {};
  } else {
    return described(call());
  }
}

#define METHOD(recorded, ...)                                                        \
  {                                                                                  \
    recorded, [](PDFlib& pdf) { return result_of([&] { return pdf.__VA_ARGS__; }); } \
  }

}  // namespace

std::string Method::function() const {
  return std::string(recorded, std::string(recorded).find('('));
}

void name_method_pointers() {
  fake_pdf_library().pointers = {{kBytes, "@bytes"},
                                 {kDashes, "@dashes"},
                                 {kAdvances, "@advances"},
                                 {reinterpret_cast<const void*>(write_nothing), "@writer"}};
}

const std::vector<Method>& pdflib_methods() {
  static const std::vector<Method> methods = {
      // document
      METHOD("begin_document(filename='filename', len=0, optlist='optlist')",
             begin_document("filename", "optlist")),
      METHOD("begin_document_callback(writeproc=@writer, optlist='optlist')",
             begin_document_callback(write_nothing, "optlist")),
      METHOD("end_document(optlist='optlist')", end_document("optlist")),
      METHOD("open_file(filename='filename')", open_file("filename")),
      METHOD("open_mem(writeproc=@writer)", open_mem(write_nothing)),
      METHOD("close()", close()),
      METHOD("get_buffer(size=out)", get_buffer(&long_size)),
      METHOD("create_pvf(filename='filename', len=0, data=@bytes, size=3, optlist='optlist')",
             create_pvf("filename", kBytes, 3, "optlist")),
      METHOD("delete_pvf(filename='filename', len=0)", delete_pvf("filename")),
      METHOD("set_info2(key='key', value='value', len=5)", set_info("key", "value")),
      METHOD("begin_item(tag='tag', optlist='optlist')", begin_item("tag", "optlist")),
      METHOD("activate_item(id=1)", activate_item(1)),
      METHOD("end_item(id=1)", end_item(1)),
      // page, pattern and template
      METHOD("begin_page_ext(width=1.5, height=2.5, optlist='optlist')",
             begin_page_ext(1.5, 2.5, "optlist")),
      METHOD("end_page_ext(optlist='optlist')", end_page_ext("optlist")),
      METHOD("begin_page(width=1.5, height=2.5)", begin_page(1.5, 2.5)),
      METHOD("end_page()", end_page()),
      METHOD("suspend_page(optlist='optlist')", suspend_page("optlist")),
      METHOD("resume_page(optlist='optlist')", resume_page("optlist")),
      METHOD("begin_pattern(width=1.5, height=2.5, xstep=3.5, ystep=4.5, painttype=5)",
             begin_pattern(1.5, 2.5, 3.5, 4.5, 5)),
      METHOD("end_pattern()", end_pattern()),
      METHOD("begin_template(width=1.5, height=2.5)", begin_template(1.5, 2.5)),
      METHOD("begin_template_ext(width=1.5, height=2.5, optlist='optlist')",
             begin_template_ext(1.5, 2.5, "optlist")),
      METHOD("end_template()", end_template()),
      METHOD("add_thumbnail(image=1)", add_thumbnail(1)),
      // font
      METHOD("load_font(fontname='fontname', len=0, encoding='encoding', optlist='optlist')",
             load_font("fontname", "encoding", "optlist")),
      METHOD("findfont(fontname='fontname', encoding='encoding', embed=3)",
             findfont("fontname", "encoding", 3)),
      METHOD("setfont(font=1, fontsize=2.5)", setfont(1, 2.5)),
      METHOD("begin_font(fontname='fontname', reserved=0, a=2.5, b=3.5, c=4.5, d=5.5, e=6.5, "
             "f=7.5, optlist='optlist')",
             begin_font("fontname", 2.5, 3.5, 4.5, 5.5, 6.5, 7.5, "optlist")),
      METHOD("end_font()", end_font()),
      METHOD("begin_glyph(glyphname='glyphname', wx=2.5, llx=3.5, lly=4.5, urx=5.5, ury=6.5)",
             begin_glyph("glyphname", 2.5, 3.5, 4.5, 5.5, 6.5)),
      METHOD("end_glyph()", end_glyph()),
      METHOD("encoding_set_char(encoding='encoding', slot=2, glyphname='glyphname', uv=4)",
             encoding_set_char("encoding", 2, "glyphname", 4)),
      METHOD("info_font(font=1, keyword='keyword', optlist='optlist')",
             info_font(1, "keyword", "optlist")),
      // text
      METHOD("show2(text='text', len=4)", show("text")),
      METHOD("show_xy2(text='text', len=4, x=2.5, y=3.5)", show_xy("text", 2.5, 3.5)),
      METHOD("continue_text2(text='text', len=4)", continue_text("text")),
      METHOD("xshow(text='text', len=4, xadvancelist=@advances)", xshow("text", kAdvances)),
      METHOD("show_boxed(text='text', left=2.5, top=3.5, width=4.5, height=5.5, mode='mode', "
             "feature='feature')",
             show_boxed("text", 2.5, 3.5, 4.5, 5.5, "mode", "feature")),
      METHOD("stringwidth2(text='text', len=4, font=2, fontsize=3.5)", stringwidth("text", 2, 3.5)),
      METHOD("set_text_pos(x=1.5, y=2.5)", set_text_pos(1.5, 2.5)),
      METHOD("fit_textline(text='text', len=4, x=2.5, y=3.5, optlist='optlist')",
             fit_textline("text", 2.5, 3.5, "optlist")),
      METHOD("info_textline(text='text', len=4, keyword='keyword', optlist='optlist')",
             info_textline("text", "keyword", "optlist")),
      // textflow and table
      METHOD("create_textflow(text='text', len=4, optlist='optlist')",
             create_textflow("text", "optlist")),
      METHOD("add_textflow(textflow=1, text='text', len=4, optlist='optlist')",
             add_textflow(1, "text", "optlist")),
      METHOD("fit_textflow(textflow=1, llx=2.5, lly=3.5, urx=4.5, ury=5.5, optlist='optlist')",
             fit_textflow(1, 2.5, 3.5, 4.5, 5.5, "optlist")),
      METHOD("info_textflow(textflow=1, keyword='keyword')", info_textflow(1, "keyword")),
      METHOD("delete_textflow(textflow=1)", delete_textflow(1)),
      METHOD("add_table_cell(table=1, column=2, row=3, text='text', len=4, optlist='optlist')",
             add_table_cell(1, 2, 3, "text", "optlist")),
      METHOD("fit_table(table=1, llx=2.5, lly=3.5, urx=4.5, ury=5.5, optlist='optlist')",
             fit_table(1, 2.5, 3.5, 4.5, 5.5, "optlist")),
      METHOD("info_table(table=1, keyword='keyword')", info_table(1, "keyword")),
      METHOD("delete_table(table=1, optlist='optlist')", delete_table(1, "optlist")),
      METHOD("info_matchbox(boxname='boxname', len=0, num=2, keyword='keyword')",
             info_matchbox("boxname", 2, "keyword")),
      // graphics state and coordinates
      METHOD("save()", save()),
      METHOD("restore()", restore()),
      METHOD("translate(tx=1.5, ty=2.5)", translate(1.5, 2.5)),
      METHOD("scale(sx=1.5, sy=2.5)", scale(1.5, 2.5)),
      METHOD("rotate(phi=1.5)", rotate(1.5)),
      METHOD("skew(alpha=1.5, beta=2.5)", skew(1.5, 2.5)),
      METHOD("concat(a=1.5, b=2.5, c=3.5, d=4.5, e=5.5, f=6.5)",
             concat(1.5, 2.5, 3.5, 4.5, 5.5, 6.5)),
      METHOD("setmatrix(a=1.5, b=2.5, c=3.5, d=4.5, e=5.5, f=6.5)",
             setmatrix(1.5, 2.5, 3.5, 4.5, 5.5, 6.5)),
      METHOD("initgraphics()", initgraphics()),
      METHOD("create_gstate(optlist='optlist')", create_gstate("optlist")),
      METHOD("set_gstate(gstate=1)", set_gstate(1)),
      METHOD("setdash(b=1.5, w=2.5)", setdash(1.5, 2.5)),
      METHOD("setdashpattern(optlist='optlist')", setdashpattern("optlist")),
      METHOD("setpolydash(dasharray=@dashes, length=2)", setpolydash(kDashes, 2)),
      METHOD("setflat(flatness=1.5)", setflat(1.5)),
      METHOD("setlinecap(linecap=1)", setlinecap(1)),
      METHOD("setlinejoin(linejoin=1)", setlinejoin(1)),
      METHOD("setlinewidth(width=1.5)", setlinewidth(1.5)),
      METHOD("setmiterlimit(miter=1.5)", setmiterlimit(1.5)),
      // path
      METHOD("moveto(x=1.5, y=2.5)", moveto(1.5, 2.5)),
      METHOD("lineto(x=1.5, y=2.5)", lineto(1.5, 2.5)),
      METHOD("curveto(x1=1.5, y1=2.5, x2=3.5, y2=4.5, x3=5.5, y3=6.5)",
             curveto(1.5, 2.5, 3.5, 4.5, 5.5, 6.5)),
      METHOD("circle(x=1.5, y=2.5, r=3.5)", circle(1.5, 2.5, 3.5)),
      METHOD("arc(x=1.5, y=2.5, r=3.5, alpha=4.5, beta=5.5)", arc(1.5, 2.5, 3.5, 4.5, 5.5)),
      METHOD("arcn(x=1.5, y=2.5, r=3.5, alpha=4.5, beta=5.5)", arcn(1.5, 2.5, 3.5, 4.5, 5.5)),
      METHOD("rect(x=1.5, y=2.5, width=3.5, height=4.5)", rect(1.5, 2.5, 3.5, 4.5)),
      METHOD("closepath()", closepath()),
      METHOD("stroke()", stroke()),
      METHOD("closepath_stroke()", closepath_stroke()),
      METHOD("fill()", fill()),
      METHOD("fill_stroke()", fill_stroke()),
      METHOD("closepath_fill_stroke()", closepath_fill_stroke()),
      METHOD("clip()", clip()),
      METHOD("endpath()", endpath()),
      // colour and shading
      METHOD("setcolor(fstype='fstype', colorspace='colorspace', c1=3.5, c2=4.5, c3=5.5, c4=6.5)",
             setcolor("fstype", "colorspace", 3.5, 4.5, 5.5, 6.5)),
      METHOD("makespotcolor(spotname='spotname', reserved=0)", makespotcolor("spotname")),
      METHOD("load_iccprofile(profilename='profilename', len=0, optlist='optlist')",
             load_iccprofile("profilename", "optlist")),
      METHOD("shading(shtype='shtype', x0=2.5, y0=3.5, x1=4.5, y1=5.5, c1=6.5, c2=7.5, c3=8.5, "
             "c4=9.5, optlist='optlist')",
             shading("shtype", 2.5, 3.5, 4.5, 5.5, 6.5, 7.5, 8.5, 9.5, "optlist")),
      METHOD("shading_pattern(shading=1, optlist='optlist')", shading_pattern(1, "optlist")),
      METHOD("shfill(shading=1)", shfill(1)),
      // image
      METHOD("load_image(imagetype='imagetype', filename='filename', len=0, optlist='optlist')",
             load_image("imagetype", "filename", "optlist")),
      METHOD("open_image(imagetype='imagetype', source='source', data='data', length=4, width=5, "
             "height=6, components=7, bpc=8, params='params')",
             open_image("imagetype", "source", "data", 4, 5, 6, 7, 8, "params")),
      METHOD("open_image_file(imagetype='imagetype', filename='filename', "
             "stringparam='stringparam', intparam=4)",
             open_image_file("imagetype", "filename", "stringparam", 4)),
      METHOD("open_CCITT(filename='filename', width=2, height=3, BitReverse=4, K=5, BlackIs1=6)",
             open_CCITT("filename", 2, 3, 4, 5, 6)),
      METHOD("fit_image(image=1, x=2.5, y=3.5, optlist='optlist')",
             fit_image(1, 2.5, 3.5, "optlist")),
      METHOD("place_image(image=1, x=2.5, y=3.5, scale=4.5)", place_image(1, 2.5, 3.5, 4.5)),
      METHOD("close_image(image=1)", close_image(1)),
      METHOD("fill_imageblock(page=1, blockname='blockname', image=3, optlist='optlist')",
             fill_imageblock(1, "blockname", 3, "optlist")),
      METHOD("fill_pdfblock(page=1, blockname='blockname', contents=3, optlist='optlist')",
             fill_pdfblock(1, "blockname", 3, "optlist")),
      METHOD("fill_textblock(page=1, blockname='blockname', text='text', len=4, optlist='optlist')",
             fill_textblock(1, "blockname", "text", "optlist")),
      // PDF import and queries
      METHOD("open_pdi(filename='filename', optlist='optlist', len=0)",
             open_pdi("filename", "optlist")),
      METHOD("open_pdi_document(filename='filename', len=0, optlist='optlist')",
             open_pdi_document("filename", "optlist")),
      METHOD("close_pdi(doc=1)", close_pdi(1)),
      METHOD("close_pdi_document(doc=1)", close_pdi_document(1)),
      METHOD("open_pdi_page(doc=1, pagenumber=2, optlist='optlist')",
             open_pdi_page(1, 2, "optlist")),
      METHOD("close_pdi_page(page=1)", close_pdi_page(1)),
      METHOD("fit_pdi_page(page=1, x=2.5, y=3.5, optlist='optlist')",
             fit_pdi_page(1, 2.5, 3.5, "optlist")),
      METHOD("place_pdi_page(page=1, x=2.5, y=3.5, sx=4.5, sy=5.5)",
             place_pdi_page(1, 2.5, 3.5, 4.5, 5.5)),
      METHOD("process_pdi(doc=1, page=2, optlist='optlist')", process_pdi(1, 2, "optlist")),
      METHOD("get_pdi_value(key='key', doc=2, page=3, reserved=0)", get_pdi_value("key", 2, 3)),
      METHOD("get_pdi_parameter(key='key', doc=2, page=3, reserved=0, len=out)",
             get_pdi_parameter("key", 2, 3)),
      METHOD("PDF_pcos_get_number(doc=1) '%s' 'path'", pcos_get_number(1, "path")),
      METHOD("PDF_pcos_get_string(doc=1) '%s' 'path'", pcos_get_string(1, "path")),
      METHOD("PDF_pcos_get_stream(doc=1, length=out, optlist='optlist') '%s' 'path'",
             pcos_get_stream(1, &int_size, "optlist", "path")),
      // interactive elements
      METHOD("create_action(type='type', optlist='optlist')", create_action("type", "optlist")),
      METHOD(
          "create_annotation(llx=1.5, lly=2.5, urx=3.5, ury=4.5, type='type', optlist='optlist')",
          create_annotation(1.5, 2.5, 3.5, 4.5, "type", "optlist")),
      METHOD("create_bookmark(text='text', len=4, optlist='optlist')",
             create_bookmark("text", "optlist")),
      METHOD("create_field(llx=1.5, lly=2.5, urx=3.5, ury=4.5, name='name', len=0, type='type', "
             "optlist='optlist')",
             create_field(1.5, 2.5, 3.5, 4.5, "name", "type", "optlist")),
      METHOD("create_fieldgroup(name='name', len=0, optlist='optlist')",
             create_fieldgroup("name", "optlist")),
      METHOD("add_nameddest(name='name', len=0, optlist='optlist')",
             add_nameddest("name", "optlist")),
      METHOD("add_bookmark2(text='text', len=4, parent=2, open=3)", add_bookmark("text", 2, 3)),
      METHOD("add_note2(llx=1.5, lly=2.5, urx=3.5, ury=4.5, contents='contents', len_contents=8, "
             "title='title', len_title=5, icon='icon', open=8)",
             add_note(1.5, 2.5, 3.5, 4.5, "contents", "title", "icon", 8)),
      METHOD(
          "attach_file2(llx=1.5, lly=2.5, urx=3.5, ury=4.5, filename='filename', len_filename=0, "
          "description='description', len_description=11, author='author', len_author=6, "
          "mimetype='mimetype', icon='icon')",
          attach_file(1.5, 2.5, 3.5, 4.5, "filename", "description", "author", "mimetype", "icon")),
      METHOD("add_launchlink(llx=1.5, lly=2.5, urx=3.5, ury=4.5, filename='filename')",
             add_launchlink(1.5, 2.5, 3.5, 4.5, "filename")),
      METHOD("add_locallink(llx=1.5, lly=2.5, urx=3.5, ury=4.5, page=5, dest='dest')",
             add_locallink(1.5, 2.5, 3.5, 4.5, 5, "dest")),
      METHOD("add_pdflink(llx=1.5, lly=2.5, urx=3.5, ury=4.5, filename='filename', page=6, "
             "dest='dest')",
             add_pdflink(1.5, 2.5, 3.5, 4.5, "filename", 6, "dest")),
      METHOD("add_weblink(llx=1.5, lly=2.5, urx=3.5, ury=4.5, url='url')",
             add_weblink(1.5, 2.5, 3.5, 4.5, "url")),
      METHOD("set_border_color(red=1.5, green=2.5, blue=3.5)", set_border_color(1.5, 2.5, 3.5)),
      METHOD("set_border_dash(black=1.5, white=2.5)", set_border_dash(1.5, 2.5)),
      METHOD("set_border_style(style='style', width=2.5)", set_border_style("style", 2.5)),
      // layers and 3D
      METHOD("define_layer(name='name', len=0, optlist='optlist')",
             define_layer("name", "optlist")),
      METHOD("set_layer_dependency(type='type', optlist='optlist')",
             set_layer_dependency("type", "optlist")),
      METHOD("begin_layer(layer=1)", begin_layer(1)),
      METHOD("end_layer()", end_layer()),
      METHOD("load_3ddata(filename='filename', len=0, optlist='optlist')",
             load_3ddata("filename", "optlist")),
      METHOD("create_3dview(username='username', len=0, optlist='optlist')",
             create_3dview("username", "optlist")),
      // parameters, error information and conversion
      METHOD("set_parameter(key='key', value='value')", set_parameter("key", "value")),
      METHOD("get_parameter(key='key', modifier=2.5)", get_parameter("key", 2.5)),
      METHOD("set_value(key='key', value=2.5)", set_value("key", 2.5)),
      METHOD("get_value(key='key', modifier=2.5)", get_value("key", 2.5)),
      METHOD("get_errmsg()", get_errmsg()),
      METHOD("get_errnum()", get_errnum()),
      METHOD("get_apiname()", get_apiname()),
      METHOD("get_opaque()", get_opaque()),
      METHOD("utf8_to_utf16(utf8string='utf8string', ordering='ordering', size=out)",
             utf8_to_utf16("utf8string", "ordering")),
      METHOD("utf16_to_utf8(utf16string='utf16string', len=11, size=out)",
             utf16_to_utf8("utf16string")),
      METHOD("utf32_to_utf16(utf32string='utf32string', len=11, ordering='ordering', size=out)",
             utf32_to_utf16("utf32string", "ordering")),
  };
  return methods;
}
