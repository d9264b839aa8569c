// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/entry_points.h"

#include <cstdlib>
#include <new>
#include <string_view>

#include "pdfproducer/context.h"

namespace zelk::pdf {

namespace {

std::string_view view(const char* text) {
  return text == nullptr ? "" : text;
}

void offered(bool is_offered, const char* kind, std::string_view value) {
  if (is_offered) return;
  throw Error(ErrorNumber::kNotOffered, std::string("this producer does not offer the ") + kind +
                                            " '" + std::string(value) + "'");
}

void no_options(const char* optlist) {
  offered(view(optlist).find_first_not_of(' ') == std::string_view::npos, "option list",
          view(optlist));
}

// A name with a length is a name in UTF-16.
void plain_name(int length) {
  if (length != 0)
    throw Error(ErrorNumber::kNotOffered, "this producer does not offer UTF-16 names");
}

// Runs the body of a function whose expected failure is the result -1 instead of an error; its
// reason can be asked for all the same.
template <FunctionName kName, typename Body>
int guarded_or_minus_1(PDF* p, ErrorNumber expected, const Body& body) {
  return guarded<kName>(p, [&](PDF_s& context) {
    try {
      return body(context);
    } catch (const Error& failure) {
      if (failure.number() != expected) throw;
      context.keep(kName.text, failure);
      return -1;
    }
  });
}

}  // namespace

PDF* create_context(PDF_errorhandler errorhandler, PDF_allocproc allocproc, PDF_reallocproc,
                    PDF_freeproc freeproc, void* opaque) {
  void* const memory = allocproc != nullptr ? allocproc(nullptr, sizeof(PDF_s), "PDF_new2")
                                            : std::malloc(sizeof(PDF_s));
  if (memory == nullptr) return nullptr;
  return new (memory) PDF_s(errorhandler, freeproc, opaque);
}

void delete_context(PDF* p) {
  if (p == nullptr) return;
  const PDF_freeproc release = p->release;
  p->~PDF_s();
  if (release != nullptr) {
    release(p, p);
  } else {
    std::free(p);
  }
}

int begin_document(PDF* p, const char* filename, int len, const char* optlist) {
  return guarded_or_minus_1<"PDF_begin_document">(p, ErrorNumber::kOutput, [&](PDF_s& context) {
    context.document.reset();
    plain_name(len);
    no_options(optlist);
    context.document = std::make_unique<Document>(std::string(view(filename)));
    return 0;
  });
}

void end_document(PDF* p, const char* optlist) {
  guarded<"PDF_end_document">(p, [&](PDF_s& context) {
    if (!context.document) return;
    no_options(optlist);
    const auto document = std::move(context.document);
    if (document->has_pages()) {
      document->finish();
    } else {
      // An error would end a host in C whose pages could not be read.
      context.keep(
          "PDF_end_document",
          Error(ErrorNumber::kOutput, "'" + document->name() + "' is not written: it has no page"));
    }
  });
}

void begin_page_ext(PDF* p, double width, double height, const char* optlist) {
  guarded<"PDF_begin_page_ext">(p, [&](PDF_s& context) {
    Document& document = context.open_document();
    no_options(optlist);
    document.begin_page(width, height);
  });
}

void end_page_ext(PDF* p, const char* optlist) {
  guarded<"PDF_end_page_ext">(p, [&](PDF_s& context) {
    Document& document = context.open_page();
    no_options(optlist);
    document.end_page();
  });
}

int load_font(PDF* p, const char* fontname, int len, const char* encoding, const char* optlist) {
  return guarded<"PDF_load_font">(p, [&](PDF_s& context) {
    Document& document = context.open_document();
    plain_name(len);
    no_options(optlist);
    offered(view(fontname) == TextFont::kName, "font", view(fontname));
    offered(view(encoding) == TextFont::kEncoding, "encoding", view(encoding));
    return document.load_font();
  });
}

void setfont(PDF* p, int font, double fontsize) {
  guarded<"PDF_setfont">(p, [&](PDF_s& context) { context.open_page().set_font(font, fontsize); });
}

void setcolor(PDF* p, const char* fstype, const char* colorspace, double c1, double c2, double c3,
              double) {
  guarded<"PDF_setcolor">(p, [&](PDF_s& context) {
    Document& document = context.open_page();
    offered(view(fstype) == "fill", "kind of painting", view(fstype));
    offered(view(colorspace) == "rgb", "colour space", view(colorspace));
    document.set_fill_color(c1, c2, c3);
  });
}

void show_xy2(PDF* p, const char* text, int len, double x, double y) {
  guarded<"PDF_show_xy2">(p, [&](PDF_s& context) {
    Document& document = context.open_page();
    if (len < 0) throw Error(ErrorNumber::kArgument, "a text's length is not negative");
    const bool counted = text != nullptr && len > 0;
    document.show(counted ? std::string_view(text, static_cast<std::size_t>(len)) : view(text), x,
                  y);
  });
}

int open_image(PDF* p, const char* imagetype, const char* source, const char* data, long length,
               int, int, int, int, const char* params) {
  return guarded_or_minus_1<"PDF_open_image">(p, ErrorNumber::kImage, [&](PDF_s& context) {
    Document& document = context.open_document();
    offered(view(imagetype) == "jpeg", "image type", view(imagetype));
    offered(view(source) == "memory", "image source", view(source));
    no_options(params);
    const bool given = data != nullptr && length > 0;
    return document.open_image(given ? std::string_view(data, static_cast<std::size_t>(length))
                                     : std::string_view());
  });
}

void fit_image(PDF* p, int image, double x, double y, const char* optlist) {
  guarded<"PDF_fit_image">(p, [&](PDF_s& context) {
    Document& document = context.open_page();
    offered(view(optlist) == "adjustpage", "option list", view(optlist));
    document.fit_image(image, x, y);
  });
}

void close_image(PDF* p, int image) {
  guarded<"PDF_close_image">(p,
                             [&](PDF_s& context) { context.open_document().close_image(image); });
}

}  // namespace zelk::pdf

extern "C" {

void PDF_set_parameter(PDF* p, const char* key, const char* value) {
  zelk::pdf::guarded<"PDF_set_parameter">(p, [&](PDF_s&) {
    const std::string_view name = zelk::pdf::view(key);
    const std::string_view wanted = zelk::pdf::view(value);
    const bool known = name == "hypertextencoding" || name == "binding" || name == "objorient";
    zelk::pdf::offered(known, "parameter", name);
    if (name == "hypertextencoding") zelk::pdf::offered(wanted == "host", "encoding", wanted);
    if (name == "objorient") zelk::pdf::offered(wanted == "true", "value of objorient", wanted);
  });
}

const char* PDF_get_errmsg(PDF* p) {
  return p == nullptr ? "" : p->text.c_str();
}

int PDF_get_errnum(PDF* p) {
  return p == nullptr ? 0 : static_cast<int>(p->number);
}

const char* PDF_get_apiname(PDF* p) {
  return p == nullptr ? "" : p->function;
}

void* PDF_get_opaque(PDF* p) {
  return p == nullptr ? nullptr : p->opaque;
}

pdf_jmpbuf* pdf_jbuf(PDF* p) {
  if (p == nullptr) return nullptr;
  p->armed = true;
  return &p->buffer;
}

int pdf_catch(PDF* p) {
  if (p == nullptr || !p->raised) {
    if (p != nullptr) p->armed = false;
    return 0;
  }
  p->raised = p->armed = false;
  return 1;
}
}
