// SPDX-License-Identifier: Apache-2.0
#include "worker/pdf_decryption.h"

#include <qpdf/qpdf-c.h>

#include <memory>
#include <stdexcept>

#include "worker/document_pages.h"

namespace cli {
namespace {

struct Cleanup {
  void operator()(qpdf_data document) const { qpdf_cleanup(&document); }
};
using Document = std::unique_ptr<_qpdf_data, Cleanup>;

bool failed(QPDF_ERROR_CODE code) {
  return (code & QPDF_ERRORS) != 0;
}

void write(qpdf_data document, const std::string& path) {
  const bool opened = !failed(qpdf_init_write(document, path.c_str()));
  if (opened) qpdf_set_preserve_encryption(document, QPDF_FALSE);
  if (opened && !failed(qpdf_write(document))) return;
  throw std::runtime_error(qpdf_get_error_full_text(document, qpdf_get_error(document)));
}

}  // namespace

bool decrypt_pdf(const std::string& path, const std::string& password,
                 const std::string& decrypted_path) {
  const Document document(qpdf_init());
  qpdf_silence_errors(document.get());
  qpdf_set_suppress_warnings(document.get(), QPDF_TRUE);
  if (failed(qpdf_read(document.get(), path.c_str(), password.c_str()))) {
    const auto code = qpdf_get_error_code(document.get(), qpdf_get_error(document.get()));
    if (code != qpdf_e_password) return false;
    throw UnreadableDocument(
        password.empty() ? "a password is needed (--password)" : "the password is wrong", true);
  }
  if (!qpdf_is_encrypted(document.get())) return false;
  write(document.get(), decrypted_path);
  return true;
}

}  // namespace cli
