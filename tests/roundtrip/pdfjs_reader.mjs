// SPDX-License-Identifier: Apache-2.0
// node pdfjs_reader.mjs PDF: prints the text of each page, as pdf.js reads it, as a JSON array.
import { readFile } from 'node:fs/promises';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

console.log = console.warn = () => {}; // pdf.js tells what it misses for rendering
const { getDocument } = await import('pdfjs-dist/legacy/build/pdf.mjs');

const library = join(dirname(fileURLToPath(import.meta.url)), 'node_modules/pdfjs-dist');
const document = await getDocument({
  data: new Uint8Array(await readFile(process.argv[2])),
  cMapUrl: `${library}/cmaps/`,
  cMapPacked: true,
  standardFontDataUrl: `${library}/standard_fonts/`,
  verbosity: 0,
}).promise;
const pages = [];
for (let number = 1; number <= document.numPages; ++number) {
  const content = await (await document.getPage(number)).getTextContent();
  pages.push(content.items.map((item) => item.str + (item.hasEOL ? '\n' : '')).join(''));
}
process.stdout.write(JSON.stringify(pages));
