// SPDX-License-Identifier: Apache-2.0
#include "options/help_text.h"

namespace cli {

const char* const kHelpDescription =
    "Recognises the text of scans: pictures and PDF documents become text, JSON, searchable PDFs\n"
    "and web pages. One worker process for each core; a page that cannot be recognised costs that\n"
    "page only.";

const char* const kHelpFooter = R"(Each FILE is one of
  a document       BMP, GIF, JPEG, PNG, PNM, TIFF, WebP or PDF, by its content
  a folder         the documents in it, by their extensions; hidden files are passed over
  @LIST            a file with one path a line; lines that start with # are comments
  -                a document on standard input
A name that starts with @ or - is given as ./NAME.

Without --output and --directory the text or JSON of all documents goes to standard output, in the
order given. Below --directory a document of a folder keeps its path there, any other its name, and
the extension becomes that of the format: scan.png gives scan.txt. Where two documents would get
one output, both keep their names whole: scan.png.txt, scan.jpg.txt; or, where these are the same
too, their folders: monday/scan.txt, tuesday/scan.txt. An output appears under its name only when
it is complete. Everything but results goes to standard error.

Exit codes (of several that apply, the first of 130, 141, 4, 3, 6, 8, 2, 5):
    0  all done
    1  wrong usage
    2  some inputs could not be read
    3  the engine could not be started
    4  an output could not be written
    5  all documents delivered, some with failed pages
    6  some documents failed: more failed pages than --max-failed-pages
    8  a password is needed
  130  interrupted; with --resume the next run goes on from here
  141  nobody reads standard output any more (ended by SIGPIPE)

Examples:
  zelk letter.png                                      text to standard output
  zelk --format json scans/*.tif | jq .pages[0]        one line of JSON for each document
  zelk -o all.json scans/*.tif                         the same into one file
  zelk --pdf searchable.pdf scan.tif                   a searchable PDF beside the text
  zelk --format pdf,text -d out --recursive scans      a whole tree
  zelk --format pdf -d out --recursive --resume scans  the same again goes on where it stopped
  zelk --image-list -o book.pdf p1.png p2.png p3.png
  find scans -name '*.tif' -mtime -1 | zelk -d out @/dev/stdin)";

}  // namespace cli
