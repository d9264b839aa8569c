// SPDX-License-Identifier: Apache-2.0
#include "options/options.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <sstream>
#include <string_view>

#include "options/help_text.h"
#include "options/targets.h"
#include "options/usage_mistake.h"

namespace cli {
namespace {

struct FormatName {
  const char* name;
  Format format;
};
constexpr std::array<FormatName, 4> kFormats = {{
    {"text", Format::kText},
    {"json", Format::kJson},
    {"pdf", Format::kPdf},
    {"html", Format::kHtml},
}};

// Without the description that would repeat the limits in the help.
template <typename Number>
CLI::Validator range(Number lowest, Number highest) {
  return CLI::Range(lowest, highest).description("");
}

Format parse_format(const std::string& name) {
  for (const FormatName& known : kFormats) {
    if (name == known.name) return known.format;
  }
  throw CLI::ValidationError("--format",
                             fmt::format("\"{}\" is none of text, json, pdf, html", name));
}

std::vector<Format> parse_formats(const std::string& text) {
  std::vector<Format> formats;
  for (size_t start = 0; start <= text.size();) {
    const size_t comma = std::min(text.find(',', start), text.size());
    formats.push_back(parse_format(text.substr(start, comma - start)));
    start = comma + 1;
  }
  std::sort(formats.begin(), formats.end());
  formats.erase(std::unique(formats.begin(), formats.end()), formats.end());
  return formats;
}

FailureLimit parse_failure_limit(std::string_view text) {
  FailureLimit limit{0.0, text.ends_with('%')};
  if (limit.is_percent) text.remove_suffix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), limit.amount,
                                            std::chars_format::fixed);
  const bool is_number = error == std::errc() && end == text.data() + text.size() && !text.empty();
  const bool is_whole = limit.is_percent || text.find('.') == std::string_view::npos;
  const double most = limit.is_percent ? 100.0 : 1e9;
  if (!is_number || !is_whole || !(limit.amount >= 0.0 && limit.amount <= most)) {
    throw CLI::ValidationError("--max-failed-pages", "a number of pages or 0% to 100% is wanted");
  }
  return limit;
}

CLI::Option* add_name(CLI::App& app, const std::string& flags, std::string& value,
                      const std::string& about) {
  const CLI::Validator not_empty(
      [](const std::string& name) { return name.empty() ? std::string("the name is empty") : ""; },
      "");
  return app.add_option(flags, value, about)->check(not_empty);
}

void add_input_options(CLI::App& app, Options& options) {
  app.add_option("FILE", options.inputs, "Documents, folders, @LIST, -")->option_text("...");
  app.add_flag("-r,--recursive", options.recursive, "Folders with all their subfolders")
      ->group("Input");
  app.add_flag("--image-list", options.image_list,
               "All inputs are the pages of one document, named for the first")
      ->group("Input");
  app.add_option_function<std::string>(
         "--pages",
         [&options](const std::string& text) {
           const std::optional<PageRanges> pages = parse_page_ranges(text);
           if (!pages) {
             throw CLI::ValidationError("--pages",
                                        "\"" + text + "\" is no list such as 3-7,12,20-");
           }
           options.pages = *pages;
         },
         "Pages of each document, for example 3-7,12,20- (default: all)")
      ->type_name("LIST")
      ->group("Input");
  app.add_option("--password", options.password, "Password of encrypted PDF documents")
      ->type_name("TEXT")
      ->group("Input");
}

void add_output_options(CLI::App& app, Options& options) {
  app.add_option_function<std::string>(
         "--format", [&options](const std::string& text) { options.formats = parse_formats(text); },
         "text, json, pdf, html, or several joined by commas (default: by the extension of "
         "--output, else text)")
      ->type_name("F")
      ->group("Output");
  add_name(app, "-o,--output", options.output,
           "File to write; with several formats its extension is replaced")
      ->type_name("FILE")
      ->group("Output");
  add_name(app, "-d,--directory", options.directory,
           "Folder for the outputs of all documents, laid out like the inputs")
      ->type_name("DIR")
      ->group("Output");
  add_name(app, "--pdf", options.pdf,
           "Searchable PDF to write beside the text, of one document; ends in .pdf")
      ->type_name("FILE")
      ->group("Output");
  app.add_flag("--page-break", options.page_break, "Form feeds between the pages of texts")
      ->group("Output");
  app.add_flag("--skip-existing", options.skip_existing,
               "Pass over documents whose outputs all exist")
      ->group("Output");
  app.add_flag("--resume", options.resume,
               "Keep a journal beside the outputs, and take finished pages from it")
      ->group("Output");
  add_name(app, "--report", options.report,
           "JSON file with the state, cause and time of every document and page")
      ->type_name("FILE")
      ->group("Output");
}

void add_recognition_options(CLI::App& app, Options& options) {
  app.add_option("--lang", options.language,
                 "Languages to recognise, joined by \"+\", best first (sets QV_LANGUAGES)")
      ->type_name("L")
      ->group("Recognition");
  app.add_option("--dpi", options.dpi,
                 "Dots per inch, 36 to 2400 (default: PDF pages 200, pictures their own)")
      ->type_name("N")
      ->check(range(36, 2400))
      ->group("Recognition");
  app.add_flag("--skip-text", options.skip_text,
               "PDF pages that have text keep it and are not recognised")
      ->group("Recognition");
  app.add_flag("--strict", options.strict,
               "Pages of which a part is missing or damaged have failed, instead of a warning")
      ->group("Recognition");
  app.add_option("--engine", options.engine_dir,
                 "Directory of libQVEngine.so (default: zelk/engine beside the library)")
      ->type_name("DIR")
      ->group("Recognition");
}

void add_worker_options(CLI::App& app, Options& options) {
  const auto add_number = [&app](const std::string& flags, auto& value, const std::string& unit,
                                 const CLI::Validator& limits, const std::string& about) {
    app.add_option(flags, value, about)
        ->type_name(unit)
        ->check(limits)
        ->group("Workers and limits");
  };
  add_number("-j,--jobs", options.jobs, "N", range(1, 1024),
             "Worker processes (default: one for each core)");
  add_number("--page-timeout", options.page_timeout, "SECONDS", range(1, 86400),
             "Time for one page, all attempts together (default: 180)");
  add_number("--memory-limit", options.memory_limit, "MIB", range(64, 1048576),
             "Memory of one worker (default: 2048)");
  add_number("--recycle", options.recycle, "PAGES", range(1, 1000000),
             "A worker is replaced after so many pages (default: 500)");
  add_number("--max-pixels", options.max_pixels, "N", range<std::int64_t>(1000, 1'000'000'000'000),
             "Larger PDF pages are rendered smaller, pictures refused (default: 120000000)");
  app.add_flag("!--no-sandbox", options.sandbox, "Leave workers the rights of the program")
      ->group("Workers and limits");
  app.add_option_function<std::string>(
         "--max-failed-pages",
         [&options](const std::string& text) {
           options.max_failed_pages = parse_failure_limit(text);
         },
         "With more failed pages a document has failed (default: 100%)")
      ->type_name("N|P%")
      ->group("Workers and limits");
}

void add_message_options(CLI::App& app, Options& options) {
  app.add_option_function<std::string>(
         "--progress",
         [&options](const std::string& style) {
           if (style != "json") {
             throw CLI::ValidationError("--progress", "\"" + style + "\" is not json");
           }
           options.progress = ProgressStyle::kJson;
         },
         "json: one JSON object a line on standard error")
      ->type_name("STYLE")
      ->group("Messages");
  app.add_flag_function(
         "-q,--quiet", [](std::int64_t) {}, "Complaints only: no progress, no summary")
      ->group("Messages");
  app.add_flag("-v,--verbose", options.verbose, "A line for each document, what engines print")
      ->group("Messages");
  app.add_flag("--list-langs", options.list_languages, "List the languages that can be used")
      ->group("Information");
  app.add_flag("--version", options.version, "Show the versions of zelk and what it runs on")
      ->group("Information");
  app.set_help_flag("-h,--help", "Show this help")->group("Information");
}

void check_messages(const CLI::App& app, Options& options) {
  if (app.count("--quiet") == 0) return;
  const auto refuse = [](const char* reason) { throw CLI::ValidationError("--quiet", reason); };
  if (options.progress == ProgressStyle::kJson) refuse("excludes --progress json");
  if (options.verbose) refuse("excludes --verbose");
  options.progress = ProgressStyle::kQuiet;
}

const char* name_of(Format format) {
  const auto known = std::find_if(kFormats.begin(), kFormats.end(),
                                  [&](const FormatName& name) { return name.format == format; });
  return known->name;
}

// One file has the format that its name tells. With several formats the extension is replaced.
void settle_format(const CLI::App& app, Options& options) {
  const std::optional<Format> told = format_of_name(options.output);
  if (!told || options.formats.size() > 1) return;
  if (app.count("--format") > 0 && options.formats[0] != *told) {
    throw CLI::ValidationError(
        "--output", fmt::format("the extension of {} says {}, but --format says {}", options.output,
                                name_of(*told), name_of(options.formats[0])));
  }
  options.formats = {*told};
}

void check_pdf(const Options& options) {
  if (options.pdf.empty()) return;
  const auto refuse = [](const char* reason) { throw CLI::ValidationError("--pdf", reason); };
  if (options.inputs.size() > 1 && !options.image_list) {
    refuse("is for one document at a time: use --format pdf --directory DIR");
  }
  if (!options.directory.empty()) refuse("has no place beside --directory: use --format pdf");
  if (options.pdf == options.output) refuse("names the file of --output too");
  if (std::count(options.formats.begin(), options.formats.end(), Format::kPdf) > 0) {
    refuse(options.formats.size() == 1 && format_of_name(options.output) == Format::kPdf
               ? "has no place beside a PDF in --output"
               : "has no place beside --format pdf");
  }
  if (format_of_name(options.pdf) != Format::kPdf) refuse("the name must end in .pdf");
}

bool writes_files(const Options& options) {
  return !options.directory.empty() || (!options.output.empty() && options.output != "-");
}

void check_outputs(const Options& options, bool results_on_terminal) {
  const auto refuse = [](const char* option, const std::string& reason) {
    throw CLI::ValidationError(option, reason);
  };
  const char* const where = "--output FILE or --directory DIR";
  if (!options.output.empty() && !options.directory.empty()) {
    refuse("--output", "excludes --directory");
  }
  const bool any_text =
      std::count(options.formats.begin(), options.formats.end(), Format::kText) > 0;
  if (options.page_break && !any_text) refuse("--page-break", "is for texts, none is wanted here");
  if (options.report == "-") refuse("--report", "is a file, not standard output");
  if (writes_files(options)) return;
  if (options.formats.size() > 1) refuse("--format", fmt::format("several formats need {}", where));
  const Format format = options.formats[0];
  if (results_on_terminal && (format == Format::kPdf || format == Format::kHtml)) {
    refuse("--format", fmt::format("{} is not written to a terminal, use {}",
                                   format == Format::kPdf ? "pdf" : "html", where));
  }
  if (options.resume) refuse("--resume", fmt::format("needs {}", where));
  if (options.skip_existing) refuse("--skip-existing", fmt::format("needs {}", where));
}

// The parser takes "[a,b]" for a list of two values. As a path it can be written in another way; a
// password cannot.
std::vector<std::string> guard_brackets(int argc, const char* const* argv) {
  std::vector<std::string> words;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    const bool in_brackets = word.starts_with('[') && word.ends_with(']');
    const bool is_password = !words.empty() && words.back() == "--password";
    words.push_back(in_brackets && !is_password ? "./" + word : word);
  }
  std::reverse(words.begin(), words.end());  // the order that the parser wants
  return words;
}

}  // namespace

ParsedOptions parse_options(int argc, const char* const* argv, bool results_on_terminal) {
  Options options;
  CLI::App app(kHelpDescription, "zelk");
  app.footer(kHelpFooter);
  add_input_options(app, options);
  add_output_options(app, options);
  add_recognition_options(app, options);
  add_worker_options(app, options);
  add_message_options(app, options);
  try {
    app.parse(guard_brackets(argc, argv));
    const bool only_informs = options.list_languages || options.version;
    if (options.inputs.empty() && !only_informs) throw CLI::RequiredError("FILE");
    check_messages(app, options);
    settle_format(app, options);
    check_pdf(options);
    if (!only_informs) check_outputs(options, results_on_terminal);
  } catch (const CLI::ParseError& error) {
    std::ostringstream help;
    std::ostringstream mistake;
    const bool is_help = app.exit(error, help, mistake) == 0;
    return {std::nullopt, is_help ? help.str() : usage_mistake(app, error),
            is_help ? kAllDone : kUsage};
  }
  return {options, "", kAllDone};
}

}  // namespace cli
