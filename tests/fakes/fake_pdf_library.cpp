// SPDX-License-Identifier: Apache-2.0
#include "fakes/fake_pdf_library.h"

#include <csetjmp>
#include <cstdarg>
#include <initializer_list>
#include <sstream>
#include <type_traits>
#include <utility>

#include "pdfproducer/pdf_api_entries.h"

namespace {

FakePdfLibrary library;
bool error_pending = false;

char context_storage;
PDF* const kContext = reinterpret_cast<PDF*>(&context_storage);

std::remove_pointer_t<decltype(pdf_jbuf(nullptr))> jump_target;

// One argument of a call: how it reads, and for text where it begins.
struct Argument {
  std::string shown;
  const char* text = nullptr;
  long number = 0;
};

std::string shown_pointer(const void* pointer) {
  if (pointer == nullptr) return "null";
  const auto known = library.pointers.find(pointer);
  return known == library.pointers.end() ? "@?" : known->second;
}

Argument argument(int number) {
  return {std::to_string(number), nullptr, number};
}
Argument argument(long number) {
  return {std::to_string(number), nullptr, number};
}
Argument argument(std::size_t number) {
  return {std::to_string(number)};
}
Argument argument(double number) {
  std::ostringstream out;
  out << number;
  return {out.str()};
}
Argument argument(const char* text) {
  return {"", text};
}
Argument argument(const void* pointer) {
  return {shown_pointer(pointer)};
}
Argument argument(std::size_t (*procedure)(PDF*, void*, std::size_t)) {
  return {shown_pointer(reinterpret_cast<const void*>(procedure))};
}
// A length that the function reports: that of the text it answers.
Argument argument(int* length) {
  *length = static_cast<int>(library.text.size());
  return {"out"};
}
Argument argument(long* length) {
  *length = static_cast<long>(library.text.size());
  return {"out"};
}

// The name in a declaration such as "const char* text" or "size_t (*writeproc)(PDF* p)".
std::string name_in(const std::string& declaration) {
  static const std::string kNameCharacters =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
  const std::size_t procedure = declaration.find("(*");
  if (procedure != std::string::npos)
    return declaration.substr(procedure + 2, declaration.find(')') - procedure - 2);
  return declaration.substr(declaration.find_last_not_of(kNameCharacters) + 1);
}

// The names in a parameter list that stands in parentheses.
std::vector<std::string> names_in(const std::string& list) {
  std::vector<std::string> names;
  std::string declaration;
  int depth = 0;
  for (const char c : list) {
    depth += (c == '(') - (c == ')');
    if (depth == 0 || (depth == 1 && c == ','))
      names.push_back(name_in(std::exchange(declaration, "")));
    else
      declaration += c;
  }
  return names;
}

std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) result += c == '\0' ? std::string("\\0") : std::string(1, c);
  return result + "'";
}

void record(const std::string& function, const std::string& parameters, PDF* p,
            std::initializer_list<Argument> arguments) {
  const std::vector<std::string> names = names_in(parameters);
  std::string call = p == kContext ? function + "(" : "without context: " + function + "(";
  std::size_t i = 1;
  for (const Argument* a = arguments.begin(); a != arguments.end(); ++a, ++i) {
    std::string shown = a->shown;
    if (a->text != nullptr) {
      const bool counted = i + 1 < names.size() && names[i + 1].rfind("len", 0) == 0;
      const long length = counted ? a[1].number : 0;
      shown = quoted(length > 0 ? std::string(a->text, static_cast<std::size_t>(length)) : a->text);
    }
    call += (i > 1 ? ", " : "") + names.at(i) + "=" + shown;
  }
  library.calls.push_back(call + ")");
}

// Jumps over the frames between here and the armed buffer; none of them may hold an object that
// needs its destructor.
void raise_if_due(const char* function) {
  if (library.raises != function) return;
  error_pending = true;
  std::longjmp(*reinterpret_cast<std::jmp_buf*>(&jump_target), 1);
}

template <typename Result>
Result answer(const char* function = "") {
  const char* const text = library.answers_null_text ? nullptr : library.text.c_str();
  const auto own = library.numbers.find(function);
  if constexpr (std::is_same_v<Result, int>)
    return own == library.numbers.end() ? library.number : own->second;
  else if constexpr (std::is_same_v<Result, double>)
    return library.real;
  else if constexpr (std::is_same_v<Result, const char*>)
    return text;
  else if constexpr (std::is_same_v<Result, const unsigned char*>)
    return reinterpret_cast<const unsigned char*>(text);
  else if constexpr (std::is_same_v<Result, void*>)
    return library.opaque;
}

struct Entry {
  const char* name;
  const char* parameters;
};

#define ENTRY_TEXT(result, name, parameters) {#name, #parameters},
constexpr Entry kEntries[] = {ZELK_PDF_API_ENTRIES(ENTRY_TEXT)};

#define ENTRY_INDEX(result, name, parameters) k_##name,
enum EntryIndex { ZELK_PDF_API_ENTRIES(ENTRY_INDEX) };

template <EntryIndex entry, typename Function>
struct Recorder;

template <EntryIndex entry, typename Result, typename... Parameters>
struct Recorder<entry, Result (*)(PDF*, Parameters...)> {
  static Result call(PDF* p, Parameters... parameters) {
    record(kEntries[entry].name, kEntries[entry].parameters, p, {argument(parameters)...});
    raise_if_due(kEntries[entry].name);
    return answer<Result>(kEntries[entry].name);
  }
};

template <typename... Procedures>
PDF* new_context(void* opaque, Procedures... procedures) {
  std::string call = "new2(";
  ((call += shown_pointer(reinterpret_cast<const void*>(procedures)) + ", "), ...);
  library.calls.push_back(call + shown_pointer(opaque) + ")");
  library.opaque = opaque;
  return library.refuses_context ? nullptr : kContext;
}

// Records a variadic call whose format hands on one path as data; other formats show as they are.
void record_query(const char* function, const char* parameters, PDF* p,
                  std::initializer_list<Argument> fixed, const char* format, va_list arguments) {
  record(function, parameters, p, fixed);
  const bool one_text = std::string(format) == "%s";
  library.calls.back() += " " + quoted(format) + (one_text ? " " : "") +
                          (one_text ? quoted(va_arg(arguments, const char*)) : "");
}

PDFlib_api make_table() {
  PDFlib_api table = {};
  table.sizeof_PDFlib_api = library.table_size;
  table.major = library.major;
  table.minor = library.minor;
  table.revision = library.revision;
  table.PDF_new2 = [](auto errorhandler, auto allocproc, auto reallocproc, auto freeproc,
                      void* opaque) {
    return new_context(opaque, errorhandler, allocproc, reallocproc, freeproc);
  };
  table.PDF_delete = [](PDF* p) { record("delete", "(PDF* p)", p, {}); };
#define ENTRY_RECORDER(result, name, parameters) \
  table.PDF_##name = Recorder<k_##name, decltype(table.PDF_##name)>::call;
  ZELK_PDF_API_ENTRIES(ENTRY_RECORDER)
  return table;
}

}  // namespace

FakePdfLibrary& fake_pdf_library() {
  return library;
}

extern "C" {

const PDFlib_api* PDF_get_api(void) {
  static PDFlib_api table;
  table = make_table();
  return &table;
}

void PDF_set_parameter(PDF* p, const char* key, const char* value) {
  record("PDF_set_parameter", "(p, key, value)", p, {argument(key), argument(value)});
  raise_if_due("PDF_set_parameter");
}

double PDF_pcos_get_number(PDF* p, int doc, const char* path, ...) {
  va_list arguments;
  va_start(arguments, path);
  record_query("PDF_pcos_get_number", "(p, doc)", p, {argument(doc)}, path, arguments);
  va_end(arguments);
  raise_if_due("PDF_pcos_get_number");
  return answer<double>();
}

const char* PDF_pcos_get_string(PDF* p, int doc, const char* path, ...) {
  va_list arguments;
  va_start(arguments, path);
  record_query("PDF_pcos_get_string", "(p, doc)", p, {argument(doc)}, path, arguments);
  va_end(arguments);
  raise_if_due("PDF_pcos_get_string");
  return answer<const char*>();
}

const unsigned char* PDF_pcos_get_stream(PDF* p, int doc, int* length, const char* optlist,
                                         const char* path, ...) {
  va_list arguments;
  va_start(arguments, path);
  record_query("PDF_pcos_get_stream", "(p, doc, length, optlist)", p,
               {argument(doc), argument(length), argument(optlist)}, path, arguments);
  va_end(arguments);
  raise_if_due("PDF_pcos_get_stream");
  return answer<const unsigned char*>();
}

const char* PDF_get_errmsg(PDF*) {
  return library.errmsg;
}

int PDF_get_errnum(PDF*) {
  return library.errnum;
}

const char* PDF_get_apiname(PDF*) {
  return library.apiname;
}

void* PDF_get_opaque(PDF*) {
  return library.opaque;
}

decltype(pdf_jbuf(nullptr)) pdf_jbuf(PDF*) {
  ++library.armed;
  return &jump_target;
}

int pdf_catch(PDF* p) {
  ++library.asked;
  const bool raised = error_pending || (p == nullptr && library.error_without_context);
  error_pending = false;
  return raised;
}
}
