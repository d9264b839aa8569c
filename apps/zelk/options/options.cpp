// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <map>
#include <sstream>

namespace cli {
namespace {

constexpr int kLowestDpi = 36;
constexpr int kHighestDpi = 2400;

const char* const kDescription =
    "Recognises the text of scans: bmp, jpg, jpeg, png, tif, tiff and pdf files.";

const char* const kFooter = R"(
Results go to standard output or to the file of --output; everything else goes to standard error.
JSON is one line for each file, {"file": name, "page_count": n, "pages": [...]}, with one entry for
each page that was read; null stands for an entry that is no JSON.

Exit codes: 0 all done, 1 wrong usage, 2 some files or pages could not be read, 3 the engine could
not be started, 4 the output could not be written.

Examples:
  zelk letter.png
  zelk --lang eng --dpi 300 -o report.txt report.pdf
  zelk --pdf searchable.pdf scan.tif
  zelk --format json scans/*.tif | jq .pages[0])";

void add_options(CLI::App& app, Options& options) {
  app.add_option("FILE", options.files, "Documents, handled one after another")->option_text("...");

  app.add_option("--lang", options.language,
                 "Languages to recognise, joined by \"+\", best first (sets QV_LANGUAGES)")
      ->type_name("L")
      ->group("Recognition");
  app.add_option("--dpi", options.dpi,
                 "Resolution for PDF pages in dots per inch, 36 to 2400 (default: 200)")
      ->type_name("N")
      ->check(CLI::Range(kLowestDpi, kHighestDpi).description(""))
      ->group("Recognition");
  app.add_option("--engine", options.engine_dir,
                 "Directory of libQVEngine.so (default: zelk/engine beside the library)")
      ->type_name("DIR")
      ->group("Recognition");

  const std::map<std::string, Format> formats = {{"text", Format::kText}, {"json", Format::kJson}};
  app.add_option("--format", options.format, "text or json (default: text)")
      ->type_name("F")
      ->transform(CLI::Transformer(formats).description(""))
      ->group("Output");
  app.add_option("-o,--output", options.output, "File to write, complete or not at all")
      ->type_name("FILE")
      ->group("Output");

  app.add_option("--pdf", options.pdf,
                 "Searchable PDF to write beside the text, of one document; ends in .pdf")
      ->type_name("FILE")
      ->group("Output");

  app.add_flag("--list-langs", options.list_languages, "List the languages that can be used")
      ->group("Information");
  app.add_flag("--version", options.version, "Show the versions of zelk and what it runs on")
      ->group("Information");
  app.set_help_flag("-h,--help", "Show this help")->group("Information");
}

void check_pdf(const Options& options) {
  if (options.pdf.empty()) return;
  if (options.files.size() > 1)
    throw CLI::ValidationError("--pdf", "is for one document at a time");
  std::string end =
      options.pdf.substr(options.pdf.size() - std::min<size_t>(4, options.pdf.size()));
  std::transform(end.begin(), end.end(), end.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  if (end != ".pdf") throw CLI::ValidationError("--pdf", "the name must end in .pdf");
}

}  // namespace

ParsedOptions parse_options(int argc, const char* const* argv) {
  Options options;
  CLI::App app(kDescription, "zelk");
  app.footer(kFooter);
  add_options(app, options);
  try {
    app.parse(argc, argv);
    if (options.files.empty() && !options.list_languages && !options.version) {
      throw CLI::RequiredError("FILE");
    }
    check_pdf(options);
  } catch (const CLI::ParseError& error) {
    std::ostringstream help;
    std::ostringstream mistake;
    const bool is_help = app.exit(error, help, mistake) == 0;
    return {std::nullopt, is_help ? help.str() : mistake.str(), is_help ? kAllDone : kUsage};
  }
  return {options, "", kAllDone};
}

}  // namespace cli
