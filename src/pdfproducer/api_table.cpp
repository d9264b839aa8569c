// SPDX-License-Identifier: Apache-2.0
// The function table: what is offered, and for everything else a refusal that names the function.
#include <string>

#include "pdfproducer/context.h"
#include "pdfproducer/entry_points.h"

namespace zelk::pdf {

namespace {

template <FunctionName kName, typename Result>
Result refuse(PDF* p) {
  return guarded<kName>(p, [](PDF_s&) -> Result {
    throw Error(ErrorNumber::kNotOffered,
                std::string("this producer does not offer ") + kName.text);
  });
}

template <FunctionName kName, typename Function>
struct Refusal;

template <FunctionName kName, typename Result, typename... Arguments>
struct Refusal<kName, Result(PDF*, Arguments...)> {
  static Result call(PDF* p, Arguments...) { return refuse<kName, Result>(p); }
};

constexpr PDFlib_api make_table() {
  PDFlib_api table = {};
  table.sizeof_PDFlib_api = sizeof(PDFlib_api);
  table.major = 7;
#define ZELK_PDF_REFUSED(result, name, parameters) \
  table.PDF_##name = Refusal<"PDF_" #name, result parameters>::call;
  ZELK_PDF_API_ENTRIES(ZELK_PDF_REFUSED)
#undef ZELK_PDF_REFUSED
  for (auto& entry : table.reserved) entry = refuse<"a reserved function", void>;

  table.PDF_new2 = create_context;
  table.PDF_delete = delete_context;
  table.PDF_set_parameter = PDF_set_parameter;
  table.PDF_begin_document = begin_document;
  table.PDF_end_document = end_document;
  table.PDF_begin_page_ext = begin_page_ext;
  table.PDF_end_page_ext = end_page_ext;
  table.PDF_load_font = load_font;
  table.PDF_setfont = setfont;
  table.PDF_setcolor = setcolor;
  table.PDF_show_xy2 = show_xy2;
  table.PDF_open_image = open_image;
  table.PDF_fit_image = fit_image;
  table.PDF_close_image = close_image;
  table.PDF_get_errmsg = PDF_get_errmsg;
  table.PDF_get_errnum = PDF_get_errnum;
  table.PDF_get_apiname = PDF_get_apiname;
  table.PDF_get_opaque = PDF_get_opaque;
  return table;
}

constexpr PDFlib_api kTable = make_table();

}  // namespace

}  // namespace zelk::pdf

extern "C" {

const PDFlib_api* PDF_get_api(void) {
  return &zelk::pdf::kTable;
}

double PDF_pcos_get_number(PDF* p, int, const char*, ...) {
  return zelk::pdf::refuse<"PDF_pcos_get_number", double>(p);
}

const char* PDF_pcos_get_string(PDF* p, int, const char*, ...) {
  return zelk::pdf::refuse<"PDF_pcos_get_string", const char*>(p);
}

const unsigned char* PDF_pcos_get_stream(PDF* p, int, int*, const char*, const char*, ...) {
  return zelk::pdf::refuse<"PDF_pcos_get_stream", const unsigned char*>(p);
}
}
