// SPDX-License-Identifier: Apache-2.0
#include "readers/basereader.h"

#include <new>

int basereader::load_image(const char*, int) {
  return 0;
}

FIBITMAP* basereader::get_cur_image(int) {
  return nullptr;
}

void basereader::free_image() {}

void delete_reader(basereader* reader) {
  if (reader == nullptr) return;
  reader->basereader::~basereader();
  ::operator delete(reader);
}
