// SPDX-License-Identifier: Apache-2.0
#include "options/targets.h"

#include <gtest/gtest.h>

namespace {

using cli::Format;
using Names = std::vector<std::string>;

Names target_paths(const cli::Options& options) {
  Names paths;
  for (const auto& target : cli::targets_of(options, "a/scan")) paths.push_back(target.path);
  return paths;
}

TEST(Targets, StandardOutputWithoutAnOutput) {
  cli::Options options;
  EXPECT_EQ(target_paths(options), Names{"-"});
  options.output = "-";
  EXPECT_EQ(target_paths(options), Names{"-"});
}

TEST(Targets, OneFormatGoesToTheFileWhateverItsName) {
  cli::Options options;
  options.output = "out.dat";
  EXPECT_EQ(target_paths(options), Names{"out.dat"});
}

TEST(Targets, SeveralFormatsReplaceTheExtensionOfTheFile) {
  cli::Options options;
  options.formats = {Format::kText, Format::kJson, Format::kPdf, Format::kHtml};
  options.output = "x.y/out.pdf";
  EXPECT_EQ(target_paths(options),
            (Names{"x.y/out.txt", "x.y/out.json", "x.y/out.pdf", "x.y/out.html"}));
  options.output = "x.y/out";
  EXPECT_EQ(target_paths(options)[0], "x.y/out.txt");
}

TEST(Targets, FolderHoldsTheNameOfTheDocument) {
  cli::Options options;
  options.formats = {Format::kJson};
  options.directory = "out/";
  EXPECT_EQ(target_paths(options), Names{"out/a/scan.json"});
}

TEST(Targets, PdfBesideTheTextComesLast) {
  cli::Options options;
  options.formats = {Format::kText, Format::kHtml};
  options.output = "o.txt";
  options.pdf = "layer.pdf";
  const auto targets = cli::targets_of(options, "");
  ASSERT_EQ(targets.size(), 3U);
  EXPECT_EQ(targets[2].format, Format::kPdf);
  EXPECT_EQ(targets[2].path, "layer.pdf");
}

TEST(Targets, ExtensionsOfFilesTellTheirFormats) {
  for (const char* name : {"a.pdf", "a.PDF", "x.y/a.b.Pdf"}) {
    EXPECT_EQ(cli::format_of_name(name), Format::kPdf) << name;
  }
  EXPECT_EQ(cli::format_of_name("a.htm"), Format::kHtml);
  EXPECT_EQ(cli::format_of_name("a.html"), Format::kHtml);
  EXPECT_EQ(cli::format_of_name("a.txt"), Format::kText);
  EXPECT_EQ(cli::format_of_name("a.json"), Format::kJson);
  for (const char* name : {"", "-", "pdf", ".pdf", "a.pdf/", "x.pdf/a", "a.pdf.bak", "a.dat"}) {
    EXPECT_EQ(cli::format_of_name(name), std::nullopt) << name;
  }
}

}  // namespace
