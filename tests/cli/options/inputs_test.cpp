// SPDX-License-Identifier: Apache-2.0
#include "options/inputs.h"

#include <sys/stat.h>
#include <unistd.h>

#include "cli/options/scratch_folder.h"

namespace {

using cli::Format;
using cli::Inputs;
using cli::Options;
using Names = std::vector<std::string>;

class FindInputs : public ScratchFolder {
 protected:
  static Options options_of(const Names& inputs, const std::string& directory = "") {
    Options options;
    options.inputs = inputs;
    options.directory = directory;
    return options;
  }

  static Names names(const Inputs& inputs) {
    Names names;
    for (const auto& document : inputs.documents) names.push_back(document.name);
    return names;
  }

  static Names outputs(const Inputs& inputs) {
    Names paths;
    for (const auto& document : inputs.documents) {
      for (const auto& target : document.targets) paths.push_back(target.path);
    }
    return paths;
  }

  // "NAME: REASON" of the only complaint.
  static std::string complaint(const Inputs& inputs) {
    if (inputs.unreadable.size() != 1) return std::to_string(inputs.unreadable.size());
    return inputs.unreadable[0].name + ": " + inputs.unreadable[0].reason;
  }
};

TEST_F(FindInputs, DocumentsComeInTheOrderGiven) {
  for (const char* name : {"b.png", "a.dat", "in/2.png", "in/1.tif"}) make_file(name);
  const Inputs inputs = find_inputs(options_of({"b.png", "in/", "a.dat", "-"}));
  EXPECT_EQ(inputs.mistake, "");
  EXPECT_EQ(names(inputs), (Names{"b.png", "in/1.tif", "in/2.png", "a.dat", "-"}));
  EXPECT_EQ(outputs(inputs), Names(5, "-"));
}

TEST_F(FindInputs, InputsThatCannotBeReadAreNamedWithTheReason) {
  make_file("empty.png", "");
  make_file("good.png");
  ASSERT_EQ(mkfifo("pipe.png", 0600), 0);
  std::filesystem::create_directory("folder.png");
  EXPECT_EQ(complaint(find_inputs(options_of({"none.png"}))),
            "none.png: No such file or directory");
  EXPECT_EQ(complaint(find_inputs(options_of({"empty.png"}))), "empty.png: the file is empty");
  EXPECT_EQ(complaint(find_inputs(options_of({"pipe.png"}))), "pipe.png: is not a regular file");
  EXPECT_EQ(complaint(find_inputs(options_of({"folder.png"}))), "folder.png: holds no document");
  EXPECT_EQ(names(find_inputs(options_of({"none.png", "good.png"}))), Names{"good.png"});
}

TEST_F(FindInputs, FolderMirrorsTheTree) {
  for (const char* name : {"in/a.png", "in/b/a.png", "in/b/c.pdf", "x/y/d.dat"}) make_file(name);
  Options options = options_of({"in", "x/y/d.dat", "-"}, "out");
  options.recursive = true;
  options.formats = {Format::kText, Format::kPdf};
  const Inputs inputs = find_inputs(options);
  EXPECT_EQ(inputs.mistake, "");
  EXPECT_EQ(outputs(inputs),
            (Names{"out/a.txt", "out/a.pdf", "out/b/a.txt", "out/b/a.pdf", "out/b/c.txt",
                   "out/b/c.pdf", "out/d.txt", "out/d.pdf", "out/stdin.txt", "out/stdin.pdf"}));
}

TEST_F(FindInputs, OutputsThatWouldCollideKeepTheirNamesWhole) {
  for (const char* name : {"in/scan.png", "in/scan.jpg", "in/other.png"}) make_file(name);
  EXPECT_EQ(outputs(find_inputs(options_of({"in"}, "out"))),
            (Names{"out/other.txt", "out/scan.jpg.txt", "out/scan.png.txt"}));
}

TEST_F(FindInputs, DocumentsWithOneNameKeepTheirFolders) {
  make_file("x/a/scan.png");
  make_file("x/b/scan.png");
  make_file("c/other.png");
  EXPECT_EQ(outputs(find_inputs(options_of({"x/a", "c/other.png", "x/b/scan.png"}, "out"))),
            (Names{"out/a/scan.txt", "out/other.txt", "out/b/scan.txt"}));
}

TEST_F(FindInputs, DocumentThatCannotBeReadKeepsItsName) {
  make_file("x/a/scan.png");
  make_file("x/b/scan.png", "");
  EXPECT_EQ(outputs(find_inputs(options_of({"x/a", "x/b/scan.png"}, "out"))),
            Names{"out/a/scan.txt"});
}

TEST_F(FindInputs, TwoInputsWithOneOutputAreAMistake) {
  make_file("stdin");
  EXPECT_EQ(find_inputs(options_of({"-", "stdin"}, "out")).mistake,
            "- and stdin would both be written to out/stdin.txt");
  EXPECT_EQ(find_inputs(options_of({"-", "stdin"})).mistake, "");
}

TEST_F(FindInputs, FileHasOneOutputByWhateverPath) {
  make_file("in/a.png");
  make_file("in/b.png");
  ASSERT_EQ(symlink("in", "link"), 0);
  ASSERT_EQ(link("in/a.png", "in/same.png"), 0);
  const Names given = {"in/a.png", "in/../in/a.png", "link/a.png", "link"};
  EXPECT_EQ(names(find_inputs(options_of(given, "out"))),
            (Names{"in/a.png", "link/b.png", "link/same.png"}));
  EXPECT_EQ(names(find_inputs(options_of({"in/a.png", "in/b.png", "in/a.png"}))),
            (Names{"in/a.png", "in/b.png", "in/a.png"}));
}

TEST_F(FindInputs, ListsNameFilesAndFoldersOfAnyBytes) {
  for (const char* name : {"\xFE.png", " b.png ", "in/c.png", "#d.png"}) make_file(name);
  make_file("list", "# comment\r\n\r\n\xFE.png\r\n b.png \nin\n./#d.png");
  const Inputs inputs = find_inputs(options_of({"@list"}));
  EXPECT_EQ(inputs.unreadable.size(), 0U);
  EXPECT_EQ(names(inputs), (Names{"\xFE.png", " b.png ", "in/c.png", "./#d.png"}));
}

TEST_F(FindInputs, ListsThatCannotBeReadAreNamed) {
  make_file("outer", "@inner\n");
  make_file("bare", "# nothing\n\n");
  std::filesystem::create_directory("folder");
  EXPECT_EQ(complaint(find_inputs(options_of({"@none"}))), "@none: No such file or directory");
  EXPECT_EQ(complaint(find_inputs(options_of({"@outer"}))),
            "@inner: a list inside a list is not read");
  EXPECT_EQ(complaint(find_inputs(options_of({"@bare"}))), "@bare: the list names no document");
  EXPECT_EQ(complaint(find_inputs(options_of({"@folder"}))), "@folder: is a directory");
}

TEST_F(FindInputs, NamesThatStartWithAnAtSignAreGivenWithTheirFolder) {
  make_file("@x.png");
  EXPECT_EQ(names(find_inputs(options_of({"./@x.png"}))), Names{"./@x.png"});
}

TEST_F(FindInputs, StandardInputIsReadOnce) {
  EXPECT_NE(find_inputs(options_of({"-", "-"})).mistake, "");
}

TEST_F(FindInputs, ImageListIsOneDocumentNamedForTheFirst) {
  for (const char* name : {"p2.png", "in/p1.png", "in/p3.png"}) make_file(name);
  Options options = options_of({"p2.png", "in"}, "out");
  options.image_list = true;
  options.formats = {Format::kPdf};
  const Inputs inputs = find_inputs(options);
  EXPECT_EQ(names(inputs), Names{"p2.png"});
  EXPECT_EQ(inputs.documents.at(0).files, (Names{"p2.png", "in/p1.png", "in/p3.png"}));
  EXPECT_EQ(outputs(inputs), Names{"out/p2.pdf"});
}

TEST_F(FindInputs, ImageListWithAMissingPictureIsNotMade) {
  make_file("p1.png");
  Options options = options_of({"p1.png", "p2.png"});
  options.image_list = true;
  options.pdf = "out.pdf";
  const Inputs inputs = find_inputs(options);
  EXPECT_EQ(inputs.mistake, "");
  EXPECT_EQ(complaint(inputs), "p2.png: No such file or directory");
  EXPECT_EQ(names(inputs), Names());
}

TEST_F(FindInputs, TextOfSeveralDocumentsSharesOneFileOtherFormatsDoNot) {
  make_file("a.png");
  make_file("b.png");
  Options options = options_of({"a.png", "b.png"});
  options.output = "out.txt";
  for (const Format format : {Format::kText, Format::kJson}) {
    options.formats = {format};
    EXPECT_EQ(find_inputs(options).mistake, "");
    EXPECT_EQ(outputs(find_inputs(options)), Names(2, "out.txt"));
    for (const auto& document : find_inputs(options).documents) {
      EXPECT_TRUE(document.targets[0].is_shared);
    }
  }
  options.formats = {Format::kText, Format::kJson};
  EXPECT_EQ(outputs(find_inputs(options)), (Names{"out.txt", "out.json", "out.txt", "out.json"}));
  options.formats = {Format::kText, Format::kPdf};
  EXPECT_EQ(find_inputs(options).mistake,
            "2 documents need --directory DIR: one PDF holds one document");
  options.formats = {Format::kHtml};
  EXPECT_EQ(find_inputs(options).mistake,
            "2 documents need --directory DIR: one HTML file holds one document");
  options.inputs = {"a.png"};
  EXPECT_FALSE(find_inputs(options).documents[0].targets[0].is_shared);
}

TEST_F(FindInputs, PdfBesideTheTextIsForOneDocument) {
  make_file("in/a.png");
  Options options = options_of({"in"});
  options.pdf = "out.pdf";
  EXPECT_EQ(outputs(find_inputs(options)), (Names{"-", "out.pdf"}));
  make_file("in/b.png");
  EXPECT_NE(find_inputs(options).mistake, "");
}

TEST_F(FindInputs, OutputThatIsAnInputIsAMistakeByWhateverName) {
  make_file("page.png");
  make_file("list", "page.png\n");
  ASSERT_EQ(link("page.png", "same.png"), 0);
  ASSERT_EQ(symlink("page.png", "symbolic.png"), 0);
  for (const char* output : {"page.png", "./page.png", "same.png", "symbolic.png"}) {
    Options options = options_of({"page.png"});
    options.output = output;
    EXPECT_EQ(find_inputs(options).mistake, "page.png is an input, it cannot be the output too");
    options.output.clear();
    options.report = output;
    EXPECT_EQ(find_inputs(options).mistake, "page.png is an input, it cannot be the output too");
  }
  Options options = options_of({"@list"});
  options.output = "list";
  EXPECT_EQ(find_inputs(options).mistake, "list is an input, it cannot be the output too");
}

TEST_F(FindInputs, OutputBesideItsInputIsAMistakeForPdfs) {
  make_file("in/a.pdf");
  Options options = options_of({"in"}, "in");
  options.formats = {Format::kPdf};
  EXPECT_EQ(find_inputs(options).mistake, "in/a.pdf is an input, it cannot be the output too");
  options.formats = {Format::kText};
  EXPECT_EQ(find_inputs(options).mistake, "");
}

TEST_F(FindInputs, ReportAndOutputAreDifferentFiles) {
  make_file("a.png");
  Options options = options_of({"a.png"});
  options.output = "out";
  options.report = "./out";
  EXPECT_EQ(find_inputs(options).mistake, "the report and a.png would both be written to out");
}

TEST_F(FindInputs, DocumentsWithAllTheirOutputsAreSkippedOnRequest) {
  for (const char* name : {"a.png", "b.png", "out/a.txt", "out/a.json", "out/b.txt"}) {
    make_file(name);
  }
  Options options = options_of({"a.png", "b.png"}, "out");
  options.formats = {Format::kText, Format::kJson};
  EXPECT_EQ(names(find_inputs(options)), (Names{"a.png", "b.png"}));
  options.skip_existing = true;
  EXPECT_EQ(names(find_inputs(options)), Names{"b.png"});
  EXPECT_EQ(find_inputs(options).skipped, Names{"a.png"});
}

TEST_F(FindInputs, SecondRunDoesNotReadTheOutputsOfTheFirst) {
  for (const char* name : {"in/a.png", "in/out/a.pdf"}) make_file(name);
  Options options = options_of({"in"}, "in/out");
  options.formats = {Format::kPdf};
  options.recursive = true;
  EXPECT_EQ(outputs(find_inputs(options)), Names{"in/out/a.pdf"});
}

}  // namespace
