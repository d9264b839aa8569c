// SPDX-License-Identifier: Apache-2.0
#include "worker/pdf_decryption.h"

// clang 14 does not compile qpdf 11.3's JSON as C++20, and nothing here uses it: its header counts
// as included. Standard smart pointers only; without a choice qpdf's headers warn.
#define JSON_HH
class JSON;
#define POINTERHOLDER_TRANSITION 4

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFWriter.hh>

#include <exception>
#include <new>

#include "worker/document_pages.h"
#include "worker/input_file.h"

namespace cli {
namespace {

// False when it is no PDF that can be read.
bool read(QPDF& document, FILE* file, const std::string& password) {
  constexpr bool kCloseFile = false;
  document.setSuppressWarnings(true);
  try {
    document.processFile("document", file, kCloseFile, password.c_str());
    return true;
  } catch (const QPDFExc& error) {
    if (error.getErrorCode() != qpdf_e_password) return false;
    throw UnreadableDocument(
        password.empty() ? "a password is needed (--password)" : "the password is wrong", true);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace

bool decrypt_pdf(const std::string& path, const std::string& password,
                 const std::string& decrypted_path) {
  const InputFile file = open_input(path);
  QPDF document;
  if (file == nullptr || !read(document, file.get(), password) || !document.isEncrypted())
    return false;
  QPDFWriter writer(document, decrypted_path.c_str());
  writer.setPreserveEncryption(false);
  writer.write();
  return true;
}

}  // namespace cli
