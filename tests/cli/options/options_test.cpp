// SPDX-License-Identifier: Apache-2.0
#include "options/options.h"

#include <gtest/gtest.h>

namespace {

using cli::Format;
using cli::Options;
using cli::ParsedOptions;
using Words = std::vector<const char*>;

ParsedOptions parse(Words words, bool results_on_terminal = false) {
  words.insert(words.begin(), "zelk");
  return cli::parse_options(static_cast<int>(words.size()), words.data(), results_on_terminal);
}

Options options_of(const Words& words) {
  const ParsedOptions parsed = parse(words);
  EXPECT_TRUE(parsed.options) << parsed.message;
  return parsed.options.value_or(Options());
}

// The complaint about a command line; empty when it has no mistake.
std::string mistake(const Words& words, bool results_on_terminal = false) {
  const ParsedOptions parsed = parse(words, results_on_terminal);
  EXPECT_EQ(parsed.exit_code, parsed.options ? cli::kAllDone : cli::kUsage);
  return parsed.message;
}

void expect_mistake(const Words& words, const std::string& text) {
  EXPECT_NE(mistake(words).find(text), std::string::npos) << mistake(words);
}

TEST(CommandLineOptions, DefaultsAreThoseOfTheHelp) {
  const Options options = options_of({"a.png"});
  EXPECT_EQ(options.inputs, std::vector<std::string>{"a.png"});
  EXPECT_EQ(options.formats, std::vector{Format::kText});
  EXPECT_EQ(options.jobs, 0);
  EXPECT_EQ(options.page_timeout, 180);
  EXPECT_EQ(options.memory_limit, 2048);
  EXPECT_EQ(options.recycle, 500);
  EXPECT_EQ(options.max_pixels, 120'000'000);
  EXPECT_TRUE(options.max_failed_pages.is_percent);
  EXPECT_EQ(options.max_failed_pages.amount, 100.0);
  EXPECT_FALSE(options.dpi);
}

TEST(CommandLineOptions, AllAreTaken) {
  const Options options = options_of({"--recursive",
                                      "--image-list",
                                      "--pages",
                                      "2-3,9-",
                                      "--password",
                                      "secret",
                                      "--format",
                                      "json,text",
                                      "-d",
                                      "out",
                                      "--skip-existing",
                                      "--resume",
                                      "--report",
                                      "r.json",
                                      "--lang",
                                      "eng",
                                      "--dpi",
                                      "300",
                                      "--skip-text",
                                      "--strict",
                                      "--engine",
                                      "e",
                                      "-j",
                                      "7",
                                      "--page-timeout",
                                      "9",
                                      "--memory-limit",
                                      "512",
                                      "--recycle",
                                      "3",
                                      "--max-pixels",
                                      "5000000000",
                                      "-v",
                                      "in"});
  EXPECT_TRUE(options.recursive && options.image_list && options.skip_existing && options.resume &&
              options.skip_text && options.strict && options.verbose);
  EXPECT_EQ(cli::choose_pages(options.pages, 10), (std::vector<int>{2, 3, 9, 10}));
  EXPECT_EQ(options.password, "secret");
  EXPECT_EQ(options.formats, (std::vector{Format::kText, Format::kJson}));
  EXPECT_EQ(options.directory, "out");
  EXPECT_EQ(options.report, "r.json");
  EXPECT_EQ(options.language, "eng");
  EXPECT_EQ(options.dpi, 300);
  EXPECT_EQ(options.engine_dir, "e");
  EXPECT_EQ(options.jobs, 7);
  EXPECT_EQ(options.page_timeout, 9);
  EXPECT_EQ(options.memory_limit, 512);
  EXPECT_EQ(options.recycle, 3);
  EXPECT_EQ(options.max_pixels, 5'000'000'000);
  EXPECT_EQ(options.inputs, std::vector<std::string>{"in"});
}

TEST(CommandLineOptions, FilesMayHaveAnyName) {
  EXPECT_EQ(options_of({"[a,b]", "-", "\xFF", "--", "--quiet"}).inputs,
            (std::vector<std::string>{"./[a,b]", "-", "\xFF", "--quiet"}));
  EXPECT_EQ(options_of({"--password", "[a,b]", "c"}).password, "[a,b]");
}

TEST(CommandLineOptions, FormatsAreSortedAndNotRepeated) {
  EXPECT_EQ(options_of({"-o", "x", "--format=html,text,pdf,text", "a"}).formats,
            (std::vector{Format::kText, Format::kPdf, Format::kHtml}));
  for (const char* formats : {"xml", "", "text,", "text,,json", "TEXT"}) {
    expect_mistake({"--format", formats, "a"}, "--format");
  }
}

TEST(CommandLineOptions, FormatFollowsTheExtensionOfTheOutput) {
  EXPECT_EQ(options_of({"-o", "x.pdf", "a"}).formats, std::vector{Format::kPdf});
  EXPECT_EQ(options_of({"a", "-o", "x.HTM"}).formats, std::vector{Format::kHtml});
  EXPECT_EQ(options_of({"-o", "x.json", "--format", "json", "a"}).formats,
            std::vector{Format::kJson});
  EXPECT_EQ(options_of({"-o", "x.out", "a"}).formats, std::vector{Format::kText});
  EXPECT_EQ(options_of({"-o", "x.out", "--format", "pdf", "a"}).formats, std::vector{Format::kPdf});
  EXPECT_EQ(options_of({"-o", "x.pdf", "--format", "text,json", "a"}).formats,
            (std::vector{Format::kText, Format::kJson}));
  expect_mistake({"-o", "x.pdf", "--format", "text", "a"},
                 "--output: the extension of x.pdf says pdf, but --format says text");
  expect_mistake({"-o", "x.pdf", "--pdf", "y.pdf", "a"}, "--pdf: has no place beside a PDF");
}

TEST(CommandLineOptions, PageBreaksAreForTexts) {
  EXPECT_TRUE(options_of({"--page-break", "-o", "x", "--format", "text,json", "a"}).page_break);
  expect_mistake({"--page-break", "--format", "json", "a"}, "--page-break: is for texts");
  expect_mistake({"--page-break", "-o", "x.pdf", "a"}, "--page-break: is for texts");
}

TEST(CommandLineOptions, FailedPagesAreANumberOrAShare) {
  const auto limit = [](const char* text) {
    return options_of({"--max-failed-pages", text, "a"}).max_failed_pages;
  };
  EXPECT_FALSE(limit("3").is_percent);
  EXPECT_EQ(limit("3").amount, 3.0);
  EXPECT_TRUE(limit("2.5%").is_percent);
  EXPECT_EQ(limit("2.5%").amount, 2.5);
  for (const char* text : {"", "%", "-1", "2.5", "101%", "nan%", "1e3", "few", "3%%"}) {
    const std::string argument = std::string("--max-failed-pages=") + text;
    expect_mistake({argument.c_str(), "a"}, "--max-failed-pages");
  }
}

TEST(CommandLineOptions, NumbersHaveBounds) {
  for (const char* option :
       {"--dpi=35", "--dpi=2401", "--jobs=0", "--jobs=-1", "--jobs=many", "--page-timeout=0",
        "--memory-limit=1", "--recycle=0", "--max-pixels=0", "--max-pixels=9999999999999999999"}) {
    expect_mistake({option, "a"}, std::string(option).substr(0, 5));
  }
}

TEST(CommandLineOptions, OutputsThatExcludeEachOther) {
  expect_mistake({"-o", "x", "-d", "y", "a"}, "excludes");
  expect_mistake({"--quiet", "--progress", "json", "a"}, "excludes");
  expect_mistake({"--quiet", "--verbose", "a"}, "excludes");
  expect_mistake({"--pdf", "x.pdf", "-d", "y", "a"}, "--directory");
  expect_mistake({"--pdf", "x.pdf", "--format", "pdf", "-o", "y", "a"}, "--format pdf");
  expect_mistake({"--pdf", "x.pdf", "-o", "x.pdf", "a"}, "--output");
  expect_mistake({"--progress", "xml", "a"}, "--progress");
}

TEST(CommandLineOptions, SlipsAreToldInWords) {
  const auto told = [](const Words& words) {
    return mistake(words).substr(0, mistake(words).find("; zelk --help"));
  };
  EXPECT_EQ(told({"--fromat", "a"}), "there is no option --fromat, --format may be meant");
  EXPECT_EQ(told({"-o", "x", "-o", "y", "a"}), "--output: is given more than once");
  EXPECT_EQ(told({"a", "-o"}), "--output: its value is missing");
  EXPECT_EQ(told({"-d", "", "a"}), "--directory: the name is empty");
  EXPECT_EQ(told({}), "FILE is required");
}

TEST(CommandLineOptions, OutputsThatAreAskedFor) {
  expect_mistake({"--format", "text,json", "a"}, "several formats need --output");
  expect_mistake({"--format", "text,json", "-o", "-", "a"}, "several formats need --output");
  expect_mistake({"--resume", "a"}, "--resume: needs --output FILE or --directory DIR");
  expect_mistake({"--resume", "-o", "-", "a"}, "--resume");
  expect_mistake({"--skip-existing", "a"}, "--skip-existing");
  expect_mistake({"--report", "-", "a"}, "--report");
  for (const char* option : {"--output=", "--directory=", "--pdf=", "--report="}) {
    EXPECT_NE(mistake({option, "a"}), "") << option;
  }
}

TEST(CommandLineOptions, PdfIsForOneDocumentAndNamedSo) {
  expect_mistake({"--pdf", "x.txt", "a"}, "--pdf: the name must end in .pdf");
  expect_mistake({"--pdf", "x.pdf", "a", "b"}, "--pdf: is for one document at a time");
  EXPECT_EQ(mistake({"--pdf", "X.PDF", "--image-list", "a", "b"}), "");
}

TEST(CommandLineOptions, BinaryResultsStayOffATerminal) {
  for (const char* format : {"pdf", "html"}) {
    EXPECT_NE(mistake({"--format", format, "a"}, true).find("terminal"), std::string::npos);
    EXPECT_EQ(mistake({"--format", format, "a"}, false), "");
    EXPECT_EQ(mistake({"--format", format, "-o", "x", "a"}, true), "");
  }
  EXPECT_EQ(mistake({"--format", "json", "a"}, true), "");
}

TEST(CommandLineOptions, FilesAreAskedForUnlessOnlyInformationIsWanted) {
  expect_mistake({}, "FILE is required");
  EXPECT_TRUE(options_of({"--version"}).version);
  EXPECT_TRUE(options_of({"--list-langs"}).list_languages);
}

TEST(CommandLineOptions, HelpIsGroupedAndNamesTheExitCodes) {
  const ParsedOptions parsed = parse({"--help"});
  EXPECT_FALSE(parsed.options);
  EXPECT_EQ(parsed.exit_code, cli::kAllDone);
  size_t position = 0;
  for (const char* part : {"Input:", "Output:", "Recognition:", "Workers and limits:", "Messages:",
                           "Information:", "Exit codes", "Examples:"}) {
    const size_t found = parsed.message.find(part);
    EXPECT_NE(found, std::string::npos) << part;
    EXPECT_GT(found, position) << part;
    position = found;
  }
  for (const int code : {0, 1, 2, 3, 4, 5, 6, 8, 130, 141}) {
    EXPECT_NE(parsed.message.find(" " + std::to_string(code) + "  "), std::string::npos) << code;
  }
}

}  // namespace
