// SPDX-License-Identifier: Apache-2.0
#include "options/folders.h"

#include <unistd.h>

#include "cli/options/scratch_folder.h"

namespace {

using Names = std::vector<std::string>;

class Folders : public ScratchFolder {
 protected:
  static Names files(bool recursive, const std::string& left_out = "none") {
    return cli::documents_in_folder("in", recursive, cli::identity_of(left_out)).files;
  }
};

TEST_F(Folders, DocumentsAreKnownByTheirExtensions) {
  for (const char* name : {"a.bmp", "b.GIF", "c.jpg", "d.JPEG", "e.pbm", "f.pgm", "g.png", "h.pnm",
                           "i.ppm", "j.tif", "k.Tiff", "l.webp", "m.pdf"}) {
    make_file(std::string("in/") + name);
  }
  const Names documents = files(false);
  for (const char* name : {"n.txt", "pdf", "o.pdf.part", ".hidden.png"}) {
    make_file(std::string("in/") + name);
  }
  EXPECT_EQ(documents.size(), 13U);
  EXPECT_EQ(files(false), documents);
}

TEST_F(Folders, AreSortedByNameAndSubfoldersAreReadOnRequest) {
  for (const char* name : {"b.png", "a/z.png", "a/a/y.png", "c/x.png", "d.png/w.png"}) {
    make_file(std::string("in/") + name);
  }
  EXPECT_EQ(files(false), Names{"b.png"});
  EXPECT_EQ(files(true), (Names{"a/a/y.png", "a/z.png", "b.png", "c/x.png", "d.png/w.png"}));
}

TEST_F(Folders, HiddenFoldersAndJournalsArePassedOver) {
  make_file("in/.zelk-journal/page.png");
  make_file("in/.git/page.png");
  EXPECT_EQ(files(true), Names());
}

TEST_F(Folders, FolderOfTheOutputsIsPassedOver) {
  make_file("in/out/a.pdf");
  make_file("in/a.png");
  EXPECT_EQ(files(true, "in/out"), Names{"a.png"});
  EXPECT_EQ(files(true, "in"), (Names{"a.png", "out/a.pdf"}));
}

TEST_F(Folders, LinksAreFollowedAndLoopsEnd) {
  make_file("in/a/page.png");
  make_file("elsewhere/other.png");
  ASSERT_EQ(symlink("..", "in/a/up"), 0);
  ASSERT_EQ(symlink("../in", "in/self"), 0);
  ASSERT_EQ(symlink("../elsewhere", "in/linked"), 0);
  ASSERT_EQ(symlink("nowhere.png", "in/broken.png"), 0);
  EXPECT_EQ(files(true), (Names{"a/page.png", "broken.png", "linked/other.png"}));
}

TEST_F(Folders, NamesOfAnyBytesAreFound) {
  make_file("in/\xFF\n.png");
  EXPECT_EQ(files(false), Names{"\xFF\n.png"});
}

TEST_F(Folders, FoldersThatCannotBeReadAreNamed) {
  if (geteuid() == 0) {
    const auto content = cli::documents_in_folder("none", true, {});
    ASSERT_EQ(content.unreadable.size(), 1U);
    EXPECT_EQ(content.unreadable[0].reason, "No such file or directory");
    return;
  }
  make_file("in/closed/a.png");
  std::filesystem::permissions("in/closed", std::filesystem::perms::none);
  const auto content = cli::documents_in_folder("in", true, {});
  std::filesystem::permissions("in/closed", std::filesystem::perms::owner_all);
  ASSERT_EQ(content.unreadable.size(), 1U);
  EXPECT_EQ(content.unreadable[0].name, "in/closed");
  EXPECT_EQ(content.unreadable[0].reason, "Permission denied");
}

}  // namespace
