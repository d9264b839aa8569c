// SPDX-License-Identifier: Apache-2.0
// The error that may leave zelk_recognize when a searchable PDF cannot be written, for hosts in
// C++:
//   try { zelk_recognize(); } catch (const PDFlib::Exception& error) { … error.what() … }
// Host and library must be built against the same C++ standard library.
#ifndef ZELK_WRITERS_PDFLIB_EXCEPTION_H
#define ZELK_WRITERS_PDFLIB_EXCEPTION_H

#include <string>
#include <utility>

#ifndef ZELK_WRITERS_PDFLIB_H
// To hosts the library's binding is no more than the scope of its error.
class PDFlib {
 public:
  class Exception;
  PDFlib() = delete;
};
#endif

// Thrown by value; of no standard exception's kind. Visible beyond the shared library, so that
// hosts can catch it by its type.
class __attribute__((visibility("default"))) PDFlib::Exception {
 public:
  Exception(std::string errmsg, int errnum, std::string apiname, void* opaque)
      : m_errmsg(std::move(errmsg)),
        m_errnum(errnum),
        m_apiname(std::move(apiname)),
        m_opaque(opaque) {}

  // What went wrong, with the file's name where a file is the reason. The text is the exception's.
  const char* what() const noexcept { return m_errmsg.c_str(); }

  std::string get_errmsg() const { return m_errmsg; }    // the same
  int get_errnum() const { return m_errnum; }            // the PDF library's number, 0 for our own
  std::string get_apiname() const { return m_apiname; }  // the function in which it arose
  void* get_opaque() const { return m_opaque; }          // given when the PDFlib was made: null

 private:
  std::string m_errmsg;
  int m_errnum;
  std::string m_apiname;
  void* m_opaque;
};

#endif  // ZELK_WRITERS_PDFLIB_EXCEPTION_H
