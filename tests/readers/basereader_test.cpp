// SPDX-License-Identifier: Apache-2.0
#include "readers/basereader.h"

#include <gtest/gtest.h>

namespace {

TEST(basereader, DescribesADocumentThatCannotBeOpened) {
  basereader reader;
  EXPECT_EQ(reader._image_document, "");
  EXPECT_EQ(reader._page_num, 0);
  EXPECT_EQ(reader.load_image("a.png", 200), 0);
  EXPECT_EQ(reader.get_cur_image(0), nullptr);
  reader.free_image();
}

bool derived_destroyed = false;

class CountingReader : public basereader {
 public:
  virtual ~CountingReader() { derived_destroyed = true; }
};

TEST(basereader, DeletionRunsNoDerivedDestructor) {
  derived_destroyed = false;
  delete_reader(new CountingReader);
  EXPECT_FALSE(derived_destroyed);
  delete_reader(nullptr);
}

TEST(basereader, DeletionFreesTheStorageAndThePath) {
  // The address sanitizer reports a leak or a wrong size here.
  basereader* const reader = new CountingReader;
  reader->_image_document = std::string(1000, 'p');
  delete_reader(reader);
}

}  // namespace
