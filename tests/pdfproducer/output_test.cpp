// SPDX-License-Identifier: Apache-2.0
// Where a document appears, and what remains when it cannot.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "pdfproducer/Producer.h"
#include "pdfproducer/Tools.h"
#include "support/Documents.h"

namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

std::vector<std::string> names_in(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  return names;
}

mode_t mode_of(const std::string& path) {
  struct stat status = {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777;
}

// Acts as a user without rights while it lives; the superuser may do everything.
class AsNobody {
 public:
  AsNobody() : _was_root(geteuid() == 0) {
    if (_was_root && seteuid(kNobody) != 0) ADD_FAILURE() << "still the superuser";
  }
  ~AsNobody() {
    if (_was_root && seteuid(0) != 0) ADD_FAILURE() << "not the superuser again";
  }
  AsNobody(const AsNobody&) = delete;
  AsNobody& operator=(const AsNobody&) = delete;

 private:
  bool _was_root;
};

// Files end after so many bytes while it lives, as on a full disk.
class FullDisk {
 public:
  explicit FullDisk(rlim_t size) {
    getrlimit(RLIMIT_FSIZE, &_before);
    const rlimit limit = {size, _before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, SIG_IGN);
  }
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &_before); }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit _before = {};
};

class Output : public ::testing::Test {
 protected:
  void SetUp() override { fs::create_directory(root); }
  std::string path(const std::string& name) const { return root + "/" + name; }
  bool write(const std::string& to) {
    return write_document(to, line_of("text", 5, 5, 12), make_jpeg(40, 30));
  }
  void expect_no_output(const std::string& to, const std::string& reason) {
    EXPECT_EQ(producer.begin(to), -1) << to;
    EXPECT_EQ(producer.number(), 1016) << to;
    EXPECT_EQ(producer.function(), "PDF_begin_document");
    EXPECT_NE(producer.text().find("'" + to + "': " + reason), std::string::npos)
        << producer.text();
    EXPECT_TRUE(producer.end()) << "without a document there is nothing to end";
  }

  ScratchFolder folder;
  const std::string root = folder.path("out");
  Producer producer;
};

TEST_F(Output, AppearsWhenTheDocumentEnds) {
  ASSERT_EQ(producer.begin(path("a.pdf")), 0);
  ASSERT_TRUE(add_page(producer, {}, make_jpeg(40, 30)));
  EXPECT_FALSE(fs::exists(path("a.pdf")));
  ASSERT_TRUE(producer.end());
  EXPECT_EQ(names_in(root), std::vector<std::string>{"a.pdf"});
}

TEST_F(Output, InAMissingFolderIsRefused) {
  expect_no_output(path("no/such/a.pdf"), "No such file or directory");
  expect_no_output(path("no/"), "Is a directory");
}

TEST_F(Output, WithoutANameIsRefused) {
  EXPECT_EQ(producer.begin(""), -1);
  EXPECT_EQ(producer.text(), "cannot create a file without a name");
  EXPECT_EQ(producer.result(
                [&] { return producer.api.PDF_begin_document(producer.p, nullptr, 0, nullptr); }),
            -1);
}

TEST_F(Output, OverAFolderIsRefused) {
  expect_no_output(root, "Is a directory");
  expect_no_output("/", "Is a directory");
  EXPECT_TRUE(names_in(root).empty());
}

TEST_F(Output, OverADeviceIsRefused) {
  expect_no_output("/dev/null", "Invalid argument");
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(Output, BelowAFileIsRefused) {
  write_file(path("file"), "x");
  expect_no_output(path("file/a.pdf"), "Not a directory");
}

TEST_F(Output, InAFolderWithoutPermissionIsRefused) {
  chmod(folder.path("").c_str(), 0755);
  chmod(root.c_str(), 0555);
  const AsNobody nobody;
  expect_no_output(path("a.pdf"), "Permission denied");
}

TEST_F(Output, OverAReadOnlyFileIsRefused) {
  chmod(folder.path("").c_str(), 0755);
  chmod(root.c_str(), 0777);
  write_file(path("a.pdf"), "mine");
  chmod(path("a.pdf").c_str(), 0444);
  const AsNobody nobody;
  expect_no_output(path("a.pdf"), "Permission denied");
  EXPECT_EQ(read_file(path("a.pdf")), "mine");
}

TEST_F(Output, OverALinkToItselfIsRefused) {
  fs::create_symlink("loop.pdf", path("loop.pdf"));
  expect_no_output(path("loop.pdf"), "Too many levels of symbolic links");
}

TEST_F(Output, HasTheModeOfAnyNewFile) {
  for (const mode_t mask : {022u, 077u, 002u}) {
    const mode_t before = umask(mask);
    EXPECT_TRUE(write(path("a.pdf")));
    umask(before);
    EXPECT_EQ(mode_of(path("a.pdf")), 0666 & ~mask);
    fs::remove(path("a.pdf"));
  }
}

TEST_F(Output, KeepsTheModeOfTheFileThatItReplaces) {
  for (const mode_t mode : {0600u, 0664u, 0755u, 0222u}) {
    write_file(path("a.pdf"), "earlier");
    chmod(path("a.pdf").c_str(), mode);
    EXPECT_TRUE(write(path("a.pdf")));
    EXPECT_EQ(mode_of(path("a.pdf")), mode);
    fs::remove(path("a.pdf"));
  }
}

TEST_F(Output, KeepsTheOwnerOfTheFileThatItReplaces) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser can give files away";
  write_file(path("a.pdf"), "earlier");
  ASSERT_EQ(chown(path("a.pdf").c_str(), kNobody, kNobody), 0);
  EXPECT_TRUE(write(path("a.pdf")));
  struct stat status = {};
  stat(path("a.pdf").c_str(), &status);
  EXPECT_EQ(status.st_uid, kNobody);
}

TEST_F(Output, ReplacesWhatALinkNames) {
  fs::create_directory(path("elsewhere"));
  write_file(path("elsewhere/real.pdf"), "earlier");
  fs::create_symlink("elsewhere/real.pdf", path("middle.pdf"));
  fs::create_symlink(path("middle.pdf"), path("link.pdf"));
  EXPECT_TRUE(write(path("link.pdf")));
  EXPECT_TRUE(fs::is_symlink(path("link.pdf")));
  EXPECT_TRUE(fs::is_symlink(path("middle.pdf")));
  EXPECT_EQ(read_file(path("elsewhere/real.pdf")).substr(0, 5), "%PDF-");
}

TEST_F(Output, AppearsWhereADanglingLinkPoints) {
  fs::create_directory(path("elsewhere"));
  fs::create_symlink("elsewhere/new.pdf", path("link.pdf"));
  EXPECT_TRUE(write(path("link.pdf")));
  EXPECT_TRUE(fs::is_symlink(path("link.pdf")));
  EXPECT_EQ(qpdf_complaint(path("elsewhere/new.pdf")), "");
}

TEST_F(Output, AppearsInTheFolderThatWasCurrentWhenItBegan) {
  const fs::path before = fs::current_path();
  fs::current_path(root);
  ASSERT_EQ(producer.begin("relative.pdf"), 0);
  ASSERT_TRUE(add_page(producer, {}, make_jpeg(40, 30)));
  fs::current_path(before);
  ASSERT_TRUE(producer.end());
  EXPECT_EQ(names_in(root), std::vector<std::string>{"relative.pdf"});
}

TEST_F(Output, HasRoomForTheLongestName) {
  const std::string name = std::string(251, 'n') + ".pdf";
  EXPECT_TRUE(write(path(name)));
  EXPECT_EQ(names_in(root), std::vector<std::string>{name});
}

TEST_F(Output, StandsBesideWhatAKilledRunLeft) {
  const std::string left = ".zelk-" + std::to_string(getpid()) + "-0.tmp";
  write_file(path(left), "half");
  EXPECT_TRUE(write(path("a.pdf")));
  EXPECT_EQ(read_file(path(left)), "half");
}

TEST_F(Output, OfADeletedContextLeavesNothingAndTheEarlierFile) {
  write_file(path("a.pdf"), "earlier");
  {
    Producer other;
    ASSERT_EQ(other.begin(path("a.pdf")), 0);
    ASSERT_TRUE(add_page(other, {}, make_jpeg(400, 300)));
    ASSERT_TRUE(other.begin_page());
    EXPECT_EQ(names_in(root).size(), 2u);
  }
  EXPECT_EQ(names_in(root), std::vector<std::string>{"a.pdf"});
  EXPECT_EQ(read_file(path("a.pdf")), "earlier");
}

TEST_F(Output, OfAnUnfinishedDocumentIsDroppedByTheNextOne) {
  write_file(path("a.pdf"), "earlier");
  ASSERT_EQ(producer.begin(path("a.pdf")), 0);
  ASSERT_TRUE(producer.begin_page());
  ASSERT_EQ(producer.begin(path("b.pdf")), 0);
  ASSERT_TRUE(add_page(producer, {}, make_jpeg(40, 30)));
  ASSERT_TRUE(producer.end());
  EXPECT_EQ(read_file(path("a.pdf")), "earlier");
  EXPECT_EQ(pdfinfo(path("b.pdf"), "Pages"), "1");
  EXPECT_EQ(names_in(root).size(), 2u);
}

TEST_F(Output, OfAnUnfinishedDocumentIsDroppedAlsoByOneThatCannotBegin) {
  ASSERT_EQ(producer.begin(path("a.pdf")), 0);
  ASSERT_TRUE(add_page(producer, {}, make_jpeg(40, 30)));
  EXPECT_EQ(producer.begin(path("no/such/b.pdf")), -1);
  EXPECT_TRUE(names_in(root).empty());
  EXPECT_TRUE(producer.end());
  EXPECT_TRUE(names_in(root).empty());
}

TEST_F(Output, OfAnUnfinishedDocumentIsDroppedAlsoByOneThatIsRefused) {
  const std::string name = path("b.pdf");
  ASSERT_EQ(producer.begin(path("a.pdf")), 0);
  EXPECT_FALSE(producer.runs(
      [&] { producer.api.PDF_begin_document(producer.p, name.c_str(), 0, "linearize"); }));
  EXPECT_TRUE(names_in(root).empty());
}

TEST_F(Output, IntoAFolderThatVanishesIsAnErrorThatNamesTheFile) {
  ASSERT_EQ(producer.begin(path("a.pdf")), 0);
  ASSERT_TRUE(add_page(producer, {}, make_jpeg(40, 30)));
  fs::remove_all(root);
  EXPECT_FALSE(producer.end());
  EXPECT_EQ(producer.number(), 1016);
  EXPECT_EQ(producer.function(), "PDF_end_document");
  EXPECT_EQ(producer.text(), "cannot write '" + path("a.pdf") + "': No such file or directory");
  EXPECT_TRUE(producer.end()) << "the document is gone";
}

TEST_F(Output, OverAFolderThatAppearsMeanwhileIsAnErrorThatLeavesNothing) {
  ASSERT_EQ(producer.begin(path("a.pdf")), 0);
  ASSERT_TRUE(add_page(producer, {}, make_jpeg(40, 30)));
  fs::create_directory(path("a.pdf"));
  EXPECT_FALSE(producer.end());
  EXPECT_EQ(producer.text(), "cannot write '" + path("a.pdf") + "': Is a directory");
  EXPECT_EQ(names_in(root), std::vector<std::string>{"a.pdf"});
}

TEST_F(Output, HoldsLargePiecesInTheirPlaces) {
  const std::string jpeg = make_jpeg(40, 30) + std::string(200000, 'x');
  ASSERT_TRUE(write_document(path("a.pdf"), line_of("text", 5, 5, 12), jpeg));
  EXPECT_EQ(qpdf_complaint(path("a.pdf")), "");
  EXPECT_EQ(page_image(path("a.pdf")), jpeg);
}

TEST_F(Output, OnAFullDiskIsAnErrorThatNamesTheFile) {
  write_file(path("a.pdf"), "earlier");
  const std::string jpeg = make_jpeg(9, 9) + std::string(200000, 'x');
  {
    const FullDisk disk(jpeg.size() * 5 / 2);
    ASSERT_EQ(producer.begin(path("a.pdf")), 0);
    ASSERT_TRUE(add_page(producer, {}, jpeg));
    ASSERT_TRUE(add_page(producer, {}, jpeg));
    EXPECT_FALSE(add_page(producer, {}, jpeg));
  }
  EXPECT_EQ(producer.number(), 1016);
  EXPECT_EQ(producer.function(), "PDF_end_page_ext");
  EXPECT_EQ(producer.text(), "cannot write '" + path("a.pdf") + "': File too large");
  EXPECT_EQ(names_in(root), std::vector<std::string>{"a.pdf"}) << "room is made at once";
  EXPECT_EQ(read_file(path("a.pdf")), "earlier");
  EXPECT_TRUE(producer.end()) << "the document is gone";
}

TEST_F(Output, OnADiskFullAtTheEndIsAnError) {
  ASSERT_EQ(producer.begin(path("a.pdf")), 0);
  ASSERT_TRUE(add_page(producer, {}, make_jpeg(40, 30)));
  {
    const FullDisk disk(100);
    EXPECT_FALSE(producer.end());
  }
  EXPECT_EQ(producer.text(), "cannot write '" + path("a.pdf") + "': File too large");
  EXPECT_TRUE(names_in(root).empty());
}

}  // namespace
